// What the desktop says about light and dark.
#pragma once

#include "model/GoalAccent.h"
#include "platform/Subscription.h"

#include <functional>
#include <memory>
#include <optional>

namespace kelpa {

class AppearanceSetting
{
public:
    virtual ~AppearanceSetting() = default;

    /// `changed` is called with what the desktop prefers, once that is known and with what differs
    /// from before; with nothing once it has no preference any more. Main thread; returns at once.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchAppearance(std::function<void(std::optional<Appearance> preferred)> changed) = 0;
};

} // namespace kelpa
