// The base of all desktops: answers for what they have of the session, so that each adds only its
// window system.
#pragma once

#include "platform/Desktop.h"
#include "platform/freedesktop/appearance/PortalSettings.h"

#include <chrono>
#include <functional>
#include <memory>

namespace kelpa {

class AbilityReport;
class Accessibility;
class Applications;
class Scheduler;
class WindowServer;
struct SessionServices;

class SessionDesktop : public Desktop
{
public:
    ~SessionDesktop() override;

    void setWindowsChanged(std::function<void()> changed) final;
    Notifications& notifications() final;
    /// Never known, unless a desktop says otherwise.
    MotionSetting& motionOnDisplay() override;
    AppearanceSetting& appearanceOfPortal() final;
    MotionSetting& motionOfPortal() final;
    TextScaleSetting& textScaleOfPortal() final;
    ContrastSetting& contrastOfPortal() final;
    AccentSetting& accentOfPortal() final;
    void awaitSettingsOfPortal(std::chrono::milliseconds limit) final;

protected:
    /// `scheduler` outlives this object.
    explicit SessionDesktop(Scheduler& scheduler, KdeSettings kde = KdeSettings::ignored);

    /// They live until the parts of the derived class are destroyed.
    SessionServices& services() { return *m_services; }
    Platform platformOf(WindowServer& windowServer, Accessibility& actions,
                        Applications& applications, AbilityReport& abilities);

private:
    const std::unique_ptr<SessionServices> m_services;
};

} // namespace kelpa
