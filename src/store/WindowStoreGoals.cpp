// Operations on goals.

#include "model/Text.h"
#include "store/WindowStoreParts.h"
#include "store/board/GoalOrder.h"
#include "windows/WindowReconciliation.h"

#include <algorithm>

namespace kelpa {

void WindowStore::createGoal(const QString& title)
{
    const Update update(m_state.changes);
    if (m_parts->addGoal(title))
        m_parts->steps.saveStep();
}

std::optional<GoalID> WindowStore::Parts::addGoal(const QString& title)
{
    const QString trimmed = trimmedText(title);
    if (trimmed.isEmpty())
        return std::nullopt;
    const Goal goal{GoalID::create(), trimmed, nextAccent(state.goals), defaultGoalPriority, {}};
    state.goals.append(goal);
    state.markChanged(Field::goals);
    // The new goal has no open todo and would be hidden at once.
    state.assign(state.isHidingGoalsWithoutOpenTodos, false, Field::isHidingGoalsWithoutOpenTodos);
    state.sortGoalsIfNeeded();
    selection.activate(TargetSelection::goal(goal.id), EnterWindowLayer::no);
    return goal.id;
}

void WindowStore::renameGoal(GoalID goalID, const QString& title)
{
    const Update update(m_state.changes);
    const QString trimmed = trimmedText(title);
    const qsizetype index = indexOf(m_state.goals, goalID);
    if (trimmed.isEmpty() || index < 0 || m_state.goals.at(index).title == trimmed)
        return;
    m_state.goals[index].title = trimmed;
    m_state.markChanged(Field::goals);
    m_parts->steps.saveStep();
}

void WindowStore::deleteGoal(GoalID goalID)
{
    const Update update(m_state.changes);
    const qsizetype index = indexOf(m_state.goals, goalID);
    if (index < 0)
        return;
    m_state.goals.removeAt(index);
    m_state.markChanged(Field::goals);
    m_state.assignments = withoutGoal(m_state.assignments, goalID);
    if (m_state.pins.remove(goalID) > 0)
        m_state.markChanged(Field::pins);
    // Done before the discovery pass ends: the board has no place for a card of a goal that has
    // gone.
    m_state.assignWindows(m_state.windows);
    m_parts->selection.reconcileWithGoals();
    m_parts->steps.saveAnnounced(CopyKey::GoalDeleted);
    refresh();
}

void WindowStore::moveGoal(GoalID sourceID, GoalID targetID, MovePlace place)
{
    const Update update(m_state.changes);
    if (m_state.isAutoSortingGoals)
        return;
    std::optional<QList<Goal>> moved = movedGoal(m_state.goals, sourceID, targetID, place);
    if (moved && m_state.assign(m_state.goals, *std::move(moved), Field::goals))
        m_parts->steps.saveStep();
}

void WindowStore::explainAutomaticOrder()
{
    const Update update(m_state.changes);
    if (m_state.isAutoSortingGoals)
        m_parts->toast.show(CopyKey::GoalsSortThemselves, Toast::Offer::manualOrder);
}

void WindowStore::setGoalPriority(GoalPriority priority, GoalID goalID)
{
    const Update update(m_state.changes);
    const qsizetype index = indexOf(m_state.goals, goalID);
    if (index < 0 || m_state.goals.at(index).priority == priority)
        return;
    m_state.goals[index].priority = priority;
    m_state.markChanged(Field::goals);
    m_state.sortGoalsIfNeeded();
    m_parts->steps.saveStep();
}

void WindowStore::Parts::reconcileWithTodoCounts()
{
    state.sortGoalsIfNeeded();
    selection.reconcileSelectionWithVisibleGoals();
}

} // namespace kelpa
