#include "store/board/RestorationTarget.h"

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

/// For a person who has selected none of them, unless `present` says otherwise.
std::optional<RestorationTarget> change(const BoardContents& before, const BoardContents& after,
                                        const TargetSelection& present = TargetSelection::none())
{
    return restorationTarget(before, after, present);
}

RestorationTarget at(const TargetSelection& target, std::optional<TodoID> todoID = std::nullopt)
{
    return {.target = target, .todoID = todoID};
}

RestorationTarget windowAt(const TargetSelection& target)
{
    return {.target = target, .isPlaceOfWindow = true};
}

TEST(RestorationTargets, Nothing_differs_between_a_board_and_itself)
{
    EXPECT_EQ(change(threeGoals, threeGoals), std::nullopt);
}

TEST(RestorationTargets, A_goal_that_came_back_is_the_target_and_one_that_went_is_none)
{
    const BoardContents without{{goalA, goalC}, {todoWithoutGoal}, {}};
    EXPECT_EQ(change(without, threeGoals), at(TargetSelection::goal(goalB.id)));
    EXPECT_EQ(change(threeGoals, without), std::nullopt);
}

TEST(RestorationTargets, A_todo_that_moved_is_found_where_it_is_now)
{
    BoardContents moved = threeGoals;
    const TodoID id = goalA.todos[1].id;
    moved.goals = {withTodos(goalA, {goalA.todos[0]}),
                   withTodos(goalB, {goalB.todos[0], goalA.todos[1]}), goalC};
    EXPECT_EQ(change(threeGoals, moved), at(TargetSelection::goal(goalB.id), id));
    EXPECT_EQ(change(moved, threeGoals), at(TargetSelection::goal(goalA.id), id));
    moved.goals = {withTodos(goalA, {goalA.todos[0]}), goalB, goalC};
    moved.unassignedTodos = {todoWithoutGoal, goalA.todos[1]};
    EXPECT_EQ(change(threeGoals, moved), at(TargetSelection::unassigned(), id));
}

TEST(RestorationTargets, A_goal_with_another_title_or_another_todo_is_the_target)
{
    BoardContents changed = threeGoals;
    changed.goals[1].title = QStringLiteral("Beta");
    EXPECT_EQ(change(threeGoals, changed), at(TargetSelection::goal(goalB.id)));
    changed = threeGoals;
    changed.goals[0].todos[1].status = TodoStatus::completed;
    EXPECT_EQ(change(threeGoals, changed), at(TargetSelection::goal(goalA.id), goalA.todos[1].id));
    changed = threeGoals;
    changed.unassignedTodos[0].title = QStringLiteral("other");
    EXPECT_EQ(change(threeGoals, changed), at(TargetSelection::unassigned(), todoWithoutGoal.id));
}

TEST(RestorationTargets, The_target_of_a_todo_that_went_is_its_goal_alone)
{
    BoardContents changed = threeGoals;
    changed.goals[0].todos.removeFirst();
    EXPECT_EQ(change(threeGoals, changed), at(TargetSelection::goal(goalA.id)));
}

TEST(RestorationTargets, Todos_in_another_order_are_found_where_it_shows)
{
    BoardContents changed = threeGoals;
    changed.goals[0].todos = {placedAt(goalA.todos[0], 2), placedAt(goalA.todos[1], 0)};
    EXPECT_EQ(change(threeGoals, changed), at(TargetSelection::goal(goalA.id), goalA.todos[0].id));
    // In each goal their places are as before.
    changed.goals[0].todos = {placedAt(goalA.todos[0], 0), placedAt(goalA.todos[1], 1)};
    changed.goals[1].todos = {placedAt(goalB.todos[0], 2)};
    EXPECT_EQ(change(threeGoals, changed), at(TargetSelection::unifiedTodos()));
}

TEST(RestorationTargets, Whoever_is_at_the_list_of_all_todos_stays_there_with_what_it_shows)
{
    const auto inList = [](const BoardContents& after) {
        return change(threeGoals, after, TargetSelection::unifiedTodos());
    };
    const TargetSelection list = TargetSelection::unifiedTodos();
    BoardContents changed = threeGoals;
    changed.goals[1].todos[0].title = QStringLiteral("other");
    EXPECT_EQ(inList(changed), at(list, goalB.todos[0].id));
    changed = threeGoals;
    changed.goals[1].todos[0].status = TodoStatus::completed;
    EXPECT_EQ(inList(changed), at(list)) << "it has left the list";
    changed = threeGoals;
    changed.goals[2].todos = {goalB.todos[0]};
    changed.goals[1].todos.clear();
    EXPECT_EQ(inList(changed), at(list, goalB.todos[0].id)) << "its row names another goal";
    changed = threeGoals;
    changed.goals[0].todos = {placedAt(goalA.todos[0], 0), placedAt(goalA.todos[1], 1)};
    changed.goals[1].todos = {placedAt(goalB.todos[0], 2)};
    EXPECT_EQ(inList(changed), at(list, goalB.todos[0].id));
}

TEST(RestorationTargets, Whoever_is_at_the_list_of_all_todos_goes_to_what_it_does_not_show)
{
    const auto inList = [](const BoardContents& before, const BoardContents& after) {
        return change(before, after, TargetSelection::unifiedTodos());
    };
    BoardContents changed = threeGoals;
    changed.goals[1].title = QStringLiteral("Beta");
    EXPECT_EQ(inList(threeGoals, changed), at(TargetSelection::goal(goalB.id)));
    changed = threeGoals;
    changed.assignments = {};
    EXPECT_EQ(inList(threeGoals, changed), windowAt(TargetSelection::unassigned()));
    BoardContents done = threeGoals;
    done.goals[1].todos[0].status = TodoStatus::completed;
    changed = done;
    changed.goals[1].todos.clear();
    EXPECT_EQ(inList(changed, done), at(TargetSelection::goal(goalB.id), goalB.todos[0].id));
}

TEST(RestorationTargets, A_window_is_found_where_it_is_now)
{
    BoardContents changed = threeGoals;
    changed.assignments = {{windowOfB, goalC.id}};
    EXPECT_EQ(change(threeGoals, changed), windowAt(TargetSelection::goal(goalC.id)));
    changed.assignments = {};
    EXPECT_EQ(change(threeGoals, changed), windowAt(TargetSelection::unassigned()));
    EXPECT_EQ(change(changed, threeGoals), windowAt(TargetSelection::goal(goalB.id)));
}

TEST(RestorationTargets, A_window_for_which_a_goal_was_made_that_went_is_found_where_it_is_now)
{
    const Goal made = goal(QStringLiteral("D"));
    BoardContents before = threeGoals;
    before.goals.append(made);
    before.assignments = {{windowOfB, made.id}};
    EXPECT_EQ(change(before, threeGoals), windowAt(TargetSelection::goal(goalB.id)));
    BoardContents after = threeGoals;
    after.assignments = {};
    EXPECT_EQ(change(before, after), windowAt(TargetSelection::unassigned()));
    before.assignments = threeGoals.assignments;
    EXPECT_EQ(change(before, threeGoals), std::nullopt) << "it had no window";
}

TEST(RestorationTargets, A_goal_that_moved_is_the_target_in_either_direction)
{
    BoardContents changed = threeGoals;
    changed.goals = {goalC, goalA, goalB};
    EXPECT_EQ(change(threeGoals, changed), at(TargetSelection::goal(goalC.id)));
    EXPECT_EQ(change(changed, threeGoals), at(TargetSelection::goal(goalC.id)));
}

} // namespace
} // namespace kelpa::test
