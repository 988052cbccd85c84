// The signals of operations on todos.

#include "store/signals/ChangeSignals.h"

namespace kelpa::test {
namespace {

using namespace operation_cases;

void completeOneOfA(Board& s)
{
    s.store.deleteTodo(s.otherTodoInA, s.a);
    s.store.toggleTodo(s.todoInA, s.a);
}

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
                      {goals, boardNavigation, toastMessage, toastOffersUndo, lingeringTodoID},
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

} // namespace
} // namespace kelpa::test
