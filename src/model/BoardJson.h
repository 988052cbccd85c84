// The JSON form of the stored board. Encoding gives UTF-8 without white space. Decoding accepts any
// member order, treats null as an absent optional member, ignores unknown members, and fails as a
// whole when one record is invalid.
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

/// Absent when a value has no JSON form (a completion time that is not finite). Unpaired surrogates
/// are stored as U+FFFD.
std::optional<QByteArray> encodeGoals(const QList<Goal>& goals);
std::optional<QByteArray> encodeTodos(const QList<TodoItem>& todos);
QByteArray encodeAssignments(const Assignments& assignments);

/// Absent when `json` is not a document of exactly the expected form.
std::optional<QList<Goal>> decodeGoals(const QByteArray& json);
std::optional<QList<TodoItem>> decodeTodos(const QByteArray& json);
std::optional<Assignments> decodeAssignments(const QByteArray& json);

} // namespace kelpa
