// The events of the keyboard, and of the mouse buttons, that matter to global keys. Plain data.
#pragma once

#include <xcb/xproto.h>

#include <cstdint>
#include <optional>
#include <variant>

namespace kelpa::x11 {

/// A key was pressed or released. Where the server repeats keys, presses repeat while a key is
/// held.
struct RawKey
{
    xcb_keycode_t key = 0;
    bool isPress = false;
    /// When that happened, even if the event arrives late.
    xcb_timestamp_t time = 0;
};

/// A mouse button was pressed, or the wheel turned by a notch.
struct RawButton
{};

/// The modifiers (bit n is modifier n) after a change.
struct ModifierState
{
    /// Set by keys that are held.
    std::uint8_t held = 0;
    /// Held, latched or locked.
    std::uint8_t effective = 0;
    /// When the server sent the event, which may be long after the key was pressed or released.
    xcb_timestamp_t time = 0;
    /// The key that caused the change, and whether by its press; 0 when a client requested the
    /// change.
    xcb_keycode_t key = 0;
    bool isPress = false;
};

/// The keyboard mapping has changed: `ModifierMap` has to be read again.
struct KeyboardChange
{};

using KeyEvent = std::variant<RawKey, RawButton, ModifierState, KeyboardChange>;

} // namespace kelpa::x11
