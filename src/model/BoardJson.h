// The JSON form of what is stored of the board. Encoding gives UTF-8 without white space; decoding
// accepts any member order, takes null for an absent optional member, ignores unknown members, and
// fails as a whole when one record is not as it must be.
#pragma once

#include "model/Goal.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>

namespace kelpa {

/// Window key to goal. Ordered, so that the same assignments always give the same bytes.
using Assignments = QMap<QString, GoalID>;

/// None when a value has no JSON form (a completion time that is not finite). Halves of surrogate
/// pairs are stored as U+FFFD.
std::optional<QByteArray> encodeGoals(const QList<Goal>& goals);
std::optional<QByteArray> encodeTodos(const QList<TodoItem>& todos);
QByteArray encodeAssignments(const Assignments& assignments);

/// None when `json` is not a document of exactly the expected form.
std::optional<QList<Goal>> decodeGoals(const QByteArray& json);
std::optional<QList<TodoItem>> decodeTodos(const QByteArray& json);
std::optional<Assignments> decodeAssignments(const QByteArray& json);

} // namespace kelpa
