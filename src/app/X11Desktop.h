// A desktop on X11: everything that Kelpa needs of it, put together.
#pragma once

#include "model/Identifiers.h"
#include "platform/Platform.h"

#include <functional>
#include <memory>
#include <set>

class QString;

namespace kelpa {

class AppearanceSetting;
class GlobalKeys;
class MotionSetting;
class OwnWindow;
class Scheduler;

/// Main thread. Background work of the scheduler refers to it, so that it is dropped only once none
/// runs any more.
class X11Desktop
{
public:
    /// `stateFolder` is where what outlives a session is kept, `assigned` the windows that the
    /// board knows already. `scheduler` outlives it. Waits a moment for the display, so that the
    /// board does not begin with a banner about what it has not looked at yet.
    X11Desktop(Scheduler& scheduler, const QString& stateFolder,
               const std::set<WindowID>& assigned);
    ~X11Desktop();

    /// `changed` is called when something about windows changed that the window server does not
    /// know of; nothing is called for an empty one.
    void setWindowsChanged(std::function<void()> changed);

    Platform platform();
    Applications& applications();
    GlobalKeys& globalKeys();
    OwnWindow& ownWindow();
    /// What the display's settings manager says.
    MotionSetting& motionOnDisplay();
    /// What the settings portal says, which is asked only once one of them is watched.
    AppearanceSetting& appearanceOfPortal();
    MotionSetting& motionOfPortal();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa
