// Which keys and modifiers count as Command for the double tap, from the server's mappings. Plain
// data.
#pragma once

#include <xcb/xproto.h>

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelpa::x11 {

/// The keyboard and modifier mappings as the server sends them.
struct KeyboardTables
{
    /// The key code that `symbols` begins with, and the number of symbols per key.
    xcb_keycode_t firstKey = 8;
    std::size_t symbolsOfKey = 0;
    std::vector<xcb_keysym_t> symbols;
    /// The same number of key codes for each of the eight modifiers; 0 is none.
    std::vector<xcb_keycode_t> modifierKeys;
};

struct ModifierMap
{
    /// The modifiers (bit n is modifier n) that a Super key sets; 0 where there is no Super key.
    std::uint8_t command = 0;
    /// Modifiers that are a state of the keyboard and are not held: Num Lock and Scroll Lock.
    std::uint8_t ignored = 0;
    /// The key codes of modifier keys, which do not count as keys pressed.
    std::bitset<256> isModifierKey;

    bool hasCommand() const { return command != 0; }
};

/// Follows remapped keyboards: the symbols of keys and the modifiers that they set decide. A key
/// that is not in the modifier mapping is a modifier if its symbol without other modifiers is one:
/// an ordinary key that changes the layout only with Super or Shift is none.
ModifierMap modifierMapOf(const KeyboardTables& tables);

} // namespace kelpa::x11
