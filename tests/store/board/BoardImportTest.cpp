// An imported board beside the present one, or in its place.
#include "store/board/BoardImport.h"

#include "store/board/ImportPreview.h"
#include "support/BoardBuilders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace kelpa::test {
namespace {

using testing::ElementsAre;

ImportedBoard importOf(const QList<Goal>& goals, const QList<TodoItem>& todos = {})
{
    ImportedBoard import;
    import.goals = goals;
    import.todosWithoutGoal = todos;
    return import;
}

QList<GoalAccent> accentsOf(const QList<Goal>& goals)
{
    QList<GoalAccent> accents;
    for (const Goal& each : goals)
        accents.append(each.accent);
    return accents;
}

const BoardContents present{{goal(QStringLiteral("Taxes"), {todo(QStringLiteral("Receipts"), 1)})},
                            {todo(QStringLiteral("Milk"), 0)},
                            {}};

TEST(BoardImport, Added_todos_follow_those_of_the_board)
{
    const BoardContents board =
        withImport(present,
                   importOf({goal(QStringLiteral("Home"), {todo(QStringLiteral("a"), 7)})},
                            {todo(QStringLiteral("b"), 3)}),
                   ImportMode::add);
    ASSERT_EQ(board.goals.size(), 2);
    EXPECT_EQ(board.goals[0], present.goals[0]);
    EXPECT_EQ(board.unassignedTodos[0], present.unassignedTodos[0]);
    EXPECT_EQ(board.unassignedTodos.value(1).order, 2);
    EXPECT_EQ(board.goals[1].todos.value(0).order, 3);
}

TEST(BoardImport, Goals_without_a_colour_get_the_next_free_ones)
{
    const QList<Goal> goals(6, goal(QStringLiteral("Home")));
    using enum GoalAccent;
    EXPECT_THAT(accentsOf(withImport(present, importOf(goals), ImportMode::add).goals),
                ElementsAre(blue, green, orange, purple, pink, blue, blue));
    EXPECT_THAT(accentsOf(withImport(present, importOf(goals), ImportMode::replace).goals),
                ElementsAre(blue, green, orange, purple, pink, blue));
}

TEST(BoardImport, A_file_with_all_fields_keeps_them_but_for_identities_that_the_board_has)
{
    ImportedBoard import = importOf(present.goals, present.unassignedTodos);
    import.hasAllFields = true;
    import.goals[0].accent = GoalAccent::pink;
    import.goals.append(goal(QStringLiteral("Home")));
    const BoardContents added = withImport(present, import, ImportMode::add);
    EXPECT_EQ(added.goals.value(1).title, u"Taxes");
    EXPECT_EQ(added.goals.value(1).accent, GoalAccent::pink);
    EXPECT_NE(added.goals.value(1).id, present.goals[0].id);
    EXPECT_NE(added.goals.value(1).todos.value(0).id, present.goals[0].todos[0].id);
    EXPECT_NE(added.unassignedTodos.value(1).id, present.unassignedTodos[0].id);
    EXPECT_EQ(added.goals.value(2).id, import.goals[1].id);
    EXPECT_EQ(withImport(present, import, ImportMode::replace).goals, import.goals);
}

TEST(BoardImport, Replacing_keeps_the_windows_of_goals_that_come_back)
{
    BoardContents board = present;
    board.assignments.insert(QStringLiteral("window:1"), board.goals[0].id);
    board.assignments.insert(QStringLiteral("window:2"), GoalID::create());
    ImportedBoard import = importOf(board.goals);
    import.hasAllFields = true;
    EXPECT_EQ(withImport(board, import, ImportMode::replace).assignments,
              (Assignments{{QStringLiteral("window:1"), board.goals[0].id}}));
}

TEST(ImportPreview, Has_counts_and_the_first_todos_in_the_order_of_the_file)
{
    QList<TodoItem> todos;
    for (int i = 0; i < 9; ++i)
        todos.append(todo(QStringLiteral("t%1").arg(i), std::int64_t{2} * i));
    ImportedBoard import = importOf({goal(QStringLiteral("Home"), todos)},
                                    {todo(QStringLiteral("first\nline"), -1),
                                     todo(QStringLiteral("done"), 1, TodoStatus::completed)});
    import.skippedCount = 3;
    const ImportPreview preview = previewOf(import, TransferFormat::markdown);
    EXPECT_EQ(preview.format, TransferFormat::markdown);
    EXPECT_EQ(preview.todoCount, 11);
    EXPECT_EQ(preview.summary.openTodoCount, 10);
    EXPECT_EQ(preview.summary.goalCount, 1);
    EXPECT_EQ(preview.skippedCount, 3);
    EXPECT_EQ(preview.firstTodos.join(u','), u"first line,t0,done,t1,t2,t3,t4,t5");
}

} // namespace
} // namespace kelpa::test
