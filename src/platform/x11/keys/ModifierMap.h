// What the keys of a keyboard mean for the double tap, from the server's tables. Plain data.
#pragma once

#include <xcb/xproto.h>

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelpa::x11 {

/// The tables as the server sends them.
struct KeyboardTables
{
    /// The key code that `symbols` begins with, and how many of them each key has.
    xcb_keycode_t firstKey = 8;
    std::size_t symbolsOfKey = 0;
    std::vector<xcb_keysym_t> symbols;
    /// For each of the eight modifiers the same number of key codes; 0 is none.
    std::vector<xcb_keycode_t> modifierKeys;
};

struct ModifierMap
{
    /// The modifiers (bit n is modifier n) that a Super key sets; 0 where there is no Super key.
    std::uint8_t command = 0;
    /// Modifiers that are a state of the keyboard rather than something held: the lock of the
    /// numeric keypad, and of scrolling.
    std::uint8_t ignored = 0;
    /// The key codes of modifier keys, which do not count as keys pressed.
    std::bitset<256> isModifierKey;

    bool hasCommand() const { return command != 0; }
};

/// Follows remapped keyboards: what counts is the symbols that keys bear and the modifiers that
/// they set. A modifier that is in no table of modifiers is one by what it bears without another: a
/// key that is typed, and only with Super or Shift changes the layout, is none.
ModifierMap keyMeanings(const KeyboardTables& tables);

} // namespace kelpa::x11
