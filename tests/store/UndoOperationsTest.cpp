// What undo and redo restore, what counts as a step, and the offer to undo a deletion.

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
