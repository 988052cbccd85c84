#include "store/board/BoardContents.h"

#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

const Goal storedGoal =
    goal(QStringLiteral("stored"), {todo(QStringLiteral("s2"), 7), todo(QStringLiteral("s0"), 2)});
const TodoItem storedLoose = todo(QStringLiteral("s1"), 5);
const Goal madeGoal = goal(QStringLiteral("made"), {todo(QStringLiteral("m1"), 1)});
const TodoItem madeLoose = todo(QStringLiteral("m0"), 0);

TodoItem at(TodoItem item, std::int64_t order)
{
    item.order = order;
    return item;
}

TEST(BoardContents, A_stored_board_joined_with_nothing_is_itself_with_orders_without_gaps)
{
    const BoardContents stored{{storedGoal}, {storedLoose}, {{QStringLiteral("1"), storedGoal.id}}};
    Goal expected = storedGoal;
    expected.todos = {at(storedGoal.todos[0], 2), at(storedGoal.todos[1], 0)};
    EXPECT_EQ(
        joined(stored, {}),
        (BoardContents{{expected}, {at(storedLoose, 1)}, {{QStringLiteral("1"), storedGoal.id}}}));
}

TEST(BoardContents, What_was_made_beside_a_stored_board_comes_after_it)
{
    const BoardContents board =
        joined({{storedGoal}, {storedLoose}, {}}, {{madeGoal}, {madeLoose}, {}});
    ASSERT_EQ(board.goals.size(), 2);
    EXPECT_EQ(board.goals[0].id, storedGoal.id);
    EXPECT_EQ(board.goals[1].id, madeGoal.id);
    EXPECT_EQ(board.goals[1].todos, QList<TodoItem>{at(madeGoal.todos[0], 4)});
    EXPECT_EQ(board.unassignedTodos, (QList<TodoItem>{at(storedLoose, 1), at(madeLoose, 3)}));
}

TEST(BoardContents, Nothing_stored_leaves_what_was_made)
{
    const BoardContents made{{madeGoal}, {madeLoose}, {{QStringLiteral("1"), madeGoal.id}}};
    EXPECT_EQ(joined({}, made), made);
}

TEST(BoardContents, A_window_that_both_boards_assign_stays_where_it_was_put_last)
{
    const BoardContents board =
        joined({{storedGoal},
                {},
                {{QStringLiteral("1"), storedGoal.id}, {QStringLiteral("2"), storedGoal.id}}},
               {{madeGoal}, {}, {{QStringLiteral("1"), madeGoal.id}}});
    EXPECT_EQ(board.assignments, (Assignments{{QStringLiteral("1"), madeGoal.id},
                                              {QStringLiteral("2"), storedGoal.id}}));
}

TEST(BoardContents, A_goal_that_both_boards_pin_is_where_it_was_pinned_last)
{
    const BoardContents board =
        joined({{storedGoal}, {}, {}, {{storedGoal.id, 2}, {madeGoal.id, 3}}},
               {{madeGoal}, {}, {}, {{madeGoal.id, 4}}});
    EXPECT_EQ(board.pins, (GoalPins{{storedGoal.id, 2}, {madeGoal.id, 4}}));
}

TEST(BoardContents, A_restored_board_keeps_pins_of_goals_that_the_backup_pins_nowhere)
{
    const GoalID gone = GoalID::create();
    const BoardContents present{{}, {}, {}, {{storedGoal.id, 2}, {madeGoal.id, 3}, {gone, 4}}};
    const BoardContents board =
        restored(present, {{storedGoal, madeGoal}, {}, {}, {{storedGoal.id, 1}}});
    EXPECT_EQ(board.pins, (GoalPins{{storedGoal.id, 1}, {madeGoal.id, 3}}));
}

TEST(BoardContents, A_restored_board_is_the_backup_with_the_windows_of_its_goals)
{
    const BoardContents backup{{storedGoal}, {storedLoose}, {{QStringLiteral("1"), storedGoal.id}}};
    const BoardContents present{{storedGoal, madeGoal},
                                {madeLoose},
                                {{QStringLiteral("1"), madeGoal.id},
                                 {QStringLiteral("2"), madeGoal.id},
                                 {QStringLiteral("3"), storedGoal.id}}};
    BoardContents expected = backup;
    expected.assignments.insert(QStringLiteral("3"), storedGoal.id);
    EXPECT_EQ(restored(present, backup), expected);
}

TEST(BoardContents, Open_todos_of_all_lists_are_counted)
{
    Goal half = storedGoal;
    half.todos[0].status = TodoStatus::completed;
    half.todos[1].status = TodoStatus::ing;
    EXPECT_EQ(openTodoCount({{half, madeGoal}, {storedLoose}, {}}), 3);
    EXPECT_EQ(openTodoCount({}), 0);
}

} // namespace
} // namespace kelpa::test
