#include "platform/x11/discovery/EventCoalescer.h"

#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <vector>

using namespace kelpa;
using namespace kelpa::test;
using namespace std::chrono_literals;

namespace {

using Times = std::vector<std::chrono::milliseconds>;

class ChangePaces : public ::testing::Test
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
    Times announced;
    x11::EventCoalescer pace{scheduler, [this] { announced.push_back(elapsed + 1ms); }};
};

} // namespace

TEST_F(ChangePaces, The_first_change_after_a_quiet_time_is_announced_within_4_milliseconds)
{
    pace.noteChange();
    pass(3ms);
    EXPECT_EQ(announced, Times{});
    pass(1ms);
    EXPECT_EQ(announced, Times{4ms});
    pass(10s);
    pace.noteLooks(7);
    pass(10s);
    EXPECT_EQ(announced, (Times{4ms, 10008ms}));
}

TEST_F(ChangePaces, Changes_that_come_together_are_announced_once)
{
    pace.noteChange();
    pass(1ms);
    pace.noteLooks(7);
    pace.noteChange();
    pass(1s);
    EXPECT_EQ(announced, Times{4ms});
}

TEST_F(ChangePaces, What_comes_while_it_rests_is_announced_after_the_rest)
{
    pace.noteChange();
    pass(10ms);
    pace.noteChange();
    pass(1s);
    EXPECT_EQ(announced, (Times{4ms, 44ms}));
}

TEST_F(ChangePaces, Rests_grow_in_a_storm_to_80_milliseconds_and_shrink_after_a_pause)
{
    keep(1ms, 400ms, [&] { pace.noteChange(); });
    EXPECT_EQ(announced, (Times{4ms, 44ms, 124ms, 204ms, 284ms, 364ms}));
    pass(600ms);
    announced.clear();
    keep(1ms, 100ms, [&] { pace.noteChange(); });
    EXPECT_EQ(announced, (Times{1004ms, 1044ms}));
}

TEST_F(ChangePaces, A_title_that_never_rests_is_announced_ever_more_rarely)
{
    keep(100ms, 5s, [&] { pace.noteLooks(7); });
    EXPECT_EQ(announced, (Times{4ms, 104ms, 268ms, 592ms, 1096ms, 1600ms, 2104ms, 2608ms, 3112ms,
                                3616ms, 4120ms, 4624ms}));
}

TEST_F(ChangePaces, The_last_of_many_titles_is_announced)
{
    keep(1ms, 300ms, [&] { pace.noteLooks(7); });
    announced.clear();
    pass(1s);
    EXPECT_EQ(announced, Times{576ms});
}

TEST_F(ChangePaces, Another_window_waits_for_no_title_that_never_rests)
{
    keep(100ms, 5s, [&] { pace.noteLooks(7); });
    announced.clear();
    // In the middle of the long rest.
    pass(10ms);
    pace.noteChange();
    pass(4ms);
    EXPECT_EQ(announced, Times{5014ms});
    pass(200ms);
    announced.clear();
    pace.noteLooks(8);
    pass(4ms);
    EXPECT_EQ(announced, Times{5218ms});
}

TEST_F(ChangePaces, Fifty_titles_that_never_rest_are_announced_together)
{
    keep(10ms, 10s, [&, window = 0U]() mutable { pace.noteLooks(window++ % 50); });
    EXPECT_LE(announced.size(), 10'000U / 80 + 1);
    announced.clear();
    keep(1ms, 10s, [&, window = 0U]() mutable { pace.noteLooks(window++ % 50); });
    EXPECT_LE(announced.size(), 50U);
}

TEST_F(ChangePaces, Movement_waits_a_quarter_of_a_second_unless_something_else_is_announced)
{
    keep(10ms, 200ms, [&] { pace.noteMove(); });
    EXPECT_EQ(announced, Times{});
    pass(100ms);
    EXPECT_EQ(announced, Times{254ms});
    pass(1s);
    announced.clear();
    pace.noteMove();
    pace.noteChange();
    pass(1s);
    EXPECT_EQ(announced, Times{1304ms});
}

TEST_F(ChangePaces, Nothing_is_due_once_all_is_quiet)
{
    pace.noteChange();
    pace.noteLooks(7);
    pace.noteMove();
    pass(5s);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(ChangePaces, A_window_that_is_gone_leaves_nothing_to_its_successor)
{
    keep(100ms, 2s, [&] { pace.noteLooks(7); });
    pace.forget(7);
    pass(200ms);
    announced.clear();
    pace.noteLooks(7);
    pass(4ms);
    EXPECT_EQ(announced.size(), 1U);
}

TEST(ChangePaceAtItsEnd, It_may_be_dropped_by_its_own_announcement)
{
    ManualScheduler scheduler;
    int count = 0;
    std::unique_ptr<x11::EventCoalescer> pace;
    pace = std::make_unique<x11::EventCoalescer>(scheduler, [&] {
        ++count;
        pace.reset();
    });
    pace->noteChange();
    scheduler.advance(1s);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(scheduler.timersDue(), 0);
}
