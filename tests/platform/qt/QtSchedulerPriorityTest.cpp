// Background work of utility priority runs on threads that yield to all others.
#include "platform/qt/QtSchedulerFixture.h"

#include <QFile>

#include <atomic>
#include <optional>
#include <semaphore>
#include <vector>

namespace kelpa::test {
namespace {

/// The niceness of the calling thread, as the kernel shows it.
int niceness()
{
    QFile statistics(QStringLiteral("/proc/thread-self/stat"));
    if (!statistics.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "the kernel does not show this thread";
        return 0;
    }
    const QByteArray line = statistics.readAll();
    // The name of the thread, in parentheses, may contain anything.
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    return fields.value(16).toInt();
}

class QtSchedulerPriority : public QtSchedulerTest
{
protected:
    /// That of a thread which runs a job of `priority`.
    int nicenessOf(WorkPriority priority)
    {
        std::optional<int> result;
        const TaskHandle handle =
            scheduler.inBackground([](const std::stop_token&) { return niceness(); },
                                   [&](int value) { result = value; }, priority);
        EXPECT_TRUE(eventually([&] { return result.has_value(); }));
        return result.value_or(-1);
    }
};

TEST_F(QtSchedulerPriority, Utility_work_is_nicer_than_the_main_thread_and_other_work_is_not)
{
    const int own = niceness();
    // By turns, so that no thread is used for the other kind.
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(nicenessOf(WorkPriority::normal), own);
        // The kernel knows nothing nicer than 19.
        EXPECT_EQ(nicenessOf(WorkPriority::utility),
                  std::min(own + QtScheduler::utilityNiceness, 19));
    }
    EXPECT_EQ(niceness(), own);
}

TEST_F(QtSchedulerPriority, Work_that_the_main_thread_awaits_is_as_urgent_as_it)
{
    std::optional<int> result;
    const TaskHandle handle = scheduler.inBackgroundAndWait(
        eventuallyLimit, [](const std::stop_token&) { return niceness(); },
        [&](int value) { result = value; });
    EXPECT_EQ(result, niceness());
}

TEST_F(QtSchedulerPriority, Utility_work_that_hangs_leaves_all_other_threads_free)
{
    constexpr int utilityJobs = QtScheduler::maxUtilityThreads + 5;
    constexpr int jobs = utilityJobs + QtScheduler::maxThreads;
    std::counting_semaphore<> gate{0};
    std::atomic<int> hanging = 0;
    std::atomic<int> running = 0;
    int ended = 0;
    std::vector<TaskHandle> handles;
    const auto start = [&](std::atomic<int>& count, WorkPriority priority) {
        handles.push_back(scheduler.inBackground(
            [&count, &gate](const std::stop_token&) {
                ++count;
                gate.acquire();
                return 1;
            },
            [&ended](int value) { ended += value; }, priority));
    };
    for (int i = 0; i < utilityJobs; ++i)
        start(hanging, WorkPriority::utility);
    for (int i = 0; i < QtScheduler::maxThreads; ++i)
        start(running, WorkPriority::normal);
    EXPECT_TRUE(eventually([&] {
        return running == QtScheduler::maxThreads && hanging == QtScheduler::maxUtilityThreads;
    }));
    gate.release(jobs);
    EXPECT_TRUE(eventually([&] { return ended == jobs; }));
}

TEST(QtSchedulerPriorityEnd, Utility_work_that_hangs_is_reported_at_the_end)
{
    std::counting_semaphore<> gate{0};
    std::atomic<bool> isHanging = false;
    QtScheduler scheduler;
    const EventLoopWaker waker;
    const TaskHandle handle = scheduler.inBackground(
        [&](const std::stop_token&) {
            isHanging = true;
            gate.acquire();
            return 1;
        },
        [](int) {}, WorkPriority::utility);
    ASSERT_TRUE(eventually([&] { return isHanging.load(); }));
    EXPECT_FALSE(scheduler.shutDown());
    gate.release();
    EXPECT_TRUE(eventually([&] { return scheduler.shutDown(); }));
}

} // namespace
} // namespace kelpa::test
