// Kelpa's own window on the desktop.
#pragma once

#include "platform/GlobalKeys.h"
#include "platform/Subscription.h"

#include <QByteArray>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace kelpa {

/// What justifies activating a window, for desktops that prevent focus stealing.
struct ActivationContext
{
    /// The user time: when the person acted; absent means now.
    std::optional<InputTime> inputTime;
    /// The startup id (activation token) from the launcher that started the program; empty if none.
    QByteArray startupID;
};

class OwnWindow
{
public:
    virtual ~OwnWindow() = default;

    /// Requests that the window be restored, raised above all others and focused, with its desktop
    /// shown, also while the person types into another program. `window` is its id in the window
    /// system, as the toolkit gives it. A later request may replace an earlier one, but the launch
    /// of each `startupID` is reported as complete. Main thread; returns at once.
    virtual void requestFront(std::uint32_t window, const ActivationContext& context) = 0;

    /// Tells whether all of the window lies behind others; not, until it is known, and never where
    /// the desktop cannot tell. Of a window that is not shown at all it says nothing new. `changed`
    /// is called with what differs from before. Main thread; returns at once.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchCovered(std::uint32_t window, std::function<void(bool isCovered)> changed) = 0;
};

} // namespace kelpa
