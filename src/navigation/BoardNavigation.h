// Where the keyboard selection goes: functions from a state and what the board shows to the next
// state. None of them changes anything; the store assigns the result when it differs.
#pragma once

#include "navigation/BoardNavigationState.h"

#include <QList>

#include <optional>

namespace kelpa {

/// The targets in the order in which the arrow keys walk them; always at least two.
QList<TargetSelection> targetSelections(const QList<GoalID>& visibleGoalIDs);

/// The neighbour of the selected target in rows of `columnCount` columns, without wrapping; the
/// first target when the selected one is not among `targets`. `columnCount` is at least 1 and
/// `targets` is not empty.
BoardNavigationState movedTargetSelection(const BoardNavigationState& state,
                                          const QList<TargetSelection>& targets, int columnCount,
                                          NavigationDirection direction);

/// The neighbour of the selected window in rows of two, without wrapping; the first window when the
/// selected one is gone; back on the target when `windowIDs`, its windows, is empty.
BoardNavigationState movedWindowSelection(const BoardNavigationState& state,
                                          const QList<WindowID>& windowIDs,
                                          NavigationDirection direction);

/// The state after `target` is activated; none when nothing happens, because the target is nothing
/// or a goal that is not visible. `windowIDs` are the target's windows.
std::optional<BoardNavigationState> activatedTarget(TargetSelection target,
                                                    EnterWindowLayer enterWindowLayer,
                                                    const QList<GoalID>& visibleGoalIDs,
                                                    const QList<WindowID>& windowIDs);

/// One layer up, from a window to its target; a state on a target stays as it is.
BoardNavigationState returnedToTarget(const BoardNavigationState& state);

/// The state after the windows of the selected target have become `windowIDs`, of which a search
/// shows `shownIDs`: a selected window that is gone is replaced by the first shown one, or by the
/// target when there is none. One that the search hides stays selected, until an arrow moves on
/// from it or the search shows it again.
BoardNavigationState reconciledWithWindows(const BoardNavigationState& state,
                                           const QList<WindowID>& windowIDs,
                                           const QList<WindowID>& shownIDs);

} // namespace kelpa
