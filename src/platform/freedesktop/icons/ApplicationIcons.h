// The icons of applications: that of the desktop entry, else that of the window; cached.
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
    /// The window's own icon, at most so many pixels wide and high; null when it has none or is
    /// gone. Called on the thread that calls `icon`.
    using WindowIcon = std::function<QImage(WindowID window, int pixels)>;

    /// `entries` and `lookup` outlive it; `windowIcon` may be empty.
    ApplicationIcons(DesktopEntries& entries, IconLookup& lookup, WindowIcon windowIcon);

    /// At most `pixels` wide and high; null when there is none. Any thread but the main one. The
    /// installed application's icon comes before the window's own, so that all windows of one
    /// application look alike. Icons of applications are cached until the installed entries change;
    /// those of windows are read each time, because a window may change its own.
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
