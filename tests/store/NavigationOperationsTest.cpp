#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using State = BoardNavigationState;
using enum NavigationDirection;
using Enter = EnterWindowLayer;

class NavigationOperations : public StoreFixture
{
protected:
    GoalID goalWithWindows(const QSet<WindowID>& ids)
    {
        const GoalID id = makeGoal();
        for (const WindowID window : ids)
            desktop.addWindow(window, 100, {});
        store().refresh();
        EXPECT_TRUE(store().assign(ids, id));
        return id;
    }

    /// Selects `target` and enters it.
    void enter(const TargetSelection& target)
    {
        store().activateTarget(target, Enter::yes);
        takeSignals();
    }

    const State& state() { return store().boardNavigation(); }
    const QMap<QString, int> onlyNavigation{{QStringLiteral("boardNavigation"), 1}};
};

TEST_F(NavigationOperations, An_arrow_from_idle_selects_the_unified_column_also_with_goals)
{
    makeGoal();
    store().clearTargetSelection();
    takeSignals();
    takeWriteCount();

    store().moveTargetSelection(right);

    EXPECT_EQ(state(), State::on(TargetSelection::unifiedTodos()));
    EXPECT_EQ(takeSignals(), onlyNavigation);
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(NavigationOperations, Arrows_move_by_the_columns_that_the_board_has_laid_out)
{
    const GoalID a = makeGoal();
    makeGoal();
    const GoalID c = makeGoal();
    store().setTargetGridColumnCount(3);
    store().activateTarget(TargetSelection::unassigned(), Enter::no);
    store().moveTargetSelection(down);
    EXPECT_EQ(state().target, TargetSelection::goal(c));
    store().moveTargetSelection(up);
    store().moveTargetSelection(right);
    EXPECT_EQ(state().target, TargetSelection::goal(a));
    takeSignals();

    store().moveTargetSelection(right);
    store().moveTargetSelection(down);

    EXPECT_EQ(state().target, TargetSelection::goal(a));
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(NavigationOperations, Hidden_goals_are_no_targets)
{
    const GoalID hidden = makeGoal();
    const GoalID open = makeGoal();
    makeTodo(open);
    store().setHidingGoalsWithoutOpenTodos(true);
    store().activateTarget(TargetSelection::unassigned(), Enter::no);
    store().moveTargetSelection(down);
    EXPECT_EQ(state().target, TargetSelection::goal(open));
    takeSignals();

    store().moveTargetSelection(down);
    store().activateTarget(TargetSelection::goal(hidden), Enter::no);

    EXPECT_EQ(state().target, TargetSelection::goal(open));
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(NavigationOperations, Entering_selects_the_first_window_and_leaving_the_target)
{
    const GoalID a = goalWithWindows({1, 2});
    const TargetSelection target = TargetSelection::goal(a);
    store().activateTarget(target, Enter::yes);
    EXPECT_EQ(state(), State::inside(target, store().windows(target).first().id));

    store().returnToTargetSelection();
    EXPECT_EQ(state(), State::on(target));
    takeSignals();
    store().returnToTargetSelection();
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(NavigationOperations, Entering_a_target_without_windows_publishes_nothing)
{
    makeGoal();
    takeSignals();
    store().activateTarget(state().target, Enter::yes);
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(NavigationOperations, Activating_nothing_does_nothing)
{
    makeGoal();
    const State before = state();
    store().activateTarget(TargetSelection::none(), Enter::no);
    store().activateTarget(TargetSelection::goal(GoalID::create()), Enter::no);
    EXPECT_EQ(state(), before);
}

TEST_F(NavigationOperations, Arrows_within_a_target_walk_two_columns)
{
    const GoalID a = goalWithWindows({1, 2, 3});
    const TargetSelection target = TargetSelection::goal(a);
    const QList<WindowItem> windows = store().windows(target);
    enter(target);

    store().moveWindowSelection(right);
    EXPECT_EQ(state(), State::inside(target, windows[1].id));
    store().moveWindowSelection(down);
    EXPECT_EQ(state(), State::inside(target, windows[1].id));
    store().moveWindowSelection(left);
    store().moveWindowSelection(down);
    EXPECT_EQ(state(), State::inside(target, windows[2].id));
}

TEST_F(NavigationOperations, A_window_that_closes_hands_its_selection_to_the_first)
{
    const GoalID a = goalWithWindows({1, 2, 3});
    const TargetSelection target = TargetSelection::goal(a);
    enter(target);
    store().moveWindowSelection(right);
    const WindowID selected = *state().selectedWindowID;
    desktop.removeWindow(selected);
    takeSignals();

    store().refresh();

    EXPECT_EQ(state(), State::inside(target, store().windows(target).first().id));
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("boardNavigation"), 1},
                                                 {QStringLiteral("windows"), 1},
                                                 {QStringLiteral("windowMemory"), 1}}));
}

TEST_F(NavigationOperations, The_last_window_to_close_hands_the_selection_to_the_target)
{
    const GoalID a = goalWithWindows({1});
    enter(TargetSelection::goal(a));
    desktop.removeWindow(1);
    store().refresh();
    EXPECT_EQ(state(), State::on(TargetSelection::goal(a)));
}

TEST_F(NavigationOperations, A_selected_window_that_is_assigned_elsewhere_loses_the_selection)
{
    const GoalID other = makeGoal();
    const GoalID a = goalWithWindows({1});
    enter(TargetSelection::goal(a));
    store().assign(1, other);
    EXPECT_EQ(state(), State::on(TargetSelection::goal(a)));
}

TEST_F(NavigationOperations, A_search_that_hides_the_selected_window_leaves_it_to_the_next_arrow)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, QStringLiteral("paper"));
    desktop.addWindow(2, 100, QStringLiteral("paper too"));
    desktop.addWindow(3, 100, QStringLiteral("other"));
    store().refresh();
    ASSERT_TRUE(store().assign({1, 2, 3}, a));
    const TargetSelection target = TargetSelection::goal(a);
    enter(target);
    const State selected = State::inside(target, 3);
    EXPECT_EQ(state(), selected);

    for (const char* search : {"paper", "nothing of the kind", ""}) {
        store().setSearchText(QString::fromLatin1(search));
        EXPECT_EQ(state(), selected) << search;
        store().refresh();
        EXPECT_EQ(state(), selected) << search << ", and windows are listed anew";
    }
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("searchText"), 3}}));

    store().setSearchText(QStringLiteral("paper"));
    EXPECT_EQ(store().selectedWindowIndex(), -1);
    store().activateSelection();
    scheduler.advance(std::chrono::milliseconds(0));
    EXPECT_TRUE(desktop.calls.filter(QStringLiteral("raise ")).isEmpty()) << "it does not show";
    store().moveWindowSelection(down);
    EXPECT_EQ(state(), State::inside(target, 2));
    store().setSearchText(QStringLiteral("nothing of the kind"));
    store().moveWindowSelection(down);
    EXPECT_EQ(state(), State::on(target));
}

TEST_F(NavigationOperations, One_step_shows_what_a_search_finds_in_hidden_goals)
{
    const GoalID open = makeGoal();
    makeTodo(open);
    const GoalID other = makeGoal();
    const GoalID hidden = makeGoal();
    desktop.addWindow(1, 100, QStringLiteral("paper"));
    desktop.addWindow(2, 100, QStringLiteral("paper too"));
    desktop.addWindow(3, 100, QStringLiteral("letter"));
    store().refresh();
    store().assign(1, open);
    store().assign(2, hidden);
    store().assign(3, other);
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_EQ(store().hiddenGoals(), (HiddenGoals{2, 2}));
    store().setSearchText(QStringLiteral("paper"));
    EXPECT_EQ(store().searchFindings().hiddenCount, 1);
    EXPECT_EQ(store().searchFindings().windowCount, 1);

    store().showHiddenFindings();

    EXPECT_FALSE(store().isHidingGoalsWithoutOpenTodos());
    EXPECT_EQ(state(), State::inside(TargetSelection::goal(hidden), 2));
    EXPECT_EQ(store().searchText(), QStringLiteral("paper"));
    EXPECT_EQ(store().searchFindings().windowCount, 2);

    store().setHidingGoalsWithoutOpenTodos(true);
    store().setSearchText(QStringLiteral("nobody"));
    store().showHiddenFindings();
    EXPECT_TRUE(store().isHidingGoalsWithoutOpenTodos()) << "there is nothing to show";
}

TEST_F(NavigationOperations, A_window_that_closes_during_a_search_hands_over_to_the_first_shown)
{
    const GoalID a = makeGoal();
    desktop.addWindow(1, 100, QStringLiteral("paper"));
    desktop.addWindow(2, 100, QStringLiteral("other"));
    desktop.addWindow(3, 100, QStringLiteral("third"));
    store().refresh();
    ASSERT_TRUE(store().assign({1, 2, 3}, a));
    enter(TargetSelection::goal(a));
    store().setSearchText(QStringLiteral("paper"));

    desktop.removeWindow(3);
    store().refresh();

    EXPECT_EQ(state(), State::inside(TargetSelection::goal(a), 1));
}

TEST_F(NavigationOperations, A_window_is_selected_in_its_own_target_and_not_raised)
{
    const GoalID a = goalWithWindows({1, 2});
    desktop.addWindow(3, 100, {});
    store().refresh();
    takeSignals();
    store().selectWindow(2);
    EXPECT_EQ(state(), State::inside(TargetSelection::goal(a), 2));
    EXPECT_EQ(takeSignals(), onlyNavigation);
    store().selectWindow(2);
    EXPECT_TRUE(takeSignals().isEmpty());
    store().selectWindow(3);
    EXPECT_EQ(state(), State::inside(TargetSelection::unassigned(), 3));
    scheduler.advance(std::chrono::milliseconds(0));
    EXPECT_TRUE(desktop.calls.filter(QStringLiteral("raise ")).isEmpty());
}

TEST_F(NavigationOperations, A_window_that_does_not_show_is_not_selected)
{
    const GoalID a = goalWithWindows({1});
    store().activateTarget(TargetSelection::unassigned(), Enter::no);
    store().selectWindow(7);
    EXPECT_EQ(state(), State::on(TargetSelection::unassigned()));
    store().setSearchText(QStringLiteral("nothing of the kind"));
    store().selectWindow(1);
    EXPECT_EQ(state(), State::on(TargetSelection::unassigned()));
    store().setSearchText({});
    store().setHidingGoalsWithoutOpenTodos(true);
    store().selectWindow(1);
    EXPECT_EQ(state(), State::on(TargetSelection::unassigned()));
    makeTodo(a);
    store().selectWindow(1);
    EXPECT_EQ(state(), State::inside(TargetSelection::goal(a), 1));
}

TEST_F(NavigationOperations, Clearing_returns_to_idle_once)
{
    makeGoal();
    takeSignals();
    store().clearTargetSelection();
    EXPECT_EQ(state(), State::idle());
    EXPECT_EQ(takeSignals(), onlyNavigation);
    store().clearTargetSelection();
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(NavigationOperations, Hiding_drops_the_selection_of_a_goal_without_open_todos)
{
    makeGoal();
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_EQ(state(), State::idle());

    store().activateTarget(TargetSelection::unassigned(), Enter::no);
    takeSignals();
    store().setHidingGoalsWithoutOpenTodos(false);
    EXPECT_EQ(state(), State::on(TargetSelection::unassigned()));
    EXPECT_EQ(takeSignals(),
              (QMap<QString, int>{{QStringLiteral("isHidingGoalsWithoutOpenTodos"), 1}}));
}

TEST_F(NavigationOperations, Hiding_keeps_the_selection_of_a_goal_with_open_todos)
{
    const GoalID a = makeGoal();
    makeTodo(a);
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_EQ(state(), State::on(TargetSelection::goal(a)));
}

} // namespace
} // namespace kelpa::test
