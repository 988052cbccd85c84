// The operations on todos under the ids that QML holds.
#include "views/todos/TodoController.h"

#include "support/StoreFixture.h"
#include "views/board/BoardColumnModel.h"
#include "views/board/BoardController.h"

#include <QSignalSpy>

namespace kelpa::test {
namespace {

class Todos : public StoreFixture
{
protected:
    Todos()
    {
        store().setLanguage(AppLanguage::english);
        store().setAutoSortingGoals(false);
        first = makeGoal(QStringLiteral("First"));
        second = makeGoal(QStringLiteral("Second"));
        todo = makeTodo(first, QStringLiteral("Read"));
        controller = std::make_unique<BoardController>(store());
    }

    TodoController& todoController() { return *controller->todos(); }
    QStringList titles(std::optional<GoalID> in)
    {
        QStringList result;
        for (const TodoItem& each : todos(in))
            result.append(each.title);
        return result;
    }

    GoalID first;
    GoalID second;
    TodoID todo;
    std::unique_ptr<BoardController> controller;
    const QString unassigned = columnText(std::nullopt);
};

TEST_F(Todos, A_todo_is_added_to_the_list_that_is_named)
{
    todoController().add(QStringLiteral("A"), first.text());
    todoController().add(QStringLiteral("B"), unassigned);
    todoController().add(QStringLiteral("C"), unifiedTodosText);
    todoController().add(QStringLiteral("D"), QStringLiteral("nowhere"));
    EXPECT_EQ(titles(first), QStringList({QStringLiteral("Read"), QStringLiteral("A")}));
    EXPECT_EQ(titles(std::nullopt), QStringList({QStringLiteral("B"), QStringLiteral("C")}));
}

TEST_F(Todos, A_todo_is_renamed_toggled_copied_and_deleted)
{
    todoController().rename(todo.text(), first.text(), QStringLiteral(" Write "));
    EXPECT_EQ(titles(first), QStringList{QStringLiteral("Write")});
    todoController().toggle(todo.text(), first.text());
    EXPECT_EQ(todos(first).front().status, TodoStatus::ing);
    todoController().copyTodo(todo.text(), first.text());
    EXPECT_EQ(desktop.pasteboardText, QStringLiteral("Write"));
    todoController().remove(todo.text(), first.text());
    EXPECT_EQ(titles(first), QStringList());
}

TEST_F(Todos, A_todo_moves_to_another_list_by_its_menu)
{
    todoController().move(todo.text(), first.text(), second.text());
    EXPECT_EQ(titles(first), QStringList());
    EXPECT_EQ(titles(second), QStringList{QStringLiteral("Read")});
    todoController().move(todo.text(), second.text(), unassigned);
    EXPECT_EQ(titles(std::nullopt), QStringList{QStringLiteral("Read")});
}

TEST_F(Todos, A_todo_dropped_on_another_column_moves_there)
{
    const QString text = todoController().dragText(todo.text(), first.text());
    EXPECT_TRUE(controller->drops()->canDrop(text, second.text()));
    EXPECT_TRUE(controller->drops()->drop(text, second.text()));
    EXPECT_EQ(titles(second), QStringList{QStringLiteral("Read")});
}

TEST_F(Todos, A_todo_dropped_on_its_own_column_is_taken_and_stays)
{
    const QString text = todoController().dragText(todo.text(), first.text());
    const QList<Goal> before = store().goals();
    EXPECT_TRUE(controller->drops()->canDrop(text, first.text()));
    EXPECT_FALSE(controller->drops()->wouldDropMove(text, first.text()));
    EXPECT_TRUE(controller->drops()->drop(text, first.text()));
    EXPECT_EQ(store().goals(), before);
}

TEST_F(Todos, A_todo_that_has_been_deleted_during_its_drag_is_refused)
{
    const QString text = todoController().dragText(todo.text(), first.text());
    store().deleteTodo(todo, first);
    EXPECT_FALSE(controller->drops()->canDrop(text, second.text()));
    EXPECT_FALSE(controller->drops()->drop(text, unassigned));
}

TEST_F(Todos, A_todo_dropped_on_a_row_of_its_list_comes_before_it)
{
    const TodoID last = makeTodo(first, QStringLiteral("Last"));
    const QString text = todoController().dragText(last.text(), first.text());
    EXPECT_TRUE(todoController().canDropOnRow(text, first.text(), todo.text()));
    EXPECT_TRUE(todoController().dropOnRow(text, first.text(), todo.text()));
    EXPECT_EQ(todos(first).back().order, 0);
    EXPECT_EQ(todos(first).front().order, 1);
}

TEST_F(Todos, A_todo_moves_to_the_ends_of_what_a_list_shows)
{
    const TodoID other = makeTodo(second, QStringLiteral("Other"));
    const TodoID last = makeTodo(first, QStringLiteral("Last"));
    // Within its goal, past nobody else's.
    EXPECT_TRUE(todoController().moveToEndOfList(todo.text(), first.text(), 1));
    EXPECT_EQ(todos(second).front().order, 0);
    EXPECT_EQ(todos(first).back().order, 1);
    EXPECT_EQ(todos(first).front().order, 2);
    EXPECT_FALSE(todoController().moveToEndOfList(todo.text(), first.text(), 1));
    EXPECT_TRUE(todoController().moveToEndOfList(todo.text(), unifiedTodosText, -1));
    EXPECT_EQ(todos(first).front().order, 0);
    EXPECT_FALSE(todoController().moveToEndOfList(other.text(), first.text(), -1));
    store().undo();
    store().undo();
    EXPECT_EQ(todos(first).front().order, 0);
    EXPECT_EQ(todos(first).back().id, last);
}

TEST_F(Todos, A_todo_dropped_below_the_last_row_of_its_list_comes_to_its_end)
{
    const TodoID other = makeTodo(second, QStringLiteral("Other"));
    makeTodo(first, QStringLiteral("Last"));
    const QString dragged = todoController().dragText(todo.text(), first.text());
    EXPECT_TRUE(todoController().canDropAtEnd(dragged, first.text()));
    EXPECT_TRUE(todoController().wouldDropAtEndMove(dragged, first.text()));
    EXPECT_TRUE(todoController().dropAtEnd(dragged, first.text()));
    EXPECT_EQ(todos(second).front().order, 0);
    EXPECT_EQ(todos(first).back().order, 1);
    EXPECT_EQ(todos(first).front().order, 2);
    // There it is taken again, and stays.
    EXPECT_FALSE(todoController().wouldDropAtEndMove(dragged, first.text()));
    EXPECT_TRUE(todoController().dropAtEnd(dragged, first.text()));
    EXPECT_EQ(todos(first).front().order, 2);
    // The list of the whole board takes those of all goals.
    const QString draggedOther = todoController().dragText(other.text(), second.text());
    EXPECT_TRUE(todoController().dropAtEnd(draggedOther, unifiedTodosText));
    EXPECT_EQ(todos(second).front().order, 2);
}

TEST_F(Todos, Below_the_last_row_only_what_the_list_shows_is_taken)
{
    const TodoID other = makeTodo(second, QStringLiteral("Other"));
    const QString foreign = todoController().dragText(other.text(), second.text());
    const QString deleted = todoController().dragText(todo.text(), first.text());
    store().deleteTodo(todo, first);
    makeTodo(first, QStringLiteral("Left"));
    for (const QString& text : {foreign, deleted, QStringLiteral("7"), QString()}) {
        EXPECT_FALSE(todoController().canDropAtEnd(text, first.text()));
        EXPECT_FALSE(todoController().wouldDropAtEndMove(text, first.text()));
        EXPECT_FALSE(todoController().dropAtEnd(text, first.text()));
    }
    EXPECT_EQ(titles(second), QStringList{QStringLiteral("Other")});
}

TEST_F(Todos, A_row_stands_out_only_where_a_drop_would_change_the_order)
{
    const TodoID last = makeTodo(first, QStringLiteral("Last"));
    const QString dragged = todoController().dragText(todo.text(), first.text());
    const QString draggedLast = todoController().dragText(last.text(), first.text());
    EXPECT_TRUE(todoController().wouldDropOnRowMove(draggedLast, todo.text()));
    // Itself, and what it stands before already: taken, but nothing moves.
    EXPECT_FALSE(todoController().wouldDropOnRowMove(dragged, todo.text()));
    EXPECT_FALSE(todoController().wouldDropOnRowMove(dragged, last.text()));
    EXPECT_TRUE(todoController().canDropOnRow(dragged, first.text(), last.text()));
    EXPECT_TRUE(todoController().dropOnRow(dragged, first.text(), todo.text()));
    EXPECT_EQ(titles(first), QStringList({QStringLiteral("Read"), QStringLiteral("Last")}));
    // Between the two on the whole board stands one of another goal.
    makeTodo(second, QStringLiteral("Other"));
    const TodoID end = makeTodo(first, QStringLiteral("End"));
    EXPECT_TRUE(todoController().wouldDropOnRowMove(draggedLast, end.text()));
}

TEST_F(Todos, A_todo_dropped_on_a_row_of_another_goal_stays)
{
    const TodoID other = makeTodo(second, QStringLiteral("Other"));
    const QString text = todoController().dragText(todo.text(), first.text());
    EXPECT_FALSE(todoController().dropOnRow(text, second.text(), other.text()));
    EXPECT_EQ(titles(first), QStringList{QStringLiteral("Read")});
    EXPECT_EQ(todos(first).front().order, 0);
}

TEST_F(Todos, A_todo_dropped_on_a_row_of_the_whole_board_comes_before_it)
{
    const TodoID other = makeTodo(second, QStringLiteral("Other"));
    const QString text = todoController().dragText(other.text(), second.text());
    EXPECT_TRUE(todoController().dropOnRow(text, unifiedTodosText, todo.text()));
    EXPECT_EQ(todos(second).front().order, 0);
    EXPECT_EQ(todos(first).front().order, 1);
}

TEST_F(Todos, A_todo_that_is_deleted_while_it_is_dragged_is_refused_by_rows)
{
    const TodoID last = makeTodo(first, QStringLiteral("Last"));
    const QString text = todoController().dragText(last.text(), first.text());
    store().deleteTodo(last, first);
    for (const QString& list : {first.text(), QString(unifiedTodosText)}) {
        EXPECT_FALSE(todoController().canDropOnRow(text, list, todo.text()));
        EXPECT_FALSE(todoController().dropOnRow(text, list, todo.text()));
    }
}

TEST_F(Todos, What_is_written_for_a_new_todo_is_kept_by_list)
{
    todoController().setDraft(first.text(), QStringLiteral("Buy m"));
    EXPECT_EQ(todoController().draft(first.text()), u"Buy m");
    EXPECT_EQ(todoController().draft(second.text()), u"");
    todoController().setDraft(first.text(), QString());
    EXPECT_EQ(todoController().draft(first.text()), u"");
}

TEST_F(Todos, What_was_written_in_fields_that_others_closed_is_added_at_the_end)
{
    const GoalID gone = makeGoal(QStringLiteral("Gone"));
    todoController().setDraft(gone.text(), QStringLiteral("For nobody"));
    store().deleteGoal(gone);
    todoController().setDraft(first.text(), QStringLiteral(" Write "));
    todoController().setDraft(second.text(), QStringLiteral("   "));
    todoController().setDraft(unassigned, QStringLiteral("Buy milk"));
    todoController().setDraft(unifiedTodosText, QStringLiteral("Call home"));
    todoController().finishWriting();
    EXPECT_EQ(titles(first), QStringList({QStringLiteral("Read"), QStringLiteral("Write")}));
    EXPECT_EQ(titles(second), QStringList());
    EXPECT_EQ(titles(std::nullopt),
              QStringList({QStringLiteral("Call home"), QStringLiteral("Buy milk")}));
    todoController().finishWriting();
    EXPECT_EQ(titles(first).size(), 2) << "each is added once";
}

TEST_F(Todos, What_was_given_up_is_added_at_the_end_only_if_somebody_went_on_with_it)
{
    todoController().setDraft(first.text(), QStringLiteral("Write"));
    todoController().setDraft(second.text(), QStringLiteral("Walk"));
    todoController().giveUpDraft(first.text());
    todoController().giveUpDraft(second.text());
    todoController().setDraft(second.text(), QStringLiteral("Walk home"));
    todoController().finishWriting();
    EXPECT_EQ(titles(first), QStringList{QStringLiteral("Read")});
    EXPECT_EQ(todoController().draft(first.text()), u"Write");
    EXPECT_EQ(titles(second), QStringList{QStringLiteral("Walk home")});
}

TEST_F(Todos, A_request_for_the_editor_is_taken_once_by_the_requested_goal)
{
    QSignalSpy requests(&todoController(), &TodoController::editorRequested);
    todoController().requestEditor(second.text());
    EXPECT_EQ(requests.count(), 1);
    EXPECT_EQ(todoController().editorColumnID(), second.text());
    EXPECT_FALSE(todoController().takeEditorRequest(first.text()));
    EXPECT_TRUE(todoController().takeEditorRequest(second.text()));
    EXPECT_FALSE(todoController().takeEditorRequest(second.text()));
    todoController().requestEditor(second.text());
    EXPECT_TRUE(todoController().takeEditorRequest(second.text()));
}

TEST_F(Todos, A_cancelled_editor_is_open_nowhere)
{
    todoController().requestEditor(second.text());
    todoController().cancelEditor();
    EXPECT_EQ(todoController().editorColumnID(), QString());
    EXPECT_FALSE(todoController().takeEditorRequest(second.text()));
    EXPECT_FALSE(todoController().takeEditorRequest(QString()));
}

TEST_F(Todos, The_selection_of_the_whole_board_is_published)
{
    QSignalSpy changes(&todoController(), &TodoController::isUnifiedSelectedChanged);
    store().activateTarget(TargetSelection::unifiedTodos(), EnterWindowLayer::no);
    EXPECT_TRUE(todoController().isUnifiedSelected());
    store().activateTarget(TargetSelection::goal(first), EnterWindowLayer::no);
    EXPECT_FALSE(todoController().isUnifiedSelected());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(Todos, Hiding_goals_without_open_todos_goes_on_and_off)
{
    controller->toggleHidingGoalsWithoutOpenTodos();
    EXPECT_TRUE(controller->isHidingGoalsWithoutOpenTodos());
    EXPECT_EQ(controller->columns()->rowCount(), 2);
    controller->toggleHidingGoalsWithoutOpenTodos();
    EXPECT_EQ(controller->columns()->rowCount(), 3);
}

TEST_F(Todos, The_way_to_a_todo_selects_its_goal_and_lets_the_todo_stand_out)
{
    QSignalSpy requests(&todoController(), &TodoController::todoRequested);
    todoController().goToTodo(todo.text(), first.text(), true);
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(first));
    EXPECT_EQ(todoController().highlightedTodoID(), todo.text());
    EXPECT_EQ(requests.size(), 1);
}

TEST_F(Todos, A_todo_stands_out_until_the_selection_goes_elsewhere)
{
    todoController().goToTodo(todo.text(), first.text(), true);
    controller->goals()->goToColumn(first.text());
    EXPECT_EQ(todoController().highlightedTodoID(), todo.text());
    controller->goals()->goToColumn(second.text());
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
}

TEST_F(Todos, A_todo_that_leaves_its_list_stands_out_no_more)
{
    todoController().goToTodo(todo.text(), first.text(), true);
    store().moveTodo(todo, first, second);
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
    todoController().goToTodo(todo.text(), second.text(), true);
    store().deleteTodo(todo, second);
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
}

TEST_F(Todos, A_todo_that_undo_gives_back_stands_out_in_its_goal)
{
    QSignalSpy inList(&todoController(), &TodoController::unifiedTodoRestored);
    store().deleteTodo(todo, first);
    store().undo();
    EXPECT_EQ(todoController().highlightedTodoID(), todo.text());
    EXPECT_FALSE(todoController().takeTodoRequest(todo.text())) << "the keyboard stays";
    store().redo();
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
    EXPECT_EQ(inList.size(), 0);
}

TEST_F(Todos, A_todo_that_undo_gave_back_stands_out_until_the_selection_changes_in_any_way)
{
    store().deleteTodo(todo, first);
    desktop.addAccessibleWindow(1, 1000, QStringLiteral("Letter"));
    store().refresh();
    store().assign(1, first);
    store().undo();
    store().undo();
    ASSERT_EQ(todoController().highlightedTodoID(), todo.text());
    store().assign(1, first);
    store().activateTarget(TargetSelection::goal(first), EnterWindowLayer::yes);
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
}

TEST_F(Todos, A_todo_that_undo_gives_back_is_told_to_the_selected_list_of_all_todos)
{
    QSignalSpy inList(&todoController(), &TodoController::unifiedTodoRestored);
    store().deleteTodo(todo, first);
    todoController().goToUnified();
    store().undo();
    EXPECT_EQ(inList, (QList<QVariantList>{{todo.text()}}));
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
    EXPECT_TRUE(todoController().isUnifiedSelected());
}

TEST_F(Todos, There_is_no_way_to_a_todo_that_is_not_there)
{
    todoController().goToTodo(todo.text(), second.text(), true);
    todoController().goToTodo(TodoID::create().text(), first.text(), true);
    todoController().goToTodo(todo.text(), QStringLiteral("nowhere"), true);
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(second));
}

TEST_F(Todos, The_row_of_the_todo_takes_the_keyboard_once_for_each_request)
{
    todoController().goToTodo(todo.text(), first.text(), true);
    EXPECT_FALSE(todoController().takeTodoRequest(TodoID::create().text()));
    EXPECT_TRUE(todoController().takeTodoRequest(todo.text()));
    EXPECT_FALSE(todoController().takeTodoRequest(todo.text()));
    todoController().goToTodo(todo.text(), first.text(), true);
    EXPECT_TRUE(todoController().takeTodoRequest(todo.text()));
}

TEST_F(Todos, A_step_moves_a_todo_within_what_its_list_shows)
{
    const TodoID other = makeTodo(second, QStringLiteral("Write"));
    const TodoID last = makeTodo(first, QStringLiteral("Send"));
    EXPECT_FALSE(todoController().canMoveInList(last.text(), first.text(), 1));
    EXPECT_FALSE(todoController().moveInList(last.text(), first.text(), 1));
    EXPECT_TRUE(todoController().canMoveInList(last.text(), unifiedTodosText, -1));
    EXPECT_TRUE(todoController().moveInList(last.text(), unifiedTodosText, -1));
    EXPECT_GT(todos(second).front().order, todos(first).back().order);
    EXPECT_TRUE(todoController().moveInList(last.text(), first.text(), -1));
    EXPECT_LT(todos(first).back().order, todos(first).front().order);
    EXPECT_FALSE(todoController().canMoveInList(other.text(), first.text(), -1));
    EXPECT_FALSE(todoController().moveInList(QStringLiteral("nothing"), first.text(), -1));
}

TEST_F(Todos, A_step_moves_the_todo_itself_past_all_that_stands_between)
{
    makeTodo(second, QStringLiteral("Between"));
    const TodoID last = makeTodo(first, QStringLiteral("Send"));
    const auto onTheWholeBoard = [this] {
        QStringList result;
        for (const UnifiedTodoEntry& each :
             unifiedTodoEntries(store().goals(), store().unassignedTodos(), QString()))
            result.append(each.todo.title);
        return result;
    };
    EXPECT_TRUE(todoController().moveInList(todo.text(), first.text(), 1));
    EXPECT_EQ(onTheWholeBoard(), QStringList({QStringLiteral("Between"), QStringLiteral("Send"),
                                              QStringLiteral("Read")}));
    EXPECT_TRUE(todoController().moveInList(todo.text(), first.text(), -1));
    EXPECT_EQ(onTheWholeBoard(), QStringList({QStringLiteral("Between"), QStringLiteral("Read"),
                                              QStringLiteral("Send")}));
    EXPECT_TRUE(todoController().moveInList(last.text(), first.text(), -1));
    EXPECT_EQ(onTheWholeBoard(), QStringList({QStringLiteral("Between"), QStringLiteral("Send"),
                                              QStringLiteral("Read")}));
}

} // namespace
} // namespace kelpa::test
