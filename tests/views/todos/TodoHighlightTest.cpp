// The highlighted todo: where a person went, and what an undo or redo restored.
#include "views/todos/TodoHighlight.h"

#include "views/todos/TodoFixture.h"

#include <QSignalSpy>

namespace kelpa::test {
namespace {

class TodoHighlighting : public TodoFixture
{};

TEST_F(TodoHighlighting, Going_to_a_todo_selects_its_goal_and_highlights_the_todo)
{
    QSignalSpy requests(&todoController(), &TodoController::todoRequested);
    todoController().goToTodo(todo.text(), first.text(), true);
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(first));
    EXPECT_EQ(todoController().highlightedTodoID(), todo.text());
    EXPECT_EQ(requests.size(), 1);
}

TEST_F(TodoHighlighting, A_todo_is_highlighted_until_the_selection_goes_elsewhere)
{
    todoController().goToTodo(todo.text(), first.text(), true);
    controller->goals()->goToColumn(first.text());
    EXPECT_EQ(todoController().highlightedTodoID(), todo.text());
    controller->goals()->goToColumn(second.text());
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
}

TEST_F(TodoHighlighting, A_todo_that_leaves_its_list_loses_its_highlight)
{
    todoController().goToTodo(todo.text(), first.text(), true);
    store().moveTodo(todo, first, second);
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
    todoController().goToTodo(todo.text(), second.text(), true);
    store().deleteTodo(todo, second);
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
}

TEST_F(TodoHighlighting, A_restored_todo_is_highlighted_in_its_goal)
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

TEST_F(TodoHighlighting, A_restored_todo_is_highlighted_until_the_selection_changes_in_any_way)
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

TEST_F(TodoHighlighting, A_restored_todo_is_reported_to_the_selected_list_of_all_todos)
{
    QSignalSpy inList(&todoController(), &TodoController::unifiedTodoRestored);
    store().deleteTodo(todo, first);
    todoController().goToUnified();
    store().undo();
    EXPECT_EQ(inList, (QList<QVariantList>{{todo.text()}}));
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
    EXPECT_TRUE(todoController().isUnifiedSelected());
}

TEST_F(TodoHighlighting, Going_to_a_todo_that_does_not_exist_does_nothing)
{
    todoController().goToTodo(todo.text(), second.text(), true);
    todoController().goToTodo(TodoID::create().text(), first.text(), true);
    todoController().goToTodo(todo.text(), QStringLiteral("nowhere"), true);
    EXPECT_EQ(todoController().highlightedTodoID(), QString());
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(second));
}

TEST_F(TodoHighlighting, The_row_of_the_todo_takes_the_focus_once_for_each_request)
{
    todoController().goToTodo(todo.text(), first.text(), true);
    EXPECT_FALSE(todoController().takeTodoRequest(TodoID::create().text()));
    EXPECT_TRUE(todoController().takeTodoRequest(todo.text()));
    EXPECT_FALSE(todoController().takeTodoRequest(todo.text()));
    todoController().goToTodo(todo.text(), first.text(), true);
    EXPECT_TRUE(todoController().takeTodoRequest(todo.text()));
}

} // namespace
} // namespace kelpa::test
