// What the server tells of the keyboard, and of the mouse beside it. Plain data.
#pragma once

#include <xcb/xproto.h>

#include <cstdint>
#include <optional>
#include <variant>

namespace kelpa::x11 {

/// A key was moved. A press is repeated while the key is held, where the server repeats it.
struct RawKey
{
    xcb_keycode_t key = 0;
    bool isPress = false;
    /// When it was moved, also when this is told late.
    xcb_timestamp_t time = 0;
};

/// A button of the mouse was pressed, or its wheel turned by a notch.
struct RawButton
{};

/// The modifiers (bit n is modifier n) after one of them changed.
struct ModifierState
{
    /// By keys that are held.
    std::uint8_t held = 0;
    /// Those, and what is latched or locked.
    std::uint8_t effective = 0;
    /// When this is told, which may be long after the key was moved.
    xcb_timestamp_t time = 0;
    /// The key whose movement led to it, and whether that was a press; 0 where a program asked for
    /// it.
    xcb_keycode_t key = 0;
    bool isPress = false;
};

/// The tables that tell what keys mean are others now.
struct KeyboardChange
{};

using KeyEvent = std::variant<RawKey, RawButton, ModifierState, KeyboardChange>;

} // namespace kelpa::x11
