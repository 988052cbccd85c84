// What undo and redo bring into view: the selection, the search and the hiding of goals.

#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using Enter = EnterWindowLayer;

class Restoration : public StoreFixture
{
protected:
    Restoration() { store().setLanguage(AppLanguage::english); }
};

TEST_F(Restoration, The_selection_and_the_open_field_leave_a_goal_that_undo_takes_away)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    store().requestAddTodo(a);
    takeSignals();
    store().undo();
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());
    EXPECT_EQ(store().todoEditorGoalID(), std::nullopt);
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("goals"), 1},
                                                 {QStringLiteral("boardNavigation"), 1},
                                                 {QStringLiteral("todoEditorGoalID"), 1},
                                                 {QStringLiteral("todoEditorRequestID"), 1},
                                                 {QStringLiteral("canUndo"), 1},
                                                 {QStringLiteral("canRedo"), 1}}));
}

TEST_F(Restoration, What_comes_back_or_changes_is_selected_and_so_brought_into_view)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    const TodoID todo = makeTodo(a);
    const GoalID b = makeGoal(QStringLiteral("B"));
    store().deleteTodo(todo, a);
    store().activateTarget(TargetSelection::goal(b), Enter::no);
    store().undo();
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::on(TargetSelection::goal(a)));
    store().deleteGoal(b);
    store().undo();
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::on(TargetSelection::goal(b)));
}

TEST_F(Restoration, The_todo_that_came_back_is_published_until_the_next_step)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    const TodoID todo = makeTodo(a);
    store().deleteTodo(todo, a);
    EXPECT_EQ(store().restoredTodoID(), std::nullopt);
    store().undo();
    EXPECT_EQ(store().restoredTodoID(), todo);
    store().redo();
    EXPECT_EQ(store().restoredTodoID(), std::nullopt);
}

TEST_F(Restoration, Whoever_is_at_the_list_of_all_todos_stays_there)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    const TodoID todo = makeTodo(a);
    store().activateTarget(TargetSelection::unifiedTodos(), Enter::no);
    store().toggleTodo(todo, a);
    store().toggleTodo(todo, a);
    store().undo();
    const auto inList = BoardNavigationState::on(TargetSelection::unifiedTodos());
    EXPECT_EQ(store().boardNavigation(), inList);
    EXPECT_EQ(store().restoredTodoID(), todo);
    EXPECT_EQ(store().restorationID(), 1);
    store().renameGoal(a, QStringLiteral("B"));
    store().undo();
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::on(TargetSelection::goal(a)));
}

TEST_F(Restoration, A_search_that_shows_no_window_that_moved_ends)
{
    desktop.addWindow(1, 100, QStringLiteral("Letter"));
    desktop.addWindow(2, 100, QStringLiteral("Report"));
    store().refresh();
    const GoalID a = makeGoal(QStringLiteral("A"));
    store().assign(1, a);
    store().setSearchText(QStringLiteral("let"));
    store().undo();
    EXPECT_EQ(store().searchText(), QStringLiteral("let")) << "it shows the window";
    store().redo();
    store().setSearchText(QStringLiteral("rep"));
    store().undo();
    EXPECT_EQ(store().searchText(), QString());
    EXPECT_EQ(store().windows(std::optional<GoalID>()).size(), 2);
}

TEST_F(Restoration, A_search_stays_when_no_window_moved)
{
    desktop.addWindow(1, 100, QStringLiteral("Letter"));
    store().refresh();
    const GoalID a = makeGoal(QStringLiteral("A"));
    store().setSearchText(QStringLiteral("rep"));
    store().renameGoal(a, QStringLiteral("B"));
    store().undo();
    EXPECT_EQ(store().searchText(), QStringLiteral("rep"));
}

TEST_F(Restoration, The_window_of_a_goal_that_undo_takes_away_is_shown_where_it_was)
{
    desktop.addWindow(1, 100, QStringLiteral("Letter"));
    store().refresh();
    store().createGoal(QStringLiteral("A"), 1);
    store().setSearchText(QStringLiteral("rep"));
    store().undo();
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::on(TargetSelection::unassigned()));
    EXPECT_EQ(store().searchText(), QString()) << "it would hide the window";
}

TEST_F(Restoration, Every_step_back_or_forth_asks_to_be_shown_also_in_the_selected_goal)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    makeTodo(a);
    store().activateTarget(TargetSelection::goal(a), Enter::no);
    EXPECT_EQ(store().restorationID(), 0);
    store().undo();
    EXPECT_EQ(store().restorationID(), 1);
    store().redo();
    EXPECT_EQ(store().restorationID(), 2);
    store().redo();
    EXPECT_EQ(store().restorationID(), 2) << "there was nothing to do again";
}

TEST_F(Restoration, The_selection_leaves_a_goal_that_undo_hides)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    makeTodo(a);
    store().setHidingGoalsWithoutOpenTodos(true);
    store().activateTarget(TargetSelection::goal(a), Enter::no);
    store().undo();
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());
    EXPECT_TRUE(store().isHidingGoalsWithoutOpenTodos());
}

TEST_F(Restoration, What_comes_back_hidden_ends_the_hiding)
{
    const GoalID done = makeGoal(QStringLiteral("Done"));
    store().deleteGoal(done);
    store().setHidingGoalsWithoutOpenTodos(true);
    store().undo();
    EXPECT_FALSE(store().isHidingGoalsWithoutOpenTodos());
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(done));
    // Also what is changed in a goal that stays without open todos.
    store().renameGoal(done, QStringLiteral("Finished"));
    store().setHidingGoalsWithoutOpenTodos(true);
    store().undo();
    EXPECT_FALSE(store().isHidingGoalsWithoutOpenTodos());
}

TEST_F(Restoration, A_goal_that_a_step_hid_is_hidden_again_when_the_step_is_done_again)
{
    const GoalID goal = makeGoal(QStringLiteral("Goal"));
    const TodoID todo = makeTodo(goal);
    store().toggleTodo(todo, goal);
    store().setHidingGoalsWithoutOpenTodos(true);
    store().toggleTodo(todo, goal);
    ASSERT_TRUE(store().visibleGoals().isEmpty());
    store().undo();
    EXPECT_EQ(store().visibleGoals().size(), 1);
    store().redo();
    EXPECT_TRUE(store().visibleGoals().isEmpty());
    EXPECT_TRUE(store().isHidingGoalsWithoutOpenTodos());
}

} // namespace
} // namespace kelpa::test
