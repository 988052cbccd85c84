// The rules of the list of goals.
#pragma once

#include "model/Goal.h"
#include "store/board/MovePlace.h"

#include <QList>

#include <optional>

namespace kelpa {

/// By priority, the highest first, then by descending number of open todos; a stable sort.
QList<Goal> automaticallySorted(const QList<Goal>& goals);

/// The first accent that no goal uses; the first of all when each is in use.
GoalAccent nextAccent(const QList<Goal>& goals);

/// `goals` with `sourceID` moved to `targetID`; none when either is absent or they are the same.
std::optional<QList<Goal>> movedGoal(const QList<Goal>& goals, GoalID sourceID, GoalID targetID,
                                     MovePlace place = MovePlace::before);

/// The goals with at least one open todo, in order.
QList<Goal> withOpenTodos(const QList<Goal>& goals);

} // namespace kelpa
