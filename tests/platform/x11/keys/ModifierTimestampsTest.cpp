#include "platform/x11/keys/ModifierTimestamps.h"

#include <gtest/gtest.h>

using namespace kelpa::x11;

namespace {

constexpr xcb_keycode_t super = 133;
constexpr xcb_keycode_t shift = 50;

TEST(ModifierTimestamps, Taps_that_the_server_tells_of_together_are_as_far_apart_as_they_were)
{
    ModifierTimestamps moments;
    moments.note({.key = super, .isPress = true, .time = 1000});
    EXPECT_EQ(moments.moment({.time = 9000, .key = super, .isPress = true}), 1000U);
    moments.note({.key = super, .isPress = false, .time = 1800});
    EXPECT_EQ(moments.moment({.time = 9000, .key = super, .isPress = false}), 1800U);
    moments.note({.key = super, .isPress = true, .time = 2000});
    EXPECT_EQ(moments.moment({.time = 9000, .key = super, .isPress = true}), 2000U);
}

TEST(ModifierTimestamps, A_state_that_a_program_asked_for_has_the_moment_of_telling)
{
    ModifierTimestamps moments;
    EXPECT_EQ(moments.moment({.time = 9000}), 9000U);
    moments.note({.key = super, .isPress = true, .time = 1000});
    EXPECT_EQ(moments.moment({.time = 9000}), 9000U);
}

TEST(ModifierTimestamps, A_state_that_another_key_led_to_has_the_moment_of_telling)
{
    ModifierTimestamps moments;
    EXPECT_EQ(moments.moment({.time = 9000, .key = super, .isPress = true}), 9000U);
    moments.note({.key = super, .isPress = true, .time = 1000});
    EXPECT_EQ(moments.moment({.time = 9000, .key = shift, .isPress = true}), 9000U);
    EXPECT_EQ(moments.moment({.time = 9000, .key = super, .isPress = false}), 9000U);
}

} // namespace
