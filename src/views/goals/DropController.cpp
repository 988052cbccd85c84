#include "views/goals/DropController.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "store/board/GoalOrder.h"
#include "text/KelpaCopy.h"
#include "views/goals/GoalController.h"

#include <optional>
#include <variant>

namespace kelpa {

DropController::DropController(WindowStore& store, GoalController& goals, QObject* parent)
    : QObject(parent), m_store(store), m_goals(goals)
{}

/// False for a todo that has been deleted or moved while it is being dragged.
bool DropController::hasTodo(const TodoDragPayload& todo) const
{
    return todoAt(todo.sourceGoalID, todo.todoID, m_store.goals(), m_store.unassignedTodos()) !=
           nullptr;
}

DropController::DropEffect DropController::effectOf(const DragPayload& payload,
                                                    const ColumnID& column) const
{
    const auto changeIf = [](bool isChanging) {
        return isChanging ? DropEffect::change : DropEffect::none;
    };
    if (const GoalID* const goalID = std::get_if<GoalID>(&payload)) {
        const QList<Goal>& goals = m_store.goals();
        if (!column.goalID || *column.goalID == *goalID || m_store.isAutoSortingGoals() ||
            goalWith(*goalID, goals) == nullptr)
            return DropEffect::refused;
        return changeIf(movedGoal(goals, *goalID, *column.goalID) != goals);
    }
    if (const WindowID* const windowID = std::get_if<WindowID>(&payload)) {
        const WindowItem* const window = windowWith(*windowID, m_store.windows());
        return window == nullptr ? DropEffect::refused : changeIf(window->goalID != column.goalID);
    }
    if (const TodoDragPayload* const todo = std::get_if<TodoDragPayload>(&payload))
        return hasTodo(*todo) ? changeIf(todo->sourceGoalID != column.goalID) : DropEffect::refused;
    return DropEffect::refused;
}

DropController::DropEffect DropController::effectOf(const QString& text,
                                                    const QString& columnID) const
{
    const std::optional<ColumnID> column = columnFromText(columnID);
    return column ? effectOf(dragPayloadFromText(text), *column) : DropEffect::refused;
}

bool DropController::canDrop(const QString& text, const QString& columnID) const
{
    return effectOf(text, columnID) != DropEffect::refused;
}

bool DropController::wouldDropMove(const QString& text, const QString& columnID) const
{
    return effectOf(text, columnID) == DropEffect::change;
}

bool DropController::drop(const QString& text, const QString& columnID)
{
    const std::optional<ColumnID> column = columnFromText(columnID);
    if (!column)
        return false;
    const DragPayload payload = dragPayloadFromText(text);
    const DropEffect effect = effectOf(payload, *column);
    if (effect != DropEffect::change)
        return effect == DropEffect::none;
    const std::optional<GoalID> target = column->goalID;
    if (const GoalID* const goalID = std::get_if<GoalID>(&payload); goalID != nullptr && target)
        m_store.moveGoal(*goalID, *target);
    else if (const WindowID* const windowID = std::get_if<WindowID>(&payload))
        m_store.assign(*windowID, target);
    else if (const TodoDragPayload* const todo = std::get_if<TodoDragPayload>(&payload))
        m_store.moveTodo(todo->todoID, todo->sourceGoalID, target);
    return true;
}

QString DropController::columnTitle(const QString& columnID) const
{
    const std::optional<ColumnID> column = columnFromText(columnID);
    if (!column)
        return {};
    if (!column->goalID)
        return KelpaCopy::text(CopyKey::Unsorted, m_store.language());
    const Goal* const goal = goalWith(*column->goalID, m_store.goals());
    return goal != nullptr ? singleLine(goal->title) : QString();
}

bool DropController::isGoalDrag(const QString& text) const
{
    return std::holds_alternative<GoalID>(dragPayloadFromText(text));
}

QString DropController::movableColumn(const QString& text) const
{
    const DragPayload payload = dragPayloadFromText(text);
    const GoalID* const goalID = std::get_if<GoalID>(&payload);
    if (goalID == nullptr || m_store.isAutoSortingGoals())
        return {};
    const QList<Goal> goals = m_store.visibleGoals();
    return goalWith(*goalID, goals) != nullptr ? columnText(*goalID) : QString();
}

bool DropController::canDropAtEnd(const QString& text) const
{
    return !movableColumn(text).isEmpty();
}

bool DropController::wouldDropAtEndMove(const QString& text) const
{
    return m_goals.canMoveColumn(movableColumn(text), 1);
}

bool DropController::dropAtEnd(const QString& text)
{
    const QString columnID = movableColumn(text);
    // The last one stays.
    m_goals.moveColumnToEnd(columnID, 1);
    return !columnID.isEmpty();
}

} // namespace kelpa
