// The goals of the board as QML sees them.
#include "views/goals/GoalController.h"

#include "support/TwoGoalsFixture.h"
#include "views/goals/PrioritySymbol.h"
#include "views/models/ColumnID.h"

#include <QRegularExpression>
#include <QSignalSpy>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class Goals : public TwoGoalsFixture
{
protected:
    GoalController goals{store()};
    const QString unassigned = columnText(std::nullopt);
};

TEST_F(Goals, The_entry_of_the_selected_goal_is_named_by_its_row_in_the_rail)
{
    using enum NavigationDirection;
    store().setTargetGridColumnCount(1);
    store().clearTargetSelection();
    EXPECT_EQ(goals.selectedBreadcrumb(), -1);
    store().activateTarget(TargetSelection::unassigned(), EnterWindowLayer::no);
    EXPECT_EQ(goals.selectedBreadcrumb(), -1);
    const QSignalSpy changes(&goals, &GoalController::selectionChanged);
    store().moveTargetSelection(down);
    EXPECT_EQ(goals.selectedBreadcrumb(), 0);
    store().moveTargetSelection(down);
    EXPECT_EQ(goals.selectedBreadcrumb(), 1);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(Goals, The_entry_is_known_when_the_selection_is_announced)
{
    store().clearTargetSelection();
    int announced = -1;
    QObject::connect(&goals, &GoalController::selectionChanged, &goals,
                     [&] { announced = goals.selectedBreadcrumb(); });
    store().activateTarget(TargetSelection::goal(store().goals().at(1).id), EnterWindowLayer::no);
    EXPECT_EQ(announced, 1);
}

TEST_F(Goals, The_unassigned_column_cannot_be_dragged)
{
    EXPECT_EQ(goals.columnDragText(unassigned), QString());
}

TEST_F(Goals, Completed_todos_are_deleted_from_the_column_that_has_some)
{
    EXPECT_FALSE(goals.hasCompletedTodos(unassigned));
    EXPECT_FALSE(goals.hasCompletedTodos(QStringLiteral("nothing")));
    EXPECT_FALSE(goals.hasCompletedTodos(GoalID::create().text()));
    const TodoID loose = makeTodo(std::nullopt, QStringLiteral("loose"));
    const TodoID bound = makeTodo(first, QStringLiteral("bound"));
    store().setTodoStatus(loose, TodoStatus::completed, std::nullopt);
    EXPECT_TRUE(goals.hasCompletedTodos(unassigned));
    EXPECT_FALSE(goals.hasCompletedTodos(first.text()));
    store().setTodoStatus(bound, TodoStatus::completed, first);
    EXPECT_TRUE(goals.hasCompletedTodos(first.text()));

    goals.deleteCompletedTodos(QStringLiteral("nothing"));
    goals.deleteCompletedTodos(first.text());
    EXPECT_FALSE(goals.hasCompletedTodos(first.text()));
    EXPECT_TRUE(goals.hasCompletedTodos(unassigned));
    goals.deleteCompletedTodos(unassigned);
    EXPECT_TRUE(todos(std::nullopt).isEmpty());
}

TEST_F(Goals, Renaming_and_deleting_never_touch_the_unassigned_column)
{
    goals.renameGoal(unassigned, QStringLiteral("Renamed"));
    goals.deleteGoal(unassigned);
    EXPECT_EQ(store().goals().size(), 2);
    goals.renameGoal(first.text(), QStringLiteral("Renamed"));
    EXPECT_EQ(goal(first).title, QStringLiteral("Renamed"));
    goals.deleteGoal(first.text());
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Second")});
}

TEST_F(Goals, A_blank_text_is_no_title)
{
    EXPECT_FALSE(goals.isGoalTitle(QString()));
    EXPECT_FALSE(goals.isGoalTitle(QStringLiteral(" \t\n")));
    EXPECT_TRUE(goals.isGoalTitle(QStringLiteral(" a ")));
}

TEST_F(Goals, Without_a_goal_that_shows_there_is_a_hint_what_to_do)
{
    EXPECT_EQ(goals.noGoalsHint(), u"");
    store().addTodo(QStringLiteral("Read"), first);
    QSignalSpy changes(&goals, &GoalController::noGoalsHintChanged);
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_EQ(goals.noGoalsHint(), u"");
    store().deleteTodo(todos(first).front().id, first);
    EXPECT_EQ(goals.noGoalsHint(),
              u"Goals without unfinished todos are hidden. Choose “Show All” to see them.");
    store().deleteGoal(first);
    store().deleteGoal(second);
    EXPECT_EQ(goals.noGoalsHint(), u"Add a goal, then drag windows to it");
    EXPECT_GE(changes.size(), 3);
}

TEST_F(Goals, A_goal_opens_and_shows_windows)
{
    store().assign(7, first);
    desktop.calls.clear();
    goals.openChrome(first.text());
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls.filter(QRegularExpression(QStringLiteral("^launch"))),
              QStringList{QStringLiteral("launch chrome")});
    desktop.calls.clear();
    goals.openTerminal(first.text());
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls.filter(QRegularExpression(QStringLiteral("^launch"))),
              QStringList{QStringLiteral("launch terminal")});
    desktop.calls.clear();
    goals.showAllWindows(first.text());
    scheduler.advance(0ms);
    EXPECT_TRUE(desktop.calls.contains(QStringLiteral("raise Report")));
}

TEST_F(Goals, A_goal_can_be_pinned_to_the_desktops_that_are_there)
{
    const auto names = [this](const QString& columnID) {
        QStringList texts;
        for (const QVariant& choice : goals.pinChoices(columnID)) {
            const QVariantMap map = choice.toMap();
            texts.append(
                map.value(QStringLiteral("name")).toString() +
                (map.value(QStringLiteral("isChosen")).toBool() ? QStringLiteral("*") : QString()) +
                (map.value(QStringLiteral("isThere")).toBool() ? QString() : QStringLiteral("?")));
        }
        return texts;
    };
    EXPECT_EQ(names(first.text()), QStringList());
    desktop.virtualDesktops = {QStringLiteral("Mail\nand more"), QString()};
    store().refresh();
    EXPECT_EQ(names(unassigned), QStringList());
    EXPECT_EQ(names(first.text()),
              (QStringList{QStringLiteral("Not pinned*"), QStringLiteral("Mail and more"),
                           QStringLiteral("Desktop 2")}));
    goals.pinTo(first.text(), 2);
    EXPECT_EQ(names(first.text()),
              (QStringList{QStringLiteral("Not pinned"), QStringLiteral("Mail and more"),
                           QStringLiteral("Desktop 2*")}));
    desktop.virtualDesktops = {QStringLiteral("Mail")};
    store().refresh();
    EXPECT_EQ(names(second.text()), QStringList());
    EXPECT_EQ(names(first.text()),
              (QStringList{QStringLiteral("Not pinned"), QStringLiteral("Mail"),
                           QStringLiteral("Desktop 2 (not there now)*?")}));
    goals.pinTo(first.text(), 0);
    EXPECT_EQ(store().pinOf(first), std::nullopt);
    // As in sway, which creates the second and the fourth when a window is sent there.
    desktop.virtualDesktops = QStringList(4);
    desktop.unofferedDesktops = {2, 4};
    store().refresh();
    goals.pinTo(first.text(), 4);
    EXPECT_EQ(names(first.text()),
              (QStringList{QStringLiteral("Not pinned"), QStringLiteral("Desktop 1"),
                           QStringLiteral("Desktop 3"), QStringLiteral("Desktop 4*")}));
    EXPECT_EQ(names(second.text()),
              (QStringList{QStringLiteral("Not pinned*"), QStringLiteral("Desktop 1"),
                           QStringLiteral("Desktop 3")}));
}

TEST_F(Goals, Goals_can_be_pinned_while_there_are_desktops)
{
    EXPECT_FALSE(goals.canPinGoals());
    const QSignalSpy changes(&goals, &GoalController::canPinGoalsChanged);
    desktop.virtualDesktops = {QString(), QString()};
    store().refresh();
    EXPECT_TRUE(goals.canPinGoals());
    EXPECT_FALSE(changes.isEmpty());
    desktop.virtualDesktops.clear();
    store().refresh();
    EXPECT_FALSE(goals.canPinGoals());
}

TEST_F(Goals, The_unassigned_column_opens_nothing)
{
    desktop.calls.clear();
    goals.openChrome(unassigned);
    goals.openTerminal(unassigned);
    goals.showAllWindows(unassigned);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls, QStringList());
}

TEST_F(Goals, The_way_to_a_column_selects_it)
{
    goals.goToColumn(second.text());
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(second));
    goals.goToColumn(unassigned);
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::unassigned());
}

TEST_F(Goals, A_priority_is_set_by_its_stored_text)
{
    EXPECT_EQ(goals.priorities(), QStringList({QStringLiteral("p0"), QStringLiteral("p1"),
                                               QStringLiteral("p2"), QStringLiteral("p3")}));
    goals.setPriority(second.text(), QStringLiteral("p0"));
    EXPECT_EQ(goal(second).priority, GoalPriority::p0);
    goals.setPriority(second.text(), QStringLiteral("urgent"));
    EXPECT_EQ(goal(second).priority, GoalPriority::p0);
}

TEST(PrioritySymbols, Every_priority_has_its_own)
{
    EXPECT_EQ(prioritySymbol(GoalPriority::p0), QStringLiteral("chevrons-up"));
    EXPECT_EQ(prioritySymbol(GoalPriority::p1), QStringLiteral("chevron-up"));
    EXPECT_EQ(prioritySymbol(GoalPriority::p2), QStringLiteral("equal"));
    EXPECT_EQ(prioritySymbol(GoalPriority::p3), QStringLiteral("chevron-down"));
}

class GoalMoves : public Goals
{
protected:
    GoalMoves() { third = makeGoal(QStringLiteral("Third")); }

    GoalID third;
};

TEST_F(GoalMoves, A_goal_moves_before_all_or_behind_all_that_show_in_one_step)
{
    EXPECT_FALSE(goals.moveColumnToEnd(first.text(), -1));
    EXPECT_TRUE(goals.moveColumnToEnd(first.text(), 1));
    EXPECT_EQ(titles(), u"Second Third First");
    EXPECT_TRUE(goals.moveColumnToEnd(third.text(), -1));
    EXPECT_EQ(titles(), u"Third Second First");
    store().undo();
    store().undo();
    EXPECT_EQ(titles(), u"First Second Third");
    EXPECT_FALSE(goals.moveColumnToEnd(unassigned, 1));
    store().setAutoSortingGoals(true);
    EXPECT_FALSE(goals.moveColumnToEnd(third.text(), -1));
}

TEST_F(GoalMoves, Who_would_move_a_sorted_goal_past_another_is_told_why_it_stays)
{
    store().setLanguage(AppLanguage::english);
    store().setAutoSortingGoals(true);
    EXPECT_FALSE(goals.hasGoalBeside(first.text(), -1));
    EXPECT_TRUE(goals.hasGoalBeside(first.text(), 1));
    EXPECT_FALSE(goals.canMoveColumn(first.text(), 1));
    EXPECT_FALSE(goals.moveColumn(first.text(), -1));
    EXPECT_FALSE(goals.moveColumnToEnd(first.text(), -1));
    EXPECT_FALSE(goals.moveColumn(unassigned, 1));
    EXPECT_EQ(store().toastMessage(), std::nullopt) << "there is no goal on that side";
    for (const bool isToEnd : {false, true}) {
        store().setAutoSortingGoals(false);
        EXPECT_EQ(store().toastMessage(), std::nullopt);
        store().setAutoSortingGoals(true);
        EXPECT_FALSE(isToEnd ? goals.moveColumnToEnd(first.text(), 1)
                             : goals.moveColumn(first.text(), 1));
        EXPECT_EQ(store().toastMessage(),
                  QStringLiteral("Goals are sorted automatically and cannot be moved"));
        EXPECT_TRUE(store().toastOffersManualOrder());
    }
    EXPECT_EQ(titles(), u"First Second Third");
}

TEST_F(GoalMoves, Among_the_goals_that_show_the_hidden_ones_do_not_count)
{
    makeTodo(first);
    makeTodo(second);
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_TRUE(goals.moveColumnToEnd(first.text(), 1));
    EXPECT_EQ(titles(), u"Second First Third");
    EXPECT_FALSE(goals.moveColumnToEnd(first.text(), 1));
}

} // namespace
} // namespace kelpa::test
