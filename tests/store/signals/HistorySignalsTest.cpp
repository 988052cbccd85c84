// The signals of undo and redo.

#include "store/signals/ChangeSignals.h"

namespace kelpa::test {
namespace {

using namespace operation_cases;

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

} // namespace
} // namespace kelpa::test
