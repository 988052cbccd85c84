#include "platform/x11/keys/ModifierMap.h"

#define XK_MISCELLANY
#define XK_XKB_KEYS
#include <X11/keysymdef.h>

#include <algorithm>
#include <span>

namespace kelpa::x11 {

namespace {

constexpr std::size_t modifierCount = 8;
/// Shift, Lock and Control keep their meaning, whichever keys set them.
constexpr std::uint8_t fixedModifiers = 0x07;

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

/// The symbols of a key: two levels of the first group, two of the second, then the rest.
std::span<const xcb_keysym_t> symbolsOf(const KeyboardTables& tables, std::size_t key)
{
    if (key < tables.firstKey)
        return {};
    const std::span<const xcb_keysym_t> all(tables.symbols);
    const std::size_t begin =
        std::min((key - tables.firstKey) * tables.symbolsOfKey, tables.symbols.size());
    return all.subspan(begin, std::min(tables.symbolsOfKey, all.size() - begin));
}

/// Scans all levels: some layouts have a Super key for programs with nothing on its first level.
template <class Predicate>
bool hasSymbol(const KeyboardTables& tables, xcb_keycode_t key, Predicate predicate)
{
    return std::ranges::any_of(symbolsOf(tables, key), predicate);
}

/// Whether the key is a modifier while no other modifier is held. With another one, ordinary keys
/// may be modifiers too: Super with Space switches to the next layout, and is a shortcut like
/// others.
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

ModifierMap modifierMapOf(const KeyboardTables& tables)
{
    ModifierMap map;
    const std::size_t keysOfModifier = tables.modifierKeys.size() / modifierCount;
    for (std::size_t i = 0; i < keysOfModifier * modifierCount; ++i) {
        const xcb_keycode_t key = tables.modifierKeys[i];
        if (key == 0)
            continue;
        const auto modifier = static_cast<std::uint8_t>(1U << (i / keysOfModifier));
        map.isModifierKey.set(key);
        if (hasSymbol(tables, key, isCommand))
            map.command |= modifier;
        if (hasSymbol(tables, key, isPassiveLock))
            map.ignored |= modifier;
    }
    map.command &= static_cast<std::uint8_t>(~fixedModifiers);
    map.ignored &= static_cast<std::uint8_t>(~(fixedModifiers | map.command));
    // A layout may make a key a modifier without listing it in the modifier mapping.
    for (std::size_t key = tables.firstKey; key < map.isModifierKey.size(); ++key) {
        if (isModifierByItself(tables, key))
            map.isModifierKey.set(key);
    }
    return map;
}

} // namespace kelpa::x11
