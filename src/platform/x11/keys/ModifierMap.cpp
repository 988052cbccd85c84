#include "platform/x11/keys/ModifierMap.h"

#define XK_MISCELLANY
#define XK_XKB_KEYS
#include <X11/keysymdef.h>

#include <algorithm>
#include <span>

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

/// The symbols of a key: two levels of the first group, two of the second, and what there is
/// beyond.
std::span<const xcb_keysym_t> symbolsOf(const KeyboardTables& tables, std::size_t key)
{
    if (key < tables.firstKey)
        return {};
    const std::span<const xcb_keysym_t> all(tables.symbols);
    const std::size_t begin =
        std::min((key - tables.firstKey) * tables.symbolsOfKey, tables.symbols.size());
    return all.subspan(begin, std::min(tables.symbolsOfKey, all.size() - begin));
}

/// On any level: layouts keep a Super key for programs that has nothing on its first.
template <class Predicate>
bool bears(const KeyboardTables& tables, xcb_keycode_t key, Predicate predicate)
{
    return std::ranges::any_of(symbolsOf(tables, key), predicate);
}

/// Whether it is one as long as no other modifier is held. With one, keys that are typed may be
/// too: Super with Space goes to the next layout, and is a shortcut like others.
bool isModifierByItself(const KeyboardTables& tables, std::size_t key)
{
    constexpr std::size_t levelsOfGroup = 2;
    constexpr std::size_t groups = 2;
    const auto symbols = symbolsOf(tables, key);
    for (std::size_t group = 0; group < groups; ++group) {
        const std::size_t first = group * levelsOfGroup;
        if (first < symbols.size() && isModifier(symbols[first]))
            return true;
    }
    return false;
}

} // namespace

ModifierMap keyMeanings(const KeyboardTables& tables)
{
    ModifierMap meanings;
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
        if (isModifierByItself(tables, key))
            meanings.isModifierKey.set(key);
    }
    return meanings;
}

} // namespace kelpa::x11
