#include "platform/x11/discovery/EventCoalescer.h"

#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <vector>

using namespace kelpa;
using namespace kelpa::test;
using namespace std::chrono_literals;

namespace {

using Times = std::vector<std::chrono::milliseconds>;

class CoalescedEvents : public ::testing::Test
{
protected:
    void pass(std::chrono::milliseconds time)
    {
        for (const auto end = elapsed + time; elapsed < end;) {
            scheduler.advance(1ms);
            ++elapsed;
        }
    }

    /// Calls `note` now and every `interval` for `time`.
    template <class Note>
    void keep(std::chrono::milliseconds interval, std::chrono::milliseconds time, Note note)
    {
        for (const auto end = elapsed + time; elapsed < end;) {
            note();
            pass(interval);
        }
    }

    ManualScheduler scheduler;
    std::chrono::milliseconds elapsed{0};
    Times notified;
    x11::EventCoalescer events{scheduler, [this] { notified.push_back(elapsed + 1ms); }};
};

} // namespace

TEST_F(CoalescedEvents, The_first_change_after_a_quiet_time_is_reported_within_4_milliseconds)
{
    events.windowsChanged();
    pass(3ms);
    EXPECT_EQ(notified, Times{});
    pass(1ms);
    EXPECT_EQ(notified, Times{4ms});
    pass(10s);
    events.appearanceChanged(7);
    pass(10s);
    EXPECT_EQ(notified, (Times{4ms, 10008ms}));
}

TEST_F(CoalescedEvents, Changes_that_come_together_are_reported_once)
{
    events.windowsChanged();
    pass(1ms);
    events.appearanceChanged(7);
    events.windowsChanged();
    pass(1s);
    EXPECT_EQ(notified, Times{4ms});
}

TEST_F(CoalescedEvents, Changes_within_an_interval_are_reported_at_its_end)
{
    events.windowsChanged();
    pass(10ms);
    events.windowsChanged();
    pass(1s);
    EXPECT_EQ(notified, (Times{4ms, 44ms}));
}

TEST_F(CoalescedEvents, Intervals_grow_in_a_storm_to_80_milliseconds_and_shrink_in_the_quiet)
{
    keep(1ms, 400ms, [&] { events.windowsChanged(); });
    EXPECT_EQ(notified, (Times{4ms, 44ms, 124ms, 204ms, 284ms, 364ms}));
    pass(600ms);
    notified.clear();
    keep(1ms, 100ms, [&] { events.windowsChanged(); });
    EXPECT_EQ(notified, (Times{1004ms, 1044ms}));
}

TEST_F(CoalescedEvents, A_storm_that_lasts_a_second_is_reported_four_times_a_second)
{
    keep(1ms, 1s, [&] { events.windowsChanged(); });
    EXPECT_EQ(notified.size(), 13U);
    EXPECT_EQ(notified.back(), 924ms);
    notified.clear();
    keep(1ms, 1500ms, [&] { events.windowsChanged(); });
    EXPECT_EQ(notified, (Times{1004ms, 1164ms, 1404ms, 1644ms, 1884ms, 2124ms, 2364ms}));
    pass(600ms);
    notified.clear();
    keep(1ms, 400ms, [&] { events.windowsChanged(); });
    EXPECT_EQ(notified, (Times{3104ms, 3144ms, 3224ms, 3304ms, 3384ms, 3464ms}));
}

TEST_F(CoalescedEvents, A_title_that_changes_all_the_time_is_reported_ever_more_rarely)
{
    keep(100ms, 5s, [&] { events.appearanceChanged(7); });
    EXPECT_EQ(notified, (Times{4ms, 104ms, 268ms, 592ms, 1096ms, 1600ms, 2104ms, 2608ms, 3112ms,
                               3616ms, 4120ms, 4624ms}));
}

TEST_F(CoalescedEvents, The_last_of_many_titles_is_reported)
{
    keep(1ms, 300ms, [&] { events.appearanceChanged(7); });
    notified.clear();
    pass(1s);
    EXPECT_EQ(notified, Times{576ms});
}

TEST_F(CoalescedEvents, Another_window_waits_for_no_title_that_changes_all_the_time)
{
    keep(100ms, 5s, [&] { events.appearanceChanged(7); });
    notified.clear();
    // In the middle of the long interval.
    pass(10ms);
    events.windowsChanged();
    pass(4ms);
    EXPECT_EQ(notified, Times{5014ms});
    pass(200ms);
    notified.clear();
    events.appearanceChanged(8);
    pass(4ms);
    EXPECT_EQ(notified, Times{5218ms});
}

TEST_F(CoalescedEvents, Fifty_titles_that_change_all_the_time_are_reported_together)
{
    keep(10ms, 10s, [&, window = 0U]() mutable { events.appearanceChanged(window++ % 50); });
    EXPECT_LE(notified.size(), 10'000U / 80 + 1);
    notified.clear();
    keep(1ms, 10s, [&, window = 0U]() mutable { events.appearanceChanged(window++ % 50); });
    EXPECT_LE(notified.size(), 50U);
}

TEST_F(CoalescedEvents, Movement_waits_a_quarter_of_a_second_unless_something_else_is_reported)
{
    keep(10ms, 200ms, [&] { events.windowMoved(); });
    EXPECT_EQ(notified, Times{});
    pass(100ms);
    EXPECT_EQ(notified, Times{254ms});
    pass(1s);
    notified.clear();
    events.windowMoved();
    events.windowsChanged();
    pass(1s);
    EXPECT_EQ(notified, Times{1304ms});
}

TEST_F(CoalescedEvents, No_timer_is_left_once_all_is_quiet)
{
    events.windowsChanged();
    events.appearanceChanged(7);
    events.windowMoved();
    pass(5s);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(CoalescedEvents, A_window_that_is_gone_leaves_nothing_to_its_successor)
{
    keep(100ms, 2s, [&] { events.appearanceChanged(7); });
    events.forget(7);
    pass(200ms);
    notified.clear();
    events.appearanceChanged(7);
    pass(4ms);
    EXPECT_EQ(notified.size(), 1U);
}

TEST(EventCoalescerLifetime, It_may_be_destroyed_by_its_own_notification)
{
    ManualScheduler scheduler;
    int count = 0;
    std::unique_ptr<x11::EventCoalescer> events;
    events = std::make_unique<x11::EventCoalescer>(scheduler, [&] {
        ++count;
        events.reset();
    });
    events->windowsChanged();
    scheduler.advance(1s);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(scheduler.timersDue(), 0);
}
