#include "platform/qt/QtSchedulerFixture.h"
#include "platform/qt/SystemClock.h"
#include "support/CaseName.h"

#include <QDateTime>

#include <atomic>
#include <chrono>
#include <optional>
#include <semaphore>
#include <vector>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

TEST_F(QtSchedulerTest, The_calendar_time_is_that_of_the_system)
{
    const Date before = Date::fromDateTime(QDateTime::currentDateTimeUtc());
    const Date now = scheduler.calendarTime();
    const Date after = Date::fromDateTime(QDateTime::currentDateTimeUtc());
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
}

struct SetClockCase
{
    const char* name;
    std::chrono::seconds setForward;
};

class SetSystemClock : public QtSchedulerTest, public testing::WithParamInterface<SetClockCase>
{};

TEST_P(SetSystemClock, Changes_neither_timers_nor_the_time_that_is_measured)
{
    const Scheduler::Time begin = scheduler.now();
    const Date calendarBegin = scheduler.calendarTime();
    int ticks = 0;
    std::optional<Scheduler::Time> done;
    const TaskHandle ticking = scheduler.repeat(10ms, [&] { ++ticks; });
    const TaskHandle delayed = scheduler.after(100ms, [&] { done = scheduler.now(); });

    const SystemClockSetForward set(GetParam().setForward);

    ASSERT_TRUE(eventually([&] { return done && ticks >= 5; }));
    EXPECT_GE(*done - begin, 99ms);
    // Far less than the clock was set by, on the busiest computer.
    EXPECT_LT(*done - begin, 10min);
    const double calendarSeconds = scheduler.calendarTime().secondsSinceReferenceDate -
                                   calendarBegin.secondsSinceReferenceDate;
    EXPECT_NEAR(calendarSeconds, static_cast<double>(GetParam().setForward.count()), 600);
}

INSTANTIATE_TEST_SUITE_P(QtScheduler, SetSystemClock,
                         testing::Values(SetClockCase{"back_by_an_hour", -1h},
                                         SetClockCase{"forward_by_an_hour", 1h}),
                         caseName);

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

TEST_F(QtSchedulerTest, Waiting_for_background_work_delivers_its_result_once)
{
    std::binary_semaphore gate(0);
    int deliveries = 0;
    TaskHandle task = scheduler.inBackground(
        [&](const std::stop_token&) {
            gate.acquire();
            return 7;
        },
        [&](int result) {
            EXPECT_EQ(result, 7);
            ++deliveries;
            // As whoever keeps the handle until the result is there does.
            task.reset();
        });
    task->waitFor(1ms);
    EXPECT_EQ(deliveries, 0) << "stuck work holds up nobody beyond the limit";

    gate.release();
    task->waitFor(1h);
    EXPECT_EQ(deliveries, 1);
    runDueEvents();
    EXPECT_EQ(deliveries, 1);
}

TEST_F(QtSchedulerTest, Work_that_was_awaited_in_vain_is_delivered_when_it_ends)
{
    std::binary_semaphore gate(0);
    int deliveries = 0;
    const TaskHandle task = scheduler.inBackground(
        [&](const std::stop_token&) {
            gate.acquire();
            return Done{};
        },
        [&](Done) { ++deliveries; });
    task->waitFor(1ms);
    gate.release();
    EXPECT_TRUE(eventually([&] { return deliveries == 1; }));
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
        // The function's captures are still alive.
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
    BusyThreads threads(scheduler);
    ASSERT_TRUE(eventually([&] { return threads.areAll(); }));
    std::atomic<bool> hasBegun = false;
    TaskHandle waiting = scheduler.inBackground(
        [&](const std::stop_token&) {
            hasBegun = true;
            return 0;
        },
        [](int) {});
    waiting.reset();
    threads.release();
    bool isLater = false;
    const TaskHandle later = scheduler.inBackground([](const std::stop_token&) { return 1; },
                                                    [&](int) { isLater = true; });
    ASSERT_TRUE(eventually([&] { return isLater && threads.haveEnded(); }));
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

TEST_F(QtSchedulerTest, The_functions_are_destroyed_on_the_main_thread)
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
    const TaskHandle handle = scheduler.inBackgroundAndWait(
        eventuallyLimit, [](const std::stop_token&) { return 42; },
        [&](int value) { result = value; });
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
    const TaskHandle handle = scheduler.inBackgroundAndWait(
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
    TaskHandle handle = scheduler.inBackgroundAndWait(
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
            const TaskHandle inner = scheduler.inBackgroundAndWait(
                eventuallyLimit, [first](const std::stop_token&) { return first + 1; },
                [&](int second) { result = second; });
            EXPECT_EQ(inner, nullptr);
        });
    EXPECT_TRUE(eventually([&] { return result == 2; }));
}

} // namespace
} // namespace kelpa::test
