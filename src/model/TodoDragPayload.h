// The payload of a dragged todo, and its text form.
#pragma once

#include "model/Identifiers.h"

#include <QString>
#include <QStringView>

#include <optional>

namespace kelpa {

struct TodoDragPayload
{
    /// The goal from which the todo is dragged; absent when it comes from the unassigned list.
    std::optional<GoalID> sourceGoalID;
    TodoID todoID;

    /// "kelpa-todo:", the goal's UUID or "unassigned", ":", the todo's UUID.
    QString encodedValue() const;

    /// Absent for any text that does not have the form above; UUIDs may be in any case.
    static std::optional<TodoDragPayload> fromEncodedValue(QStringView text);

    friend bool operator==(const TodoDragPayload&, const TodoDragPayload&) = default;
};

} // namespace kelpa
