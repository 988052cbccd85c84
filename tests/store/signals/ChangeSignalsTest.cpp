// The signals of operations on goals, settings and windows.

#include "store/signals/ChangeSignals.h"

namespace kelpa::test {
namespace {

using Signals = QMap<QString, int>;
using namespace operation_cases;

TEST_P(ChangeSignals, Fire_exactly_where_something_changes)
{
    const OperationCase& param = GetParam();
    Board start = board();
    if (param.preparation)
        param.preparation(start);
    takeSignals();
    takeWriteCount();
    settings.changedEntryCount = 0;

    param.operation(start);

    Signals expected;
    for (const QString& name : param.signalNames)
        expected.insert(name, 1);
    EXPECT_EQ(takeSignals(), expected);
    EXPECT_EQ(takeWriteCount(), param.writes);
    EXPECT_EQ(settings.changedEntryCount > 0, param.writes > 0);
}

INSTANTIATE_TEST_SUITE_P(
    Goals, ChangeSignals,
    testing::Values(
        OperationCase{
            "create", [](Board& s) { s.store.createGoal(title); }, {goals, boardNavigation}, 1},
        OperationCase{"create_while_hiding",
                      [](Board& s) { s.store.createGoal(title); },
                      {goals, boardNavigation, isHiding},
                      1,
                      hide},
        OperationCase{"create_for_a_window",
                      [](Board& s) { s.store.createGoal(title, 2); },
                      {goals, boardNavigation, windows},
                      1},
        OperationCase{"explain_the_automatic_order",
                      [](Board& s) { s.store.explainAutomaticOrder(); },
                      {toastMessage, toastOffersManualOrder},
                      0},
        OperationCase{"explain_no_automatic_order",
                      [](Board& s) { s.store.explainAutomaticOrder(); },
                      {},
                      0,
                      sortByHand},
        OperationCase{
            "create_blank", [](Board& s) { s.store.createGoal(QStringLiteral(" ")); }, {}, 0},
        OperationCase{"rename", [](Board& s) { s.store.renameGoal(s.a, title); }, {goals}, 1},
        OperationCase{"rename_to_the_same",
                      [](Board& s) { s.store.renameGoal(s.a, QStringLiteral("A ")); },
                      {},
                      0},
        OperationCase{"delete_with_windows",
                      [](Board& s) { s.store.deleteGoal(s.b); },
                      {goals, windows, toastMessage, toastOffersUndo},
                      1},
        OperationCase{"delete_the_selected_one",
                      [](Board& s) { s.store.deleteGoal(s.a); },
                      {goals, boardNavigation, toastMessage, toastOffersUndo},
                      1},
        OperationCase{
            "delete_an_unknown_one", [](Board& s) { s.store.deleteGoal(GoalID::create()); }, {}, 0},
        OperationCase{"move", [](Board& s) { s.store.moveGoal(s.b, s.a); }, {goals}, 1, sortByHand},
        OperationCase{"move_while_sorted", [](Board& s) { s.store.moveGoal(s.b, s.a); }, {}, 0},
        OperationCase{
            "move_to_where_it_is", [](Board& s) { s.store.moveGoal(s.a, s.b); }, {}, 0, sortByHand},
        OperationCase{"set_priority",
                      [](Board& s) { s.store.setGoalPriority(GoalPriority::p0, s.b); },
                      {goals},
                      1},
        OperationCase{"set_the_same_priority",
                      [](Board& s) { s.store.setGoalPriority(GoalPriority::p2, s.b); },
                      {},
                      0}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Settings, ChangeSignals,
    testing::Values(
        OperationCase{"language",
                      [](Board& s) { s.store.setLanguage(AppLanguage::korean); },
                      {language, isLanguageChosen},
                      1},
        OperationCase{"first_choice_of_a_language",
                      [](Board& s) { s.store.chooseLanguage(AppLanguage::chinese); },
                      {isLanguageChosen},
                      1},
        OperationCase{
            "same_language", [](Board& s) { s.store.setLanguage(AppLanguage::chinese); }, {}, 0},
        OperationCase{"sorting_off",
                      [](Board& s) { s.store.setAutoSortingGoals(false); },
                      {isAutoSortingGoals},
                      1},
        OperationCase{
            "sorting_on_as_it_is", [](Board& s) { s.store.setAutoSortingGoals(true); }, {}, 0},
        OperationCase{"sorting_off_as_it_is", sortByHand, {}, 0, sortByHand},
        OperationCase{"sorting_on",
                      [](Board& s) { s.store.setAutoSortingGoals(true); },
                      {goals, isAutoSortingGoals},
                      1,
                      sortByHand},
        OperationCase{"hiding_on",
                      [](Board& s) { s.store.setHidingGoalsWithoutOpenTodos(true); },
                      {isHiding},
                      0},
        OperationCase{"hiding_on_with_an_empty_goal_selected",
                      [](Board& s) { s.store.setHidingGoalsWithoutOpenTodos(true); },
                      {isHiding, boardNavigation},
                      0,
                      [](Board& s) {
                          s.store.activateTarget(TargetSelection::goal(s.b), EnterWindowLayer::no);
                      }},
        OperationCase{"hiding_as_it_is",
                      [](Board& s) { s.store.setHidingGoalsWithoutOpenTodos(false); },
                      {},
                      0},
        OperationCase{"search",
                      [](Board& s) { s.store.setSearchText(QStringLiteral("x")); },
                      {searchText},
                      0},
        OperationCase{"same_search", [](Board& s) { s.store.setSearchText(QString()); }, {}, 0}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Windows, ChangeSignals,
    testing::Values(
        OperationCase{"assign", [](Board& s) { s.store.assign(2, s.a); }, {windows}, 1},
        OperationCase{"assign_to_where_it_is", [](Board& s) { s.store.assign(1, s.b); }, {}, 0},
        OperationCase{"assign_several",
                      [](Board& s) {
                          EXPECT_TRUE(s.store.assign({1, 2}, s.a));
                      },
                      {windows},
                      1},
        OperationCase{"assign_several_to_where_they_are",
                      [](Board& s) { EXPECT_TRUE(s.store.assign(QSet<WindowID>{1}, s.b)); },
                      {},
                      0},
        OperationCase{"assign_several_with_one_gone",
                      [](Board& s) {
                          EXPECT_FALSE(s.store.assign({1, 9}, s.a));
                      },
                      {},
                      0},
        OperationCase{"refresh_of_the_same", [](Board& s) { s.store.refresh(); }, {}, 0},
        OperationCase{"refresh_of_a_changed_desktop",
                      [](Board& s) {
                          s.desktop.addWindow(9, 100, title);
                          s.store.refresh();
                      },
                      {windows},
                      0},
        OperationCase{"refresh_in_the_background_of_a_changed_desktop",
                      [](Board& s) {
                          s.desktop.addWindow(9, 100, title);
                          s.store.refreshInBackground();
                          s.scheduler.advance(Scheduler::Duration(0));
                      },
                      {windows},
                      0},
        OperationCase{"refresh_without_permissions",
                      [](Board& s) {
                          s.desktop.isAccessibilityGranted = false;
                          s.desktop.isScreenCaptureGranted = false;
                          s.store.refresh();
                      },
                      {windows, QStringLiteral("isAccessibilityTrusted"),
                       QStringLiteral("isScreenCaptureTrusted"), QStringLiteral("obstacles")},
                      0},
        OperationCase{
            "start_observing_the_same", [](Board& s) { s.store.startObserving(); }, {}, 0},
        OperationCase{"stop_observing", [](Board& s) { s.store.stopObserving(); }, {windows}, 0}),
    caseName);

} // namespace
} // namespace kelpa::test
