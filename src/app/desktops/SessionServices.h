// What every desktop has of the session around it, whichever window system it is: the installed
// applications, the settings portal, notifications, the clipboard.
#pragma once

#include "platform/freedesktop/appearance/PortalSettings.h"
#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/applications/DesktopEntries.h"
#include "platform/freedesktop/applications/DesktopWorkspace.h"
#include "platform/freedesktop/bus/DesktopNotifications.h"
#include "platform/freedesktop/icons/IconLookup.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/windowless/NoWindows.h"

#include <functional>

namespace kelpa {

class Scheduler;

/// Main thread. A desktop's own parts refer to these, so they are destroyed first.
struct SessionServices
{
    /// `scheduler` outlives this object.
    SessionServices(Scheduler& scheduler, KdeSettings kde);

    void notifyWindowsChanged() const
    {
        if (windowsChanged)
            windowsChanged();
    }

    std::function<void()> windowsChanged;
    DesktopEntries entries;
    IconLookup icons;
    ApplicationLauncher launcher;
    QtPasteboard pasteboard;
    DesktopWorkspace workspace;
    /// Stands for what a desktop does not have.
    NoWindows unreported;
    PortalSettings portal;
    DesktopNotifications notifications;
};

} // namespace kelpa
