#include "model/TodoLines.h"
#include "store/board/BoardPersistence.h"
#include "support/BoardBuilders.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class TodoOperations : public StoreFixture
{
protected:
    TodoItem todo(TodoID id, std::optional<GoalID> in)
    {
        const QList<TodoItem> list = todos(in);
        const qsizetype index = indexOf(list, id);
        return index >= 0 ? list[index] : TodoItem();
    }

    void expectSaved()
    {
        EXPECT_EQ(decodeGoals(settings.document(goalsKey)), store().goals());
        EXPECT_EQ(decodeTodos(settings.document(unassignedTodosKey)), store().unassignedTodos());
    }

    void expectNothingHappened()
    {
        EXPECT_TRUE(takeSignals().isEmpty());
        EXPECT_EQ(takeWriteCount(), 0);
    }

    void forgetWhatHappened()
    {
        takeSignals();
        takeWriteCount();
    }

    static constexpr std::optional<GoalID> unassigned = std::nullopt;
};

TEST_F(TodoOperations, New_todos_are_numbered_over_all_lists)
{
    const GoalID a = makeGoal();
    const TodoID first = makeTodo(a, QStringLiteral("  first \n"));
    const TodoID second = makeTodo(unassigned, QStringLiteral("second"));

    EXPECT_EQ(todo(first, a).order, 0);
    EXPECT_EQ(todo(first, a).title, QStringLiteral("first"));
    EXPECT_EQ(todo(first, a).status, TodoStatus::todo);
    EXPECT_EQ(todo(first, a).completedAt, std::nullopt);
    EXPECT_EQ(todo(second, unassigned).order, 1);
    expectSaved();
}

TEST_F(TodoOperations, Several_todos_are_added_in_one_step)
{
    const GoalID a = makeGoal();
    makeTodo(unassigned, QStringLiteral("before"));
    forgetWhatHappened();
    store().addTodos({{QStringLiteral(" one "), false},
                      {QStringLiteral(" \t"), false},
                      {QStringLiteral("two"), true}},
                     a);

    EXPECT_EQ(takeWriteCount(), 1);
    const QList<TodoItem> added = todos(a);
    ASSERT_EQ(added.size(), 2);
    EXPECT_EQ(added.front().title, QStringLiteral("one"));
    EXPECT_EQ(added.front().order, 1);
    EXPECT_TRUE(added.front().isOpen());
    EXPECT_EQ(added.front().completedAt, std::nullopt);
    EXPECT_EQ(added.back().title, QStringLiteral("two"));
    EXPECT_EQ(added.back().order, 2);
    EXPECT_EQ(added.back().status, TodoStatus::completed);
    EXPECT_EQ(added.back().completedAt, scheduler.calendarTime());
    expectSaved();

    store().undo();
    EXPECT_TRUE(todos(a).isEmpty());
    EXPECT_EQ(todos(unassigned).size(), 1);

    forgetWhatHappened();
    store().addTodos({{QStringLiteral("\n"), true}}, a);
    store().addTodos({{QStringLiteral("lost"), false}}, GoalID::create());
    expectNothingHappened();
}

TEST_F(TodoOperations, A_blank_title_or_an_unknown_goal_adds_nothing)
{
    const GoalID a = makeGoal();
    forgetWhatHappened();

    store().addTodo(QStringLiteral("   "), a);
    store().addTodo(QStringLiteral("\n"), unassigned);
    store().addTodo(QStringLiteral("x"), GoalID::create());

    EXPECT_TRUE(goal(a).todos.isEmpty());
    EXPECT_TRUE(store().unassignedTodos().isEmpty());
    expectNothingHappened();
}

TEST_F(TodoOperations, The_last_open_todo_of_a_goal_lingers_when_completed_and_a_toast_offers_undo)
{
    using namespace std::chrono_literals;
    store().setLanguage(AppLanguage::english);
    const GoalID a = makeGoal();
    const TodoID other = makeTodo(a);
    const TodoID last = makeTodo(a);
    const auto complete = [this, a](TodoID todoID) {
        store().toggleTodo(todoID, a);
        EXPECT_EQ(store().toastMessage(), std::nullopt) << "it is in progress";
        store().toggleTodo(todoID, a);
    };
    complete(other);
    EXPECT_EQ(store().lingeringTodoID(), std::nullopt) << "it shows above the open one";
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    complete(last);
    EXPECT_EQ(store().lingeringTodoID(), last);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("Last todo of the goal completed"));
    EXPECT_TRUE(store().toastOffersUndo());
    scheduler.advance(1499ms);
    EXPECT_EQ(store().lingeringTodoID(), last);
    scheduler.advance(1ms);
    EXPECT_EQ(store().lingeringTodoID(), std::nullopt);
    store().undo();
    EXPECT_TRUE(goal(a).hasOpenTodo());
    EXPECT_EQ(store().toastMessage(), std::nullopt);

    // Those of no goal have a list that shows them on.
    const TodoID loose = makeTodo(unassigned);
    store().toggleTodo(loose, unassigned);
    store().toggleTodo(loose, unassigned);
    EXPECT_EQ(store().lingeringTodoID(), std::nullopt);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
}

TEST_F(TodoOperations, Adding_sorts_the_goals)
{
    makeGoal(QStringLiteral("a"));
    makeTodo(makeGoal(QStringLiteral("b")));
    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("b"), QStringLiteral("a")}));
}

TEST_F(TodoOperations, An_edit_sets_the_trimmed_title_and_nothing_else)
{
    const GoalID a = makeGoal();
    const TodoID id = makeTodo(a, QStringLiteral("old"));
    store().toggleTodo(id, a);
    TodoItem expected = todo(id, a);
    expected.title = QStringLiteral("new");

    store().updateTodo(id, QStringLiteral(" new "), a);

    EXPECT_EQ(todo(id, a), expected);
    expectSaved();
}

TEST_F(TodoOperations, An_edit_that_cannot_apply_keeps_the_old_title)
{
    const GoalID a = makeGoal();
    const TodoID id = makeTodo(a, QStringLiteral("old"));
    forgetWhatHappened();

    store().updateTodo(id, QStringLiteral("   "), a);
    store().updateTodo(id, QStringLiteral("old"), a);
    store().updateTodo(id, QStringLiteral("new"), unassigned);
    store().updateTodo(id, QStringLiteral("new"), GoalID::create());
    store().updateTodo(TodoID::create(), QStringLiteral("new"), a);

    EXPECT_EQ(todo(id, a).title, QStringLiteral("old"));
    expectNothingHappened();
}

TEST_F(TodoOperations, Three_toggles_pass_through_the_states_and_come_back)
{
    const TodoID id = makeTodo(unassigned);
    store().toggleTodo(id, unassigned);
    EXPECT_EQ(todo(id, unassigned).status, TodoStatus::ing);
    EXPECT_EQ(todo(id, unassigned).completedAt, std::nullopt);

    scheduler.advance(10s);
    store().toggleTodo(id, unassigned);
    EXPECT_EQ(todo(id, unassigned).status, TodoStatus::completed);
    EXPECT_EQ(todo(id, unassigned).completedAt, scheduler.calendarTime());
    expectSaved();

    store().toggleTodo(id, unassigned);
    EXPECT_EQ(todo(id, unassigned).status, TodoStatus::todo);
    EXPECT_EQ(todo(id, unassigned).completedAt, std::nullopt);
}

TEST_F(TodoOperations, Completing_the_last_open_todo_hides_the_goal_and_drops_its_selection)
{
    const GoalID a = makeGoal();
    const TodoID id = makeTodo(a);
    store().setHidingGoalsWithoutOpenTodos(true);
    store().requestAddTodo(a);
    const std::int64_t request = store().todoEditorRequestID();
    store().toggleTodo(id, a);
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(a)) << "still open";

    store().toggleTodo(id, a);

    EXPECT_TRUE(store().visibleGoals().isEmpty());
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());
    EXPECT_EQ(store().todoEditorGoalID(), std::nullopt);
    EXPECT_EQ(store().todoEditorRequestID(), request + 1);
}

TEST_F(TodoOperations, Deleting_removes_the_todo_from_the_named_list_only)
{
    const GoalID a = makeGoal();
    const TodoID id = makeTodo(a);
    forgetWhatHappened();
    store().deleteTodo(id, unassigned);
    store().deleteTodo(id, GoalID::create());
    store().deleteTodo(TodoID::create(), a);
    EXPECT_EQ(goal(a).todos.size(), 1);
    expectNothingHappened();

    store().deleteTodo(id, a);
    EXPECT_TRUE(goal(a).todos.isEmpty());
    expectSaved();
}

TEST_F(TodoOperations, Deleting_the_last_open_todo_of_the_selected_goal_drops_the_selection)
{
    const GoalID a = makeGoal();
    const TodoID id = makeTodo(a);
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(a));

    store().deleteTodo(id, a);

    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());
}

TEST_F(TodoOperations, Moving_to_another_list_keeps_everything_of_the_todo)
{
    const GoalID a = makeGoal();
    const GoalID b = makeGoal();
    const TodoID id = makeTodo(a);
    makeTodo(b);
    makeTodo(b);
    store().toggleTodo(id, a);
    store().toggleTodo(id, a);
    const TodoItem before = todo(id, a);

    store().moveTodo(id, a, b);
    EXPECT_TRUE(goal(a).todos.isEmpty());
    EXPECT_EQ(goal(b).todos.last(), before);
    expectSaved();

    store().moveTodo(id, b, unassigned);
    EXPECT_EQ(store().unassignedTodos(), QList<TodoItem>{before});
    store().moveTodo(id, unassigned, a);
    EXPECT_EQ(goal(a).todos, QList<TodoItem>{before});
}

TEST_F(TodoOperations, A_move_from_or_to_an_unknown_list_loses_nothing)
{
    const GoalID a = makeGoal();
    const TodoID id = makeTodo(a);
    forgetWhatHappened();

    store().moveTodo(id, a, GoalID::create());
    store().moveTodo(id, GoalID::create(), a);
    store().moveTodo(id, unassigned, a);
    store().moveTodo(TodoID::create(), a, unassigned);
    store().moveTodo(id, a, a);

    EXPECT_EQ(goal(a).todos.size(), 1);
    expectNothingHappened();
}

TEST_F(TodoOperations, Moving_the_last_open_todo_away_drops_the_selection_of_the_hidden_goal)
{
    const GoalID b = makeGoal();
    makeTodo(b);
    const GoalID a = makeGoal();
    const TodoID id = makeTodo(a);
    store().setHidingGoalsWithoutOpenTodos(true);

    store().moveTodo(id, a, b);

    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());
}

TEST_F(TodoOperations, Moving_before_another_todo_renumbers_the_board_and_no_list_changes)
{
    const GoalID a = makeGoal();
    const TodoID t0 = makeTodo(a);
    const TodoID t1 = makeTodo(unassigned);
    const TodoID t2 = makeTodo(a);
    const TodoID t3 = makeTodo(unassigned);

    store().moveTodo(t3, t0);

    EXPECT_EQ(todo(t3, unassigned).order, 0);
    EXPECT_EQ(todo(t0, a).order, 1);
    EXPECT_EQ(todo(t1, unassigned).order, 2);
    EXPECT_EQ(todo(t2, a).order, 3);
    expectSaved();

    store().moveTodo(t3, t2);
    EXPECT_EQ(todo(t0, a).order, 0);
    EXPECT_EQ(todo(t1, unassigned).order, 1);
    EXPECT_EQ(todo(t3, unassigned).order, 2);
    EXPECT_EQ(todo(t2, a).order, 3);
}

TEST_F(TodoOperations, Moving_before_itself_or_an_unknown_todo_changes_nothing)
{
    const TodoID t0 = makeTodo(unassigned);
    const TodoID t1 = makeTodo(unassigned);
    forgetWhatHappened();

    store().moveTodo(t0, t0);
    store().moveTodo(t0, TodoID::create());
    store().moveTodo(TodoID::create(), t0);
    store().moveTodo(t0, t1);

    EXPECT_EQ(todo(t0, unassigned).order, 0);
    expectNothingHappened();
}

TEST_F(TodoOperations, Copying_replaces_the_clipboard_and_saves_nothing)
{
    const TodoID id = makeTodo(unassigned, QStringLiteral("Grüße 👋"));
    forgetWhatHappened();

    store().copyTodo(todo(id, unassigned));

    EXPECT_EQ(desktop.pasteboardText, QStringLiteral("Grüße 👋"));
    EXPECT_EQ(desktop.pasteboardWrites, 1);
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("toastMessage"), 1}}));
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(TodoOperations, Asking_for_the_editor_selects_the_goal_and_counts_every_time)
{
    const GoalID a = makeGoal();
    const GoalID b = makeGoal();
    forgetWhatHappened();

    store().requestAddTodo(a);
    EXPECT_EQ(store().todoEditorGoalID(), a);
    EXPECT_EQ(store().todoEditorRequestID(), 1);
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::on(TargetSelection::goal(a)));

    store().requestAddTodo(a);
    EXPECT_EQ(store().todoEditorRequestID(), 2);
    store().requestAddTodo(b);
    EXPECT_EQ(store().todoEditorGoalID(), b);
    EXPECT_EQ(store().todoEditorRequestID(), 3);
    store().requestAddTodo(GoalID::create());
    EXPECT_EQ(store().todoEditorGoalID(), b);
    EXPECT_EQ(store().todoEditorRequestID(), 3);
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(TodoOperations, Cancelling_closes_the_editor_once)
{
    store().cancelTodoEditor();
    EXPECT_EQ(store().todoEditorRequestID(), 0);

    store().requestAddTodo(makeGoal());
    store().cancelTodoEditor();
    EXPECT_EQ(store().todoEditorGoalID(), std::nullopt);
    EXPECT_EQ(store().todoEditorRequestID(), 2);
    forgetWhatHappened();
    store().cancelTodoEditor();
    EXPECT_EQ(store().todoEditorRequestID(), 2);
    expectNothingHappened();
}

} // namespace
} // namespace kelpa::test
