// The operations on todos under the ids that QML holds, and the request for the editor.
#include "views/todos/TodoController.h"

#include "views/board/BoardColumnModel.h"
#include "views/todos/TodoFixture.h"

#include <QSignalSpy>

namespace kelpa::test {
namespace {

class Todos : public TodoFixture
{};

TEST_F(Todos, A_todo_is_added_to_the_list_that_is_named)
{
    todoController().add(QStringLiteral("A"), first.text());
    todoController().add(QStringLiteral("B"), unassigned);
    todoController().add(QStringLiteral("C"), unifiedTodosText);
    todoController().add(QStringLiteral("D"), QStringLiteral("nowhere"));
    EXPECT_EQ(titles(first), QStringList({QStringLiteral("Read"), QStringLiteral("A")}));
    EXPECT_EQ(titles(std::nullopt), QStringList({QStringLiteral("B"), QStringLiteral("C")}));
}

TEST_F(Todos, Each_line_is_a_todo_of_the_list_that_is_named)
{
    const QString lines = QStringLiteral("- one\n- [x] two\n");
    todoController().addLines(lines, first.text());
    todoController().addLines(lines, unifiedTodosText);
    todoController().addLines(lines, QStringLiteral("nowhere"));
    EXPECT_EQ(titles(first),
              QStringList({QStringLiteral("Read"), QStringLiteral("one"), QStringLiteral("two")}));
    EXPECT_EQ(titles(std::nullopt), QStringList({QStringLiteral("one"), QStringLiteral("two")}));
    EXPECT_EQ(todos(first).back().status, TodoStatus::completed);
    EXPECT_EQ(todoController().pastedTodoCount(QString(), lines), 2);
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

TEST_F(Todos, A_todo_dropped_on_its_own_column_is_accepted_and_stays)
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

TEST_F(Todos, A_todo_moves_to_the_ends_of_what_a_list_shows)
{
    const TodoID other = makeTodo(second, QStringLiteral("Other"));
    const TodoID last = makeTodo(first, QStringLiteral("Last"));
    // Behind the last todo of its goal.
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

TEST_F(Todos, A_step_moves_the_todo_itself_past_all_todos_between)
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
