#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using State = BoardNavigationState;

class LaunchOperations : public StoreFixture
{
protected:
    void addTerminalWindow(WindowID id)
    {
        desktop.addWindow(id, 700, {});
        desktop.applications[700].bundleIdentifier = QStringLiteral("xterm");
    }

    int passes() const
    {
        return static_cast<int>(desktop.calls.count(QStringLiteral("openDiscoverySource")));
    }
};

TEST_F(LaunchOperations, A_new_terminal_lands_in_the_goal_that_asked_for_it)
{
    const GoalID a = makeGoal();
    addTerminalWindow(1);
    store().refresh();
    desktop.launchedIdentifier = QStringLiteral("xterm");

    store().createTerminal(a);
    scheduler.advance(600ms);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("launch terminal")), 1);
    addTerminalWindow(2);
    addTerminalWindow(3);
    desktop.addWindow(4, 100, {});
    scheduler.advance(150ms);

    EXPECT_EQ(listed(3).goalID, a) << "the first of the new ones in list order";
    EXPECT_EQ(listed(2).goalID, std::nullopt);
    EXPECT_EQ(listed(1).goalID, std::nullopt);
    EXPECT_EQ(listed(4).goalID, std::nullopt);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(a)));
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(LaunchOperations, A_new_chrome_window_lands_in_its_goal)
{
    const GoalID a = makeGoal();
    desktop.launchedIdentifier = QStringLiteral("org.example.App100");
    store().createChrome(a);
    scheduler.advance(0ms);
    desktop.addWindow(1, 100, {});
    scheduler.advance(250ms);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("launch chrome")), 1);
    EXPECT_EQ(listed(1).goalID, a);
}

TEST_F(LaunchOperations, A_window_that_does_not_appear_within_twenty_passes_stays_unassigned)
{
    const GoalID a = makeGoal();
    store();
    const int before = passes();
    desktop.launchedIdentifier = QStringLiteral("xterm");
    store().createTerminal(a);
    scheduler.advance(5s);
    EXPECT_EQ(passes(), before + 20);
    EXPECT_EQ(scheduler.timersDue(), 0);

    addTerminalWindow(1);
    scheduler.advance(5s);
    store().refresh();
    EXPECT_EQ(listed(1).goalID, std::nullopt);
}

TEST_F(LaunchOperations, A_launch_that_fails_or_an_unknown_goal_ends_it)
{
    const GoalID a = makeGoal();
    desktop.canLaunch = false;
    store().createTerminal(a);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("launch terminal")), 1);
    EXPECT_EQ(scheduler.timersDue(), 1) << "the toast that says so";

    desktop.canLaunch = true;
    desktop.calls.clear();
    desktop.launchedIdentifier = QStringLiteral("xterm");
    store().createTerminal(GoalID::create());
    store().createChrome(GoalID::create());
    scheduler.advance(1s);
    EXPECT_TRUE(desktop.calls.isEmpty());
}

TEST_F(LaunchOperations, A_goal_for_which_nothing_can_be_launched_says_so)
{
    const GoalID a = makeGoal();
    store().setLanguage(AppLanguage::english);
    desktop.canLaunch = false;
    store().createChrome(a);
    EXPECT_EQ(store().toastMessage(), std::nullopt) << "nobody has tried";
    scheduler.advance(0ms);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("No browser could be opened"));
    EXPECT_FALSE(store().toastOffersUndo());
    store().createTerminal(a);
    scheduler.advance(0ms);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("No terminal could be opened"));

    desktop.canLaunch = true;
    scheduler.advance(3s);
    store().createChrome(a);
    scheduler.advance(0ms);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
}

TEST_F(LaunchOperations, What_cannot_be_launched_takes_no_undo_away)
{
    const GoalID a = makeGoal();
    const TodoID todo = makeTodo(a, QStringLiteral("Pay"));
    store().setLanguage(AppLanguage::english);
    desktop.canLaunch = false;
    store().createChrome(a);
    store().deleteTodo(todo, a);
    scheduler.advance(0ms);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("Todo deleted"));
    EXPECT_TRUE(store().toastOffersUndo());
    scheduler.advance(6s);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
}

TEST_F(LaunchOperations, A_goal_that_is_deleted_meanwhile_gets_no_window)
{
    const GoalID a = makeGoal();
    desktop.launchedIdentifier = QStringLiteral("xterm");
    store().createTerminal(a);
    scheduler.advance(0ms);
    store().deleteGoal(a);
    addTerminalWindow(1);
    scheduler.advance(250ms);

    EXPECT_EQ(listed(1).goalID, std::nullopt);
    EXPECT_EQ(store().boardNavigation(), State::idle());
    EXPECT_EQ(scheduler.timersDue(), 1) << "the toast that reports the deletion";
}

TEST_F(LaunchOperations, A_window_of_a_launch_of_which_no_application_is_known_lands_too)
{
    const GoalID a = makeGoal();
    store().createTerminal(a);
    scheduler.advance(100ms);
    desktop.addWindow(1, 100, {});
    desktop.addWindow(2, 200, {});
    desktop.startupIDs[1] = "launch 1";
    desktop.startupIDs[2] = "something else";
    scheduler.advance(149ms);
    store().refresh();
    EXPECT_EQ(listed(1).goalID, std::nullopt);
    scheduler.advance(1ms);
    EXPECT_EQ(listed(1).goalID, a);
    EXPECT_EQ(listed(2).goalID, std::nullopt);
    EXPECT_EQ(store().boardNavigation(), State::on(TargetSelection::goal(a)));
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(LaunchOperations, Of_a_launch_without_a_known_application_no_other_window_lands)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, {});
    desktop.startupIDs[1] = "launch 1";
    store().refresh();
    const int before = passes();
    store().createTerminal(a);
    scheduler.advance(0ms);
    desktop.addWindow(2, 200, {});
    scheduler.advance(5s);
    EXPECT_EQ(passes(), before + 20);
    EXPECT_EQ(listed(1).goalID, std::nullopt) << "there before the launch";
    EXPECT_EQ(listed(2).goalID, std::nullopt);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(LaunchOperations, An_application_that_shows_itself_once_it_runs_is_known_from_then_on)
{
    const GoalID a = makeGoal();
    desktop.watchedIdentifier = QStringLiteral("xterm");
    scheduler.holdBackgroundWork(true);
    store().createTerminal(a);
    // The launch, then the polling, then a pass that finds nothing meanwhile.
    scheduler.runBackgroundWork();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    scheduler.advance(250ms);
    scheduler.runBackgroundWork();
    addTerminalWindow(1);
    scheduler.advance(250ms);
    scheduler.runBackgroundWork();
    EXPECT_EQ(desktop.calls.count(QStringLiteral("identifierOf launch 1")), 1);
    EXPECT_EQ(listed(1).goalID, a);
}

TEST_F(LaunchOperations, The_window_of_a_launch_lands_also_when_it_is_of_another_application)
{
    const GoalID a = makeGoal();
    desktop.launchedIdentifier = QStringLiteral("launcher");
    store().createTerminal(a);
    scheduler.advance(0ms);
    addTerminalWindow(1);
    desktop.startupIDs[1] = "launch 1";
    scheduler.advance(250ms);
    EXPECT_EQ(listed(1).goalID, a);
    EXPECT_FALSE(desktop.calls.contains(QStringLiteral("identifierOf launch 1")));
}

TEST_F(LaunchOperations, A_window_that_goes_while_it_is_asked_about_is_awaited_further)
{
    const GoalID a = makeGoal();
    store().createTerminal(a);
    scheduler.advance(0ms);
    desktop.addWindow(1, 100, {});
    desktop.startupIDs[1] = "launch 1";
    scheduler.advance(249ms);
    store().refresh();
    scheduler.holdBackgroundWork(true);
    scheduler.advance(1ms);
    scheduler.runBackgroundWork();
    desktop.removeWindow(1);
    scheduler.holdBackgroundWork(false);
    store().refresh();
    const BoardNavigationState before = store().boardNavigation();
    scheduler.runBackgroundWork();
    EXPECT_EQ(store().boardNavigation(), before);
    EXPECT_TRUE(store().assignments().isEmpty());

    desktop.addWindow(2, 100, {});
    desktop.startupIDs[2] = "launch 1";
    scheduler.advance(250ms);
    EXPECT_EQ(listed(2).goalID, a);
}

TEST_F(LaunchOperations, Each_of_two_launches_gets_a_window_of_its_own)
{
    const GoalID a = makeGoal();
    const GoalID b = makeGoal();
    desktop.launchedIdentifier = QStringLiteral("xterm");
    store().createTerminal(a);
    scheduler.advance(100ms);
    store().createTerminal(b);
    scheduler.advance(0ms);
    addTerminalWindow(1);
    scheduler.advance(1s);
    EXPECT_EQ(listed(1).goalID, a);
    addTerminalWindow(2);
    scheduler.advance(250ms);
    EXPECT_EQ(listed(1).goalID, a);
    EXPECT_EQ(listed(2).goalID, b);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(LaunchOperations, A_launch_that_is_on_its_way_takes_no_window_that_another_one_got)
{
    const GoalID a = makeGoal();
    const GoalID b = makeGoal();
    desktop.launchedIdentifier = QStringLiteral("xterm");
    store().createTerminal(a);
    scheduler.advance(249ms);
    addTerminalWindow(1);
    // Requested before the pass that finds the first one's window has ended.
    desktop.inTheMiddleOfAPass = [&] {
        desktop.inTheMiddleOfAPass = {};
        store().createTerminal(b);
    };
    scheduler.advance(1ms);
    EXPECT_EQ(listed(1).goalID, a);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("launch terminal")), 2);
    scheduler.advance(5s);
    EXPECT_EQ(listed(1).goalID, a);
}

TEST_F(LaunchOperations, A_window_that_appears_before_the_last_pass_ends_is_still_assigned)
{
    const GoalID a = makeGoal();
    store();
    desktop.launchedIdentifier = QStringLiteral("xterm");
    store().createTerminal(a);
    scheduler.advance(4999ms);
    scheduler.holdBackgroundWork(true);
    scheduler.advance(1ms);
    addTerminalWindow(1);
    scheduler.runBackgroundWork();
    EXPECT_EQ(listed(1).goalID, a);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(LaunchOperations, Looks_that_take_longer_than_the_time_between_them_all_come_to_an_end)
{
    const GoalID a = makeGoal();
    const GoalID b = makeGoal();
    desktop.launchedIdentifier = QStringLiteral("xterm");
    store().createTerminal(a);
    scheduler.advance(100ms);
    store().createTerminal(b);
    scheduler.advance(0ms);
    scheduler.holdBackgroundWork(true);
    scheduler.advance(150ms);
    const int started = scheduler.backgroundWorkStarted();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    desktop.addWindow(9, 100, {});
    scheduler.advance(600ms);
    EXPECT_EQ(scheduler.backgroundWorkStarted(), started) << "the one under way was cancelled";
    scheduler.runBackgroundWork();
    EXPECT_EQ(listed(9).id, 9U);

    // No pass has been counted twice: the window may still appear until the last one.
    scheduler.holdBackgroundWork(false);
    scheduler.advance(4500ms);
    addTerminalWindow(1);
    addTerminalWindow(2);
    scheduler.advance(250ms);
    EXPECT_EQ(listed(2).goalID, a);
    EXPECT_EQ(listed(1).goalID, b);
}

TEST_F(LaunchOperations, Polling_goes_on_when_another_pass_is_requested_or_observing_ends)
{
    const GoalID a = makeGoal();
    store().startObserving();
    desktop.launchedIdentifier = QStringLiteral("xterm");
    store().createTerminal(a);
    scheduler.advance(0ms);
    scheduler.holdBackgroundWork(true);
    scheduler.advance(250ms);
    store().refresh();
    store().stopObserving();
    scheduler.holdBackgroundWork(false);
    addTerminalWindow(1);
    scheduler.advance(250ms);
    EXPECT_EQ(listed(1).goalID, a);
}

TEST_F(LaunchOperations, A_store_that_goes_away_launches_and_polls_no_more)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, {});
    store().refresh();
    desktop.launchedIdentifier = QStringLiteral("xterm");
    store().createTerminal(a);
    scheduler.advance(0ms);
    store().closeProcess(listed(1));
    restartedStore();
    EXPECT_EQ(scheduler.timersDue(), 0);
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 0);
}

} // namespace
} // namespace kelpa::test
