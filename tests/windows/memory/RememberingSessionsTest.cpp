// Random logins: no window ever goes to a goal that it was not in.

#include "windows/memory/RememberingSessions.h"

#include "support/Seed.h"

#include <gtest/gtest.h>

#include <iostream>

namespace kelpa::test {
namespace {

/// KELPA_MEMORY_SESSIONS from the environment, for a longer run.
int sessionCount()
{
    bool isGiven = false;
    const int given = qEnvironmentVariable("KELPA_MEMORY_SESSIONS").toInt(&isGiven);
    return isGiven ? given : 80;
}

TEST(RememberingSessions, Never_put_a_window_into_a_goal_that_it_was_not_in)
{
    const std::uint64_t seed = test::seed();
    std::cout << seedText(seed) << '\n';
    RememberingSessions sessions(seed);
    for (int i = 0; i < sessionCount() && sessions.counts().wrong == 0; ++i)
        sessions.runSession();

    const RecallCounts& counts = sessions.counts();
    EXPECT_EQ(counts.wrong, 0) << sessions.firstMistake() << ", " << seedText(seed);
    EXPECT_GT(counts.found, counts.offered);
    EXPECT_GT(counts.offered, counts.missed);
    std::cout << counts.sessions << " sessions: of the windows of goals " << counts.found
              << " found, " << counts.offered << " offered, " << counts.missed
              << " missed; of the others " << counts.leftAlone << " left alone, "
              << counts.offeredAnother << " offered a goal\n";
}

} // namespace
} // namespace kelpa::test
