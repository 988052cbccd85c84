#include "platform/x11/KeyMeanings.h"

#define XK_MISCELLANY
#define XK_XKB_KEYS
#include <X11/keysymdef.h>

namespace kelpa::x11 {

namespace {

constexpr std::size_t modifierCount = 8;
/// Shift, Lock and Control are what they are, whichever keys set them.
constexpr std::uint8_t namedModifiers = 0x07;

bool isCommand(xcb_keysym_t symbol)
{
    return symbol == XK_Super_L || symbol == XK_Super_R;
}

bool isPassiveLock(xcb_keysym_t symbol)
{
    return symbol == XK_Num_Lock || symbol == XK_Scroll_Lock;
}

bool isModifier(xcb_keysym_t symbol)
{
    return (symbol >= XK_Shift_L && symbol <= XK_Hyper_R) ||
           (symbol >= XK_ISO_Lock && symbol <= XK_ISO_Level5_Lock) || symbol == XK_Mode_switch ||
           isPassiveLock(symbol);
}

template <class Predicate>
bool bears(const KeyboardTables& tables, xcb_keycode_t key, Predicate predicate)
{
    if (key < tables.firstKey)
        return false;
    const std::size_t begin = (std::size_t{key} - tables.firstKey) * tables.symbolsOfKey;
    for (std::size_t i = begin; i < begin + tables.symbolsOfKey && i < tables.symbols.size(); ++i) {
        if (predicate(tables.symbols[i]))
            return true;
    }
    return false;
}

} // namespace

KeyMeanings keyMeanings(const KeyboardTables& tables)
{
    KeyMeanings meanings;
    const std::size_t keysOfModifier = tables.modifierKeys.size() / modifierCount;
    for (std::size_t i = 0; i < keysOfModifier * modifierCount; ++i) {
        const xcb_keycode_t key = tables.modifierKeys[i];
        if (key == 0)
            continue;
        const auto modifier = static_cast<std::uint8_t>(1U << (i / keysOfModifier));
        meanings.isModifierKey.set(key);
        if (bears(tables, key, isCommand))
            meanings.command |= modifier;
        if (bears(tables, key, isPassiveLock))
            meanings.ignored |= modifier;
    }
    meanings.command &= static_cast<std::uint8_t>(~namedModifiers);
    meanings.ignored &= static_cast<std::uint8_t>(~(namedModifiers | meanings.command));
    // A layout may make a key a modifier without entering it in the table of modifiers.
    for (std::size_t key = tables.firstKey; key < meanings.isModifierKey.size(); ++key) {
        if (bears(tables, static_cast<xcb_keycode_t>(key), isModifier))
            meanings.isModifierKey.set(key);
    }
    return meanings;
}

} // namespace kelpa::x11
