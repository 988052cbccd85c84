// A desktop on X11: creates and connects the implementations of the interfaces in platform/.
#pragma once

#include "app/desktops/SessionDesktop.h"
#include "model/Identifiers.h"

#include <memory>
#include <set>

class QString;

namespace kelpa {

class Scheduler;

class X11Desktop final : public SessionDesktop
{
public:
    /// `stateFolder` holds state that outlives a session; `assigned` are the windows that the board
    /// has assignments for. `scheduler` outlives this object.
    X11Desktop(Scheduler& scheduler, const QString& stateFolder,
               const std::set<WindowID>& assigned);
    ~X11Desktop() override;

    Platform platform() override;
    GlobalKeys& globalKeys() override;
    OwnWindow& ownWindow() override;
    /// The setting of the display's settings manager (XSETTINGS).
    MotionSetting& motionOnDisplay() override;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa
