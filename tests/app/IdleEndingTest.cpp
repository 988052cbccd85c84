#include "app/IdleEnding.h"

#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace kelpa {
namespace {

TEST(IdleEnding, Ends_after_so_long_without_a_call)
{
    test::ManualScheduler scheduler;
    int endCount = 0;
    const IdleEnding ending(
        scheduler, [] { return true; }, [&endCount] { ++endCount; });
    scheduler.advance(IdleEnding::idleLimit - 1ms);
    EXPECT_EQ(endCount, 0);
    scheduler.advance(1ms);
    EXPECT_EQ(endCount, 1);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST(IdleEnding, A_call_puts_the_end_off)
{
    test::ManualScheduler scheduler;
    int endCount = 0;
    IdleEnding ending(
        scheduler, [] { return true; }, [&endCount] { ++endCount; });
    for (int i = 0; i < 3; ++i) {
        ending.noteCall();
        scheduler.advance(IdleEnding::idleLimit);
        EXPECT_EQ(endCount, 0);
    }
    scheduler.advance(IdleEnding::idleLimit);
    EXPECT_EQ(endCount, 1);
}

TEST(IdleEnding, Asks_again_where_it_may_not_end)
{
    test::ManualScheduler scheduler;
    bool mayEnd = false;
    int endCount = 0;
    const IdleEnding ending(
        scheduler, [&mayEnd] { return mayEnd; }, [&endCount] { ++endCount; });
    scheduler.advance(10 * IdleEnding::idleLimit);
    EXPECT_EQ(endCount, 0);
    mayEnd = true;
    scheduler.advance(IdleEnding::idleLimit);
    EXPECT_EQ(endCount, 1);
}

} // namespace
} // namespace kelpa
