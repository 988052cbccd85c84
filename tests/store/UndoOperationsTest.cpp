#include "store/board/BoardPersistence.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using Enter = EnterWindowLayer;

const std::optional<GoalID> noGoal;

class UndoOperations : public StoreFixture
{
protected:
    UndoOperations() { store().setLanguage(AppLanguage::english); }

    BoardContents board()
    {
        return {store().goals(), store().unassignedTodos(), store().assignments()};
    }

    /// The contents that are stored now.
    BoardContents saved()
    {
        return {*decodeGoals(settings.document(goalsKey)),
                *decodeTodos(settings.document(unassignedTodosKey)),
                decodeAssignments(settings.document(assignmentsKey)).value_or(Assignments())};
    }

    /// Does `operation`, and takes it back and does it again: each time the very same board.
    void expectUndoable(const std::function<void()>& operation)
    {
        const BoardContents before = board();
        operation();
        const BoardContents after = board();
        ASSERT_NE(after, before);
        for (int i = 0; i < 2; ++i) {
            takeWriteCount();
            store().undo();
            EXPECT_EQ(board(), before);
            EXPECT_EQ(saved(), before);
            EXPECT_EQ(takeWriteCount(), 1);
            store().redo();
            EXPECT_EQ(board(), after);
            EXPECT_EQ(saved(), after);
            EXPECT_EQ(takeWriteCount(), 1);
        }
    }

    std::optional<GoalID> goalOf(WindowID id)
    {
        const auto& all = store().windows();
        return std::ranges::find(all, id, &WindowItem::id)->goalID;
    }
};

TEST_F(UndoOperations, On_a_board_as_it_was_loaded_there_is_nothing_to_undo)
{
    makeGoal();
    EXPECT_TRUE(store().canUndo());
    restartedStore();
    EXPECT_FALSE(store().canUndo());
    store().undo();
    store().redo();
    EXPECT_EQ(store().goals().size(), 1);
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(UndoOperations, Every_change_of_goals_is_undone_and_redone)
{
    expectUndoable([this] { store().createGoal(QStringLiteral("A")); });
    const GoalID a = store().goals().first().id;
    const GoalID b = makeGoal(QStringLiteral("B"));
    makeTodo(b);
    expectUndoable([&] { store().renameGoal(a, QStringLiteral("A2")); });
    expectUndoable([&] { store().setGoalPriority(GoalPriority::p0, a); });
    store().setAutoSortingGoals(false);
    expectUndoable([&] { store().moveGoal(b, a); });
    expectUndoable([&] { store().moveGoal(b, a, MovePlace::behind); });
    expectUndoable([&] { store().deleteGoal(b); });
}

TEST_F(UndoOperations, Every_change_of_todos_is_undone_and_redone)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    const GoalID b = makeGoal(QStringLiteral("B"));
    expectUndoable([&] { store().addTodo(QStringLiteral("one"), a); });
    const TodoID one = todos(a).first().id;
    const TodoID two = makeTodo(a, QStringLiteral("two"));
    const TodoID three = makeTodo(noGoal, QStringLiteral("three"));
    expectUndoable([&] { store().updateTodo(one, QStringLiteral("uno"), a); });
    expectUndoable([&] { store().toggleTodo(one, a); });
    scheduler.advance(10s);
    expectUndoable([&] { store().toggleTodo(one, a); });
    EXPECT_EQ(todos(a).first().completedAt, scheduler.calendarTime());
    expectUndoable([&] { store().moveTodo(one, a, b); });
    expectUndoable([&] { store().moveTodo(three, two); });
    expectUndoable([&] { store().moveTodo(three, two, MovePlace::behind); });
    expectUndoable([&] { store().deleteTodo(two, a); });
    expectUndoable([&] { store().deleteTodo(three, noGoal); });
}

TEST_F(UndoOperations, Every_change_of_assignments_is_undone_and_redone)
{
    for (const WindowID id : {1U, 2U, 3U})
        desktop.addWindow(id, 100, QStringLiteral("w"));
    store().refresh();
    const GoalID a = makeGoal(QStringLiteral("A"));
    expectUndoable([&] { store().assign(1, a); });
    expectUndoable([&] { store().assign({1, 2}, a); });
    expectUndoable([&] { store().assign(1, noGoal); });
    expectUndoable([&] { store().createGoal(QStringLiteral("B"), 3); });
    expectUndoable([&] { store().deleteGoal(a); });
    store().undo();
    EXPECT_EQ(goalOf(2), a) << "the windows are back with the goal at once";
    store().redo();
    EXPECT_EQ(goalOf(2), std::nullopt);
}

TEST_F(UndoOperations, Settings_selection_search_and_what_changes_nothing_are_no_steps)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    store().undo();
    store().setLanguage(AppLanguage::french);
    store().setHidingGoalsWithoutOpenTodos(true);
    store().setAutoSortingGoals(false);
    store().setAutoSortingGoals(true);
    store().setSearchText(QStringLiteral("x"));
    store().activateTarget(TargetSelection::unassigned(), Enter::no);
    store().renameGoal(a, QStringLiteral("gone"));
    EXPECT_FALSE(store().canUndo());
    EXPECT_TRUE(store().canRedo());
}

TEST_F(UndoOperations, Switching_the_automatic_order_on_is_undone_where_it_moved_goals)
{
    store().setAutoSortingGoals(false);
    const GoalID low = makeGoal(QStringLiteral("low"));
    store().setGoalPriority(GoalPriority::p0, makeGoal(QStringLiteral("high")));
    store().setAutoSortingGoals(true);
    ASSERT_EQ(goalTitles().first(), QStringLiteral("high"));

    store().undo();

    EXPECT_EQ(goalTitles().first(), QStringLiteral("low"));
    EXPECT_FALSE(store().isAutoSortingGoals());
    EXPECT_EQ(settings.value(autoSortingGoalsKey), SettingsValue(false));
    store().redo();
    EXPECT_EQ(goalTitles().first(), QStringLiteral("high"));
    EXPECT_TRUE(store().isAutoSortingGoals());
    EXPECT_EQ(settings.value(autoSortingGoalsKey), SettingsValue(true));
    EXPECT_EQ(goal(low).priority, GoalPriority::p2);
}

TEST_F(UndoOperations, In_automatic_order_what_comes_back_is_in_automatic_order)
{
    store().setAutoSortingGoals(false);
    const GoalID low = makeGoal(QStringLiteral("low"));
    const GoalID high = makeGoal(QStringLiteral("high"));
    store().setGoalPriority(GoalPriority::p0, high);
    store().moveGoal(high, low);
    store().setAutoSortingGoals(true);
    store().undo();
    EXPECT_TRUE(store().isAutoSortingGoals()) << "the switch moved nothing and is no step";
    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("high"), QStringLiteral("low")}));
}

TEST_F(UndoOperations, What_the_desktop_did_meanwhile_stays)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    desktop.addWindow(1, 100, QStringLiteral("w"));
    desktop.addWindow(2, 100, QStringLiteral("w"));
    store().refresh();
    store().assign(1, a);
    desktop.removeWindow(1);
    store().refresh();

    store().undo();
    EXPECT_TRUE(store().assignments().isEmpty());
    EXPECT_EQ(store().windows().size(), 1);
    store().redo();
    EXPECT_EQ(store().assignments(), (Assignments{{QStringLiteral("1"), a}}));
}

TEST_F(UndoOperations, The_selection_and_the_open_field_leave_a_goal_that_undo_takes_away)
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

TEST_F(UndoOperations, What_comes_back_or_changes_is_selected_and_so_brought_into_view)
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

TEST_F(UndoOperations, The_todo_that_came_back_is_published_until_the_next_step)
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

TEST_F(UndoOperations, Whoever_is_at_the_list_of_all_todos_stays_there)
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

TEST_F(UndoOperations, A_search_that_shows_no_window_that_moved_ends)
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
    EXPECT_EQ(store().windows(noGoal).size(), 2);
}

TEST_F(UndoOperations, A_search_stays_when_no_window_moved)
{
    desktop.addWindow(1, 100, QStringLiteral("Letter"));
    store().refresh();
    const GoalID a = makeGoal(QStringLiteral("A"));
    store().setSearchText(QStringLiteral("rep"));
    store().renameGoal(a, QStringLiteral("B"));
    store().undo();
    EXPECT_EQ(store().searchText(), QStringLiteral("rep"));
}

TEST_F(UndoOperations, The_window_of_a_goal_that_undo_takes_away_is_shown_where_it_was)
{
    desktop.addWindow(1, 100, QStringLiteral("Letter"));
    store().refresh();
    store().createGoal(QStringLiteral("A"), 1);
    store().setSearchText(QStringLiteral("rep"));
    store().undo();
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::on(TargetSelection::unassigned()));
    EXPECT_EQ(store().searchText(), QString()) << "it would hide the window";
}

TEST_F(UndoOperations, Every_step_back_or_forth_asks_to_be_shown_also_in_the_selected_goal)
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

TEST_F(UndoOperations, The_selection_leaves_a_goal_that_undo_hides)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    makeTodo(a);
    store().setHidingGoalsWithoutOpenTodos(true);
    store().activateTarget(TargetSelection::goal(a), Enter::no);
    store().undo();
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());
    EXPECT_TRUE(store().isHidingGoalsWithoutOpenTodos());
}

TEST_F(UndoOperations, A_deletion_is_announced_with_an_offer_to_undo_it)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    const TodoID todo = makeTodo(a);
    store().deleteTodo(todo, a);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("Todo deleted"));
    EXPECT_TRUE(store().toastOffersUndo());
    store().deleteGoal(a);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("Goal deleted"));
    EXPECT_TRUE(store().toastOffersUndo());

    store().undo();

    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("A")});
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    EXPECT_FALSE(store().toastOffersUndo());
    store().undo();
    EXPECT_EQ(todos(a).first().id, todo);
}

TEST_F(UndoOperations, The_offer_stays_six_seconds)
{
    store().deleteGoal(makeGoal());
    scheduler.advance(5999ms);
    EXPECT_TRUE(store().toastOffersUndo());
    scheduler.advance(1ms);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    EXPECT_FALSE(store().toastOffersUndo());
    EXPECT_EQ(scheduler.timersDue(), 0);
    store().undo();
    EXPECT_EQ(store().goals().size(), 1);
}

TEST_F(UndoOperations, The_offer_ends_with_the_next_step_which_it_would_undo_instead)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    store().deleteGoal(makeGoal(QStringLiteral("B")));
    store().renameGoal(a, QStringLiteral("A2"));
    EXPECT_FALSE(store().toastOffersUndo());
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(UndoOperations, Another_toast_takes_the_place_of_the_offer)
{
    store().deleteGoal(makeGoal());
    store().copyTodo({});
    EXPECT_FALSE(store().toastOffersUndo());
    EXPECT_TRUE(store().toastMessage().has_value());
    scheduler.advance(2s);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
}

TEST_F(UndoOperations, A_window_that_a_launch_brought_stays_when_the_step_before_is_undone)
{
    const GoalID a = makeGoal(QStringLiteral("A"));
    store().renameGoal(a, QStringLiteral("A2"));
    desktop.launchedIdentifier = QStringLiteral("xterm");
    store().createTerminal(a);
    scheduler.advance(0ms);
    desktop.addWindow(7, 100, QStringLiteral("new"));
    desktop.applications[100].bundleIdentifier = QStringLiteral("xterm");
    scheduler.advance(250ms);
    ASSERT_EQ(goalOf(7), a);

    store().undo();
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("A")});
    EXPECT_EQ(goalOf(7), a);
    expectUndoable([&] { store().deleteGoal(a); });
    store().undo();
    EXPECT_EQ(goalOf(7), a);
}

TEST_F(UndoOperations, What_comes_back_hidden_ends_the_hiding)
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

TEST_F(UndoOperations, A_goal_that_a_step_hid_is_hidden_again_when_the_step_is_done_again)
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

TEST_F(UndoOperations, A_board_that_is_read_late_begins_a_new_history)
{
    settings.isUnreadable = true;
    restartedStore();
    store().deleteGoal(makeGoal());
    EXPECT_TRUE(store().canUndo());
    settings.isUnreadable = false;
    scheduler.advance(5s);
    EXPECT_FALSE(store().canUndo());
    EXPECT_FALSE(store().toastOffersUndo());
}

} // namespace
} // namespace kelpa::test
