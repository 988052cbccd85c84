// What a dragged todo carries, and its text form.
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

    /// None for any text that is not of the form above, but for the case of UUIDs' letters.
    static std::optional<TodoDragPayload> fromEncodedValue(QStringView text);

    friend bool operator==(const TodoDragPayload&, const TodoDragPayload&) = default;
};

} // namespace kelpa
