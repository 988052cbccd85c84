// The desktop's preference for more contrast.
#pragma once

#include "platform/Subscription.h"

#include <functional>
#include <memory>
#include <optional>

namespace kelpa {

class ContrastSetting
{
public:
    virtual ~ContrastSetting() = default;

    /// Calls `changed` with whether more contrast is wanted, once that is known and whenever it
    /// changes. Main thread; returns at once.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchContrast(std::function<void(std::optional<bool> isHigh)> changed) = 0;
};

} // namespace kelpa
