// What the desktop says about things that move by themselves.
#pragma once

#include "platform/Subscription.h"

#include <functional>
#include <memory>
#include <optional>

namespace kelpa {

class MotionSetting
{
public:
    virtual ~MotionSetting() = default;

    /// `changed` is called with whether animations are wanted, once that is known and with what
    /// differs from before; with nothing once there is no such setting any more. Main thread;
    /// returns at once.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchAnimations(std::function<void(std::optional<bool> areWanted)> changed) = 0;
};

} // namespace kelpa
