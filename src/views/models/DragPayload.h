// Drag and drop on the board: the payload that a dragged text carries, the row on which it is
// dropped, and the outcome of the drop there.
#pragma once

#include "model/Identifiers.h"
#include "model/TodoDragPayload.h"
#include "views/models/ColumnID.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <variant>

namespace kelpa {

/// Neither a window nor a goal nor a todo: every target refuses it, and the drag's source sees
/// that.
struct UnknownPayload
{
    friend bool operator==(const UnknownPayload&, const UnknownPayload&) = default;
};

using DragPayload = std::variant<UnknownPayload, WindowID, GoalID, TodoDragPayload>;

/// A window is its number in decimal (an optional sign, digits); a goal is "kelpa-goal:" and its
/// UUID; a todo is `TodoDragPayload::encodedValue`. Any other text is unknown, and so is a number
/// that no window can have.
DragPayload dragPayloadFromText(QStringView text);

/// The texts that a drag of a window or a goal carries.
QString dragText(WindowID windowID);
QString dragText(GoalID goalID);

/// The row of a todo in a list, on which a payload is dropped.
struct TodoRowDropTarget
{
    TodoList list;
    TodoID todoID;
};

/// The effect of a drop on a todo's row.
struct TodoRowDropOutcome
{
    bool isAccepted = false;
    /// The todo to insert before that of the row; absent when nothing moves.
    std::optional<TodoID> movedTodoID;

    friend bool operator==(const TodoRowDropOutcome&, const TodoRowDropOutcome&) = default;
};

/// A row accepts only todos, and a row of a column only those of that column: to change its goal, a
/// todo is dropped on the column as a whole. A todo dropped on itself is accepted and stays.
TodoRowDropOutcome todoRowDropOutcome(const DragPayload& payload, const TodoRowDropTarget& target);

} // namespace kelpa
