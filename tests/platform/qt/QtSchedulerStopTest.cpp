// Work that is asked to stop instead of being cancelled.
#include "platform/qt/QtSchedulerFixture.h"

#include <atomic>
#include <optional>
#include <semaphore>

namespace kelpa::test {
namespace {

TEST_F(QtSchedulerTest, Work_that_is_asked_to_stop_delivers_what_it_has_done)
{
    std::binary_semaphore started{0};
    std::optional<int> result;
    const TaskHandle handle = scheduler.inBackground(
        [&](const std::stop_token& stop) {
            started.release();
            int rounds = 1;
            for (; !stop.stop_requested(); ++rounds)
                std::this_thread::yield();
            return rounds;
        },
        [&](int rounds) { result = rounds; });
    started.acquire();
    EXPECT_TRUE(handle->requestStop());
    ASSERT_TRUE(eventually([&] { return result.has_value(); }));
    EXPECT_GE(*result, 1);
}

TEST_F(QtSchedulerTest, Work_that_has_ended_delivers_its_result_although_it_is_asked_to_stop)
{
    std::binary_semaphore ended{0};
    std::optional<int> result;
    const TaskHandle handle = scheduler.inBackground(
        [&](const std::stop_token&) {
            ended.release();
            return 7;
        },
        [&](int value) { result = value; });
    ended.acquire();
    EXPECT_TRUE(handle->requestStop());
    ASSERT_TRUE(eventually([&] { return result.has_value(); }));
    EXPECT_EQ(result, 7);
}

TEST_F(QtSchedulerTest, Work_that_is_asked_to_stop_and_then_cancelled_delivers_nothing)
{
    std::binary_semaphore started{0};
    std::atomic<bool> hasEnded = false;
    bool hasArrived = false;
    TaskHandle handle = scheduler.inBackground(
        [&](const std::stop_token& stop) {
            started.release();
            while (!stop.stop_requested())
                std::this_thread::yield();
            hasEnded = true;
            return 1;
        },
        [&](int) { hasArrived = true; });
    started.acquire();
    EXPECT_TRUE(handle->requestStop());
    handle.reset();
    ASSERT_TRUE(eventually([&] { return hasEnded.load(); }));
    runDueEvents();
    EXPECT_FALSE(hasArrived);
}

TEST_F(QtSchedulerTest, Work_that_is_asked_to_stop_before_it_has_begun_never_begins)
{
    BusyThreads threads(scheduler);
    ASSERT_TRUE(eventually([&] { return threads.areAll(); }));
    std::atomic<bool> hasBegun = false;
    bool hasArrived = false;
    const TaskHandle waiting = scheduler.inBackground(
        [&](const std::stop_token&) {
            hasBegun = true;
            return 0;
        },
        [&](int) { hasArrived = true; });
    EXPECT_FALSE(waiting->requestStop());
    threads.release();
    bool isLater = false;
    const TaskHandle later = scheduler.inBackground([](const std::stop_token&) { return 1; },
                                                    [&](int) { isLater = true; });
    ASSERT_TRUE(eventually([&] { return isLater && threads.haveEnded(); }));
    EXPECT_FALSE(hasBegun);
    EXPECT_FALSE(hasArrived);
}

TEST_F(QtSchedulerTest, A_delay_that_is_asked_to_stop_is_over)
{
    using namespace std::chrono_literals;
    int calls = 0;
    const TaskHandle stopped = scheduler.after(1ms, [&] { ++calls; });
    EXPECT_FALSE(stopped->requestStop());
    bool isLater = false;
    const TaskHandle later = scheduler.after(20ms, [&] { isLater = true; });
    ASSERT_TRUE(eventually([&] { return isLater; }));
    EXPECT_EQ(calls, 0);
}

} // namespace
} // namespace kelpa::test
