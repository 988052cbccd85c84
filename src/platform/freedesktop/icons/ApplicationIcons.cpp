#include "platform/freedesktop/icons/ApplicationIcons.h"

#include <utility>

namespace kelpa {

namespace {

/// More than the applications that a person has open; a picture of 64 pixels takes 16 KiB.
constexpr qsizetype maximalIcons = 256;

} // namespace

ApplicationIcons::ApplicationIcons(DesktopEntries& entries, IconLookup& lookup,
                                   WindowIcon windowIcon)
    : m_entries(entries), m_lookup(lookup), m_windowIcon(std::move(windowIcon))
{}

QImage ApplicationIcons::icon(const WindowItem& window, int pixels)
{
    if (window.bundleIdentifier) {
        if (QImage image = applicationIcon(*window.bundleIdentifier, pixels); !image.isNull())
            return image;
    }
    return m_windowIcon ? m_windowIcon(window.id, pixels) : QImage();
}

QImage ApplicationIcons::applicationIcon(const QString& desktopEntryID, int pixels)
{
    const std::uint64_t generation = m_entries.generation();
    const std::pair key(desktopEntryID, pixels);
    {
        const std::lock_guard lock(m_mutex);
        if (m_generation != generation || m_icons.size() >= maximalIcons) {
            m_icons.clear();
            m_generation = generation;
        }
        if (const auto known = m_icons.constFind(key); known != m_icons.cend())
            return *known;
    }
    // Read without the lock, so that one slow drawing does not hold up the others; at worst two
    // threads read the same one.
    QImage image = m_lookup.image(desktopEntryID, pixels);
    const std::lock_guard lock(m_mutex);
    if (m_generation == generation)
        m_icons.insert(key, image);
    return image;
}

} // namespace kelpa
