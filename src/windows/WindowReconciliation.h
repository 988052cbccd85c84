// How discovered windows get back the goals they were assigned to.
#pragma once

#include "model/BoardJson.h"
#include "model/WindowItem.h"

#include <QList>
#include <QSet>

#include <optional>
#include <set>

namespace kelpa {

/// The key under which a window's assignment is kept: its number in decimal.
QString assignmentKey(WindowID windowID);

/// The window numbers that have an assignment.
std::set<WindowID> assignedWindows(const Assignments& assignments);

/// `assignments` without the keys of an earlier release, which named a Terminal by its process, so
/// far as `windows` shows which windows they stand for. None when there is nothing to migrate.
std::optional<Assignments> migratedTerminalAssignments(const Assignments& assignments,
                                                       const QList<WindowItem>& windows,
                                                       const QSet<GoalID>& goalIDs);

/// `windows`, each with the goal that it is assigned to. An assignment to a goal that is not in
/// `goalIDs` counts as none.
QList<WindowItem> withAssignedGoals(QList<WindowItem> windows, const Assignments& assignments,
                                    const QSet<GoalID>& goalIDs);

/// `assignments` without those to `goalID`.
Assignments withoutGoal(const Assignments& assignments, GoalID goalID);

} // namespace kelpa
