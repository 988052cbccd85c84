#include "platform/x11/keys/ModifierTimestamps.h"

#include <gtest/gtest.h>

using namespace kelpa::x11;

namespace {

constexpr xcb_keycode_t super = 133;
constexpr xcb_keycode_t shift = 50;

TEST(ModifierTimestamps, Taps_that_arrive_together_are_as_far_apart_as_they_were_made)
{
    ModifierTimestamps timestamps;
    timestamps.record({.key = super, .isPress = true, .time = 1000});
    EXPECT_EQ(timestamps.timestamp({.time = 9000, .key = super, .isPress = true}), 1000U);
    timestamps.record({.key = super, .isPress = false, .time = 1800});
    EXPECT_EQ(timestamps.timestamp({.time = 9000, .key = super, .isPress = false}), 1800U);
    timestamps.record({.key = super, .isPress = true, .time = 2000});
    EXPECT_EQ(timestamps.timestamp({.time = 9000, .key = super, .isPress = true}), 2000U);
}

TEST(ModifierTimestamps, A_state_that_a_client_requested_has_the_time_at_which_it_was_sent)
{
    ModifierTimestamps timestamps;
    EXPECT_EQ(timestamps.timestamp({.time = 9000}), 9000U);
    timestamps.record({.key = super, .isPress = true, .time = 1000});
    EXPECT_EQ(timestamps.timestamp({.time = 9000}), 9000U);
}

TEST(ModifierTimestamps, A_state_that_another_key_caused_has_the_time_at_which_it_was_sent)
{
    ModifierTimestamps timestamps;
    EXPECT_EQ(timestamps.timestamp({.time = 9000, .key = super, .isPress = true}), 9000U);
    timestamps.record({.key = super, .isPress = true, .time = 1000});
    EXPECT_EQ(timestamps.timestamp({.time = 9000, .key = shift, .isPress = true}), 9000U);
    EXPECT_EQ(timestamps.timestamp({.time = 9000, .key = super, .isPress = false}), 9000U);
}

} // namespace
