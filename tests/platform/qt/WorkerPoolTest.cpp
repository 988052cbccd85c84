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

/// How often a thread of this process has begun to wait.
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
    // Were all of them woken, it would be three times the tasks.
    EXPECT_LT(waitsOfAll() - before, 2 * tasks);
    EXPECT_TRUE(pool.finish(10s));
}

TEST(WorkerPool, A_task_that_comes_after_the_end_is_dropped)
{
    WorkerPool pool(1);
    EXPECT_TRUE(pool.finish(10s));
    bool isCalled = false;
    pool.start([&isCalled] { isCalled = true; });
    EXPECT_TRUE(pool.finish(10s));
    EXPECT_FALSE(isCalled);
}

} // namespace kelpa
