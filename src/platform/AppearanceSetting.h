// The desktop's preference for a light or a dark appearance.
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

    /// Calls `changed` with the desktop's preference once it is known and whenever it changes; with
    /// no value when the desktop no longer has one. Main thread; returns at once.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchAppearance(std::function<void(std::optional<Appearance> preferred)> changed) = 0;
};

} // namespace kelpa
