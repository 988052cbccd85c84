#include "store/StoreState.h"

#include "store/board/GoalOrder.h"
#include "windows/WindowReconciliation.h"

#include <QLocale>
#include <QSet>

#include <algorithm>

namespace kelpa {

void StoreState::markChanged(Field field)
{
    changes.mark(field);
    if (field == Field::windows || field == Field::searchText)
        m_filteredWindows.reset();
    if (field == Field::windows || field == Field::searchText || field == Field::previews)
        m_windowsByGoal.reset();
    if (field == Field::windows || field == Field::searchText || field == Field::goals ||
        field == Field::unassignedTodos || field == Field::isHidingGoalsWithoutOpenTodos)
        m_findings.reset();
}

bool StoreState::isVisible(const Goal& goal) const
{
    return !isHidingGoalsWithoutOpenTodos || goal.hasOpenTodo();
}

bool StoreState::isVisible(GoalID goalID) const
{
    const Goal* const goal = goalWith(goalID, goals);
    return goal != nullptr && isVisible(*goal);
}

QList<GoalID> StoreState::visibleGoalIDs() const
{
    QList<GoalID> ids;
    ids.reserve(goals.size());
    for (const Goal& goal : goals) {
        if (isVisible(goal))
            ids.append(goal.id);
    }
    return ids;
}

QList<TodoItem>* StoreState::todoList(std::optional<GoalID> goalID)
{
    if (!goalID)
        return &unassignedTodos;
    const qsizetype index = indexOf(goals, *goalID);
    return index >= 0 ? &goals[index].todos : nullptr;
}

void StoreState::markTodosChanged(std::optional<GoalID> goalID)
{
    markChanged(goalID ? Field::goals : Field::unassignedTodos);
}

void StoreState::sortGoalsIfNeeded()
{
    if (!isAutoSortingGoals)
        return;
    goals = automaticallySorted(goals);
    markChanged(Field::goals);
}

bool StoreState::assignWindows(QList<WindowItem> discovered)
{
    return assign(windows, withAssignedGoals(std::move(discovered), assignments, goalIDs()),
                  Field::windows);
}

QSet<GoalID> StoreState::goalIDs() const
{
    QSet<GoalID> ids;
    ids.reserve(goals.size());
    for (const Goal& goal : goals)
        ids.insert(goal.id);
    return ids;
}

const QList<WindowItem>& StoreState::filteredWindows() const
{
    if (!m_filteredWindows)
        m_filteredWindows = kelpa::filteredWindows(windows, searchText, QLocale());
    return *m_filteredWindows;
}

const SearchFindings& StoreState::findings() const
{
    if (!m_findings)
        m_findings = searchFindings(goals, unassignedTodos, filteredWindows(), emptyGoals(),
                                    searchText, QLocale());
    return *m_findings;
}

QList<WindowItem> StoreState::windowsOf(const std::optional<GoalID>& goalID) const
{
    if (!m_windowsByGoal)
        m_windowsByGoal =
            windowsByGoal(filteredWindows(), [this](WindowID id) { return previews.contains(id); });
    return m_windowsByGoal->of(goalID);
}

QList<WindowItem> StoreState::windowsOf(const TargetSelection& target) const
{
    if (target.isUnassigned())
        return windowsOf(std::optional<GoalID>());
    if (const std::optional<GoalID> goalID = target.goalID())
        return windowsOf(goalID);
    return {};
}

QList<WindowID> StoreState::allWindowIDsOf(const TargetSelection& target) const
{
    QList<WindowID> ids;
    for (const WindowItem& window : windows) {
        if (TargetSelection::of(window.goalID) == target)
            ids.append(window.id);
    }
    return ids;
}

QList<WindowID> StoreState::windowIDsOf(const TargetSelection& target) const
{
    const QList<WindowItem> shown = windowsOf(target);
    QList<WindowID> ids;
    ids.reserve(shown.size());
    for (const WindowItem& window : shown)
        ids.append(window.id);
    return ids;
}

} // namespace kelpa
