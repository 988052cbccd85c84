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

/// Two symbols a key from key 8 on, two keys a modifier: 8 Shift, 9 Caps Lock, 10 Control, 11 Alt,
/// 12 Num Lock, 13 and 14 Super, 15 the letter A, 16 AltGr, which is in no table of modifiers.
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
    const ModifierMap meanings = keyMeanings(ordinaryKeyboard());
    EXPECT_TRUE(meanings.hasCommand());
    EXPECT_EQ(meanings.command, mod4);
    EXPECT_EQ(meanings.ignored, mod2);
}

TEST(ModifierMap, Modifier_keys_are_told_from_others_also_those_that_no_table_lists)
{
    const ModifierMap meanings = keyMeanings(ordinaryKeyboard());
    for (const int key : {8, 9, 10, 11, 12, 13, 14, 16})
        EXPECT_TRUE(meanings.isModifierKey.test(static_cast<std::size_t>(key))) << key;
    EXPECT_EQ(meanings.isModifierKey.count(), 8U);
}

/// A keyboard of the one key 8, which is in no table of modifiers.
bool isModifierByItself(const std::vector<xcb_keysym_t>& symbols)
{
    return keyMeanings({.firstKey = 8,
                        .symbolsOfKey = symbols.size(),
                        .symbols = symbols,
                        .modifierKeys = {}})
        .isModifierKey.test(8);
}

TEST(ModifierMap, A_key_that_is_typed_is_no_modifier_for_what_it_is_on_a_higher_level)
{
    // Space goes to the next layout with Super, Tab locks a level in the third.
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
    EXPECT_EQ(keyMeanings(tables).command, mod4);
}

TEST(ModifierMap, A_key_that_was_made_Super_is_Command)
{
    KeyboardTables tables = ordinaryKeyboard();
    // Caps Lock bears Super now, and sets the fourth modifier with it.
    tables.symbols.at(2) = XK_Super_L;
    tables.symbols.at(10) = XK_b;
    tables.symbols.at(12) = XK_c;
    tables.modifierKeys = {8, 0, 0, 0, 10, 0, 11, 0, 12, 0, 0, 0, 9, 0, 0, 0};
    const ModifierMap meanings = keyMeanings(tables);
    EXPECT_EQ(meanings.command, mod4);
    EXPECT_TRUE(meanings.isModifierKey.test(9));
    EXPECT_FALSE(meanings.isModifierKey.test(13));
}

TEST(ModifierMap, Super_on_another_modifier_is_Command_there)
{
    KeyboardTables tables = ordinaryKeyboard();
    tables.modifierKeys = {8, 0, 9, 0, 10, 0, 11, 0, 12, 0, 13, 14, 0, 0, 0, 0};
    EXPECT_EQ(keyMeanings(tables).command, 1U << 5);
}

TEST(ModifierMap, A_Super_key_that_sets_Control_is_not_Command)
{
    KeyboardTables tables = ordinaryKeyboard();
    tables.modifierKeys = {8, 0, 9, 0, 10, 13, 11, 0, 12, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_FALSE(keyMeanings(tables).hasCommand());
}

TEST(ModifierMap, A_keyboard_without_Super_has_no_Command)
{
    KeyboardTables tables = ordinaryKeyboard();
    tables.symbols.at(10) = XK_b;
    tables.symbols.at(12) = XK_c;
    EXPECT_FALSE(keyMeanings(tables).hasCommand());
}

TEST(ModifierMap, Tables_that_are_cut_short_or_name_keys_beyond_them_are_read_as_far_as_they_go)
{
    KeyboardTables tables = ordinaryKeyboard();
    tables.symbols.resize(11);
    tables.modifierKeys.push_back(255);
    tables.modifierKeys.at(15) = 255;
    const ModifierMap meanings = keyMeanings(tables);
    EXPECT_EQ(meanings.command, mod4);
    EXPECT_TRUE(meanings.isModifierKey.test(255));
    EXPECT_FALSE(keyMeanings({}).hasCommand());
}

TEST(ServerClock, Goes_on_where_the_servers_clock_begins_again)
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
