#include "shell/CommandDoubleTapRecognizer.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>
#include <vector>

namespace kelpa {
namespace {

/// A keyboard event.
enum class Event : std::uint8_t {
    commandDown,
    commandUp,
    commandDownWithShift,
    commandUpWithShift,
    shiftDown,
    shiftDownWhileCommand,
    shiftUp,
    shiftUpWhileCommand,
    keyDown,
};

struct Step
{
    Event event;
    double seconds;
};

bool perform(CommandDoubleTapRecognizer& recognizer, const Step& step)
{
    const auto change = [&](bool command, bool others) {
        return recognizer.handleFlagsChanged(
            {.commandIsDown = command, .hasOtherModifiers = others, .timestamp = step.seconds});
    };
    switch (step.event) {
    case Event::commandDown:
    case Event::shiftUpWhileCommand:
        return change(true, false);
    case Event::commandDownWithShift:
    case Event::shiftDownWhileCommand:
        return change(true, true);
    case Event::commandUp:
    case Event::shiftUp:
        return change(false, false);
    case Event::commandUpWithShift:
    case Event::shiftDown:
        return change(false, true);
    case Event::keyDown:
        recognizer.handleKeyDown();
        return false;
    }
    return false;
}

/// The times of the events that completed a double tap.
std::vector<double> doubleTaps(const std::vector<Step>& steps)
{
    CommandDoubleTapRecognizer recognizer;
    std::vector<double> times;
    for (const Step& step : steps) {
        if (perform(recognizer, step))
            times.push_back(step.seconds);
    }
    return times;
}

using Times = std::vector<double>;
using enum Event;

TEST(CommandDoubleTap, A_new_recognizer_is_idle)
{
    const CommandDoubleTapRecognizer recognizer;
    EXPECT_FALSE(recognizer.commandIsDown);
    EXPECT_EQ(recognizer.currentPressStartedAt, std::nullopt);
    EXPECT_FALSE(recognizer.currentPressIsEligible);
    EXPECT_EQ(recognizer.lastTapCompletedAt, std::nullopt);
}

struct TapCase
{
    const char* name;
    std::vector<Step> steps;
    /// When a double tap is complete.
    Times doubleTaps;
};

void PrintTo(const TapCase& tested, std::ostream* stream)
{
    *stream << tested.name;
}

class CommandDoubleTaps : public testing::TestWithParam<TapCase>
{};

TEST_P(CommandDoubleTaps, Are_recognised)
{
    EXPECT_EQ(doubleTaps(GetParam().steps), GetParam().doubleTaps);
}

INSTANTIATE_TEST_SUITE_P(
    Taps, CommandDoubleTaps,
    testing::Values(
        TapCase{"two_quick_taps_fire_at_the_second_release",
                {{commandDown, 1.0}, {commandUp, 1.1}, {commandDown, 1.3}, {commandUp, 1.4}},
                {1.4}},
        TapCase{"one_tap_does_not_fire", {{commandDown, 1.0}, {commandUp, 1.1}}, {}},
        TapCase{"a_triple_tap_fires_once",
                {{commandDown, 1.0},
                 {commandUp, 1.1},
                 {commandDown, 1.2},
                 {commandUp, 1.3},
                 {commandDown, 1.4},
                 {commandUp, 1.5}},
                {1.3}},
        TapCase{"a_quadruple_tap_fires_twice",
                {{commandDown, 1.0},
                 {commandUp, 1.1},
                 {commandDown, 1.2},
                 {commandUp, 1.3},
                 {commandDown, 1.4},
                 {commandUp, 1.5},
                 {commandDown, 1.6},
                 {commandUp, 1.7}},
                {1.3, 1.7}},
        TapCase{"a_tap_that_comes_too_late_does_not_pair",
                {{commandDown, 1.0}, {commandUp, 1.1}, {commandDown, 1.4}, {commandUp, 1.47}},
                {}},
        TapCase{"a_tap_that_comes_too_late_is_the_first_of_the_next_pair",
                {{commandDown, 1.0},
                 {commandUp, 1.1},
                 {commandDown, 1.4},
                 {commandUp, 1.47},
                 {commandDown, 1.7},
                 {commandUp, 1.8}},
                {1.8}},
        // The held press begins soon after a tap; the tap after it does not pair with that one.
        TapCase{"a_press_held_too_long_forgets_the_tap_before",
                {{commandDown, 1.0},
                 {commandUp, 1.1},
                 {commandDown, 1.1},
                 {commandUp, 1.56},
                 {commandDown, 1.57},
                 {commandUp, 1.58}},
                {}},
        TapCase{"Command_and_Shift_together_are_no_second_tap",
                {{commandDown, 1.0},
                 {commandUp, 1.05},
                 {commandDownWithShift, 1.1},
                 {commandUpWithShift, 1.15},
                 {shiftUp, 1.16}},
                {}},
        TapCase{"Command_and_Shift_together_are_no_first_tap",
                {{commandDownWithShift, 1.0},
                 {commandUpWithShift, 1.05},
                 {shiftUp, 1.06},
                 {commandDown, 1.1},
                 {commandUp, 1.15}},
                {}},
        TapCase{"Shift_added_while_Command_is_held_spoils_the_tap",
                {{commandDown, 1.0},
                 {commandUp, 1.05},
                 {commandDown, 1.1},
                 {shiftDownWhileCommand, 1.12},
                 {shiftUpWhileCommand, 1.14},
                 {commandUp, 1.16}},
                {}},
        TapCase{"a_change_without_another_modifier_while_Command_is_held_spoils_nothing",
                {{commandDown, 1.0},
                 {commandDown, 1.02},
                 {commandUp, 1.1},
                 {commandDown, 1.2},
                 {commandDown, 1.22},
                 {commandUp, 1.3}},
                {1.3}},
        TapCase{"a_repeated_press_does_not_lengthen_the_second_tap",
                {{commandDown, 1.0},
                 {commandUp, 1.05},
                 {commandDown, 1.1},
                 {commandDown, 1.3},
                 {commandUp, 1.4}},
                {1.4}},
        TapCase{"a_repeated_press_does_not_start_the_press_again",
                {{commandDown, 1.0},
                 {commandDown, 1.3},
                 {commandUp, 1.5},
                 {commandDown, 1.55},
                 {commandUp, 1.6}},
                {}},
        TapCase{"a_repeated_release_changes_nothing",
                {{commandDown, 1.0},
                 {commandUp, 1.1},
                 {commandUp, 1.11},
                 {commandDown, 1.2},
                 {commandUp, 1.3},
                 {commandUp, 1.31}},
                {1.3}},
        TapCase{"another_modifier_between_the_taps_cancels",
                {{commandDown, 1.0},
                 {commandUp, 1.1},
                 {shiftDown, 1.15},
                 {shiftUp, 1.18},
                 {commandDown, 1.2},
                 {commandUp, 1.3}},
                {}},
        TapCase{"a_modifier_released_between_the_taps_cancels_nothing",
                {{commandDown, 1.0},
                 {commandUp, 1.1},
                 {shiftUp, 1.15},
                 {commandDown, 1.2},
                 {commandUp, 1.3}},
                {1.3}},
        // The other modifier comes in the very event of the release.
        TapCase{
            "a_tap_released_with_another_modifier_down_counts",
            {{commandDown, 1.0}, {commandUp, 1.1}, {commandDown, 1.2}, {commandUpWithShift, 1.3}},
            {1.3}},
        TapCase{"a_shortcut_between_two_taps_cancels",
                {{commandDown, 1.00},
                 {commandUp, 1.05},
                 {commandDown, 1.10},
                 {keyDown, 1.12},
                 {commandUp, 1.15},
                 {commandDown, 1.20},
                 {commandUp, 1.25}},
                {}},
        TapCase{"a_shortcut_as_the_first_tap_does_not_pair",
                {{commandDown, 1.00},
                 {keyDown, 1.02},
                 {commandUp, 1.05},
                 {commandDown, 1.10},
                 {commandUp, 1.15}},
                {}},
        TapCase{"a_key_pressed_between_the_taps_cancels",
                {{commandDown, 1.0},
                 {commandUp, 1.1},
                 {keyDown, 1.15},
                 {commandDown, 1.2},
                 {commandUp, 1.3}},
                {}},
        TapCase{"a_key_pressed_before_the_taps_cancels_nothing",
                {{keyDown, 0.9},
                 {commandDown, 1.0},
                 {commandUp, 1.1},
                 {commandDown, 1.2},
                 {commandUp, 1.3}},
                {1.3}}),
    test::caseName);

TEST(CommandDoubleTap, Everything_is_reset_after_a_double_tap)
{
    CommandDoubleTapRecognizer recognizer;
    for (const Step& step : {Step{commandDown, 1.0}, Step{commandUp, 1.1}, Step{commandDown, 1.2}})
        EXPECT_FALSE(perform(recognizer, step));
    EXPECT_TRUE(perform(recognizer, {commandUp, 1.3}));
    EXPECT_EQ(recognizer, CommandDoubleTapRecognizer());
}

TEST(CommandDoubleTap, A_press_held_too_long_is_no_tap_and_forgets_the_one_before)
{
    CommandDoubleTapRecognizer recognizer;
    EXPECT_FALSE(perform(recognizer, {commandDown, 1.0}));
    EXPECT_FALSE(perform(recognizer, {commandUp, 1.1}));
    EXPECT_FALSE(perform(recognizer, {commandDown, 1.1}));
    EXPECT_FALSE(perform(recognizer, {commandUp, 1.56}));
    EXPECT_EQ(recognizer, CommandDoubleTapRecognizer());
}

TEST(CommandDoubleTap, Shift_added_while_Command_is_held_forgets_the_tap_before_at_once)
{
    CommandDoubleTapRecognizer recognizer;
    EXPECT_FALSE(perform(recognizer, {commandDown, 1.0}));
    EXPECT_FALSE(perform(recognizer, {commandUp, 1.1}));
    EXPECT_EQ(recognizer.lastTapCompletedAt, 1.1);
    EXPECT_FALSE(perform(recognizer, {commandDown, 1.2}));
    EXPECT_EQ(recognizer.lastTapCompletedAt, 1.1);
    EXPECT_FALSE(perform(recognizer, {shiftDownWhileCommand, 1.25}));
    EXPECT_EQ(recognizer.lastTapCompletedAt, std::nullopt);
    EXPECT_FALSE(recognizer.currentPressIsEligible);
    EXPECT_TRUE(recognizer.commandIsDown);
}

struct LimitRow
{
    double seconds;
    bool counts;
};

TEST(CommandDoubleTap, A_tap_may_last_0_45_seconds_and_no_longer)
{
    for (const LimitRow& row : {LimitRow{0.0, true}, LimitRow{0.45, true}, LimitRow{0.4501, false},
                                LimitRow{0.46, false}}) {
        CommandDoubleTapRecognizer recognizer;
        EXPECT_FALSE(perform(recognizer, {commandDown, 0}));
        EXPECT_FALSE(perform(recognizer, {commandUp, row.seconds}));
        EXPECT_EQ(recognizer.lastTapCompletedAt.has_value(), row.counts) << row.seconds;
    }
}

TEST(CommandDoubleTap, The_releases_may_be_0_36_seconds_apart_and_no_further)
{
    for (const LimitRow& row : {LimitRow{0.3, true}, LimitRow{0.36, true}, LimitRow{0.3601, false},
                                LimitRow{0.37, false}}) {
        const Times times = doubleTaps(
            {{commandDown, -0.1}, {commandUp, 0}, {commandDown, 0.2}, {commandUp, row.seconds}});
        EXPECT_EQ(times.size(), row.counts ? 1U : 0U) << row.seconds;
    }
}

TEST(CommandDoubleTap, The_limits_hold_to_the_millisecond_however_long_the_system_runs)
{
    // Timestamps of whole milliseconds, from the start of the system to 49 days later.
    for (const std::int64_t base : {0LL, 1LL, 100LL, 999'990LL, 1'000'000LL, 4'294'000'000LL}) {
        for (std::int64_t offset = 0; offset < 2000; ++offset) {
            const std::int64_t start = base + offset;
            const auto seconds = [&](std::int64_t milliseconds) {
                return static_cast<double>(start + milliseconds) / 1000.0;
            };
            const auto tapCounts = [&](std::int64_t length) {
                CommandDoubleTapRecognizer recognizer;
                EXPECT_FALSE(perform(recognizer, {commandDown, seconds(0)}));
                EXPECT_FALSE(perform(recognizer, {commandUp, seconds(length)}));
                return recognizer.lastTapCompletedAt.has_value();
            };
            const auto pairCounts = [&](std::int64_t interval) {
                return doubleTaps({{commandDown, seconds(0)},
                                   {commandUp, seconds(0)},
                                   {commandDown, seconds(interval)},
                                   {commandUp, seconds(interval)}})
                           .size() == 1;
            };
            ASSERT_TRUE(tapCounts(450)) << start;
            ASSERT_FALSE(tapCounts(451)) << start;
            ASSERT_TRUE(pairCounts(360)) << start;
            ASSERT_FALSE(pairCounts(361)) << start;
        }
    }
}

TEST(CommandDoubleTap, The_limits_are_widened_by_no_more_than_rounding)
{
    // 1000.36 − 1000 exceeds 0.36 by the rounding of 1000.36; the next two numbers do not count.
    const double limit = 1000.36;
    const auto countsAt = [](double release) {
        return doubleTaps({{commandDown, 999.9},
                           {commandUp, 1000.0},
                           {commandDown, 1000.1},
                           {commandUp, release}})
                   .size() == 1;
    };
    ASSERT_GT(limit - 1000.0, 0.36);
    EXPECT_TRUE(countsAt(limit));
    double later = limit;
    for (int i = 0; i < 2; ++i)
        later = std::nextafter(later, std::numeric_limits<double>::infinity());
    EXPECT_FALSE(countsAt(later));
}

} // namespace
} // namespace kelpa
