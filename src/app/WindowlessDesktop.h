// A session in which Kelpa sees no windows: the board, its goals and todos work all the same, and
// the board says why there are no windows.
#pragma once

#include "platform/Desktop.h"
#include "platform/DesktopAbilities.h"

#include <functional>
#include <memory>

namespace kelpa {

class Scheduler;

class WindowlessDesktop final : public Desktop
{
public:
    /// `gap` is why there are no windows. `scheduler` outlives this object.
    WindowlessDesktop(Scheduler& scheduler, AbilityGap gap);
    ~WindowlessDesktop() override;

    void setWindowsChanged(std::function<void()> changed) override;
    Platform platform() override;
    GlobalKeys& globalKeys() override;
    OwnWindow& ownWindow() override;
    Notifications& notifications() override;
    /// Never known.
    MotionSetting& motionOnDisplay() override;
    AppearanceSetting& appearanceOfPortal() override;
    MotionSetting& motionOfPortal() override;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa
