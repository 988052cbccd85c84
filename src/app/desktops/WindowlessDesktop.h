// A session in which Kelpa sees no windows: the board, its goals and todos work all the same, and
// the board says why there are no windows.
#pragma once

#include "app/desktops/SessionDesktop.h"
#include "platform/DesktopAbilities.h"

#include <memory>

namespace kelpa {

class Scheduler;

class WindowlessDesktop final : public SessionDesktop
{
public:
    /// `gap` is why there are no windows. `scheduler` outlives this object.
    WindowlessDesktop(Scheduler& scheduler, AbilityGap gap);
    ~WindowlessDesktop() override;

    Platform platform() override;
    GlobalKeys& globalKeys() override;
    OwnWindow& ownWindow() override;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa
