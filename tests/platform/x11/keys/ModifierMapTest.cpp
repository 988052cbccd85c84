#include "platform/x11/keys/ModifierMap.h"

#include "platform/x11/keys/ServerClock.h"

#define XK_MISCELLANY
#define XK_LATIN1
#define XK_XKB_KEYS
#include <X11/keysymdef.h>

#include <gtest/gtest.h>

using namespace kelpa::x11;

namespace {

constexpr std::uint8_t mod2 = 1U << 4;
constexpr std::uint8_t mod4 = 1U << 6;

/// Two symbols per key from key 8 on, two keys per modifier: 8 Shift, 9 Caps Lock, 10 Control, 11
/// Alt, 12 Num Lock, 13 and 14 Super, 15 the letter A, 16 AltGr, which is not in the modifier
/// mapping.
KeyboardTables ordinaryKeyboard()
{
    return {.firstKey = 8,
            .symbolsOfKey = 2,
            .symbols = {XK_Shift_L, 0, XK_Caps_Lock, 0, XK_Control_L, 0, XK_Alt_L, XK_Meta_L,
                        XK_Num_Lock, 0, XK_Super_L, 0, XK_Super_R, 0, XK_a, XK_A,
                        XK_ISO_Level3_Shift, 0},
            .modifierKeys = {8, 0, 9, 0, 10, 0, 11, 0, 12, 0, 0, 0, 13, 14, 0, 0}};
}

TEST(ModifierMap, Super_is_Command_and_the_keypads_lock_is_ignored)
{
    const ModifierMap map = modifierMapOf(ordinaryKeyboard());
    EXPECT_TRUE(map.hasCommand());
    EXPECT_EQ(map.command, mod4);
    EXPECT_EQ(map.ignored, mod2);
}

TEST(ModifierMap, Modifier_keys_are_recognised_even_if_the_modifier_mapping_lacks_them)
{
    const ModifierMap map = modifierMapOf(ordinaryKeyboard());
    for (const int key : {8, 9, 10, 11, 12, 13, 14, 16})
        EXPECT_TRUE(map.isModifierKey.test(static_cast<std::size_t>(key))) << key;
    EXPECT_EQ(map.isModifierKey.count(), 8U);
}

/// A keyboard with the single key 8, which is not in the modifier mapping.
bool isModifierByItself(const std::vector<xcb_keysym_t>& symbols)
{
    return modifierMapOf({.firstKey = 8,
                          .symbolsOfKey = symbols.size(),
                          .symbols = symbols,
                          .modifierKeys = {}})
        .isModifierKey.test(8);
}

TEST(ModifierMap, An_ordinary_key_with_a_modifier_on_a_higher_level_is_no_modifier)
{
    // Space switches to the next layout with Super, Tab locks a level in the third group.
    EXPECT_FALSE(
        isModifierByItself({XK_space, XK_ISO_Next_Group, XK_space, XK_ISO_Next_Group, 0, 0}));
    EXPECT_FALSE(isModifierByItself(
        {XK_Tab, XK_ISO_Left_Tab, XK_Tab, XK_ISO_Left_Tab, XK_Multi_key, XK_ISO_Level5_Lock}));
}

TEST(ModifierMap, A_key_that_is_a_modifier_in_one_of_two_layouts_is_one)
{
    EXPECT_TRUE(isModifierByItself({XK_Menu, 0, XK_ISO_Level3_Shift, XK_Multi_key}));
    EXPECT_TRUE(isModifierByItself({XK_ISO_Next_Group, XK_a}));
}

TEST(ModifierMap, Super_on_the_second_level_of_a_key_is_Command)
{
    KeyboardTables tables = ordinaryKeyboard();
    tables.symbols.at(10) = 0;
    tables.symbols.at(11) = XK_Super_L;
    tables.symbols.at(12) = XK_b;
    EXPECT_EQ(modifierMapOf(tables).command, mod4);
}

TEST(ModifierMap, A_key_that_was_made_Super_is_Command)
{
    KeyboardTables tables = ordinaryKeyboard();
    // Caps Lock now has the symbol Super and sets the fourth modifier.
    tables.symbols.at(2) = XK_Super_L;
    tables.symbols.at(10) = XK_b;
    tables.symbols.at(12) = XK_c;
    tables.modifierKeys = {8, 0, 0, 0, 10, 0, 11, 0, 12, 0, 0, 0, 9, 0, 0, 0};
    const ModifierMap map = modifierMapOf(tables);
    EXPECT_EQ(map.command, mod4);
    EXPECT_TRUE(map.isModifierKey.test(9));
    EXPECT_FALSE(map.isModifierKey.test(13));
}

TEST(ModifierMap, Super_on_another_modifier_is_Command_there)
{
    KeyboardTables tables = ordinaryKeyboard();
    tables.modifierKeys = {8, 0, 9, 0, 10, 0, 11, 0, 12, 0, 13, 14, 0, 0, 0, 0};
    EXPECT_EQ(modifierMapOf(tables).command, 1U << 5);
}

TEST(ModifierMap, A_Super_key_that_sets_Control_is_not_Command)
{
    KeyboardTables tables = ordinaryKeyboard();
    tables.modifierKeys = {8, 0, 9, 0, 10, 13, 11, 0, 12, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_FALSE(modifierMapOf(tables).hasCommand());
}

TEST(ModifierMap, A_keyboard_without_Super_has_no_Command)
{
    KeyboardTables tables = ordinaryKeyboard();
    tables.symbols.at(10) = XK_b;
    tables.symbols.at(12) = XK_c;
    EXPECT_FALSE(modifierMapOf(tables).hasCommand());
}

TEST(ModifierMap, Mappings_that_are_cut_short_or_list_unknown_keys_are_read_as_far_as_possible)
{
    KeyboardTables tables = ordinaryKeyboard();
    tables.symbols.resize(11);
    tables.modifierKeys.push_back(255);
    tables.modifierKeys.at(15) = 255;
    const ModifierMap map = modifierMapOf(tables);
    EXPECT_EQ(map.command, mod4);
    EXPECT_TRUE(map.isModifierKey.test(255));
    EXPECT_FALSE(modifierMapOf({}).hasCommand());
}

TEST(ServerClock, Continues_when_the_servers_clock_wraps)
{
    ServerClock clock;
    const double before = clock.seconds(0xFFFFFF00U);
    EXPECT_NEAR(clock.seconds(0x00000064U) - before, 0.356, 1e-9);
}

TEST(ServerClock, A_time_a_little_earlier_than_the_last_is_earlier)
{
    ServerClock clock;
    const double before = clock.seconds(5000);
    EXPECT_NEAR(clock.seconds(4990) - before, -0.01, 1e-9);
    EXPECT_NEAR(clock.seconds(5010) - before, 0.01, 1e-9);
}

} // namespace
