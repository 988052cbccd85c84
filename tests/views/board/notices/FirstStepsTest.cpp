// What an empty first board teaches, and until when.
#include "views/board/notices/FirstSteps.h"

#include "support/StoreFixture.h"

#include <QSignalSpy>

namespace kelpa::test {
namespace {

class FirstStepsTest : public StoreFixture
{
protected:
    /// A goal with a window, which is what two of the steps are about.
    void assignAWindow()
    {
        desktop.addAccessibleWindow(7, 1000, QStringLiteral("Notes"));
        store().refresh();
        store().assign(7, makeGoal());
    }
};

TEST_F(FirstStepsTest, They_are_open_until_each_was_done_and_do_not_return)
{
    FirstSteps steps(store());
    steps.setReturnOffered(true);
    EXPECT_TRUE(steps.isOpen());
    EXPECT_FALSE(steps.hasGoal());
    steps.createGoal(QStringLiteral("  "));
    EXPECT_FALSE(steps.hasGoal());
    assignAWindow();
    EXPECT_TRUE(steps.hasGoal());
    EXPECT_TRUE(steps.hasAssignment());
    EXPECT_TRUE(steps.isOpen()) << "the key is left";
    steps.noteReturn();
    EXPECT_FALSE(steps.isOpen());
    store().undo();
    store().undo();
    EXPECT_TRUE(store().goals().isEmpty());
    EXPECT_FALSE(steps.isOpen());
}

TEST_F(FirstStepsTest, A_step_that_was_done_stays_done)
{
    FirstSteps steps(store());
    steps.createGoal(QStringLiteral("Taxes"));
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Taxes")});
    store().undo();
    EXPECT_TRUE(steps.hasGoal());
    EXPECT_TRUE(steps.isOpen());
}

TEST_F(FirstStepsTest, Where_the_goal_has_gone_another_is_needed_until_a_window_has_been_in_one)
{
    FirstSteps steps(store());
    steps.setReturnOffered(true);
    EXPECT_FALSE(steps.needsGoalAgain());
    const GoalID made = makeGoal();
    EXPECT_FALSE(steps.needsGoalAgain());
    const QSignalSpy changes(&steps, &FirstSteps::changed);
    store().deleteGoal(made);
    EXPECT_TRUE(steps.needsGoalAgain());
    EXPECT_EQ(changes.count(), 1);
    store().undo();
    EXPECT_FALSE(steps.needsGoalAgain());
    EXPECT_EQ(changes.count(), 2);
    store().deleteGoal(made);
    assignAWindow();
    EXPECT_FALSE(steps.needsGoalAgain());
    store().deleteGoal(store().goals().front().id);
    EXPECT_FALSE(steps.needsGoalAgain());
    EXPECT_TRUE(steps.isOpen()) << "the key is left";
}

TEST_F(FirstStepsTest, Where_no_key_leads_back_two_steps_are_all)
{
    FirstSteps steps(store());
    assignAWindow();
    EXPECT_FALSE(steps.isOpen());
    steps.setReturnOffered(true);
    EXPECT_FALSE(steps.isOpen());
}

TEST_F(FirstStepsTest, They_can_be_dismissed)
{
    FirstSteps steps(store());
    steps.dismiss();
    EXPECT_FALSE(steps.isOpen());
    makeGoal();
    EXPECT_FALSE(steps.isOpen());
}

TEST_F(FirstStepsTest, A_board_with_goals_or_todos_teaches_nothing)
{
    makeTodo(std::nullopt);
    EXPECT_FALSE(FirstSteps(restartedStore()).isOpen());
    makeGoal();
    EXPECT_FALSE(FirstSteps(restartedStore()).isOpen());
}

TEST_F(FirstStepsTest, A_board_that_cannot_be_read_teaches_nothing)
{
    settings.isFailing = true;
    settings.error = SettingsError::unreachable;
    store().retrySaving();
    ASSERT_TRUE(store().trouble());
    EXPECT_FALSE(FirstSteps(store()).isOpen());
}

} // namespace
} // namespace kelpa::test
