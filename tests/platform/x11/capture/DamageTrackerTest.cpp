#include "platform/x11/capture/DamageTracker.h"

#include <gtest/gtest.h>

using namespace kelpa::x11;
using namespace std::chrono_literals;

namespace {

constexpr std::uint32_t window = 7;
const DamageTracker::Time start{};

class TrackedWindow : public ::testing::Test
{
protected:
    void SetUp() override { tracker.track(window, start); }

    DamageTracker tracker{150ms};
};

} // namespace

TEST_F(TrackedWindow, An_obscured_window_settles_after_150_milliseconds)
{
    EXPECT_FALSE(tracker.isSettled(window, start));
    EXPECT_FALSE(tracker.isSettled(window, start + 149ms));
    EXPECT_TRUE(tracker.isSettled(window, start + 150ms));
}

TEST_F(TrackedWindow, Damage_does_not_settle_an_obscured_window_before_its_time)
{
    tracker.noteSubtraction(window, 10);
    tracker.noteDamage(window, 9);
    tracker.noteDamage(window, 10);
    tracker.noteDamage(window, 11);
    EXPECT_FALSE(tracker.isSettled(window, start + 149ms));
    EXPECT_TRUE(tracker.isSettled(window, start + 150ms));
}

TEST_F(TrackedWindow, An_unobscured_window_is_settled_from_the_start)
{
    tracker.noteUnobscured(window);
    EXPECT_TRUE(tracker.isSettled(window, start));
}

TEST_F(TrackedWindow, A_window_is_unchanged_from_its_reading_until_it_is_damaged)
{
    EXPECT_TRUE(tracker.isChanged(window));
    tracker.noteSubtraction(window, 10);
    EXPECT_FALSE(tracker.isChanged(window));
    tracker.noteDamage(window, 12);
    EXPECT_TRUE(tracker.isChanged(window));
}

TEST_F(TrackedWindow, Damage_from_before_the_reading_is_no_change)
{
    tracker.noteSubtraction(window, 10);
    tracker.noteDamage(window, 9);
    EXPECT_FALSE(tracker.isChanged(window));
}

TEST_F(TrackedWindow, Sequence_numbers_that_wrap_around_are_compared_in_their_order)
{
    tracker.noteSubtraction(window, 0xFFFFFFF0);
    tracker.noteDamage(window, 0xFFFFFFEF);
    EXPECT_FALSE(tracker.isChanged(window));
    tracker.noteDamage(window, 3);
    EXPECT_TRUE(tracker.isChanged(window));
}

TEST_F(TrackedWindow, A_change_without_damage_does_not_settle)
{
    tracker.noteSubtraction(window, 10);
    tracker.invalidate(window);
    EXPECT_TRUE(tracker.isChanged(window));
    EXPECT_FALSE(tracker.isSettled(window, start));
}

TEST_F(TrackedWindow, A_window_that_is_not_tracked_is_changed_and_not_settled)
{
    tracker.noteUnobscured(window);
    tracker.noteSubtraction(window, 10);
    tracker.forget(window);
    tracker.noteUnobscured(window);
    tracker.noteDamage(window, 12);
    tracker.noteSubtraction(window, 13);
    EXPECT_TRUE(tracker.isChanged(window));
    EXPECT_FALSE(tracker.isSettled(window, start + 10min));
}
