#include "platform/qt/WorkerPool.h"

#include <gtest/gtest.h>

#include <QFile>

#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <latch>
#include <semaphore>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// How often threads of this process have gone to sleep.
int waits(pid_t thread)
{
    QFile status(QStringLiteral("/proc/self/task/%1/status").arg(thread));
    EXPECT_TRUE(status.open(QIODevice::ReadOnly));
    const QByteArray name = "\nvoluntary_ctxt_switches:";
    const QByteArray text = status.readAll();
    const auto begin = text.indexOf(name) + name.size();
    return text.mid(begin, text.indexOf('\n', begin) - begin).trimmed().toInt();
}

} // namespace

TEST(WorkerPool, A_task_wakes_one_thread)
{
    constexpr int threads = 3;
    constexpr int tasks = 100;
    WorkerPool pool(threads);
    std::array<std::atomic<pid_t>, threads> ids{};
    std::latch isStarted(threads);
    std::latch isNoted(threads + 1);
    for (std::atomic<pid_t>& id : ids) {
        pool.start([&] {
            id = gettid();
            isStarted.arrive_and_wait();
            isNoted.arrive_and_wait();
        });
    }
    isNoted.arrive_and_wait();
    const auto waitsOfAll = [&] {
        int sum = 0;
        for (const std::atomic<pid_t>& id : ids)
            sum += waits(id);
        return sum;
    };
    const int before = waitsOfAll();
    for (int count = 0; count < tasks; ++count) {
        std::binary_semaphore isDone(0);
        pool.start([&isDone] { isDone.release(); });
        isDone.acquire();
    }
    // Waking all of them would give three times the number of tasks.
    EXPECT_LT(waitsOfAll() - before, 2 * tasks);
    EXPECT_TRUE(pool.finish(10s));
}

TEST(WorkerPool, A_task_after_the_end_is_dropped)
{
    WorkerPool pool(1);
    EXPECT_TRUE(pool.finish(10s));
    bool isCalled = false;
    pool.start([&isCalled] { isCalled = true; });
    EXPECT_TRUE(pool.finish(10s));
    EXPECT_FALSE(isCalled);
}

} // namespace kelpa
