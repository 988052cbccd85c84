// Drops of todos on the rows of a list and below its last row.
#include "views/todos/TodoDrops.h"

#include "views/models/DragPayload.h"
#include "views/todos/TodoFixture.h"

namespace kelpa::test {
namespace {

class TodoDropping : public TodoFixture
{};

TEST_F(TodoDropping, A_todo_dropped_on_a_row_of_its_list_moves_before_it)
{
    const TodoID last = makeTodo(first, QStringLiteral("Last"));
    const QString text = todoController().dragText(last.text(), first.text());
    EXPECT_EQ(drops().answerOnRow(text, first.text(), todo.text()), TodoDrops::Answer::Accept);
    EXPECT_TRUE(drops().dropOnRow(text, first.text(), todo.text()));
    EXPECT_EQ(todos(first).back().order, 0);
    EXPECT_EQ(todos(first).front().order, 1);
}

TEST_F(TodoDropping, A_todo_dropped_below_the_last_row_of_its_list_moves_to_its_end)
{
    const TodoID other = makeTodo(second, QStringLiteral("Other"));
    makeTodo(first, QStringLiteral("Last"));
    const QString dragged = todoController().dragText(todo.text(), first.text());
    EXPECT_TRUE(drops().canDropAtEnd(dragged, first.text()));
    EXPECT_TRUE(drops().wouldMoveAtEnd(dragged, first.text()));
    EXPECT_TRUE(drops().dropAtEnd(dragged, first.text()));
    EXPECT_EQ(todos(second).front().order, 0);
    EXPECT_EQ(todos(first).back().order, 1);
    EXPECT_EQ(todos(first).front().order, 2);
    // There it is accepted again, and stays.
    EXPECT_FALSE(drops().wouldMoveAtEnd(dragged, first.text()));
    EXPECT_TRUE(drops().dropAtEnd(dragged, first.text()));
    EXPECT_EQ(todos(first).front().order, 2);
    // The list of the whole board accepts the todos of all goals.
    const QString draggedOther = todoController().dragText(other.text(), second.text());
    EXPECT_TRUE(drops().dropAtEnd(draggedOther, unifiedTodosText));
    EXPECT_EQ(todos(second).front().order, 2);
}

TEST_F(TodoDropping, Below_the_last_row_only_todos_that_the_list_shows_are_accepted)
{
    const TodoID other = makeTodo(second, QStringLiteral("Other"));
    const QString foreign = todoController().dragText(other.text(), second.text());
    const QString deleted = todoController().dragText(todo.text(), first.text());
    store().deleteTodo(todo, first);
    makeTodo(first, QStringLiteral("Left"));
    for (const QString& text : {foreign, deleted, QStringLiteral("7"), QString()}) {
        EXPECT_FALSE(drops().canDropAtEnd(text, first.text()));
        EXPECT_FALSE(drops().wouldMoveAtEnd(text, first.text()));
        EXPECT_FALSE(drops().dropAtEnd(text, first.text()));
    }
    EXPECT_EQ(titles(second), QStringList{QStringLiteral("Other")});
}

TEST_F(TodoDropping, A_drop_on_a_row_moves_only_where_the_order_changes)
{
    const TodoID last = makeTodo(first, QStringLiteral("Last"));
    const QString dragged = todoController().dragText(todo.text(), first.text());
    const QString draggedLast = todoController().dragText(last.text(), first.text());
    EXPECT_TRUE(drops().wouldMoveOnRow(draggedLast, todo.text()));
    // On itself and on the todo that it precedes: accepted, but nothing moves.
    EXPECT_FALSE(drops().wouldMoveOnRow(dragged, todo.text()));
    EXPECT_FALSE(drops().wouldMoveOnRow(dragged, last.text()));
    EXPECT_EQ(drops().answerOnRow(dragged, first.text(), last.text()), TodoDrops::Answer::Accept);
    EXPECT_TRUE(drops().dropOnRow(dragged, first.text(), todo.text()));
    EXPECT_EQ(titles(first), QStringList({QStringLiteral("Read"), QStringLiteral("Last")}));
    // On the whole board, a todo of another goal is between the two.
    makeTodo(second, QStringLiteral("Other"));
    const TodoID end = makeTodo(first, QStringLiteral("End"));
    EXPECT_TRUE(drops().wouldMoveOnRow(draggedLast, end.text()));
}

TEST_F(TodoDropping, A_todo_dropped_on_a_row_of_another_goal_stays)
{
    const TodoID other = makeTodo(second, QStringLiteral("Other"));
    const QString text = todoController().dragText(todo.text(), first.text());
    EXPECT_FALSE(drops().dropOnRow(text, second.text(), other.text()));
    EXPECT_EQ(titles(first), QStringList{QStringLiteral("Read")});
    EXPECT_EQ(todos(first).front().order, 0);
}

TEST_F(TodoDropping, A_todo_dropped_on_a_row_of_the_whole_board_moves_before_it)
{
    const TodoID other = makeTodo(second, QStringLiteral("Other"));
    const QString text = todoController().dragText(other.text(), second.text());
    EXPECT_TRUE(drops().dropOnRow(text, unifiedTodosText, todo.text()));
    EXPECT_EQ(todos(second).front().order, 0);
    EXPECT_EQ(todos(first).front().order, 1);
}

TEST_F(TodoDropping, A_todo_that_is_deleted_while_it_is_dragged_is_refused_by_rows)
{
    const TodoID last = makeTodo(first, QStringLiteral("Last"));
    const QString text = todoController().dragText(last.text(), first.text());
    store().deleteTodo(last, first);
    for (const QString& list : {first.text(), QString(unifiedTodosText)}) {
        EXPECT_EQ(drops().answerOnRow(text, list, todo.text()), TodoDrops::Answer::Refuse);
        EXPECT_FALSE(drops().dropOnRow(text, list, todo.text()));
    }
}

TEST_F(TodoDropping, What_is_no_todo_is_passed_on_to_the_column)
{
    const QString goalText = kelpa::dragText(second);
    for (const QString& text : {goalText, QStringLiteral("7"), QString()}) {
        EXPECT_EQ(drops().answerOnRow(text, first.text(), todo.text()), TodoDrops::Answer::PassOn);
        EXPECT_FALSE(drops().dropOnRow(text, first.text(), todo.text()));
    }
}

TEST_F(TodoDropping, A_row_or_a_list_that_does_not_exist_refuses_a_todo)
{
    const QString dragged = todoController().dragText(todo.text(), first.text());
    const QString nothing = QStringLiteral("nothing");
    EXPECT_EQ(drops().answerOnRow(dragged, nothing, todo.text()), TodoDrops::Answer::Refuse);
    EXPECT_EQ(drops().answerOnRow(dragged, first.text(), nothing), TodoDrops::Answer::Refuse);
    EXPECT_FALSE(drops().dropOnRow(dragged, first.text(), nothing));
}

} // namespace
} // namespace kelpa::test
