// Operations on goals.

#include "model/Text.h"
#include "store/WindowStoreParts.h"
#include "store/board/GoalOrder.h"
#include "windows/WindowReconciliation.h"

#include <algorithm>

namespace kelpa {

void WindowStore::createGoal(const QString& title)
{
    const Update update(m_changes);
    if (addGoal(title))
        saveStep();
}

std::optional<GoalID> WindowStore::addGoal(const QString& title)
{
    const QString trimmed = trimmedText(title);
    if (trimmed.isEmpty())
        return std::nullopt;
    const Goal goal{GoalID::create(), trimmed, nextAccent(m_goals), defaultGoalPriority, {}};
    m_goals.append(goal);
    markChanged(Field::goals);
    // It has no open todo yet and would be hidden at once.
    publish(m_isHidingGoalsWithoutOpenTodos, false, Field::isHidingGoalsWithoutOpenTodos);
    sortGoalsIfNeeded();
    activateTarget(TargetSelection::goal(goal.id), EnterWindowLayer::no);
    return goal.id;
}

void WindowStore::renameGoal(GoalID goalID, const QString& title)
{
    const Update update(m_changes);
    const QString trimmed = trimmedText(title);
    const qsizetype index = indexOf(m_goals, goalID);
    if (trimmed.isEmpty() || index < 0 || m_goals.at(index).title == trimmed)
        return;
    m_goals[index].title = trimmed;
    markChanged(Field::goals);
    saveStep();
}

void WindowStore::deleteGoal(GoalID goalID)
{
    const Update update(m_changes);
    const qsizetype index = indexOf(m_goals, goalID);
    if (index < 0)
        return;
    m_goals.removeAt(index);
    markChanged(Field::goals);
    m_assignments = withoutGoal(m_assignments, goalID);
    // At once, however long the look at the desktop takes: a card of no goal would stand nowhere.
    reconcileWithBoard();
    saveDeletion(CopyKey::GoalDeleted);
    refresh();
}

void WindowStore::moveGoal(GoalID sourceID, GoalID targetID, MovePlace place)
{
    const Update update(m_changes);
    if (m_isAutoSortingGoals)
        return;
    std::optional<QList<Goal>> moved = movedGoal(m_goals, sourceID, targetID, place);
    if (moved && publish(m_goals, *std::move(moved), Field::goals))
        saveStep();
}

void WindowStore::setGoalPriority(GoalPriority priority, GoalID goalID)
{
    const Update update(m_changes);
    const qsizetype index = indexOf(m_goals, goalID);
    if (index < 0 || m_goals.at(index).priority == priority)
        return;
    m_goals[index].priority = priority;
    markChanged(Field::goals);
    sortGoalsIfNeeded();
    saveStep();
}

void WindowStore::sortGoalsIfNeeded()
{
    if (!m_isAutoSortingGoals)
        return;
    m_goals = automaticallySorted(m_goals);
    // Also when the order is the same: what is shown beside it, the counts, has changed.
    markChanged(Field::goals);
}

QList<GoalID> WindowStore::visibleGoalIDs() const
{
    QList<GoalID> ids;
    for (const Goal& goal : visibleGoals())
        ids.append(goal.id);
    return ids;
}

bool WindowStore::hasGoal(GoalID goalID) const
{
    return indexOf(m_goals, goalID) >= 0;
}

} // namespace kelpa
