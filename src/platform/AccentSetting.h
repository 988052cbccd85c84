// The desktop's accent colour.
#pragma once

#include "platform/Subscription.h"

#include <QColor>

#include <functional>
#include <memory>
#include <optional>

namespace kelpa {

class AccentSetting
{
public:
    virtual ~AccentSetting() = default;

    /// Calls `changed` with the opaque colour that the person has chosen for the desktop, once it
    /// is known and whenever it changes; with no value when there is none any more. Main thread;
    /// returns at once.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchAccent(std::function<void(std::optional<QColor> accent)> changed) = 0;
};

} // namespace kelpa
