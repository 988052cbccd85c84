// Replies as a person reads them on a terminal, and as JSON for programs.
#pragma once

#include "automation/Replies.h"

#include <QList>
#include <QString>

namespace kelpa::automation {

/// Lines, one for each record; columns are two spaces apart. Titles are in a single line.
QString listing(const QList<GoalRecord>& goals);
/// `goals` are those of the board, whose titles follow the todos.
QString listing(const QList<TodoRecord>& todos, const QList<GoalRecord>& goals);
QString listing(const QList<WindowRecord>& windows, const QList<GoalRecord>& goals);

/// An array of objects for a list, an object otherwise, with a newline behind it.
QString json(const Reply& reply);

} // namespace kelpa::automation
