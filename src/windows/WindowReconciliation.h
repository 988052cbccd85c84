// Gives discovered windows the goals that they are assigned to.
#pragma once

#include "model/BoardJson.h"
#include "model/WindowItem.h"

#include <QList>
#include <QSet>

#include <optional>
#include <set>

namespace kelpa {

/// The key of a window's assignment: its number in decimal.
QString assignmentKey(WindowID windowID);

/// The window numbers that have an assignment.
std::set<WindowID> assignedWindows(const Assignments& assignments);

/// `assignments` with the keys of an earlier release, which named a Terminal by its process,
/// replaced by those of the windows that they stand for, as far as `windows` shows them. Absent
/// when there is nothing to migrate.
std::optional<Assignments> migratedTerminalAssignments(const Assignments& assignments,
                                                       const QList<WindowItem>& windows,
                                                       const QSet<GoalID>& goalIDs);

/// `windows`, each with the goal that it is assigned to. Ignores assignments to goals that are not
/// in `goalIDs`.
QList<WindowItem> withAssignedGoals(QList<WindowItem> windows, const Assignments& assignments,
                                    const QSet<GoalID>& goalIDs);

/// `assignments` without those to `goalID`.
Assignments withoutGoal(const Assignments& assignments, GoalID goalID);

} // namespace kelpa
