// The keyboard of the whole desktop: which keys are pressed, whichever program has the focus.
#pragma once

#include "platform/Subscription.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace kelpa {

/// The timestamp of an input event on the window server's own clock, as passed to a window manager:
/// milliseconds, wrapping to 0 after 49.7 days.
using InputTime = std::uint32_t;

/// The state of the modifier keys after a change.
struct GlobalModifierChange
{
    /// Whether a Command key (Super) is held, and whether any other modifier is held, latched or
    /// locked. Num Lock does not count.
    bool commandIsDown = false;
    bool hasOtherModifiers = false;
    /// When the key changed, in seconds on the window server's clock, without wrapping.
    double timestamp = 0;
    InputTime inputTime = 0;
};

/// All are called on the main thread, in the order of the key events.
struct GlobalKeyHandlers
{
    /// A key that is no modifier was pressed or repeats, or a mouse button was pressed, since a
    /// modifier with a button is a gesture as it is with a key. Which one is not reported, for
    /// privacy.
    std::function<void()> keyPressed;
    std::function<void(const GlobalModifierChange&)> modifiersChanged;
    /// Whether key events are received from now on; initially they are not.
    std::function<void(bool)> availabilityChanged;
};

class GlobalKeys
{
public:
    virtual ~GlobalKeys() = default;

    /// Listens until the subscription is destroyed; no program loses a key by it. Where the desktop
    /// does not report keys, the handlers are never called. Main thread; returns at once. A handler
    /// must not destroy the subscription.
    [[nodiscard]] virtual std::unique_ptr<Subscription> watchKeys(GlobalKeyHandlers handlers) = 0;
};

} // namespace kelpa
