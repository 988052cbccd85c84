#include "app/WindowlessDesktop.h"

#include "platform/AbilityReport.h"
#include "platform/freedesktop/appearance/PortalSettings.h"
#include "platform/freedesktop/applications/DesktopWorkspace.h"
#include "platform/freedesktop/bus/DesktopNotifications.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/qt/ToolkitOwnWindow.h"
#include "platform/windowless/NoWindows.h"

namespace kelpa {

struct WindowlessDesktop::Parts
{
    Parts(Scheduler& scheduler, AbilityGap gap)
        : abilities(DesktopAbilities::without(gap)), workspace(scheduler), portal(scheduler),
          notifications(scheduler)
    {}

    FixedAbilities abilities;
    NoWindows windows;
    QtPasteboard pasteboard;
    DesktopWorkspace workspace;
    ToolkitOwnWindow ownWindow;
    PortalSettings portal;
    DesktopNotifications notifications;
};

WindowlessDesktop::WindowlessDesktop(Scheduler& scheduler, AbilityGap gap)
    : m_parts(std::make_unique<Parts>(scheduler, gap))
{}

WindowlessDesktop::~WindowlessDesktop() = default;

void WindowlessDesktop::setWindowsChanged(std::function<void()>) {}

Platform WindowlessDesktop::platform()
{
    return {m_parts->windows,    m_parts->windows,   m_parts->windows,
            m_parts->pasteboard, m_parts->workspace, m_parts->abilities};
}

GlobalKeys& WindowlessDesktop::globalKeys()
{
    return m_parts->windows;
}

OwnWindow& WindowlessDesktop::ownWindow()
{
    return m_parts->ownWindow;
}

Notifications& WindowlessDesktop::notifications()
{
    return m_parts->notifications;
}

MotionSetting& WindowlessDesktop::motionOnDisplay()
{
    return m_parts->windows;
}

AppearanceSetting& WindowlessDesktop::appearanceOfPortal()
{
    return m_parts->portal;
}

MotionSetting& WindowlessDesktop::motionOfPortal()
{
    return m_parts->portal;
}

} // namespace kelpa
