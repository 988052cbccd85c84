#include "app/desktops/SessionDesktop.h"

#include "app/desktops/SessionServices.h"

#include <utility>

namespace kelpa {

SessionDesktop::SessionDesktop(Scheduler& scheduler, KdeSettings kde)
    : m_services(std::make_unique<SessionServices>(scheduler, kde))
{}

SessionDesktop::~SessionDesktop() = default;

void SessionDesktop::setWindowsChanged(std::function<void()> changed)
{
    m_services->windowsChanged = std::move(changed);
}

Notifications& SessionDesktop::notifications()
{
    return m_services->notifications;
}

MotionSetting& SessionDesktop::motionOnDisplay()
{
    return m_services->unreported;
}

AppearanceSetting& SessionDesktop::appearanceOfPortal()
{
    return m_services->portal;
}

MotionSetting& SessionDesktop::motionOfPortal()
{
    return m_services->portal;
}

TextScaleSetting& SessionDesktop::textScaleOfPortal()
{
    return m_services->portal;
}

ContrastSetting& SessionDesktop::contrastOfPortal()
{
    return m_services->portal;
}

AccentSetting& SessionDesktop::accentOfPortal()
{
    return m_services->portal;
}

void SessionDesktop::awaitSettingsOfPortal(std::chrono::milliseconds limit)
{
    m_services->portal.awaitSettings(limit);
}

Platform SessionDesktop::platformOf(WindowServer& windowServer, Accessibility& actions,
                                    Applications& applications, AbilityReport& abilities)
{
    return {windowServer,          actions,  applications, m_services->pasteboard,
            m_services->workspace, abilities};
}

} // namespace kelpa
