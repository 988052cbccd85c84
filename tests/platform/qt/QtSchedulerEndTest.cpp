// The shutdown of the scheduler, with work still running.
#include "platform/qt/QtSchedulerFixture.h"

#include <atomic>
#include <semaphore>
#include <vector>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using QtSchedulerShutdown = QtSchedulerTest;

TEST_F(QtSchedulerShutdown, Shutting_down_waits_for_running_work_and_drops_its_result)
{
    std::atomic<bool> hasStarted = false;
    std::atomic<bool> hasEnded = false;
    bool isDelivered = false;
    const TaskHandle task = scheduler.inBackground(
        [&](const std::stop_token& stop) {
            hasStarted = true;
            while (!stop.stop_requested())
                std::this_thread::yield();
            hasEnded = true;
            return 1;
        },
        [&](int) { isDelivered = true; });
    ASSERT_TRUE(eventually([&] { return hasStarted.load(); }));

    EXPECT_TRUE(scheduler.shutDown());
    EXPECT_TRUE(hasEnded);
    runDueEvents();
    EXPECT_FALSE(isDelivered);
}

TEST_F(QtSchedulerShutdown, Shutting_down_reports_work_that_is_stuck)
{
    std::binary_semaphore stuck(0);
    std::atomic<bool> hasStarted = false;
    const TaskHandle task = scheduler.inBackground(
        [&](const std::stop_token&) {
            hasStarted = true;
            stuck.acquire();
            return 1;
        },
        [](int) {});
    ASSERT_TRUE(eventually([&] { return hasStarted.load(); }));

    EXPECT_FALSE(scheduler.shutDown());
    stuck.release();
    EXPECT_TRUE(eventually([&] { return scheduler.shutDown(); }));
}

TEST(QtSchedulerEnd, Handles_may_outlive_the_scheduler)
{
    auto scheduler = std::make_unique<QtScheduler>();
    bool hasRun = false;
    std::vector<TaskHandle> handles;
    handles.push_back(scheduler->repeat(1ms, [&] { hasRun = true; }));
    handles.push_back(scheduler->after(0ms, [&] { hasRun = true; }));
    handles.push_back(scheduler->inBackground([](const std::stop_token&) { return 1; },
                                              [&](int) { hasRun = true; }));
    scheduler.reset();
    runDueEvents();
    EXPECT_FALSE(hasRun);
    handles.clear();
    runDueEvents();
}

TEST(QtSchedulerEnd, A_dropped_handle_and_then_the_scheduler_leave_nothing_behind)
{
    auto scheduler = std::make_unique<QtScheduler>();
    scheduler->repeat(1ms, [] { ADD_FAILURE(); }).reset();
    scheduler->inBackground([](const std::stop_token&) { return 1; }, [](int) { ADD_FAILURE(); })
        .reset();
    scheduler.reset();
    runDueEvents();
}

TEST(QtSchedulerEnd, Running_work_is_asked_to_stop)
{
    std::binary_semaphore started{0};
    std::atomic<bool> hasStopped = false;
    auto scheduler = std::make_unique<QtScheduler>();
    const TaskHandle handle = scheduler->inBackground(
        [&](const std::stop_token& stop) {
            started.release();
            while (!stop.stop_requested())
                std::this_thread::yield();
            hasStopped = true;
            return 1;
        },
        [](int) { ADD_FAILURE(); });
    started.acquire();
    scheduler.reset();
    EXPECT_TRUE(hasStopped);
}

TEST(QtSchedulerEnd, Work_that_is_stuck_holds_up_the_end_only_for_a_moment_and_its_end_is_ignored)
{
    struct Gates
    {
        std::binary_semaphore started{0};
        std::binary_semaphore gate{0};
        std::binary_semaphore finished{0};
    };
    const auto gates = std::make_shared<Gates>();
    auto scheduler = std::make_unique<QtScheduler>();
    const TaskHandle handle = scheduler->inBackground(
        [gates](const std::stop_token&) {
            gates->started.release();
            gates->gate.acquire();
            gates->finished.release();
            return std::string(1000, 'x');
        },
        [](const std::string&) { ADD_FAILURE(); });
    gates->started.acquire();
    const auto start = Clock::now();
    scheduler.reset();
    EXPECT_LT(Clock::now() - start, 5s);
    gates->gate.release();
    EXPECT_TRUE(gates->finished.try_acquire_for(eventuallyLimit));
    runDueEvents();
}

TEST(QtSchedulerEnd, A_thousand_jobs_are_started_and_cancelled_while_others_run)
{
    std::atomic<int> begun = 0;
    int delivered = 0;
    int kept = 0;
    {
        QtScheduler scheduler;
        const EventLoopWaker waker;
        std::vector<TaskHandle> handles(16);
        for (int i = 0; i < 1000; ++i) {
            handles[static_cast<std::size_t>(i) % handles.size()] = scheduler.inBackground(
                [&begun, i](const std::stop_token& stop) {
                    ++begun;
                    int sum = 0;
                    for (int k = 0; k < 1000 && !stop.stop_requested(); ++k)
                        sum += k % 3;
                    return std::vector<int>(10, sum + i);
                },
                [&delivered](const std::vector<int>& values) {
                    EXPECT_EQ(values.size(), 10U);
                    ++delivered;
                });
            if (i % 7 == 0)
                handles[static_cast<std::size_t>(i * 5) % handles.size()].reset();
            if (i % 50 == 0)
                QCoreApplication::processEvents();
        }
        for (TaskHandle& handle : handles) {
            handle = scheduler.inBackground([](const std::stop_token&) { return 1; },
                                            [&kept](int value) { kept += value; });
        }
        EXPECT_TRUE(eventually([&] { return kept == 16; }));
        for (int i = 0; i < 100; ++i) {
            handles.push_back(scheduler.inBackground(
                [&begun](const std::stop_token&) {
                    ++begun;
                    return 1;
                },
                [](int) { ADD_FAILURE(); }));
        }
    }
    EXPECT_GT(begun, 0);
    EXPECT_LE(delivered, 1000);
}

} // namespace
} // namespace kelpa::test
