// Goals, windows and todos that are moved on the board.
#include "views/board/BoardController.h"

#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

class Moves : public StoreFixture
{
protected:
    Moves()
    {
        desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
        store().setLanguage(AppLanguage::english);
        store().setAutoSortingGoals(false);
        store().refresh();
        first = makeGoal(QStringLiteral("First"));
        second = makeGoal(QStringLiteral("Second"));
        third = makeGoal(QStringLiteral("Third"));
        controller = std::make_unique<BoardController>(store());
    }

    QString titles()
    {
        QStringList result;
        for (const Goal& goal : store().goals())
            result.append(goal.title);
        return result.join(u' ');
    }
    QString dragged(GoalID goalID) const { return controller->columnDragText(goalID.text()); }

    GoalID first;
    GoalID second;
    GoalID third;
    std::unique_ptr<BoardController> controller;
    const QString unassigned = columnText(std::nullopt);
};

TEST_F(Moves, A_column_stands_out_only_where_the_window_is_not_yet)
{
    const QString window = controller->windowDragText(7);
    EXPECT_TRUE(controller->wouldDropMove(window, first.text()));
    EXPECT_FALSE(controller->wouldDropMove(window, unassigned));
    EXPECT_TRUE(controller->canDrop(window, unassigned)) << "it is taken all the same";
    store().assign(7, first);
    EXPECT_FALSE(controller->wouldDropMove(window, first.text()));
    EXPECT_TRUE(controller->wouldDropMove(window, unassigned));
    EXPECT_FALSE(controller->wouldDropMove(controller->windowDragText(8), second.text()));
}

TEST_F(Moves, A_goal_stands_out_only_where_the_dragged_one_does_not_stand_before_it)
{
    EXPECT_FALSE(controller->wouldDropMove(dragged(first), second.text()));
    EXPECT_TRUE(controller->canDrop(dragged(first), second.text())) << "it is taken all the same";
    EXPECT_TRUE(controller->wouldDropMove(dragged(first), third.text()));
    EXPECT_TRUE(controller->wouldDropMove(dragged(second), first.text()));
    EXPECT_FALSE(controller->wouldDropMove(dragged(first), first.text()));
    store().setAutoSortingGoals(true);
    EXPECT_FALSE(controller->wouldDropMove(dragged(second), first.text()));
}

TEST_F(Moves, A_goal_moves_before_all_or_behind_all_that_show_in_one_step)
{
    EXPECT_FALSE(controller->moveColumnToEnd(first.text(), -1));
    EXPECT_TRUE(controller->moveColumnToEnd(first.text(), 1));
    EXPECT_EQ(titles(), u"Second Third First");
    EXPECT_TRUE(controller->moveColumnToEnd(third.text(), -1));
    EXPECT_EQ(titles(), u"Third Second First");
    controller->undo();
    controller->undo();
    EXPECT_EQ(titles(), u"First Second Third");
    EXPECT_FALSE(controller->moveColumnToEnd(unassigned, 1));
    store().setAutoSortingGoals(true);
    EXPECT_FALSE(controller->moveColumnToEnd(third.text(), -1));
}

TEST_F(Moves, Among_the_goals_that_show_the_hidden_ones_do_not_count)
{
    makeTodo(first);
    makeTodo(second);
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_TRUE(controller->moveColumnToEnd(first.text(), 1));
    EXPECT_EQ(titles(), u"Second First Third");
    EXPECT_FALSE(controller->moveColumnToEnd(first.text(), 1));
}

TEST_F(Moves, A_goal_dropped_behind_the_last_one_comes_to_the_end)
{
    EXPECT_TRUE(controller->isGoalDrag(dragged(first)));
    EXPECT_TRUE(controller->canDropAtEnd(dragged(first)));
    EXPECT_TRUE(controller->wouldDropAtEndMove(dragged(first)));
    EXPECT_TRUE(controller->dropAtEnd(dragged(first)));
    EXPECT_EQ(titles(), u"Second Third First");
    // There it is taken again, and stays.
    EXPECT_FALSE(controller->wouldDropAtEndMove(dragged(first)));
    EXPECT_TRUE(controller->dropAtEnd(dragged(first)));
    EXPECT_EQ(titles(), u"Second Third First");
}

TEST_F(Moves, Behind_the_last_goal_nothing_but_a_goal_that_shows_is_taken)
{
    const TodoID todo = makeTodo(first, QStringLiteral("Read"));
    const QString text = controller->todos()->dragText(todo.text(), first.text());
    EXPECT_FALSE(controller->isGoalDrag(text));
    EXPECT_FALSE(controller->canDropAtEnd(text));
    EXPECT_FALSE(controller->dropAtEnd(controller->windowDragText(7)));
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_FALSE(controller->canDropAtEnd(dragged(third)));
    store().setHidingGoalsWithoutOpenTodos(false);
    store().setAutoSortingGoals(true);
    EXPECT_FALSE(controller->canDropAtEnd(dragged(first)));
    EXPECT_FALSE(controller->dropAtEnd(dragged(first)));
    EXPECT_EQ(titles(), u"First Second Third");
}

TEST_F(Moves, A_column_stands_out_for_a_todo_of_another)
{
    const TodoID todo = makeTodo(first, QStringLiteral("Read"));
    const QString text = controller->todos()->dragText(todo.text(), first.text());
    EXPECT_TRUE(controller->wouldDropMove(text, second.text()));
    EXPECT_TRUE(controller->wouldDropMove(text, unassigned));
    EXPECT_FALSE(controller->wouldDropMove(text, first.text()));
}

} // namespace
} // namespace kelpa::test
