// The desktop's preference for or against animations.
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

    /// Calls `changed` with whether animations are wanted, once that is known and whenever it
    /// changes; with no value when the setting no longer exists. Main thread; returns at once.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchAnimations(std::function<void(std::optional<bool> areWanted)> changed) = 0;
};

} // namespace kelpa
