// Reads the board as records for programs.
#pragma once

#include "automation/Replies.h"
#include "model/Goal.h"
#include "model/GoalPins.h"
#include "model/WindowItem.h"

#include <QList>
#include <QString>

namespace kelpa::automation {

/// In the order of the board.
QList<GoalRecord> goalRecords(const QList<Goal>& goals, const GoalPins& pins);

/// All todos, completed ones too, in the order of the whole board.
QList<TodoRecord> todoRecords(const QList<Goal>& goals, const QList<TodoItem>& unassigned);

/// In the order of the desktop.
QList<WindowRecord> windowRecords(const QList<WindowItem>& windows);

/// The date in UTC, to the second; empty for one that no calendar has.
QString dateText(Date date);

} // namespace kelpa::automation
