// The keyboard as all programs together see it: what is pressed, whoever has the keyboard.
#pragma once

#include "platform/Subscription.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace kelpa {

/// The moment of an input event on the window server's own clock, as it is told to a window
/// manager: milliseconds, starting again at 0 after 49.7 days.
using InputTime = std::uint32_t;

/// What a change of the modifier keys left.
struct GlobalModifierChange
{
    /// Whether a Command key (Super) is held, and whether any other modifier is held, latched or
    /// locked. What the numeric keypad's lock is set to does not count.
    bool commandIsDown = false;
    bool hasOtherModifiers = false;
    /// When the key was moved, in seconds on the window server's clock, however long it runs.
    double timestamp = 0;
    InputTime inputTime = 0;
};

/// All are called on the main thread, in the order in which the keys were moved.
struct GlobalKeyHandlers
{
    /// A key that is no modifier was pressed, or repeats itself; or a button of the mouse was, with
    /// which a modifier makes a gesture as it does with a key. Which one is nobody's business.
    std::function<void()> keyPressed;
    std::function<void(const GlobalModifierChange&)> modifiersChanged;
    /// Whether the keys are heard from now on; at first they are not.
    std::function<void(bool)> availabilityChanged;
};

class GlobalKeys
{
public:
    virtual ~GlobalKeys() = default;

    /// Listens until the subscription is dropped; takes no key from anybody. Where the desktop
    /// does not tell, the subscription stays silent. Main thread; returns at once. A handler must
    /// not drop the subscription.
    [[nodiscard]] virtual std::unique_ptr<Subscription> watchKeys(GlobalKeyHandlers handlers) = 0;
};

} // namespace kelpa
