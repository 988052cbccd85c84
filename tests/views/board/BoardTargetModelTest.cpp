// What the board lays out, and in which order.
#include "views/board/BoardTargetModel.h"

#include "support/BoardBuilders.h"
#include "support/StoreFixture.h"
#include "views/models/ColumnID.h"
#include "views/models/ModelLog.h"

#include <algorithm>

namespace kelpa::test {
namespace {

class BoardTargets : public StoreFixture
{
protected:
    BoardTargets()
    {
        store().setLanguage(AppLanguage::english);
        store().setAutoSortingGoals(false);
    }
};

TEST_F(BoardTargets, All_todos_come_first_then_what_is_unsorted_then_goals_then_the_adding_card)
{
    makeGoal(QStringLiteral("First"));
    makeGoal(QStringLiteral("Second"));
    const BoardColumnModel columns(store());
    const BoardTargetModel targets(columns);
    EXPECT_EQ(
        texts(targets, "kind"),
        (QStringList{QStringLiteral("unifiedTodos"), QStringLiteral("unassigned"),
                     QStringLiteral("goal"), QStringLiteral("goal"), QStringLiteral("addGoal")}));
    const QStringList goals = goalTitles();
    EXPECT_EQ(texts(targets, "title"), (QStringList{QString(), QStringLiteral("Unsorted"),
                                                    goals.at(0), goals.at(1), QString()}));
}

TEST_F(BoardTargets, Without_goals_there_are_three)
{
    const BoardColumnModel columns(store());
    const BoardTargetModel targets(columns);
    EXPECT_EQ(texts(targets, "kind"),
              (QStringList{QStringLiteral("unifiedTodos"), QStringLiteral("unassigned"),
                           QStringLiteral("addGoal")}));
    EXPECT_EQ(targets.rowOf(TargetSelection::unassigned()), 1);
}

TEST_F(BoardTargets, Goals_come_move_and_go_one_by_one)
{
    BoardColumnModel columns(store());
    BoardTargetModel targets(columns);
    ModelLog log(targets);
    makeGoal(QStringLiteral("First"));
    EXPECT_EQ(log.take().filter(QStringLiteral("insert")),
              QStringList{QStringLiteral("insert 2-2")});
    makeGoal(QStringLiteral("Second"));
    makeGoal(QStringLiteral("Third"));
    const QList<Goal> goals = store().goals();
    log.take();
    store().moveGoal(goals.at(2).id, goals.at(0).id);
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("move 4 before 2")});
    store().deleteGoal(goals.at(0).id);
    EXPECT_EQ(log.take().filter(QStringLiteral("remove")),
              QStringList{QStringLiteral("remove 3-3")});
}

TEST_F(BoardTargets, A_change_of_what_is_unsorted_is_told_for_its_own_row)
{
    makeGoal(QStringLiteral("First"));
    BoardColumnModel columns(store());
    BoardTargetModel targets(columns);
    ModelLog log(targets);
    desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
    store().refresh();
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("change 1-1")});
    EXPECT_EQ(value(targets, 1, "windowCount").toInt(), 1);
    EXPECT_TRUE(value(targets, 1, "isUnassigned").toBool());
}

TEST_F(BoardTargets, A_goal_that_is_hidden_has_no_row)
{
    const GoalID id = makeGoal(QStringLiteral("Nothing to do"));
    BoardColumnModel columns(store());
    const BoardTargetModel targets(columns);
    EXPECT_EQ(targets.rowOf(TargetSelection::goal(id)), 2);
    EXPECT_EQ(targets.rowOfColumn(columnText(id)), 2);
    EXPECT_EQ(targets.rowOfColumn(columnText(std::nullopt)), 1);
    EXPECT_EQ(targets.rowOfColumn(QStringLiteral("no column")), -1);
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_EQ(targets.rowOf(TargetSelection::goal(id)), -1);
    EXPECT_EQ(targets.rowOfColumn(columnText(id)), -1);
    EXPECT_EQ(targets.rowOf(TargetSelection::none()), -1);
}

TEST_F(BoardTargets, Follow_the_columns_however_many_steps_it_takes)
{
    constexpr int goalCount = 1500;
    BoardContents board;
    for (int i = 0; i < goalCount; ++i) {
        QList<TodoItem> todos;
        if (i % 2 == 0)
            todos.append(test::todo(QStringLiteral("open"), i));
        board.goals.append(test::goal(QString::number(i), todos));
    }
    store().restoreBackup(board);
    BoardColumnModel columns(store());
    BoardTargetModel targets(columns);
    ModelLog log(targets);
    // Every other goal goes, each in a step of its own.
    store().setHidingGoalsWithoutOpenTodos(true);
    const QStringList steps = log.take();
    EXPECT_EQ(steps.size(), goalCount / 2);
    EXPECT_TRUE(std::ranges::all_of(
        steps, [](const QString& step) { return step.startsWith(u"remove "); }));
    EXPECT_EQ(targets.rowCount(), goalCount / 2 + 3);
    EXPECT_EQ(value(targets, 3, "title").toString(), QStringLiteral("2"));
}

} // namespace
} // namespace kelpa::test
