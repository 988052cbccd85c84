#include "platform/x11/capture/DamageTracker.h"

#include <gtest/gtest.h>

using namespace kelpa::x11;
using namespace std::chrono_literals;

namespace {

constexpr std::uint32_t window = 7;
const DamageTracker::Time start{};

class DamageLogOfOneWindow : public ::testing::Test
{
protected:
    void SetUp() override { log.begin(window, start); }

    DamageTracker log{150ms};
};

} // namespace

TEST_F(DamageLogOfOneWindow, A_covered_window_is_settled_after_150_milliseconds)
{
    EXPECT_FALSE(log.isSettled(window, start));
    EXPECT_FALSE(log.isSettled(window, start + 149ms));
    EXPECT_TRUE(log.isSettled(window, start + 150ms));
}

TEST_F(DamageLogOfOneWindow, Drawing_does_not_settle_a_covered_window_before_its_time)
{
    log.noteRead(window, 10);
    log.noteDamage(window, 9);
    log.noteDamage(window, 10);
    log.noteDamage(window, 11);
    EXPECT_FALSE(log.isSettled(window, start + 149ms));
    EXPECT_TRUE(log.isSettled(window, start + 150ms));
}

TEST_F(DamageLogOfOneWindow, A_window_that_nothing_covers_is_settled_from_the_start)
{
    log.noteWhole(window);
    EXPECT_TRUE(log.isSettled(window, start));
}

TEST_F(DamageLogOfOneWindow, A_window_is_unchanged_from_its_reading_until_it_is_drawn_to)
{
    EXPECT_TRUE(log.isChanged(window));
    log.noteRead(window, 10);
    EXPECT_FALSE(log.isChanged(window));
    log.noteDamage(window, 12);
    EXPECT_TRUE(log.isChanged(window));
}

TEST_F(DamageLogOfOneWindow, Damage_from_before_the_reading_is_no_change)
{
    log.noteRead(window, 10);
    log.noteDamage(window, 9);
    EXPECT_FALSE(log.isChanged(window));
}

TEST_F(DamageLogOfOneWindow, Sequences_that_wrap_are_told_in_their_order)
{
    log.noteRead(window, 0xFFFFFFF0);
    log.noteDamage(window, 0xFFFFFFEF);
    EXPECT_FALSE(log.isChanged(window));
    log.noteDamage(window, 3);
    EXPECT_TRUE(log.isChanged(window));
}

TEST_F(DamageLogOfOneWindow, A_change_that_is_no_drawing_does_not_settle)
{
    log.noteRead(window, 10);
    log.noteChange(window);
    EXPECT_TRUE(log.isChanged(window));
    EXPECT_FALSE(log.isSettled(window, start));
}

TEST_F(DamageLogOfOneWindow, A_window_that_is_not_kept_is_changed_and_not_settled)
{
    log.noteWhole(window);
    log.noteRead(window, 10);
    log.forget(window);
    log.noteWhole(window);
    log.noteDamage(window, 12);
    log.noteRead(window, 13);
    EXPECT_TRUE(log.isChanged(window));
    EXPECT_FALSE(log.isSettled(window, start + 10min));
}
