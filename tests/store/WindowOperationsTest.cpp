#include "store/board/BoardPersistence.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class WindowOperations : public StoreFixture
{
protected:
    QList<WindowID> idsOf(const QList<WindowItem>& windows)
    {
        QList<WindowID> ids;
        for (const WindowItem& window : windows)
            ids.append(window.id);
        return ids;
    }

    QList<WindowID> listed() { return idsOf(store().windows()); }

    std::optional<GoalID> goalOf(WindowID id)
    {
        for (const WindowItem& window : store().windows()) {
            if (window.id == id)
                return window.goalID;
        }
        ADD_FAILURE() << "window " << id << " is not listed";
        return std::nullopt;
    }

    void forgetWhatHappened()
    {
        takeSignals();
        takeWriteCount();
    }

    const QMap<QString, int> onlyWindows{{QStringLiteral("windows"), 1}};
};

TEST_F(WindowOperations, A_refresh_lists_what_the_desktop_shows)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    desktop.addWindow(2, FakeDesktop::ownProcess, QStringLiteral("Kelpa"));
    store().refresh();

    EXPECT_EQ(listed(), QList<WindowID>{1});
    EXPECT_EQ(takeSignals(), onlyWindows);
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(WindowOperations, A_refresh_that_finds_the_same_wakes_nobody)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    store().refresh();
    forgetWhatHappened();

    store().refresh();
    store().refreshInBackground();
    scheduler.advance(0ms);

    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(WindowOperations, Without_screen_capture_no_window_is_listed)
{
    desktop.addWindow(1, 100, {});
    store().refresh();
    desktop.isScreenCaptureGranted = false;
    forgetWhatHappened();

    store().refresh();

    EXPECT_TRUE(listed().isEmpty());
    EXPECT_FALSE(store().isScreenCaptureTrusted());
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("isScreenCaptureTrusted"), 1},
                                                 {QStringLiteral("obstacles"), 1},
                                                 {QStringLiteral("windows"), 1}}));

    desktop.isScreenCaptureGranted = true;
    store().refreshInBackground();
    scheduler.advance(0ms);
    EXPECT_EQ(listed(), QList<WindowID>{1});
}

TEST_F(WindowOperations, The_permissions_follow_the_desktop_with_every_pass)
{
    store();
    desktop.isAccessibilityGranted = false;
    store().refreshInBackground();
    EXPECT_FALSE(store().isAccessibilityTrusted());
    scheduler.advance(0ms);
    desktop.isAccessibilityGranted = true;
    store().refresh();
    EXPECT_TRUE(store().isAccessibilityTrusted());
}

TEST_F(WindowOperations, A_background_pass_applies_when_it_ends_and_only_one_is_under_way)
{
    desktop.addWindow(1, 100, {});
    scheduler.holdBackgroundWork(true);
    store().refreshInBackground();
    store().refreshInBackground();
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);

    scheduler.runBackgroundWork();
    EXPECT_EQ(listed(), QList<WindowID>{1});

    store().refreshInBackground();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1) << "the next one may start";
}

TEST_F(WindowOperations, A_refresh_cancels_the_pass_under_way)
{
    desktop.addWindow(1, 100, {});
    scheduler.holdBackgroundWork(true);
    store().refreshInBackground();
    scheduler.holdBackgroundWork(false);
    desktop.addWindow(2, 100, {});

    store().refresh();
    EXPECT_EQ(listed(), (QList<WindowID>{2, 1}));

    desktop.removeWindow(2);
    scheduler.runBackgroundWork();
    EXPECT_EQ(listed(), (QList<WindowID>{2, 1})) << "the older pass must not be applied";
}

TEST_F(WindowOperations, A_refresh_that_the_window_server_keeps_waiting_ends_in_the_background)
{
    desktop.addWindow(1, 100, {});
    store();
    scheduler.holdBackgroundWork(true);

    store().refresh();
    EXPECT_TRUE(listed().isEmpty());
    store().refreshInBackground();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);

    scheduler.runBackgroundWork();
    EXPECT_EQ(listed(), QList<WindowID>{1});
}

TEST_F(WindowOperations, An_assignment_is_stored_under_the_number_and_comes_back_with_each_pass)
{
    const GoalID a = makeGoal();
    desktop.addWindow(4127, 100, {});
    store().refresh();
    store().assign(4127, a);

    EXPECT_EQ(store().assignments(), (Assignments{{QStringLiteral("4127"), a}}));
    EXPECT_EQ(decodeAssignments(settings.document(assignmentsKey)), store().assignments());
    restartedStore();
    store().refresh();
    EXPECT_EQ(goalOf(4127), a);
}

TEST_F(WindowOperations, A_window_made_anew_is_unassigned_and_the_old_key_stays)
{
    const GoalID a = makeGoal();
    desktop.addWindow(4127, 100, QStringLiteral("same"));
    store().refresh();
    store().assign(4127, a);
    desktop.removeWindow(4127);
    desktop.addWindow(4128, 100, QStringLiteral("same"));

    store().refresh();

    EXPECT_EQ(goalOf(4128), std::nullopt);
    EXPECT_TRUE(
        decodeAssignments(settings.document(assignmentsKey))->contains(QStringLiteral("4127")));
}

TEST_F(WindowOperations, Assigning_to_no_goal_removes_the_key)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, {});
    store().refresh();
    store().assign(1, a);
    forgetWhatHappened();

    store().assign(1, std::nullopt);

    EXPECT_EQ(goalOf(1), std::nullopt);
    EXPECT_TRUE(store().assignments().isEmpty());
    EXPECT_EQ(settings.document(assignmentsKey), "{}");
    EXPECT_EQ(takeSignals(), onlyWindows);
}

TEST_F(WindowOperations, An_assignment_that_cannot_apply_changes_nothing)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, {});
    store().refresh();
    store().assign(1, a);
    forgetWhatHappened();

    store().assign(1, a);
    store().assign(2, a);
    store().assign(1, GoalID::create());

    EXPECT_EQ(goalOf(1), a);
    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(WindowOperations, Several_windows_are_assigned_at_once)
{
    const GoalID a = makeGoal();
    const GoalID b = makeGoal();
    for (const WindowID id : {1U, 2U, 3U})
        desktop.addWindow(id, 100, {});
    store().refresh();
    store().assign(2, b);
    forgetWhatHappened();

    EXPECT_TRUE(store().assign({1, 2}, a));

    EXPECT_EQ(goalOf(1), a);
    EXPECT_EQ(goalOf(2), a);
    EXPECT_EQ(goalOf(3), std::nullopt);
    EXPECT_EQ(store().assignments(),
              (Assignments{{QStringLiteral("1"), a}, {QStringLiteral("2"), a}}));
    EXPECT_EQ(takeSignals(), onlyWindows);
    EXPECT_EQ(takeWriteCount(), 1);
}

TEST_F(WindowOperations, Several_windows_are_assigned_all_or_none)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, {});
    store().refresh();
    forgetWhatHappened();

    EXPECT_FALSE(store().assign({1, 99}, a));
    EXPECT_FALSE(store().assign(QSet<WindowID>(), a));
    EXPECT_FALSE(store().assign(QSet<WindowID>{1}, GoalID::create()));

    EXPECT_EQ(goalOf(1), std::nullopt);
    EXPECT_TRUE(store().assignments().isEmpty());
    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(WindowOperations, Deleting_a_goal_frees_its_windows_whatever_keys_remain)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, {});
    store().refresh();
    store().assign(1, a);
    store().deleteGoal(a);
    EXPECT_EQ(goalOf(1), std::nullopt);

    // A key that names a goal of which nothing is known any more.
    settings.values.insert(assignmentsKey, encodeAssignments({{QStringLiteral("1"), a}}));
    restartedStore();
    store().refresh();
    EXPECT_EQ(goalOf(1), std::nullopt);
    EXPECT_TRUE(store().assignments().contains(QStringLiteral("1")));
}

TEST_F(WindowOperations, Legacy_terminal_keys_move_to_the_windows_and_are_saved)
{
    const GoalID a = makeGoal();
    settings.values.insert(assignmentsKey,
                           encodeAssignments({{QStringLiteral("terminal:812"), a}}));
    restartedStore();
    for (const WindowID id : {5U, 6U})
        desktop.addWindow(id, 812, {});
    desktop.addWindow(7, 100, {});
    desktop.applications[812].bundleIdentifier = QStringLiteral("com.apple.Terminal");

    store().refresh();

    EXPECT_EQ(goalOf(5), a);
    EXPECT_EQ(goalOf(6), a);
    EXPECT_EQ(goalOf(7), std::nullopt);
    EXPECT_EQ(decodeAssignments(settings.document(assignmentsKey)),
              (Assignments{{QStringLiteral("5"), a}, {QStringLiteral("6"), a}}));
}

TEST_F(WindowOperations, The_search_narrows_the_windows_of_every_list)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, QStringLiteral("Term paper"));
    desktop.addWindow(2, 100, QStringLiteral("Inbox"));
    desktop.addWindow(3, 101, QStringLiteral("midterm"));
    store().refresh();
    store().assign(3, a);
    forgetWhatHappened();

    store().setSearchText(QStringLiteral("  TERM "));

    EXPECT_EQ(idsOf(store().windows(std::optional<GoalID>())), QList<WindowID>{1});
    EXPECT_EQ(idsOf(store().windows(std::optional(a))), QList<WindowID>{3});
    EXPECT_EQ(store().windows().size(), 3);
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("searchText"), 1}}));
    EXPECT_EQ(takeWriteCount(), 0);

    store().setSearchText(QStringLiteral("   "));
    EXPECT_EQ(idsOf(store().filteredWindows()), (QList<WindowID>{3, 2, 1}));
}

TEST_F(WindowOperations, Only_goals_and_the_unassigned_column_have_windows)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, {});
    desktop.addWindow(2, 100, {});
    store().refresh();
    store().assign(2, a);

    EXPECT_EQ(idsOf(store().windows(TargetSelection::unassigned())), QList<WindowID>{1});
    EXPECT_EQ(idsOf(store().windows(TargetSelection::goal(a))), QList<WindowID>{2});
    EXPECT_TRUE(store().windows(TargetSelection::none()).isEmpty());
    EXPECT_TRUE(store().windows(TargetSelection::unifiedTodos()).isEmpty());
}

TEST_F(WindowOperations, Observing_runs_a_pass_at_once_and_then_every_two_seconds)
{
    desktop.addWindow(1, 100, {});
    store().startObserving();
    EXPECT_EQ(listed(), QList<WindowID>{1});
    store().startObserving();
    EXPECT_EQ(desktop.calls.count(QStringLiteral("openDiscoverySource")), 1);

    desktop.addWindow(2, 100, {});
    scheduler.advance(1999ms);
    EXPECT_EQ(listed(), QList<WindowID>{1});
    scheduler.advance(1ms);
    EXPECT_EQ(listed(), (QList<WindowID>{2, 1}));
    EXPECT_EQ(desktop.calls.count(QStringLiteral("openDiscoverySource")), 2);
}

TEST_F(WindowOperations, A_tick_during_a_pass_is_dropped)
{
    store().startObserving();
    scheduler.holdBackgroundWork(true);
    scheduler.advance(6s);
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    EXPECT_EQ(scheduler.backgroundWorkStarted(), 2);
}

TEST_F(WindowOperations, A_change_on_the_desktop_starts_a_pass_without_waiting_for_the_tick)
{
    store().startObserving();
    desktop.addWindow(1, 100, {});
    desktop.announceWindowChange();
    scheduler.advance(0ms);

    EXPECT_EQ(listed(), QList<WindowID>{1});
}

TEST_F(WindowOperations, A_change_during_a_pass_starts_one_more_pass)
{
    store().startObserving();
    scheduler.holdBackgroundWork(true);
    desktop.announceWindowChange();
    desktop.announceWindowChange();
    desktop.announceWindowChange();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);

    scheduler.runBackgroundWork();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    scheduler.runBackgroundWork();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 0);
}

TEST_F(WindowOperations, Observing_ends_with_an_empty_list_and_no_work)
{
    desktop.addWindow(1, 100, {});
    store().startObserving();
    scheduler.holdBackgroundWork(true);
    store().refreshInBackground();

    store().stopObserving();

    EXPECT_TRUE(listed().isEmpty());
    EXPECT_EQ(scheduler.timersDue(), 0);
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 0);
    EXPECT_EQ(desktop.watcherCount(), 0);

    scheduler.holdBackgroundWork(false);
    store().startObserving();
    EXPECT_EQ(listed(), QList<WindowID>{1});
}

TEST_F(WindowOperations, A_goal_made_for_a_window_has_it)
{
    desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Letter"));
    store().refresh();
    forgetWhatHappened();
    store().createGoal(QStringLiteral(" Write "), 7);
    ASSERT_EQ(goalTitles(), QStringList{QStringLiteral("Write")});
    EXPECT_EQ(goalOf(7), store().goals().front().id);
    EXPECT_EQ(goalOf(8), std::nullopt);
    EXPECT_EQ(takeSignals().value(QStringLiteral("windows")), 1);
    restartedStore().refresh();
    EXPECT_EQ(goalOf(7), store().goals().front().id);
}

TEST_F(WindowOperations, A_goal_made_for_a_window_that_has_gone_is_made_all_the_same)
{
    store().refresh();
    store().createGoal(QStringLiteral("Write"), 7);
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Write")});
    EXPECT_TRUE(store().assignments().isEmpty());
}

TEST_F(WindowOperations, A_blank_title_leaves_the_window_where_it_is)
{
    desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
    store().refresh();
    const GoalID old = makeGoal();
    store().assign(7, old);
    store().createGoal(QStringLiteral("  "), 7);
    EXPECT_EQ(store().goals().size(), 1);
    EXPECT_EQ(goalOf(7), old);
}

} // namespace
} // namespace kelpa::test
