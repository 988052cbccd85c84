// Moves of todos in the order of the whole board, as pure functions: where one step in a list
// leads, and whether a move changes anything.
#pragma once

#include "model/Goal.h"
#include "store/board/MovePlace.h"
#include "views/todos/TodoRows.h"

#include <QList>

#include <optional>

namespace kelpa {

/// Moves a todo directly before or behind another.
struct TodoMove
{
    TodoID todoID;
    TodoID targetID;
    MovePlace place = MovePlace::before;

    friend bool operator==(const TodoMove&, const TodoMove&) = default;
};

/// The move by one row of the list: up with a `step` of -1, down with 1. None when the list does
/// not show the todo, when the todo is already at that end, and for any other step.
std::optional<TodoMove> todoMove(const QList<UnifiedTodoEntry>& entries, TodoID todoID, int step);

/// Whether moving the todo directly before the target changes the order of the whole board: not
/// when it is there already, when the two are the same, or when either is absent. Ids are unique.
/// Linear in the number of todos; copies and allocates nothing.
bool changesOrder(TodoID todoID, TodoID targetID, const QList<Goal>& goals,
                  const QList<TodoItem>& unassigned);

} // namespace kelpa
