// A desktop on X11: creates and connects the implementations of the interfaces in platform/.
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
class Notifications;
class OwnWindow;
class Scheduler;

/// Main thread. Background work of the scheduler refers to this object, so it is destroyed only
/// after all such work has ended.
class X11Desktop
{
public:
    /// `stateFolder` holds state that outlives a session; `assigned` are the windows that the board
    /// has assignments for. `scheduler` outlives this object.
    X11Desktop(Scheduler& scheduler, const QString& stateFolder,
               const std::set<WindowID>& assigned);
    ~X11Desktop();

    /// Calls `changed` when something about windows has changed that the window server does not
    /// report. An empty function unsubscribes.
    void setWindowsChanged(std::function<void()> changed);

    Platform platform();
    Applications& applications();
    GlobalKeys& globalKeys();
    OwnWindow& ownWindow();
    Notifications& notifications();
    /// The setting of the display's settings manager (XSETTINGS).
    MotionSetting& motionOnDisplay();
    /// The settings of the settings portal, which is queried once one of them is watched.
    AppearanceSetting& appearanceOfPortal();
    MotionSetting& motionOfPortal();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa
