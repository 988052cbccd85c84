// The desktop's preference for larger or smaller texts.
#pragma once

#include "platform/Subscription.h"

#include <functional>
#include <memory>
#include <optional>

namespace kelpa {

class TextScaleSetting
{
public:
    virtual ~TextScaleSetting() = default;

    /// Calls `changed` with the wanted size of texts, as a factor of their usual one, once that is
    /// known and whenever it changes; absent when the desktop wants none any more. Main thread;
    /// returns at once.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchTextScale(std::function<void(std::optional<double> scale)> changed) = 0;
};

} // namespace kelpa
