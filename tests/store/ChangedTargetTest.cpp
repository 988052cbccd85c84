#include "store/ChangedTarget.h"

#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

const Goal goalA =
    goal(QStringLiteral("A"), {todo(QStringLiteral("a0"), 0), todo(QStringLiteral("a1"), 2)});
const Goal goalB = goal(QStringLiteral("B"), {todo(QStringLiteral("b0"), 1)});
const Goal goalC = goal(QStringLiteral("C"));
const TodoItem todoWithoutGoal = todo(QStringLiteral("loose"), 3);
const QString windowOfB = QStringLiteral("1");
const BoardContents threeGoals{{goalA, goalB, goalC}, {todoWithoutGoal}, {{windowOfB, goalB.id}}};

Goal withTodos(Goal goal, const QList<TodoItem>& todos)
{
    goal.todos = todos;
    return goal;
}

TodoItem placedAt(TodoItem item, std::int64_t order)
{
    item.order = order;
    return item;
}

TEST(ChangedTarget, Nothing_differs_between_a_board_and_itself)
{
    EXPECT_EQ(changedTarget(threeGoals, threeGoals), std::nullopt);
}

TEST(ChangedTarget, A_goal_that_came_back_is_the_target_and_one_that_went_is_none)
{
    const BoardContents without{{goalA, goalC}, {todoWithoutGoal}, {}};
    EXPECT_EQ(changedTarget(without, threeGoals), TargetSelection::goal(goalB.id));
    EXPECT_EQ(changedTarget(threeGoals, without), std::nullopt);
}

TEST(ChangedTarget, A_todo_that_moved_is_found_where_it_is_now)
{
    BoardContents moved = threeGoals;
    moved.goals = {withTodos(goalA, {goalA.todos[0]}),
                   withTodos(goalB, {goalB.todos[0], goalA.todos[1]}), goalC};
    EXPECT_EQ(changedTarget(threeGoals, moved), TargetSelection::goal(goalB.id));
    EXPECT_EQ(changedTarget(moved, threeGoals), TargetSelection::goal(goalA.id));
    moved.goals = {withTodos(goalA, {goalA.todos[0]}), goalB, goalC};
    moved.unassignedTodos = {todoWithoutGoal, goalA.todos[1]};
    EXPECT_EQ(changedTarget(threeGoals, moved), TargetSelection::unassigned());
}

TEST(ChangedTarget, A_goal_with_another_title_or_another_todo_is_the_target)
{
    BoardContents changed = threeGoals;
    changed.goals[1].title = QStringLiteral("Beta");
    EXPECT_EQ(changedTarget(threeGoals, changed), TargetSelection::goal(goalB.id));
    changed = threeGoals;
    changed.goals[0].todos[1].status = TodoStatus::completed;
    EXPECT_EQ(changedTarget(threeGoals, changed), TargetSelection::goal(goalA.id));
    changed = threeGoals;
    changed.unassignedTodos[0].title = QStringLiteral("other");
    EXPECT_EQ(changedTarget(threeGoals, changed), TargetSelection::unassigned());
}

TEST(ChangedTarget, Todos_in_another_order_are_found_where_it_shows)
{
    BoardContents changed = threeGoals;
    changed.goals[0].todos = {placedAt(goalA.todos[0], 2), placedAt(goalA.todos[1], 0)};
    EXPECT_EQ(changedTarget(threeGoals, changed), TargetSelection::goal(goalA.id));
    // In each goal they stand as before.
    changed.goals[0].todos = {placedAt(goalA.todos[0], 0), placedAt(goalA.todos[1], 1)};
    changed.goals[1].todos = {placedAt(goalB.todos[0], 2)};
    EXPECT_EQ(changedTarget(threeGoals, changed), TargetSelection::unifiedTodos());
}

TEST(ChangedTarget, A_window_is_found_where_it_is_now)
{
    BoardContents changed = threeGoals;
    changed.assignments = {{windowOfB, goalC.id}};
    EXPECT_EQ(changedTarget(threeGoals, changed), TargetSelection::goal(goalC.id));
    changed.assignments = {};
    EXPECT_EQ(changedTarget(threeGoals, changed), TargetSelection::unassigned());
    EXPECT_EQ(changedTarget(changed, threeGoals), TargetSelection::goal(goalB.id));
}

TEST(ChangedTarget, A_goal_that_moved_is_the_target_in_either_direction)
{
    BoardContents changed = threeGoals;
    changed.goals = {goalC, goalA, goalB};
    EXPECT_EQ(changedTarget(threeGoals, changed), TargetSelection::goal(goalC.id));
    EXPECT_EQ(changedTarget(changed, threeGoals), TargetSelection::goal(goalC.id));
}

} // namespace
} // namespace kelpa::test
