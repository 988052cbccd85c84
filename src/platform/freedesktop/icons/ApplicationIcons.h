// The icons of the applications of a freedesktop system.
#pragma once

#include "model/WindowItem.h"
#include "platform/freedesktop/icons/IconLookup.h"

#include <QHash>
#include <QImage>
#include <QString>

#include <cstdint>
#include <functional>
#include <mutex>
#include <utility>

namespace kelpa {

class ApplicationIcons
{
public:
    /// The picture that a window carries itself, at most so many pixels wide and high; null when it
    /// carries none or is gone. Called on the thread that asks for the icon.
    using WindowIcon = std::function<QImage(WindowID window, int pixels)>;

    /// `entries` and `lookup` outlive it; `windowIcon` may be empty.
    ApplicationIcons(DesktopEntries& entries, IconLookup& lookup, WindowIcon windowIcon);

    /// At most `pixels` wide and high; null when there is none. Any thread but the main one. The
    /// installed application's icon comes before the window's own, so that all windows of one
    /// application look alike. Icons of applications are kept until the installed entries change;
    /// those of windows are asked for each time, because a window may change its own.
    QImage icon(const WindowItem& window, int pixels);

private:
    QImage applicationIcon(const QString& desktopEntryID, int pixels);

    DesktopEntries& m_entries;
    IconLookup& m_lookup;
    const WindowIcon m_windowIcon;

    std::mutex m_mutex;
    QHash<std::pair<QString, int>, QImage> m_icons;
    std::uint64_t m_generation = 0;
};

} // namespace kelpa
