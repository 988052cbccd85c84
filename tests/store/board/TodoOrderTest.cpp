#include "store/board/TodoOrder.h"

#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

#include <limits>

namespace kelpa::test {
namespace {

TEST(TodoOrderDeath, No_order_above_the_largest_number_halts_and_is_named)
{
    const TodoItem last = test::todo(QStringLiteral("x"), std::numeric_limits<std::int64_t>::max());
    EXPECT_DEATH(nextTodoOrder({}, {last}), "no todo order is left above 9223372036854775807");
}

TEST(TodoOrder, The_next_order_follows_the_largest_also_when_all_are_negative)
{
    EXPECT_EQ(nextTodoOrder({}, {}), 0);
    EXPECT_EQ(nextTodoOrder({}, {test::todo(QStringLiteral("x"), -7)}), -6);
    EXPECT_EQ(
        nextTodoOrder({test::goal(QStringLiteral("g"), {test::todo({}, 4)})}, {test::todo({}, 3)}),
        5);
}

TEST(TodoOrder, Equal_orders_are_normalised_in_the_order_of_the_walk)
{
    const TodoItem a = test::todo(QStringLiteral("a"), 5);
    const TodoItem b = test::todo(QStringLiteral("b"), 5);
    const TodoItem c = test::todo(QStringLiteral("c"), 9);
    const TodoPositions positions =
        normalizedPositions({test::goal(QStringLiteral("g"), {a}), test::goal({}, {b})}, {c});
    EXPECT_EQ(positions, (TodoPositions{{a.id, 0}, {b.id, 1}, {c.id, 2}}));
}

TEST(TodoOrder, Todos_that_a_sequence_does_not_name_keep_their_order)
{
    const TodoItem a = test::todo(QStringLiteral("a"), 3);
    const TodoItem b = test::todo(QStringLiteral("b"), 8);
    QList<TodoItem> todos{a, b};
    EXPECT_TRUE(applyPositions(todos, positionsAlong({b})));
    EXPECT_EQ(todos[0].order, 3);
    EXPECT_EQ(todos[1].order, 0);
    EXPECT_FALSE(applyPositions(todos, positionsAlong({b})));
}

} // namespace
} // namespace kelpa::test
