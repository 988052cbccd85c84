// Steps of todos within a list, and whether a move changes the order of the whole board.
#include "views/todos/TodoMoves.h"

#include "store/board/TodoOrder.h"
#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace kelpa::test {
namespace {

/// A list of three todos.
struct TodoMoving : testing::Test
{
    const QList<UnifiedTodoEntry> entries = unassignedTodoEntries(
        {todo(QStringLiteral("A"), 0), todo(QStringLiteral("B"), 1), todo(QStringLiteral("C"), 2)},
        QStringLiteral("Unsorted"));
};

TEST_F(TodoMoving, A_step_of_one_row_passes_the_neighbour_and_every_other_step_is_refused)
{
    struct Case
    {
        int row;
        int step;
        /// Absent where nothing moves.
        std::optional<int> targetRow;
        MovePlace place = MovePlace::before;
    };
    const Case cases[] = {
        {2, -1, 1, MovePlace::before}, {1, -1, 0, MovePlace::before}, {0, 1, 1, MovePlace::behind},
        {1, 1, 2, MovePlace::behind},  {0, -1, std::nullopt},         {2, 1, std::nullopt},
        {0, 0, std::nullopt},          {0, 2, std::nullopt},          {2, -2, std::nullopt},
    };
    for (const Case& each : cases) {
        const TodoID moved = entries.at(each.row).todo.id;
        std::optional<TodoMove> expected;
        if (each.targetRow)
            expected = TodoMove{moved, entries.at(*each.targetRow).todo.id, each.place};
        EXPECT_EQ(todoMove(entries, moved, each.step), expected)
            << "row " << each.row << ", step " << each.step;
    }
}

TEST_F(TodoMoving, A_todo_that_the_list_does_not_show_is_not_moved)
{
    EXPECT_EQ(todoMove(entries, TodoID::create(), 1), std::nullopt);
    EXPECT_EQ(todoMove({}, entries.front().todo.id, 1), std::nullopt);
}

TEST(TodoOrderChange, A_move_changes_the_order_unless_the_todo_directly_precedes_the_target)
{
    const QList<Goal> goals{
        goal(QStringLiteral("A"), {todo(QStringLiteral("a2"), 4), todo(QStringLiteral("a1"), 1)}),
        goal(QStringLiteral("B"), {todo(QStringLiteral("b1"), 4)})};
    const QList<TodoItem> unassigned{todo(QStringLiteral("u"), 2)};
    const TodoID a2 = goals.at(0).todos.at(0).id;
    const TodoID a1 = goals.at(0).todos.at(1).id;
    const TodoID b1 = goals.at(1).todos.at(0).id;
    const TodoID u = unassigned.at(0).id;
    // The order is a1, u, a2, b1.
    struct Case
    {
        TodoID moved;
        TodoID target;
        bool isChange;
    };
    for (const Case& each :
         {Case{a1, u, false}, Case{u, a2, false}, Case{a2, b1, false}, Case{a1, a1, false},
          Case{a1, TodoID::create(), false}, Case{TodoID::create(), a1, false}, Case{a1, a2, true},
          Case{a1, b1, true}, Case{u, b1, true}, Case{u, a1, true}, Case{b1, a2, true}})
        EXPECT_EQ(changesOrder(each.moved, each.target, goals, unassigned), each.isChange);
}

TEST(TodoOrderChange, It_agrees_with_the_positions_before_and_after_the_move_on_random_boards)
{
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    const auto below = [&random](int limit) {
        return std::uniform_int_distribution<int>(0, limit - 1)(random);
    };
    constexpr std::int64_t orders[] = {std::numeric_limits<std::int64_t>::min(), -1, 0, 1, 2, 3,
                                       std::numeric_limits<std::int64_t>::max()};
    int changeCount = 0;
    int pairCount = 0;
    for (int board = 0; board < 200; ++board) {
        const auto randomTodos = [&] {
            QList<TodoItem> todos;
            for (int count = below(5); count > 0; --count)
                todos.append(todo(QStringLiteral("t"), orders[below(7)]));
            return todos;
        };
        const QList<Goal> goals{goal(QStringLiteral("A"), randomTodos()),
                                goal(QStringLiteral("B"), randomTodos())};
        const QList<TodoItem> unassigned = randomTodos();
        QList<TodoItem> all = allTodos(goals, unassigned);
        all.append(todo(QStringLiteral("absent")));
        const TodoPositions before = normalizedPositions(goals, unassigned);
        for (const TodoItem& moved : all) {
            for (const TodoItem& target : all) {
                const auto after = positionsAfterMove(goals, unassigned, moved.id, target.id);
                const bool isChange = after && *after != before;
                ASSERT_EQ(changesOrder(moved.id, target.id, goals, unassigned), isChange)
                    << "seed " << seed << ", board " << board;
                changeCount += isChange ? 1 : 0;
                ++pairCount;
            }
        }
    }
    EXPECT_GT(changeCount, 0);
    EXPECT_LT(changeCount, pairCount);
}

} // namespace
} // namespace kelpa::test
