#include "navigation/BoardNavigation.h"

namespace kelpa {

namespace {

/// Columns of the window cards inside a target.
constexpr qsizetype windowGridColumns = 2;

/// The index beside `index` in a grid that is filled row by row with `count` items; `index` itself
/// at an edge and where the last row has no item.
qsizetype neighbour(qsizetype index, qsizetype count, qsizetype columns,
                    NavigationDirection direction)
{
    const qsizetype column = index % columns;
    switch (direction) {
    case NavigationDirection::left:
        return column > 0 ? index - 1 : index;
    case NavigationDirection::right:
        return column + 1 < columns && index + 1 < count ? index + 1 : index;
    case NavigationDirection::up:
        return index >= columns ? index - columns : index;
    case NavigationDirection::down:
        return index + columns < count ? index + columns : index;
    }
    Q_UNREACHABLE();
}

/// Halts the program when the selection is on no target, which every view relies on.
BoardNavigationState checked(const BoardNavigationState& state)
{
    if (state.target.isNone())
        qFatal("broken invariant: the keyboard selection moved to no target");
    return state;
}

} // namespace

QList<TargetSelection> targetSelections(const QList<GoalID>& visibleGoalIDs)
{
    QList<TargetSelection> targets{TargetSelection::unifiedTodos(), TargetSelection::unassigned()};
    targets.reserve(targets.size() + visibleGoalIDs.size());
    for (const GoalID& id : visibleGoalIDs)
        targets.append(TargetSelection::goal(id));
    return targets;
}

BoardNavigationState movedTargetSelection(const BoardNavigationState& state,
                                          const QList<TargetSelection>& targets, int columnCount,
                                          NavigationDirection direction)
{
    if (columnCount < 1)
        qFatal("broken invariant: targetGridColumnCount is %d, must be at least 1", columnCount);
    const qsizetype index = targets.indexOf(state.target);
    const qsizetype next = index < 0 ? 0 : neighbour(index, targets.size(), columnCount, direction);
    return checked(BoardNavigationState::on(targets.at(next)));
}

BoardNavigationState movedWindowSelection(const BoardNavigationState& state,
                                          const QList<WindowID>& windowIDs,
                                          NavigationDirection direction)
{
    checked(state);
    if (windowIDs.isEmpty())
        return BoardNavigationState::on(state.target);
    const qsizetype index =
        state.selectedWindowID ? windowIDs.indexOf(*state.selectedWindowID) : -1;
    const qsizetype next =
        index < 0 ? 0 : neighbour(index, windowIDs.size(), windowGridColumns, direction);
    return BoardNavigationState::inside(state.target, windowIDs.at(next));
}

std::optional<BoardNavigationState> activatedTarget(TargetSelection target,
                                                    EnterWindowLayer enterWindowLayer,
                                                    const QList<GoalID>& visibleGoalIDs,
                                                    const QList<WindowID>& windowIDs)
{
    if (target.isNone())
        return std::nullopt;
    if (const std::optional<GoalID> goalID = target.goalID()) {
        if (!visibleGoalIDs.contains(*goalID))
            return std::nullopt;
    }
    if (enterWindowLayer == EnterWindowLayer::yes && !windowIDs.isEmpty())
        return BoardNavigationState::inside(target, windowIDs.first());
    return BoardNavigationState::on(target);
}

BoardNavigationState returnedToTarget(const BoardNavigationState& state)
{
    if (state.layer != BoardNavigationLayer::windows)
        return state;
    return BoardNavigationState::on(checked(state).target);
}

BoardNavigationState reconciledWithWindows(const BoardNavigationState& state,
                                           const QList<WindowID>& windowIDs,
                                           const QList<WindowID>& shownIDs)
{
    if (state.layer != BoardNavigationLayer::windows)
        return state;
    if (state.selectedWindowID && windowIDs.contains(*state.selectedWindowID))
        return state;
    if (shownIDs.isEmpty())
        return BoardNavigationState::on(state.target);
    return BoardNavigationState::inside(state.target, shownIDs.first());
}

} // namespace kelpa
