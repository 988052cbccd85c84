// A desktop: everything that Kelpa needs of the window system and the session it runs in.
#pragma once

#include "platform/Platform.h"

#include <chrono>
#include <functional>

namespace kelpa {

class AccentSetting;
class AppearanceSetting;
class ContrastSetting;
class GlobalKeys;
class MotionSetting;
class Notifications;
class OwnWindow;
class TextScaleSetting;

/// Main thread. Background work of the scheduler refers to the parts, so a desktop is destroyed
/// only after all such work has ended. What the functions refer to lives as long as the desktop.
class Desktop
{
public:
    Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    virtual ~Desktop() = default;

    /// Calls `changed` when something about windows has changed that the window server does not
    /// report. An empty function unsubscribes.
    virtual void setWindowsChanged(std::function<void()> changed) = 0;

    virtual Platform platform() = 0;
    virtual GlobalKeys& globalKeys() = 0;
    virtual OwnWindow& ownWindow() = 0;
    virtual Notifications& notifications() = 0;
    /// The motion setting of the display itself.
    virtual MotionSetting& motionOnDisplay() = 0;
    /// The settings of the settings portal, which is queried once one of them is watched.
    virtual AppearanceSetting& appearanceOfPortal() = 0;
    virtual MotionSetting& motionOfPortal() = 0;
    virtual TextScaleSetting& textScaleOfPortal() = 0;
    virtual ContrastSetting& contrastOfPortal() = 0;
    virtual AccentSetting& accentOfPortal() = 0;
    /// Returns once the settings of the portal that are watched are known as far as the portal has
    /// them, at the latest after `limit`. Main thread; runs the event loop meanwhile, without the
    /// person's input.
    virtual void awaitSettingsOfPortal(std::chrono::milliseconds limit) = 0;
};

} // namespace kelpa
