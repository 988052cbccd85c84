// For every operation: which signals fire, how often, and how often something is written.

#include "support/CaseName.h"
#include "support/StoreFixture.h"

#include <functional>

namespace kelpa::test {
namespace {

using Signals = QMap<QString, int>;

/// The board on which every case starts: goals A (two todos, selected) and B (one window), two
/// unassigned todos, windows 1 to 3, in automatic order.
struct Board
{
    WindowStore& store;
    FakeDesktop& desktop;
    ManualScheduler& scheduler;
    GoalID a;
    GoalID b;
    TodoID todoInA;
    TodoID otherTodoInA;
    TodoID looseTodo;
    TodoID otherLooseTodo;
};

struct OperationCase
{
    const char* name;
    std::function<void(Board&)> operation;
    QStringList signalNames;
    int writes;
    /// Brings the board into another state first; may be absent.
    std::function<void(Board&)> preparation = nullptr;
};

class ChangeSignals : public StoreFixture, public testing::WithParamInterface<OperationCase>
{
protected:
    Board board()
    {
        for (const WindowID id : {1U, 2U, 3U})
            desktop.addWindow(id, 100, QStringLiteral("window"));
        store().refresh();
        const GoalID b = makeGoal(QStringLiteral("B"));
        const GoalID a = makeGoal(QStringLiteral("A"));
        const TodoID todoInA = makeTodo(a);
        const TodoID otherTodoInA = makeTodo(a);
        const TodoID looseTodo = makeTodo(std::nullopt);
        const TodoID otherLooseTodo = makeTodo(std::nullopt);
        store().assign(1, b);
        return {store(),      desktop,   scheduler,     a, b, todoInA,
                otherTodoInA, looseTodo, otherLooseTodo};
    }
};

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

const QString goals = QStringLiteral("goals");
const QString unassignedTodos = QStringLiteral("unassignedTodos");
const QString windows = QStringLiteral("windows");
const QString boardNavigation = QStringLiteral("boardNavigation");
const QString todoEditorGoalID = QStringLiteral("todoEditorGoalID");
const QString todoEditorRequestID = QStringLiteral("todoEditorRequestID");
const QString toastMessage = QStringLiteral("toastMessage");
const QString toastOffersUndo = QStringLiteral("toastOffersUndo");
const QString restorationID = QStringLiteral("restorationID");
const QString canUndo = QStringLiteral("canUndo");
const QString canRedo = QStringLiteral("canRedo");
const QString searchText = QStringLiteral("searchText");
const QString language = QStringLiteral("language");
const QString isAutoSortingGoals = QStringLiteral("isAutoSortingGoals");
const QString isHiding = QStringLiteral("isHidingGoalsWithoutOpenTodos");

const std::optional<GoalID> unassigned;
const QString title = QStringLiteral("new title");

void hide(Board& s)
{
    s.store.setHidingGoalsWithoutOpenTodos(true);
}
void sortByHand(Board& s)
{
    s.store.setAutoSortingGoals(false);
}
void completeOneOfA(Board& s)
{
    s.store.deleteTodo(s.otherTodoInA, s.a);
    s.store.toggleTodo(s.todoInA, s.a);
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
        OperationCase{
            "language", [](Board& s) { s.store.setLanguage(AppLanguage::korean); }, {language}, 1},
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
    Todos, ChangeSignals,
    testing::Values(
        OperationCase{"add_to_a_goal", [](Board& s) { s.store.addTodo(title, s.a); }, {goals}, 1},
        OperationCase{"add_to_none",
                      [](Board& s) { s.store.addTodo(title, unassigned); },
                      {unassignedTodos},
                      1,
                      sortByHand},
        OperationCase{"add_to_none_while_sorted",
                      [](Board& s) { s.store.addTodo(title, unassigned); },
                      {goals, unassignedTodos},
                      1},
        OperationCase{
            "add_blank", [](Board& s) { s.store.addTodo(QStringLiteral("\n"), s.a); }, {}, 0},
        OperationCase{"add_to_an_unknown_goal",
                      [](Board& s) { s.store.addTodo(title, GoalID::create()); },
                      {},
                      0},
        OperationCase{
            "update", [](Board& s) { s.store.updateTodo(s.todoInA, title, s.a); }, {goals}, 1},
        OperationCase{"update_of_a_loose_one",
                      [](Board& s) { s.store.updateTodo(s.looseTodo, title, unassigned); },
                      {unassignedTodos},
                      1},
        OperationCase{"update_to_the_same",
                      [](Board& s) { s.store.updateTodo(s.todoInA, QStringLiteral("Todo"), s.a); },
                      {},
                      0},
        OperationCase{"update_in_the_wrong_list",
                      [](Board& s) { s.store.updateTodo(s.todoInA, title, s.b); },
                      {},
                      0},
        OperationCase{"toggle", [](Board& s) { s.store.toggleTodo(s.todoInA, s.a); }, {goals}, 1},
        OperationCase{"toggle_the_last_open_one_while_hiding",
                      [](Board& s) { s.store.toggleTodo(s.todoInA, s.a); },
                      {goals, boardNavigation},
                      1,
                      [](Board& s) {
                          completeOneOfA(s);
                          hide(s);
                      }},
        OperationCase{"toggle_an_unknown_one",
                      [](Board& s) { s.store.toggleTodo(TodoID::create(), s.a); },
                      {},
                      0},
        OperationCase{"delete",
                      [](Board& s) { s.store.deleteTodo(s.todoInA, s.a); },
                      {goals, toastMessage, toastOffersUndo},
                      1},
        OperationCase{"delete_one_more",
                      [](Board& s) { s.store.deleteTodo(s.todoInA, s.a); },
                      {goals},
                      1,
                      [](Board& s) { s.store.deleteTodo(s.otherTodoInA, s.a); }},
        OperationCase{
            "delete_an_unknown_one", [](Board& s) { s.store.deleteTodo(s.todoInA, s.b); }, {}, 0},
        OperationCase{"move_between_goals",
                      [](Board& s) { s.store.moveTodo(s.todoInA, s.a, s.b); },
                      {goals},
                      1},
        OperationCase{"move_to_the_loose_ones",
                      [](Board& s) { s.store.moveTodo(s.todoInA, s.a, unassigned); },
                      {goals, unassignedTodos},
                      1},
        OperationCase{"move_nowhere",
                      [](Board& s) { s.store.moveTodo(s.todoInA, s.a, GoalID::create()); },
                      {},
                      0},
        OperationCase{"move_before_in_one_goal",
                      [](Board& s) { s.store.moveTodo(s.otherTodoInA, s.todoInA); },
                      {goals},
                      1},
        OperationCase{"move_before_among_the_loose_ones",
                      [](Board& s) { s.store.moveTodo(s.otherLooseTodo, s.looseTodo); },
                      {unassignedTodos},
                      1},
        OperationCase{"move_before_across_lists",
                      [](Board& s) { s.store.moveTodo(s.looseTodo, s.todoInA); },
                      {goals, unassignedTodos},
                      1},
        OperationCase{"move_before_the_next_one",
                      [](Board& s) { s.store.moveTodo(s.todoInA, s.otherTodoInA); },
                      {},
                      0},
        OperationCase{"copy",
                      [](Board& s) { s.store.copyTodo(s.store.unassignedTodos().first()); },
                      {toastMessage},
                      0},
        OperationCase{"copy_again",
                      [](Board& s) { s.store.copyTodo(s.store.unassignedTodos().first()); },
                      {},
                      0,
                      [](Board& s) { s.store.copyTodo(s.store.unassignedTodos().first()); }},
        OperationCase{"request_editor",
                      [](Board& s) { s.store.requestAddTodo(s.b); },
                      {boardNavigation, todoEditorGoalID, todoEditorRequestID},
                      0},
        OperationCase{"request_editor_again",
                      [](Board& s) { s.store.requestAddTodo(s.a); },
                      {todoEditorRequestID},
                      0,
                      [](Board& s) { s.store.requestAddTodo(s.a); }},
        OperationCase{"cancel_editor",
                      [](Board& s) { s.store.cancelTodoEditor(); },
                      {todoEditorGoalID, todoEditorRequestID},
                      0,
                      [](Board& s) { s.store.requestAddTodo(s.a); }},
        OperationCase{"cancel_no_editor", [](Board& s) { s.store.cancelTodoEditor(); }, {}, 0}),
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

void undoOnce(Board& s)
{
    s.store.undo();
}
void undoAll(Board& s)
{
    while (s.store.canUndo())
        s.store.undo();
}

INSTANTIATE_TEST_SUITE_P(
    History, ChangeSignals,
    testing::Values(
        OperationCase{"undo_of_an_assignment",
                      undoOnce,
                      {windows, boardNavigation, restorationID, canRedo},
                      1},
        OperationCase{
            "undo_of_a_loose_todo", undoOnce, {unassignedTodos, restorationID}, 1, undoOnce},
        OperationCase{"undo_of_a_title",
                      undoOnce,
                      {goals, boardNavigation, restorationID, canRedo},
                      1,
                      [](Board& s) { s.store.renameGoal(s.b, title); }},
        OperationCase{"undo_of_a_deletion",
                      undoOnce,
                      {goals, windows, boardNavigation, restorationID, canRedo, toastMessage,
                       toastOffersUndo},
                      1,
                      [](Board& s) { s.store.deleteGoal(s.b); }},
        OperationCase{"undo_of_the_first_step",
                      undoOnce,
                      {goals, boardNavigation, canUndo},
                      1,
                      [](Board& s) {
                          for (int i = 0; i < 6; ++i)
                              s.store.undo();
                          s.store.activateTarget(TargetSelection::goal(s.b), EnterWindowLayer::no);
                      }},
        OperationCase{"undo_of_nothing", undoOnce, {}, 0, undoAll},
        OperationCase{"redo",
                      [](Board& s) { s.store.redo(); },
                      {windows, boardNavigation, restorationID, canRedo},
                      1,
                      undoOnce},
        OperationCase{"redo_of_nothing", [](Board& s) { s.store.redo(); }, {}, 0},
        OperationCase{"a_change_after_undo",
                      [](Board& s) { s.store.renameGoal(s.a, title); },
                      {goals, canRedo},
                      1,
                      undoOnce},
        OperationCase{"the_first_change",
                      [](Board& s) { s.store.addTodo(title, unassigned); },
                      {goals, unassignedTodos, canUndo, canRedo},
                      1,
                      undoAll},
        OperationCase{"a_change_after_a_deletion",
                      [](Board& s) { s.store.assign(2, s.a); },
                      {windows, toastMessage, toastOffersUndo},
                      1,
                      [](Board& s) { s.store.deleteTodo(s.todoInA, s.a); }},
        OperationCase{"the_end_of_an_offer",
                      [](Board& s) { s.scheduler.advance(std::chrono::seconds(6)); },
                      {toastMessage, toastOffersUndo},
                      0,
                      [](Board& s) { s.store.deleteTodo(s.todoInA, s.a); }}),
    caseName);

using enum NavigationDirection;
using Enter = EnterWindowLayer;

void enterB(Board& s)
{
    s.store.activateTarget(TargetSelection::goal(s.b), Enter::yes);
}

INSTANTIATE_TEST_SUITE_P(
    Navigation, ChangeSignals,
    testing::Values(
        OperationCase{
            "arrow", [](Board& s) { s.store.moveTargetSelection(up); }, {boardNavigation}, 0},
        OperationCase{
            "arrow_at_the_edge", [](Board& s) { s.store.moveTargetSelection(left); }, {}, 0},
        OperationCase{"arrow_among_windows_at_the_edge",
                      [](Board& s) { s.store.moveWindowSelection(down); },
                      {},
                      0,
                      enterB},
        OperationCase{
            "arrow_among_windows",
            [](Board& s) { s.store.moveWindowSelection(right); },
            {boardNavigation},
            0,
            [](Board& s) { s.store.activateTarget(TargetSelection::unassigned(), Enter::yes); }},
        OperationCase{"activate", enterB, {boardNavigation}, 0},
        OperationCase{"activate_what_is_active", enterB, {}, 0, enterB},
        OperationCase{"activate_an_unknown_goal",
                      [](Board& s) {
                          s.store.activateTarget(TargetSelection::goal(GoalID::create()),
                                                 Enter::no);
                      },
                      {},
                      0},
        OperationCase{"return",
                      [](Board& s) { s.store.returnToTargetSelection(); },
                      {boardNavigation},
                      0,
                      enterB},
        OperationCase{
            "return_on_a_target", [](Board& s) { s.store.returnToTargetSelection(); }, {}, 0},
        OperationCase{
            "clear", [](Board& s) { s.store.clearTargetSelection(); }, {boardNavigation}, 0},
        OperationCase{"column_count", [](Board& s) { s.store.setTargetGridColumnCount(3); }, {}, 0},
        OperationCase{"search_that_hides_the_selected_window",
                      [](Board& s) { s.store.setSearchText(QStringLiteral("nothing")); },
                      {searchText},
                      0,
                      enterB}),
    caseName);

} // namespace
} // namespace kelpa::test
