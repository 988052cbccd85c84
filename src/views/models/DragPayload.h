// What a text that is dropped on a column of the board means.
#pragma once

#include "model/Identifiers.h"
#include "model/TodoDragPayload.h"
#include "views/models/ColumnID.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <variant>

namespace kelpa {

/// Neither a window nor a goal nor a todo, so that the source of the drag is to see a refusal.
struct RefusedDrop
{
    friend bool operator==(const RefusedDrop&, const RefusedDrop&) = default;
};

using DragPayload = std::variant<RefusedDrop, WindowID, GoalID, TodoDragPayload>;

/// A window is its number in decimal (an optional sign, digits); a goal is "kelpa-goal:" and its
/// UUID; a todo is the text of its payload. Any other text, and a number that no window can have,
/// is refused.
DragPayload dragPayloadFromText(QStringView text);

/// The texts that a drag of a window or a goal carries.
QString dragText(WindowID windowID);
QString dragText(GoalID goalID);

/// What dropping a text on a todo's row does.
struct TodoRowDropOutcome
{
    bool isAccepted = false;
    /// The todo that takes the place before the row's; absent when nothing moves.
    std::optional<TodoID> movedTodoID;

    friend bool operator==(const TodoRowDropOutcome&, const TodoRowDropOutcome&) = default;
};

/// A row accepts todos alone, and the row of a column only those of that column: a todo changes its
/// goal on the column as a whole. A todo on itself is accepted and stays.
TodoRowDropOutcome todoRowDropOutcome(QStringView text, const TodoList& list, TodoID rowTodoID);

} // namespace kelpa
