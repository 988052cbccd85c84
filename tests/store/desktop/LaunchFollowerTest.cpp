// The passes that a launch requests and the windows it reports; LaunchOperationsTest shows the
// outcome on the board.

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

    void launch(GoalID goalID)
    {
        follower.launch(LaunchableApplication::terminal, goalID, [this] { ++failures; });
    }

    void showTerminal(WindowID id)
    {
        WindowItem item = window(id);
        item.bundleIdentifier = terminal;
        windows.append(item);
    }

    void reopen(GoalID goalID, WindowID remembered, const QString& title)
    {
        follower.reopen({.windowID = remembered,
                         .traits = {.application = terminal,
                                    .applicationName = {},
                                    .role = {},
                                    .sessionID = {},
                                    .document = {},
                                    .title = title},
                         .shared = {},
                         .seenAt = {}},
                        goalID, {.begun = [](const Reopening&) {}, .missed = [] {}});
    }

    /// Until every launch has its window or is given up.
    void awaitWindows()
    {
        for (int i = 0; i < 30; ++i) {
            scheduler.advance(250ms);
            follower.finishPass();
        }
        scheduler.advance(250ms);
    }

    using Windows = std::vector<std::pair<GoalID, WindowID>>;

    const QString terminal = QStringLiteral("xterm");
    const GoalID goal = GoalID::create();
    FakeDesktop desktop;
    ManualScheduler scheduler;
    QList<WindowItem> windows;
    int passesRequested = 0;
    int failures = 0;
    Windows appeared;
    /// Called when the next window appears.
    std::function<void()> whenAppeared = [] {};
    LaunchFollower follower{desktop, scheduler, windows, [this] { ++passesRequested; },
                            [this](GoalID goalID, WindowID windowID, std::optional<WindowID>) {
                                appeared.emplace_back(goalID, windowID);
                                std::exchange(whenAppeared, [] {})();
                            }};
};

TEST_F(LaunchFollowerTest, A_launch_without_anything_to_start_fails_at_once_and_asks_for_no_pass)
{
    desktop.canLaunch = false;
    launch(goal);
    EXPECT_EQ(failures, 0);
    scheduler.advance(0ms);
    EXPECT_EQ(failures, 1);
    scheduler.advance(10s);
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(passesRequested, 0);

    desktop.canLaunch = true;
    launch(goal);
    awaitWindows();
    EXPECT_EQ(failures, 1) << "it was started";
    EXPECT_GT(passesRequested, 0);
}

TEST_F(LaunchFollowerTest, Requests_one_pass_at_a_time_and_reports_the_window_once)
{
    launch(goal);
    scheduler.advance(249ms);
    EXPECT_EQ(passesRequested, 0);
    scheduler.advance(1ms);
    EXPECT_EQ(passesRequested, 1);
    scheduler.advance(10s);
    EXPECT_EQ(passesRequested, 1) << "the first one has not ended";

    showTerminal(1);
    EXPECT_EQ(appeared, Windows());
    follower.finishPass();
    EXPECT_EQ(appeared, (Windows{{goal, 1}}));
    follower.finishPass();
    scheduler.advance(10s);
    EXPECT_EQ(appeared, (Windows{{goal, 1}}));
    EXPECT_EQ(passesRequested, 1);
}

TEST_F(LaunchFollowerTest, A_pass_that_was_not_requested_neither_matches_nor_counts)
{
    launch(goal);
    scheduler.advance(0ms);
    showTerminal(1);
    for (int i = 0; i < 30; ++i)
        follower.finishPass();
    EXPECT_EQ(appeared, Windows());
    scheduler.advance(250ms);
    follower.finishPass();
    EXPECT_EQ(appeared, (Windows{{goal, 1}}));
}

TEST_F(LaunchFollowerTest, A_window_that_appears_while_its_application_is_being_launched_is_found)
{
    showTerminal(1);
    scheduler.holdBackgroundWork(true);
    launch(goal);
    showTerminal(2);
    scheduler.holdBackgroundWork(false);
    scheduler.runBackgroundWork();
    scheduler.advance(250ms);
    follower.finishPass();
    EXPECT_EQ(appeared, (Windows{{goal, 2}}));
}

TEST_F(LaunchFollowerTest, Two_launches_request_one_pass_and_get_a_window_each)
{
    const GoalID other = GoalID::create();
    launch(goal);
    launch(other);
    scheduler.advance(250ms);
    EXPECT_EQ(passesRequested, 1);
    showTerminal(1);
    showTerminal(2);
    follower.finishPass();
    EXPECT_EQ(appeared, (Windows{{goal, 1}, {other, 2}}));
}

TEST_F(LaunchFollowerTest, Questions_about_windows_that_hang_hold_one_thread)
{
    desktop.launchedIdentifier = std::nullopt;
    launch(goal);
    launch(GoalID::create());
    launch(GoalID::create());
    scheduler.advance(250ms);
    // Of an unknown application, so that the desktop is asked whether a launch opened it.
    windows.append(window(1));
    scheduler.holdBackgroundWork(true);
    follower.finishPass();
    scheduler.hangBackgroundWork();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);

    desktop.startupIDs.insert(1, "launch 3");
    while (scheduler.backgroundWorkInFlight() > 0)
        scheduler.runBackgroundWork();
    ASSERT_EQ(appeared.size(), 1U);
    EXPECT_NE(appeared.front().first, goal);
}

TEST_F(LaunchFollowerTest, The_handler_of_a_window_may_launch_another)
{
    const GoalID other = GoalID::create();
    whenAppeared = [this, other] { launch(other); };
    launch(goal);
    scheduler.advance(250ms);
    showTerminal(1);
    follower.finishPass();
    scheduler.advance(250ms);
    showTerminal(2);
    follower.finishPass();
    EXPECT_EQ(appeared, (Windows{{goal, 1}, {other, 2}}));
}

TEST_F(LaunchFollowerTest, Of_two_goals_each_gets_the_window_that_its_own_launch_opened)
{
    const GoalID other = GoalID::create();
    reopen(goal, 101, QStringLiteral("Notes"));
    reopen(other, 102, QStringLiteral("Mail"));
    scheduler.advance(0ms);
    showTerminal(1);
    showTerminal(2);
    desktop.startupIDs.insert(1, "launch 2");
    desktop.startupIDs.insert(2, "launch 1");
    awaitWindows();
    EXPECT_EQ(appeared, (Windows{{goal, 2}, {other, 1}}));
}

TEST_F(LaunchFollowerTest, Of_two_goals_each_gets_the_window_with_the_title_of_its_own)
{
    const GoalID other = GoalID::create();
    reopen(goal, 101, QStringLiteral("Notes"));
    reopen(other, 102, QStringLiteral("Mail"));
    scheduler.advance(0ms);
    showTerminal(1);
    showTerminal(2);
    windows[0].title = QStringLiteral("Mail");
    windows[1].title = QStringLiteral("Notes");
    awaitWindows();
    EXPECT_EQ(appeared, (Windows{{goal, 2}, {other, 1}}));
}

TEST_F(LaunchFollowerTest, A_window_that_may_belong_to_either_goal_is_given_to_none)
{
    reopen(goal, 101, QStringLiteral("Notes"));
    reopen(GoalID::create(), 102, QStringLiteral("Mail"));
    scheduler.advance(0ms);
    showTerminal(1);
    awaitWindows();
    EXPECT_EQ(appeared, Windows());
}

TEST_F(LaunchFollowerTest, A_window_that_has_a_goal_already_is_not_taken)
{
    reopen(goal, 101, QStringLiteral("Notes"));
    scheduler.advance(0ms);
    showTerminal(1);
    windows[0].goalID = GoalID::create();
    awaitWindows();
    EXPECT_EQ(appeared, Windows());
}

TEST_F(LaunchFollowerTest, A_launch_that_fails_requests_nothing)
{
    desktop.canLaunch = false;
    launch(goal);
    scheduler.advance(10s);
    EXPECT_EQ(passesRequested, 0);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

} // namespace
} // namespace kelpa::test
