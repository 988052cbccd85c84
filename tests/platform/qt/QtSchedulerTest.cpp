#include "platform/qt/QtScheduler.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <semaphore>
#include <thread>
#include <vector>

namespace kelpa {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto deadline = 20s;

/// Runs the event loop until `isMet`, at most until the deadline; whether it was met.
template <class Condition>
bool eventually(Condition isMet)
{
    const auto end = Clock::now() + deadline;
    while (!isMet() && Clock::now() < end)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    return isMet();
}

/// Wakes the event loop while `eventually` waits, so that it looks at its deadline.
class Heartbeat
{
public:
    Heartbeat() { m_timer.start(5); }

private:
    QTimer m_timer;
};

/// Runs what is due now, several times over.
void runDueEvents()
{
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

class QtSchedulerTest : public testing::Test
{
protected:
    QtScheduler scheduler;
    Heartbeat heartbeat;
    const std::thread::id mainThread = std::this_thread::get_id();
};

TEST_F(QtSchedulerTest, Now_is_the_time_of_the_calendar)
{
    const Date before = Date::fromDateTime(QDateTime::currentDateTimeUtc());
    const Date now = scheduler.now();
    const Date after = Date::fromDateTime(QDateTime::currentDateTimeUtc());
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
}

TEST_F(QtSchedulerTest, Shutting_down_waits_for_running_work_and_drops_its_result)
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

TEST_F(QtSchedulerTest, Shutting_down_tells_of_work_that_is_stuck)
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

TEST_F(QtSchedulerTest, Delayed_work_runs_once_and_not_before_its_time)
{
    int runs = 0;
    const auto start = Clock::now();
    Clock::duration waited{};
    const TaskHandle handle = scheduler.after(30ms, [&] {
        ++runs;
        waited = Clock::now() - start;
    });
    EXPECT_EQ(runs, 0);
    ASSERT_TRUE(eventually([&] { return runs > 0; }));
    EXPECT_GE(waited, 29ms);
    bool isLater = false;
    const TaskHandle later = scheduler.after(60ms, [&] { isLater = true; });
    ASSERT_TRUE(eventually([&] { return isLater; }));
    EXPECT_EQ(runs, 1);
}

TEST_F(QtSchedulerTest, A_repeating_timer_ticks_until_its_handle_goes)
{
    int ticks = 0;
    const auto start = Clock::now();
    TaskHandle handle = scheduler.repeat(10ms, [&] { ++ticks; });
    ASSERT_TRUE(eventually([&] { return ticks >= 5; }));
    EXPECT_GE(Clock::now() - start, 45ms);
    handle.reset();
    const int before = ticks;
    bool isLater = false;
    const TaskHandle later = scheduler.after(50ms, [&] { isLater = true; });
    ASSERT_TRUE(eventually([&] { return isLater; }));
    EXPECT_EQ(ticks, before);
}

TEST_F(QtSchedulerTest, A_timer_may_be_cancelled_from_within_its_callback)
{
    int ticks = 0;
    TaskHandle handle;
    handle = scheduler.repeat(1ms, [&, name = std::string(100, 'x')] {
        ++ticks;
        handle.reset();
        // What the function holds is still there.
        EXPECT_EQ(name, std::string(100, 'x'));
    });
    ASSERT_TRUE(eventually([&] { return ticks > 0; }));
    bool isLater = false;
    const TaskHandle later = scheduler.after(20ms, [&] { isLater = true; });
    ASSERT_TRUE(eventually([&] { return isLater; }));
    EXPECT_EQ(ticks, 1);
}

TEST_F(QtSchedulerTest, A_timer_may_be_replaced_from_within_its_callback)
{
    std::vector<int> calls;
    TaskHandle handle;
    handle = scheduler.after(1ms, [&] {
        calls.push_back(1);
        handle = scheduler.after(1ms, [&] { calls.push_back(2); });
    });
    ASSERT_TRUE(eventually([&] { return calls.size() == 2; }));
    EXPECT_EQ(calls, (std::vector{1, 2}));
}

TEST_F(QtSchedulerTest, Work_runs_off_the_main_thread_and_its_result_arrives_on_it)
{
    int result = 0;
    std::thread::id workThread;
    std::thread::id resultThread;
    const TaskHandle handle = scheduler.inBackground(
        [&](const std::stop_token&) {
            workThread = std::this_thread::get_id();
            return 42;
        },
        [&](int value) {
            resultThread = std::this_thread::get_id();
            result = value;
        });
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(result, 0);
    ASSERT_TRUE(eventually([&] { return result != 0; }));
    EXPECT_EQ(result, 42);
    EXPECT_NE(workThread, mainThread);
    EXPECT_EQ(resultThread, mainThread);
}

TEST_F(QtSchedulerTest, A_result_that_can_only_be_moved_arrives)
{
    int result = 0;
    const TaskHandle handle =
        scheduler.inBackground([](const std::stop_token&) { return std::make_unique<int>(7); },
                               [&](std::unique_ptr<int> value) { result = *value; });
    EXPECT_TRUE(eventually([&] { return result == 7; }));
}

TEST_F(QtSchedulerTest, Cancelled_work_sees_its_stop_token_and_its_result_is_dropped)
{
    std::binary_semaphore started{0};
    std::atomic<bool> hasStopped = false;
    bool hasArrived = false;
    TaskHandle handle = scheduler.inBackground(
        [&](const std::stop_token& stop) {
            started.release();
            while (!stop.stop_requested())
                std::this_thread::yield();
            hasStopped = true;
            return 1;
        },
        [&](int) { hasArrived = true; });
    started.acquire();
    handle.reset();
    ASSERT_TRUE(eventually([&] { return hasStopped.load(); }));
    runDueEvents();
    EXPECT_FALSE(hasArrived);
}

TEST_F(QtSchedulerTest, A_result_that_waits_to_be_delivered_is_dropped_by_a_cancellation)
{
    bool hasArrived = false;
    std::atomic<bool> isDone = false;
    TaskHandle handle = scheduler.inBackground(
        [&](const std::stop_token&) {
            isDone = true;
            return 1;
        },
        [&](int) { hasArrived = true; });
    while (!isDone)
        std::this_thread::yield();
    handle.reset();
    bool isLater = false;
    const TaskHandle later = scheduler.inBackground([](const std::stop_token&) { return 1; },
                                                    [&](int) { isLater = true; });
    ASSERT_TRUE(eventually([&] { return isLater; }));
    EXPECT_FALSE(hasArrived);
}

TEST_F(QtSchedulerTest, Work_that_has_not_begun_when_it_is_cancelled_never_begins)
{
    std::counting_semaphore<> gate{0};
    std::atomic<int> running = 0;
    int ended = 0;
    std::vector<TaskHandle> blockers;
    blockers.reserve(QtScheduler::maxThreads);
    for (int i = 0; i < QtScheduler::maxThreads; ++i) {
        blockers.push_back(scheduler.inBackground(
            [&](const std::stop_token&) {
                ++running;
                gate.acquire();
                return 1;
            },
            [&](int value) { ended += value; }));
    }
    ASSERT_TRUE(eventually([&] { return running == QtScheduler::maxThreads; }));
    std::atomic<bool> hasBegun = false;
    TaskHandle waiting = scheduler.inBackground(
        [&](const std::stop_token&) {
            hasBegun = true;
            return 0;
        },
        [](int) {});
    waiting.reset();
    gate.release(QtScheduler::maxThreads);
    bool isLater = false;
    const TaskHandle later = scheduler.inBackground([](const std::stop_token&) { return 1; },
                                                    [&](int) { isLater = true; });
    ASSERT_TRUE(eventually([&] { return isLater && ended == QtScheduler::maxThreads; }));
    EXPECT_FALSE(hasBegun);
}

TEST_F(QtSchedulerTest, A_handle_may_be_destroyed_from_within_its_own_delivery)
{
    int deliveries = 0;
    TaskHandle handle;
    handle = scheduler.inBackground([](const std::stop_token&) { return std::string(100, 'x'); },
                                    [&, name = std::string(100, 'y')](const std::string& text) {
                                        handle.reset();
                                        ++deliveries;
                                        EXPECT_EQ(text + name,
                                                  std::string(100, 'x') + std::string(100, 'y'));
                                    });
    EXPECT_TRUE(eventually([&] { return deliveries == 1; }));
}

TEST_F(QtSchedulerTest, What_the_functions_hold_is_let_go_on_the_main_thread)
{
    struct Witness
    {
        std::atomic<int>& wrongThread;
        std::thread::id home;
        Witness(std::atomic<int>& count, std::thread::id thread) : wrongThread(count), home(thread)
        {}
        ~Witness() { wrongThread += std::this_thread::get_id() != home ? 1 : 0; }
    };
    std::atomic<int> wrongThread = 0;
    int delivered = 0;
    for (int i = 0; i < 200; ++i) {
        auto witness = std::make_shared<Witness>(wrongThread, mainThread);
        TaskHandle handle =
            scheduler.inBackground([](const std::stop_token&) { return 1; }, [witness](int) {});
        witness.reset();
        if (i % 2 == 0)
            handle.reset();
        const TaskHandle next = scheduler.inBackground([](const std::stop_token&) { return 1; },
                                                       [&](int) { ++delivered; });
        ASSERT_TRUE(eventually([&] { return delivered == i + 1; }));
    }
    EXPECT_EQ(wrongThread, 0);
}

TEST_F(QtSchedulerTest, Awaited_work_that_is_in_time_is_delivered_before_the_call_returns)
{
    int result = 0;
    bool hasRunEvents = false;
    QTimer::singleShot(0, [&] { hasRunEvents = true; });
    const TaskHandle handle = scheduler.inBackgroundAwaiting(
        deadline, [](const std::stop_token&) { return 42; }, [&](int value) { result = value; });
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(result, 42);
    EXPECT_FALSE(hasRunEvents) << "the event loop ran inside the wait";
    result = 0;
    runDueEvents();
    EXPECT_EQ(result, 0) << "delivered twice";
}

TEST_F(QtSchedulerTest, Awaited_work_that_is_late_is_delivered_later)
{
    std::binary_semaphore gate{0};
    int result = 0;
    const auto start = Clock::now();
    const TaskHandle handle = scheduler.inBackgroundAwaiting(
        20ms,
        [&](const std::stop_token&) {
            gate.acquire();
            return 42;
        },
        [&](int value) { result = value; });
    EXPECT_GE(Clock::now() - start, 20ms);
    EXPECT_NE(handle, nullptr);
    EXPECT_EQ(result, 0);
    gate.release();
    EXPECT_TRUE(eventually([&] { return result == 42; }));
}

TEST_F(QtSchedulerTest, Awaited_work_that_is_late_can_be_cancelled)
{
    std::binary_semaphore started{0};
    std::atomic<bool> hasStopped = false;
    bool hasArrived = false;
    TaskHandle handle = scheduler.inBackgroundAwaiting(
        1ms,
        [&](const std::stop_token& stop) {
            started.release();
            while (!stop.stop_requested())
                std::this_thread::yield();
            hasStopped = true;
            return 42;
        },
        [&](int) { hasArrived = true; });
    ASSERT_NE(handle, nullptr);
    started.acquire();
    handle.reset();
    ASSERT_TRUE(eventually([&] { return hasStopped.load(); }));
    runDueEvents();
    EXPECT_FALSE(hasArrived);
}

TEST_F(QtSchedulerTest, A_delivery_may_await_other_work)
{
    int result = 0;
    const TaskHandle handle = scheduler.inBackground(
        [](const std::stop_token&) { return 1; },
        [&](int first) {
            const TaskHandle inner = scheduler.inBackgroundAwaiting(
                deadline, [first](const std::stop_token&) { return first + 1; },
                [&](int second) { result = second; });
            EXPECT_EQ(inner, nullptr);
        });
    EXPECT_TRUE(eventually([&] { return result == 2; }));
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

TEST(QtSchedulerEnd, Running_work_is_told_to_stop)
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

TEST(QtSchedulerEnd, Work_that_is_stuck_holds_up_the_end_only_for_a_moment_and_ends_unheard)
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
    EXPECT_TRUE(gates->finished.try_acquire_for(deadline));
    runDueEvents();
}

TEST(QtSchedulerEnd, A_thousand_pieces_of_work_are_started_and_cancelled_while_others_run)
{
    std::atomic<int> begun = 0;
    int delivered = 0;
    int kept = 0;
    {
        QtScheduler scheduler;
        const Heartbeat heartbeat;
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

} // namespace kelpa
