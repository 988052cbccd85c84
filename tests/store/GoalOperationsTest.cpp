#include "store/board/BoardPersistence.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

class GoalOperations : public StoreFixture
{
protected:
    QList<GoalAccent> accents()
    {
        QList<GoalAccent> result;
        for (const Goal& each : store().goals())
            result.append(each.accent);
        return result;
    }
};

using enum GoalAccent;

TEST_F(GoalOperations, A_new_goal_is_appended_with_the_defaults_selected_and_saved)
{
    makeGoal(QStringLiteral("First"));
    const GoalID second = makeGoal(QStringLiteral("Second"));

    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("First"), QStringLiteral("Second")}));
    EXPECT_EQ(goal(second).priority, GoalPriority::p2);
    EXPECT_TRUE(goal(second).todos.isEmpty());
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::on(TargetSelection::goal(second)));
    EXPECT_EQ(decodeGoals(settings.document(goalsKey)), store().goals());
}

TEST_F(GoalOperations, Six_goals_take_the_five_accents_in_turn_and_a_freed_one_is_taken_again)
{
    for (int i = 0; i < 6; ++i)
        makeGoal(QString::number(i));
    EXPECT_EQ(accents(), (QList<GoalAccent>{blue, green, orange, purple, pink, blue}));

    store().deleteGoal(store().goals()[1].id);
    makeGoal();
    EXPECT_EQ(accents(), (QList<GoalAccent>{blue, orange, purple, pink, blue, green}));
}

TEST_F(GoalOperations, Titles_are_trimmed_and_a_blank_one_makes_nothing)
{
    store();
    takeSignals();
    store().createGoal(QStringLiteral(" \n\t\u00a0\u2003 "));
    EXPECT_TRUE(store().goals().isEmpty());
    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);

    store().createGoal(QStringLiteral("\n  Plan the trip \u2003"));
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Plan the trip")});
}

TEST_F(GoalOperations, Creating_shows_goals_without_open_todos_again)
{
    store().setHidingGoalsWithoutOpenTodos(true);
    const GoalID made = makeGoal();

    EXPECT_FALSE(store().isHidingGoalsWithoutOpenTodos());
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(made));
}

TEST_F(GoalOperations, Why_sorted_goals_do_not_move_is_said_until_they_are_sorted_no_more)
{
    store().setLanguage(AppLanguage::english);
    store().explainAutomaticOrder();
    EXPECT_EQ(store().toastMessage(),
              QStringLiteral("Goals are sorted automatically and cannot be moved"));
    EXPECT_TRUE(store().toastOffersManualOrder());
    EXPECT_FALSE(store().toastOffersUndo());
    scheduler.advance(std::chrono::milliseconds(5999));
    EXPECT_TRUE(store().toastMessage()) << "the person has to decide";
    store().setAutoSortingGoals(false);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    store().explainAutomaticOrder();
    EXPECT_EQ(store().toastMessage(), std::nullopt);
}

TEST_F(GoalOperations, Priority_sorts_before_open_todos_and_equal_goals_keep_their_order)
{
    const GoalID many = makeGoal(QStringLiteral("p2, ten open"));
    const GoalID urgent = makeGoal(QStringLiteral("p1, none open"));
    makeGoal(QStringLiteral("equal a"));
    makeGoal(QStringLiteral("equal b"));
    const GoalID three = makeGoal(QStringLiteral("p2, three open"));
    for (int i = 0; i < 10; ++i)
        makeTodo(many);
    for (int i = 0; i < 3; ++i)
        makeTodo(three);
    store().setGoalPriority(GoalPriority::p1, urgent);

    EXPECT_EQ(goalTitles(),
              (QStringList{QStringLiteral("p1, none open"), QStringLiteral("p2, ten open"),
                           QStringLiteral("p2, three open"), QStringLiteral("equal a"),
                           QStringLiteral("equal b")}));
}

TEST_F(GoalOperations, Completed_todos_do_not_count_for_the_order_and_started_ones_do)
{
    const GoalID started = makeGoal(QStringLiteral("started"));
    const GoalID done = makeGoal(QStringLiteral("done"));
    const TodoID doneTodo = makeTodo(done);
    makeTodo(done);
    EXPECT_EQ(goalTitles().first(), QStringLiteral("done"));

    store().toggleTodo(doneTodo, done);
    store().toggleTodo(makeTodo(started), started);
    makeTodo(started);
    store().toggleTodo(doneTodo, done);

    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("started"), QStringLiteral("done")}));
}

TEST_F(GoalOperations, Renaming_sets_the_trimmed_title_and_keeps_the_order)
{
    const GoalID id = makeGoal(QStringLiteral("a"));
    makeGoal(QStringLiteral("b"));
    store().renameGoal(id, QStringLiteral("  z "));

    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("z"), QStringLiteral("b")}));
    EXPECT_EQ(decodeGoals(settings.document(goalsKey)), store().goals());
}

TEST_F(GoalOperations, Renaming_to_the_same_or_a_blank_title_or_an_unknown_goal_does_nothing)
{
    const GoalID id = makeGoal(QStringLiteral("a"));
    takeSignals();
    takeWriteCount();

    store().renameGoal(id, QStringLiteral(" a\n"));
    store().renameGoal(id, QStringLiteral(" \n"));
    store().renameGoal(GoalID::create(), QStringLiteral("b"));

    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("a")});
    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(GoalOperations, Deleting_drops_todos_and_assignments_and_frees_the_windows_at_once)
{
    const GoalID kept = makeGoal(QStringLiteral("kept"));
    const GoalID deleted = makeGoal(QStringLiteral("deleted"));
    makeTodo(deleted);
    desktop.addWindow(1, 100, {});
    desktop.addWindow(2, 100, {});
    store().refresh();
    store().assign(1, deleted);
    store().assign(2, kept);

    store().deleteGoal(deleted);

    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("kept")});
    EXPECT_TRUE(store().unassignedTodos().isEmpty());
    EXPECT_EQ(store().assignments(), (Assignments{{QStringLiteral("2"), kept}}));
    EXPECT_EQ(store().windows(std::optional<GoalID>()).size(), 1);
    EXPECT_EQ(store().windows(std::optional<GoalID>()).first().id, 1U);
    EXPECT_EQ(decodeAssignments(settings.document(assignmentsKey)), store().assignments());
}

TEST_F(GoalOperations, Deleting_frees_the_windows_also_while_the_window_server_keeps_waiting)
{
    const GoalID deleted = makeGoal();
    desktop.addWindow(1, 100, {});
    store().refresh();
    store().assign(1, deleted);
    scheduler.holdBackgroundWork(true);

    store().deleteGoal(deleted);

    ASSERT_EQ(store().windows(std::optional<GoalID>()).size(), 1);
    EXPECT_EQ(store().windows(std::optional<GoalID>()).first().id, 1U);
}

TEST_F(GoalOperations, Deleting_the_selected_goal_returns_to_idle_and_another_does_not)
{
    const GoalID first = makeGoal();
    const GoalID second = makeGoal();
    store().deleteGoal(first);
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(second));

    store().deleteGoal(second);
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());
}

TEST_F(GoalOperations, Deleting_the_goal_whose_editor_is_open_closes_it)
{
    const GoalID id = makeGoal();
    store().requestAddTodo(id);
    const std::int64_t request = store().todoEditorRequestID();

    store().deleteGoal(id);

    EXPECT_EQ(store().todoEditorGoalID(), std::nullopt);
    EXPECT_EQ(store().todoEditorRequestID(), request + 1);
}

TEST_F(GoalOperations, Deleting_an_unknown_goal_does_nothing)
{
    makeGoal();
    takeSignals();
    takeWriteCount();
    desktop.calls.clear();

    store().deleteGoal(GoalID::create());

    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);
    EXPECT_TRUE(desktop.calls.isEmpty());
}

TEST_F(GoalOperations, Goals_are_moved_by_hand_only_while_they_are_not_sorted)
{
    const GoalID a = makeGoal(QStringLiteral("a"));
    makeGoal(QStringLiteral("b"));
    const GoalID c = makeGoal(QStringLiteral("c"));
    takeSignals();
    takeWriteCount();
    store().moveGoal(c, a);
    EXPECT_EQ(goalTitles().join(u' '), QStringLiteral("a b c"));
    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);
    EXPECT_TRUE(store().isAutoSortingGoals());

    store().setAutoSortingGoals(false);
    store().moveGoal(c, a);
    EXPECT_EQ(goalTitles().join(u' '), QStringLiteral("c a b"));
    EXPECT_EQ(decodeGoals(settings.document(goalsKey)), store().goals());
}

TEST_F(GoalOperations, Moving_before_the_next_goal_onto_itself_or_an_unknown_one_changes_nothing)
{
    const GoalID a = makeGoal(QStringLiteral("a"));
    const GoalID b = makeGoal(QStringLiteral("b"));
    makeGoal(QStringLiteral("c"));
    store().setAutoSortingGoals(false);
    takeSignals();
    takeWriteCount();

    store().moveGoal(a, b);
    store().moveGoal(a, a);
    store().moveGoal(a, GoalID::create());
    store().moveGoal(GoalID::create(), a);

    EXPECT_EQ(goalTitles().join(u' '), QStringLiteral("a b c"));
    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(GoalOperations, A_goal_moves_forward_to_stand_before_its_target)
{
    const GoalID a = makeGoal(QStringLiteral("a"));
    makeGoal(QStringLiteral("b"));
    const GoalID c = makeGoal(QStringLiteral("c"));
    store().setAutoSortingGoals(false);

    store().moveGoal(a, c);

    EXPECT_EQ(goalTitles().join(u' '), QStringLiteral("b a c"));
}

TEST_F(GoalOperations, Setting_the_same_priority_or_that_of_an_unknown_goal_does_nothing)
{
    const GoalID id = makeGoal();
    takeSignals();
    takeWriteCount();

    store().setGoalPriority(GoalPriority::p2, id);
    store().setGoalPriority(GoalPriority::p0, GoalID::create());

    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);
}

} // namespace
} // namespace kelpa::test
