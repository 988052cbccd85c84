// Kelpa's own format: every field of goals and todos, in a document with a name and a version.
#pragma once

#include "model/Goal.h"
#include "transfer/ImportedBoard.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace kelpa {

/// Absent when a value has no JSON form.
std::optional<QByteArray> toJson(const QList<Goal>& goals, const QList<TodoItem>& todosWithoutGoal);
ImportResult fromJson(const QByteArray& bytes);

} // namespace kelpa
