#include "platform/freedesktop/icons/IconLookup.h"

#include "platform/freedesktop/icons/IconFile.h"

#include <utility>

namespace kelpa {

IconLookup::IconLookup(DesktopEntries& entries, QString themeName)
    : m_entries(entries), m_themeName(std::move(themeName))
{}

std::optional<QString> IconLookup::path(const QString& desktopEntryID, int pixels)
{
    const QString icon = m_entries.icon(desktopEntryID);
    return icon.isEmpty() ? std::nullopt : theme()->find(icon, pixels);
}

QImage IconLookup::image(const QString& desktopEntryID, int pixels)
{
    const std::optional<QString> file = path(desktopEntryID, pixels);
    return file ? iconFromFile(*file, pixels) : QImage();
}

std::shared_ptr<const IconTheme> IconLookup::theme()
{
    const std::uint64_t generation = m_entries.generation();
    const std::lock_guard lock(m_mutex);
    if (!m_theme || m_generation != generation) {
        m_theme = std::make_shared<const IconTheme>(m_themeName,
                                                    iconDirectories(m_entries.dataDirectories()),
                                                    pixmapDirectories(m_entries.dataDirectories()));
        m_generation = generation;
    }
    return m_theme;
}

} // namespace kelpa
