// Drops on the columns of the board.
#include "views/goals/DropController.h"

#include "support/TwoGoalsFixture.h"
#include "views/goals/GoalController.h"

namespace kelpa::test {
namespace {

class Drops : public TwoGoalsFixture
{
protected:
    GoalController goals{store()};
    DropController drops{store(), goals};
    const QString unassigned = columnText(std::nullopt);
};

TEST_F(Drops, A_window_dropped_on_a_goal_is_assigned)
{
    EXPECT_TRUE(drops.canDrop(QStringLiteral("7"), first.text()));
    EXPECT_TRUE(drops.drop(QStringLiteral("7"), first.text()));
    EXPECT_EQ(goalOfWindow(), first);
}

TEST_F(Drops, A_window_dropped_on_the_unassigned_column_has_no_goal_any_more)
{
    store().assign(7, first);
    EXPECT_TRUE(drops.drop(QStringLiteral("7"), unassigned));
    EXPECT_EQ(goalOfWindow(), std::nullopt);
}

TEST_F(Drops, A_window_that_is_not_listed_is_refused)
{
    EXPECT_FALSE(drops.canDrop(QStringLiteral("8"), first.text()));
    EXPECT_FALSE(drops.drop(QStringLiteral("8"), first.text()));
    EXPECT_EQ(store().assignments().size(), 0);
}

TEST_F(Drops, Foreign_text_is_refused)
{
    EXPECT_FALSE(drops.drop(QStringLiteral("hello"), first.text()));
    EXPECT_FALSE(drops.drop(QString(), first.text()));
    EXPECT_FALSE(drops.drop(QStringLiteral("7"), QStringLiteral("no column")));
    EXPECT_EQ(goalOfWindow(), std::nullopt);
}

TEST_F(Drops, A_goal_dropped_on_another_goes_before_it)
{
    const QString source = store().goals().at(1).id.text();
    const QString target = store().goals().at(0).id.text();
    const GoalID moved = store().goals().at(1).id;
    EXPECT_TRUE(drops.drop(goals.columnDragText(source), target));
    EXPECT_EQ(store().goals().at(0).id, moved);
}

TEST_F(Drops, A_goal_is_refused_by_itself_and_by_the_unassigned_column)
{
    const QString text = goals.columnDragText(first.text());
    EXPECT_FALSE(drops.canDrop(text, first.text()));
    EXPECT_FALSE(drops.canDrop(text, unassigned));
    EXPECT_FALSE(drops.canDrop(QStringLiteral("kelpa-goal:6BA7B810-9DAD-11D1-80B4-00C04FD430C8"),
                               first.text()));
}

TEST_F(Drops, Goals_stay_where_they_are_while_they_are_sorted)
{
    store().setAutoSortingGoals(true);
    EXPECT_FALSE(drops.canDrop(goals.columnDragText(first.text()), second.text()));
}

TEST_F(Drops, A_column_is_named_in_a_line_and_in_the_language_of_the_board)
{
    store().setLanguage(AppLanguage::german);
    store().renameGoal(first, QStringLiteral("Taxes\n2026"));
    EXPECT_EQ(drops.columnTitle(first.text()), QStringLiteral("Taxes 2026"));
    EXPECT_EQ(drops.columnTitle(unassigned), QStringLiteral("Unsortiert"));
    EXPECT_EQ(drops.columnTitle(QStringLiteral("no column")), QString());
    store().deleteGoal(first);
    EXPECT_EQ(drops.columnTitle(first.text()), QString());
}

class DropsAmongThree : public Drops
{
protected:
    DropsAmongThree() { third = makeGoal(QStringLiteral("Third")); }

    QString dragged(GoalID goalID) const { return goals.columnDragText(goalID.text()); }

    GoalID third;
};

TEST_F(DropsAmongThree, A_column_stands_out_only_where_the_window_is_not_yet)
{
    const QString window = dragText(WindowID{7});
    EXPECT_TRUE(drops.wouldDropMove(window, first.text()));
    EXPECT_FALSE(drops.wouldDropMove(window, unassigned));
    EXPECT_TRUE(drops.canDrop(window, unassigned)) << "it is taken all the same";
    store().assign(7, first);
    EXPECT_FALSE(drops.wouldDropMove(window, first.text()));
    EXPECT_TRUE(drops.wouldDropMove(window, unassigned));
    EXPECT_FALSE(drops.wouldDropMove(dragText(WindowID{8}), second.text()));
}

TEST_F(DropsAmongThree, A_goal_stands_out_only_where_the_dragged_one_does_not_stand_before_it)
{
    EXPECT_FALSE(drops.wouldDropMove(dragged(first), second.text()));
    EXPECT_TRUE(drops.canDrop(dragged(first), second.text())) << "it is taken all the same";
    EXPECT_TRUE(drops.wouldDropMove(dragged(first), third.text()));
    EXPECT_TRUE(drops.wouldDropMove(dragged(second), first.text()));
    EXPECT_FALSE(drops.wouldDropMove(dragged(first), first.text()));
    store().setAutoSortingGoals(true);
    EXPECT_FALSE(drops.wouldDropMove(dragged(second), first.text()));
}

TEST_F(DropsAmongThree, A_goal_dropped_behind_the_last_one_comes_to_the_end)
{
    EXPECT_TRUE(drops.isGoalDrag(dragged(first)));
    EXPECT_TRUE(drops.canDropAtEnd(dragged(first)));
    EXPECT_TRUE(drops.wouldDropAtEndMove(dragged(first)));
    EXPECT_TRUE(drops.dropAtEnd(dragged(first)));
    EXPECT_EQ(titles(), u"Second Third First");
    // There it is accepted again, and stays.
    EXPECT_FALSE(drops.wouldDropAtEndMove(dragged(first)));
    EXPECT_TRUE(drops.dropAtEnd(dragged(first)));
    EXPECT_EQ(titles(), u"Second Third First");
}

TEST_F(DropsAmongThree, Behind_the_last_goal_nothing_but_a_goal_that_shows_is_taken)
{
    const TodoID todo = makeTodo(first, QStringLiteral("Read"));
    const QString text = TodoDragPayload{first, todo}.encodedValue();
    EXPECT_FALSE(drops.isGoalDrag(text));
    EXPECT_FALSE(drops.canDropAtEnd(text));
    EXPECT_FALSE(drops.dropAtEnd(dragText(WindowID{7})));
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_FALSE(drops.canDropAtEnd(dragged(third)));
    store().setHidingGoalsWithoutOpenTodos(false);
    store().setAutoSortingGoals(true);
    EXPECT_FALSE(drops.canDropAtEnd(dragged(first)));
    EXPECT_FALSE(drops.dropAtEnd(dragged(first)));
    EXPECT_EQ(titles(), u"First Second Third");
}

TEST_F(DropsAmongThree, A_column_stands_out_for_a_todo_of_another)
{
    const TodoID todo = makeTodo(first, QStringLiteral("Read"));
    const QString text = TodoDragPayload{first, todo}.encodedValue();
    EXPECT_TRUE(drops.wouldDropMove(text, second.text()));
    EXPECT_TRUE(drops.wouldDropMove(text, unassigned));
    EXPECT_FALSE(drops.wouldDropMove(text, first.text()));
}

} // namespace
} // namespace kelpa::test
