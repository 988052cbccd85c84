#include "store/ChangedTarget.h"

#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

const Goal a =
    goal(QStringLiteral("A"), {todo(QStringLiteral("a0"), 0), todo(QStringLiteral("a1"), 2)});
const Goal b = goal(QStringLiteral("B"), {todo(QStringLiteral("b0"), 1)});
const Goal c = goal(QStringLiteral("C"));
const TodoItem loose = todo(QStringLiteral("loose"), 3);
const QString window = QStringLiteral("1");
const BoardContents board{{a, b, c}, {loose}, {{window, b.id}}};

Goal with(Goal goal, const QList<TodoItem>& todos)
{
    goal.todos = todos;
    return goal;
}

TodoItem at(TodoItem item, std::int64_t order)
{
    item.order = order;
    return item;
}

TEST(ChangedTarget, Nothing_differs_between_a_board_and_itself)
{
    EXPECT_EQ(changedTarget(board, board), std::nullopt);
}

TEST(ChangedTarget, A_goal_that_came_back_is_the_target_and_one_that_went_is_none)
{
    const BoardContents without{{a, c}, {loose}, {}};
    EXPECT_EQ(changedTarget(without, board), TargetSelection::goal(b.id));
    EXPECT_EQ(changedTarget(board, without), std::nullopt);
}

TEST(ChangedTarget, A_todo_that_moved_is_found_where_it_is_now)
{
    BoardContents moved = board;
    moved.goals = {with(a, {a.todos[0]}), with(b, {b.todos[0], a.todos[1]}), c};
    EXPECT_EQ(changedTarget(board, moved), TargetSelection::goal(b.id));
    EXPECT_EQ(changedTarget(moved, board), TargetSelection::goal(a.id));
    moved.goals = {with(a, {a.todos[0]}), b, c};
    moved.unassignedTodos = {loose, a.todos[1]};
    EXPECT_EQ(changedTarget(board, moved), TargetSelection::unassigned());
}

TEST(ChangedTarget, A_goal_with_another_title_or_another_todo_is_the_target)
{
    BoardContents changed = board;
    changed.goals[1].title = QStringLiteral("Beta");
    EXPECT_EQ(changedTarget(board, changed), TargetSelection::goal(b.id));
    changed = board;
    changed.goals[0].todos[1].status = TodoStatus::completed;
    EXPECT_EQ(changedTarget(board, changed), TargetSelection::goal(a.id));
    changed = board;
    changed.unassignedTodos[0].title = QStringLiteral("other");
    EXPECT_EQ(changedTarget(board, changed), TargetSelection::unassigned());
}

TEST(ChangedTarget, Todos_in_another_order_are_found_where_it_shows)
{
    BoardContents changed = board;
    changed.goals[0].todos = {at(a.todos[0], 2), at(a.todos[1], 0)};
    EXPECT_EQ(changedTarget(board, changed), TargetSelection::goal(a.id));
    // In each goal they stand as before.
    changed.goals[0].todos = {at(a.todos[0], 0), at(a.todos[1], 1)};
    changed.goals[1].todos = {at(b.todos[0], 2)};
    EXPECT_EQ(changedTarget(board, changed), TargetSelection::unifiedTodos());
}

TEST(ChangedTarget, A_window_is_found_where_it_is_now)
{
    BoardContents changed = board;
    changed.assignments = {{window, c.id}};
    EXPECT_EQ(changedTarget(board, changed), TargetSelection::goal(c.id));
    changed.assignments = {};
    EXPECT_EQ(changedTarget(board, changed), TargetSelection::unassigned());
    EXPECT_EQ(changedTarget(changed, board), TargetSelection::goal(b.id));
}

TEST(ChangedTarget, A_goal_that_moved_is_the_target_in_either_direction)
{
    BoardContents changed = board;
    changed.goals = {c, a, b};
    EXPECT_EQ(changedTarget(board, changed), TargetSelection::goal(c.id));
    EXPECT_EQ(changedTarget(changed, board), TargetSelection::goal(c.id));
}

} // namespace
} // namespace kelpa::test
