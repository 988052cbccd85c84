// What programs may ask of the board, over the session bus and on the command line alike. Each
// request names its method, its parameters and their fields, so that both doors read it from the
// same place.
#pragma once

#include "automation/GoalRequests.h"
#include "automation/RequestParts.h"
#include "automation/TodoRequests.h"
#include "automation/WindowRequests.h"

#include <variant>

namespace kelpa::automation {

struct Undo : WithoutParameters
{
    static constexpr const char* name = "Undo";
    static constexpr ReplyKind reply = ReplyKind::nothing;
};

struct Redo : WithoutParameters
{
    static constexpr const char* name = "Redo";
    static constexpr ReplyKind reply = ReplyKind::nothing;
};

using Request =
    std::variant<ListGoals, ListTodos, ListWindows, AddGoal, RenameGoal, SetGoalPriority, MoveGoal,
                 DeleteGoal, AddTodo, RenameTodo, SetTodoStatus, MoveTodo, PlaceTodo, DeleteTodo,
                 AssignWindow, PinGoal, ShowGoal, RaiseWindows, WorkOnGoal, GoBack, Undo, Redo>;

} // namespace kelpa::automation
