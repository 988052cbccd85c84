#include "live/Heartbeat.h"
#include "support/desktop/Programs.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <unistd.h>

using namespace kelpa::test;
using namespace std::chrono_literals;

namespace {

bool hasBeaten(const Heartbeat& heartbeat, int more)
{
    const int beats = heartbeat.beats();
    return waitUntil([&] { return heartbeat.beats() >= beats + more; });
}

} // namespace

TEST(Heartbeats, A_main_thread_that_waits_shows)
{
    const Heartbeat heartbeat;
    ASSERT_TRUE(hasBeaten(heartbeat, 2));
    std::this_thread::sleep_for(100ms);
    ASSERT_TRUE(hasBeaten(heartbeat, 2));
    EXPECT_GE(heartbeat.longestGap(), 75ms);
}

TEST(Heartbeats, A_main_thread_that_is_busy_shows)
{
    const Heartbeat heartbeat;
    ASSERT_TRUE(hasBeaten(heartbeat, 2));
    timespec begin{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &begin);
    const auto used = [&begin] {
        timespec now{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
        return (now.tv_sec - begin.tv_sec) * 1000 + (now.tv_nsec - begin.tv_nsec) / 1'000'000;
    };
    while (used() < 100) {
    }
    ASSERT_TRUE(hasBeaten(heartbeat, 2));
    EXPECT_GE(heartbeat.longestGap(), 75ms);
}

TEST(Heartbeats, A_time_in_which_the_machine_lets_nothing_run_does_not_show)
{
    const Heartbeat heartbeat;
    ASSERT_TRUE(hasBeaten(heartbeat, 2));
    const auto begin = std::chrono::steady_clock::now();
    const Program stopper(
        {}, QStringLiteral("sh"),
        {QStringLiteral("-c"),
         QStringLiteral("kill -STOP %1; sleep 0.2; kill -CONT %1").arg(getpid())});
    // Time goes on while the program is stopped.
    auto last = begin;
    ASSERT_TRUE(waitUntil([&] {
        const auto before = std::exchange(last, std::chrono::steady_clock::now());
        return last - before >= 150ms;
    }));
    ASSERT_TRUE(hasBeaten(heartbeat, 2));
    EXPECT_LT(heartbeat.longestGap(), 50ms);
}
