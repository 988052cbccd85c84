// A todo together with the list that holds it: what QML calls a todo by two texts.
#pragma once

#include "model/TodoItem.h"
#include "views/models/ColumnID.h"

#include <QString>

#include <optional>

namespace kelpa {

class WindowStore;

struct TodoPlace
{
    TodoID todoID;
    /// Absent for the unassigned list.
    std::optional<GoalID> goalID;
};

/// None when `todoID` is no UUID or `columnID` no text of `columnText`. The todo need not exist.
std::optional<TodoPlace> todoPlaceFromTexts(const QString& todoID, const QString& columnID);

/// Null when the list does not hold the todo. Valid until the store changes.
const TodoItem* todoAt(const TodoPlace& place, const WindowStore& store);

} // namespace kelpa
