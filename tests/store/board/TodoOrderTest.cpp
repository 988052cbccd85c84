#include "store/board/TodoOrder.h"

#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

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

/// The places of the todos in a list whose orders are `orders`.
std::vector<qsizetype> sortedPlaces(const std::vector<std::int64_t>& orders)
{
    QList<TodoItem> todos;
    for (const std::int64_t order : orders)
        todos.append(test::todo(QStringLiteral("x"), order));
    std::vector<ListedTodo> listed;
    listed.reserve(orders.size());
    for (const TodoItem& todo : std::as_const(todos))
        listed.push_back({nullptr, &todo});
    sortByOrder(listed);
    std::vector<qsizetype> places;
    places.reserve(listed.size());
    for (const ListedTodo& each : listed)
        places.push_back(each.todo - todos.constData());
    return places;
}

TEST(TodoSequence, Ascends_and_keeps_todos_of_equal_order_as_they_are)
{
    using Places = std::vector<qsizetype>;
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t greatest = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(sortedPlaces({}), Places());
    EXPECT_EQ(sortedPlaces({4, 4, 5}), (Places{0, 1, 2}));
    // As close together as those of a stored board, below and above 0.
    EXPECT_EQ(sortedPlaces({2, -1, 2, 0, -1}), (Places{1, 4, 3, 0, 2}));
    EXPECT_EQ(sortedPlaces({greatest, greatest - 1, greatest}), (Places{1, 0, 2}));
    EXPECT_EQ(sortedPlaces({least + 1, least}), (Places{1, 0}));
    // Far apart.
    EXPECT_EQ(sortedPlaces({greatest, least, 0, least}), (Places{1, 3, 2, 0}));
    EXPECT_EQ(sortedPlaces({1'000'000, 0, 1'000'000, 500}), (Places{1, 3, 0, 2}));
}

} // namespace
} // namespace kelpa::test
