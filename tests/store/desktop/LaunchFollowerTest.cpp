// What a launch asks for and tells of; what comes of it on the board is tested with the store.

#include "store/desktop/LaunchFollower.h"
#include "support/BoardBuilders.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <utility>
#include <vector>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class LaunchFollowerTest : public testing::Test
{
protected:
    LaunchFollowerTest() { desktop.launchedIdentifier = terminal; }

    void launch(GoalID goalID) { follower.launch(LaunchableApplication::terminal, goalID); }

    void showTerminal(WindowID id)
    {
        WindowItem item = window(id);
        item.bundleIdentifier = terminal;
        windows.append(item);
    }

    using Finds = std::vector<std::pair<GoalID, WindowID>>;

    const QString terminal = QStringLiteral("xterm");
    const GoalID goal = GoalID::create();
    FakeDesktop desktop;
    ManualScheduler scheduler;
    QList<WindowItem> windows;
    int looksRequested = 0;
    Finds finds;
    /// Called at the next find.
    std::function<void()> whenFound = [] {};
    LaunchFollower follower{desktop, scheduler, windows, [this] { ++looksRequested; },
                            [this](GoalID goalID, WindowID windowID) {
                                finds.emplace_back(goalID, windowID);
                                std::exchange(whenFound, [] {})();
                            }};
};

TEST_F(LaunchFollowerTest, Asks_for_one_look_at_a_time_and_tells_of_the_window_once)
{
    launch(goal);
    scheduler.advance(249ms);
    EXPECT_EQ(looksRequested, 0);
    scheduler.advance(1ms);
    EXPECT_EQ(looksRequested, 1);
    scheduler.advance(10s);
    EXPECT_EQ(looksRequested, 1) << "the first one has not come to its end";

    showTerminal(1);
    EXPECT_EQ(finds, Finds());
    follower.finishLooks();
    EXPECT_EQ(finds, (Finds{{goal, 1}}));
    follower.finishLooks();
    scheduler.advance(10s);
    EXPECT_EQ(finds, (Finds{{goal, 1}}));
    EXPECT_EQ(looksRequested, 1);
}

TEST_F(LaunchFollowerTest, A_look_that_it_did_not_ask_for_neither_finds_nor_counts)
{
    launch(goal);
    scheduler.advance(0ms);
    showTerminal(1);
    for (int i = 0; i < 30; ++i)
        follower.finishLooks();
    EXPECT_EQ(finds, Finds());
    scheduler.advance(250ms);
    follower.finishLooks();
    EXPECT_EQ(finds, (Finds{{goal, 1}}));
}

TEST_F(LaunchFollowerTest, A_window_that_shows_while_its_application_is_being_launched_is_found)
{
    showTerminal(1);
    scheduler.holdBackgroundWork(true);
    launch(goal);
    showTerminal(2);
    scheduler.holdBackgroundWork(false);
    scheduler.runBackgroundWork();
    scheduler.advance(250ms);
    follower.finishLooks();
    EXPECT_EQ(finds, (Finds{{goal, 2}}));
}

TEST_F(LaunchFollowerTest, Two_launches_ask_for_one_look_and_get_a_window_each)
{
    const GoalID other = GoalID::create();
    launch(goal);
    launch(other);
    scheduler.advance(250ms);
    EXPECT_EQ(looksRequested, 1);
    showTerminal(1);
    showTerminal(2);
    follower.finishLooks();
    EXPECT_EQ(finds, (Finds{{goal, 1}, {other, 2}}));
}

TEST_F(LaunchFollowerTest, What_hears_of_a_window_may_launch_another)
{
    const GoalID other = GoalID::create();
    whenFound = [this, other] { launch(other); };
    launch(goal);
    scheduler.advance(250ms);
    showTerminal(1);
    follower.finishLooks();
    scheduler.advance(250ms);
    showTerminal(2);
    follower.finishLooks();
    EXPECT_EQ(finds, (Finds{{goal, 1}, {other, 2}}));
}

TEST_F(LaunchFollowerTest, A_launch_that_fails_asks_for_nothing)
{
    desktop.canLaunch = false;
    launch(goal);
    scheduler.advance(10s);
    EXPECT_EQ(looksRequested, 0);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

} // namespace
} // namespace kelpa::test
