// Which todos the lists of the board show.
#include "views/todos/TodoRows.h"

#include "support/BoardBuilders.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>

namespace kelpa::test {
namespace {

/// Each entry as "title @ goal".
QStringList entryTexts(const QList<UnifiedTodoEntry>& entries)
{
    QStringList result;
    for (const UnifiedTodoEntry& entry : entries)
        result.append(entry.todo.title + QStringLiteral(" @ ") + entry.goalTitle);
    return result;
}

const QString unsorted = QStringLiteral("Unsorted");

TEST(UnifiedTodos, All_lists_are_one_by_ascending_order)
{
    const QList<Goal> goals{
        goal(QStringLiteral("A"), {todo(QStringLiteral("a2"), 4), todo(QStringLiteral("a1"), 1)}),
        goal(QStringLiteral("B"), {todo(QStringLiteral("b1"), 0)})};
    const QList<TodoItem> unassigned{todo(QStringLiteral("u"), 2)};
    EXPECT_EQ(entryTexts(unifiedTodoEntries(goals, unassigned, unsorted)),
              QStringList({QStringLiteral("b1 @ B"), QStringLiteral("a1 @ A"),
                           QStringLiteral("u @ Unsorted"), QStringLiteral("a2 @ A")}));
}

TEST(UnifiedTodos, Todos_of_equal_order_are_the_unassigned_ones_and_then_those_of_the_goals)
{
    const QList<Goal> goals{
        goal(QStringLiteral("A"), {todo(QStringLiteral("a1"), 7), todo(QStringLiteral("a2"), 7)}),
        goal(QStringLiteral("B"), {todo(QStringLiteral("b1"), 7)})};
    const QList<TodoItem> unassigned{todo(QStringLiteral("u1"), 7), todo(QStringLiteral("u2"), 7)};
    EXPECT_EQ(entryTexts(unifiedTodoEntries(goals, unassigned, unsorted)),
              QStringList({QStringLiteral("u1 @ Unsorted"), QStringLiteral("u2 @ Unsorted"),
                           QStringLiteral("a1 @ A"), QStringLiteral("a2 @ A"),
                           QStringLiteral("b1 @ B")}));
}

TEST(UnifiedTodos, Orders_are_compared_as_signed_64_bit_numbers)
{
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t greatest = std::numeric_limits<std::int64_t>::max();
    const QList<TodoItem> unassigned{todo(QStringLiteral("last"), greatest),
                                     todo(QStringLiteral("middle"), 0),
                                     todo(QStringLiteral("first"), least)};
    EXPECT_EQ(entryTexts(unifiedTodoEntries({}, unassigned, unsorted)),
              QStringList({QStringLiteral("first @ Unsorted"), QStringLiteral("middle @ Unsorted"),
                           QStringLiteral("last @ Unsorted")}));
}

TEST(UnifiedTodos, A_completed_todo_is_not_listed_and_one_in_progress_is)
{
    const QList<Goal> goals{
        goal(QStringLiteral("A"), {todo(QStringLiteral("done"), 0, TodoStatus::completed),
                                   todo(QStringLiteral("doing"), 1, TodoStatus::ing)})};
    const QList<TodoItem> unassigned{todo(QStringLiteral("done too"), 2, TodoStatus::completed)};
    EXPECT_EQ(entryTexts(unifiedTodoEntries(goals, unassigned, unsorted)),
              QStringList{QStringLiteral("doing @ A")});
}

TEST(UnifiedTodos, An_entry_names_its_goal_and_an_unassigned_one_names_none)
{
    const QList<Goal> goals{goal(QStringLiteral("A"), {todo(QStringLiteral("a"), 0)})};
    const QList<UnifiedTodoEntry> entries =
        unifiedTodoEntries(goals, {todo(QStringLiteral("u"), 1)}, unsorted);
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries.at(0).goalID, goals.front().id);
    EXPECT_EQ(entries.at(1).goalID, std::nullopt);
}

TEST(UnifiedTodos, A_board_without_todos_has_no_entries)
{
    EXPECT_TRUE(unifiedTodoEntries({goal(QStringLiteral("A"), {})}, {}, unsorted).isEmpty());
}

TEST(GoalTodos, A_card_shows_the_open_todos_and_the_one_completed_last)
{
    TodoItem early = todo(QStringLiteral("early"), 0, TodoStatus::completed);
    early.completedAt = Date{1};
    TodoItem late = todo(QStringLiteral("late"), 3, TodoStatus::completed);
    late.completedAt = Date{2};
    const Goal shown = goal(QStringLiteral("A"), {late, early, todo(QStringLiteral("open"), 1)});
    EXPECT_EQ(entryTexts(goalTodoEntries(shown)),
              QStringList({QStringLiteral("open @ A"), QStringLiteral("late @ A")}));
}

TEST(UnassignedTodos, All_are_shown_by_ascending_order)
{
    const QList<TodoItem> unassigned{todo(QStringLiteral("b"), 5, TodoStatus::completed),
                                     todo(QStringLiteral("a"), 2)};
    EXPECT_EQ(entryTexts(unassignedTodoEntries(unassigned, unsorted)),
              QStringList({QStringLiteral("a @ Unsorted"), QStringLiteral("b @ Unsorted")}));
}

TEST(TodoSymbols, Every_status_has_its_own)
{
    EXPECT_EQ(statusSymbol(TodoStatus::todo), QStringLiteral("circle"));
    EXPECT_EQ(statusSymbol(TodoStatus::ing), QStringLiteral("circle-half"));
    EXPECT_EQ(statusSymbol(TodoStatus::completed), QStringLiteral("circle-check-filled"));
}

TEST(TodoRows, A_todo_that_lingers_shows_where_it_was_until_the_moment_is_over)
{
    const TodoItem done = todo(QStringLiteral("done"), 1, TodoStatus::completed);
    const QList<Goal> goals{goal(QStringLiteral("A"), {done}),
                            goal(QStringLiteral("B"), {todo(QStringLiteral("b"), 0)})};
    EXPECT_EQ(entryTexts(goalTodoEntries(goals.front(), done.id)),
              QStringList{QStringLiteral("done @ A")});
    EXPECT_EQ(entryTexts(goalTodoEntries(goals.front())), QStringList());
    EXPECT_EQ(entryTexts(unifiedTodoEntries(goals, {}, unsorted, done.id)),
              (QStringList{QStringLiteral("b @ B"), QStringLiteral("done @ A")}));
    EXPECT_EQ(entryTexts(unifiedTodoEntries(goals, {}, unsorted)),
              QStringList{QStringLiteral("b @ B")});
    // Where others are open, the card shows the one completed last anyway.
    const Goal mixed = goal(QStringLiteral("C"), {done, todo(QStringLiteral("c"), 2)});
    EXPECT_EQ(entryTexts(goalTodoEntries(mixed, done.id)).size(), 2);
}

TEST(TodoRows, A_search_tells_the_rows_apart)
{
    const TodoItem found = todo(QStringLiteral("bank"));
    const QList<UnifiedTodoEntry> entries =
        unassignedTodoEntries({found, todo(QStringLiteral("walk"), 1)}, unsorted);
    const auto matches = [&entries](const SearchFindings& findings) {
        QList<SearchMatch> result;
        for (const UnifiedTodoEntry& entry : withMatches(entries, findings))
            result.append(entry.match);
        return result;
    };
    EXPECT_EQ(matches({}), (QList<SearchMatch>(2, SearchMatch::notSearched)));
    SearchFindings findings;
    findings.isSearching = true;
    findings.todos = {found.id};
    EXPECT_EQ(matches(findings), (QList<SearchMatch>{SearchMatch::found, SearchMatch::missed}));
}

} // namespace
} // namespace kelpa::test
