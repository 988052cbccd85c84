// Moving goals and windows on the board, by menu, by key and by dropping them.
#include "store/WindowStore.h"
#include "store/board/GoalOrder.h"
#include "views/board/BoardController.h"
#include "views/models/DragPayload.h"

#include <algorithm>
#include <optional>
#include <variant>

namespace kelpa {

std::optional<GoalID> BoardController::goalBeside(const QString& columnID, int step) const
{
    const std::optional<GoalID> goalID = goalFromColumnText(columnID);
    const QList<Goal> goals = m_store.visibleGoals();
    const auto found =
        std::ranges::find(goals, goalID, [](const Goal& goal) { return std::optional(goal.id); });
    const qsizetype target = found - goals.begin() + step;
    if (found == goals.end() || target < 0 || target >= goals.size() ||
        m_store.isAutoSortingGoals() || (step != 1 && step != -1))
        return std::nullopt;
    return goals.at(target).id;
}

bool BoardController::moveGoal(const QString& columnID, std::optional<GoalID> targetID, int step)
{
    const std::optional<GoalID> goalID = goalFromColumnText(columnID);
    if (!goalID || !targetID)
        return false;
    m_store.moveGoal(*goalID, *targetID, step < 0 ? MovePlace::before : MovePlace::behind);
    return true;
}

bool BoardController::canMoveColumn(const QString& columnID, int step) const
{
    return goalBeside(columnID, step).has_value();
}

bool BoardController::moveColumn(const QString& columnID, int step)
{
    return moveGoal(columnID, goalBeside(columnID, step), step);
}

bool BoardController::moveColumnToEnd(const QString& columnID, int step)
{
    if (!canMoveColumn(columnID, step))
        return false;
    const QList<Goal> goals = m_store.visibleGoals();
    return moveGoal(columnID, step < 0 ? goals.front().id : goals.back().id, step);
}

void BoardController::moveWindow(quint32 windowID, const QString& columnID)
{
    if (const std::optional<ColumnID> column = columnFromText(columnID))
        m_store.assign(windowID, column->goalID);
}

QString BoardController::windowDragText(quint32 windowID) const
{
    return dragText(windowID);
}

QString BoardController::columnDragText(const QString& columnID) const
{
    const std::optional<GoalID> goalID = goalFromColumnText(columnID);
    return goalID ? dragText(*goalID) : QString();
}

/// A todo that has been deleted or moved while it is being dragged is not there any more.
bool BoardController::hasTodo(const TodoDragPayload& todo) const
{
    return todoAt(todo.sourceGoalID, todo.todoID, m_store.goals(), m_store.unassignedTodos()) !=
           nullptr;
}

BoardController::DropEffect BoardController::effectOf(const DragPayload& drop,
                                                      const ColumnID& column) const
{
    const auto changeIf = [](bool isChanging) {
        return isChanging ? DropEffect::change : DropEffect::none;
    };
    if (const GoalID* const goalID = std::get_if<GoalID>(&drop)) {
        const QList<Goal>& goals = m_store.goals();
        if (!column.goalID || *column.goalID == *goalID || m_store.isAutoSortingGoals() ||
            goalWith(*goalID, goals) == nullptr)
            return DropEffect::refused;
        return changeIf(movedGoal(goals, *goalID, *column.goalID) != goals);
    }
    if (const WindowID* const windowID = std::get_if<WindowID>(&drop)) {
        const QList<WindowItem>& windows = m_store.windows();
        const auto window = std::ranges::find(windows, *windowID, &WindowItem::id);
        return window == windows.end() ? DropEffect::refused
                                       : changeIf(window->goalID != column.goalID);
    }
    if (const TodoDragPayload* const todo = std::get_if<TodoDragPayload>(&drop))
        return hasTodo(*todo) ? changeIf(todo->sourceGoalID != column.goalID) : DropEffect::refused;
    return DropEffect::refused;
}

BoardController::DropEffect BoardController::effectOf(const QString& text,
                                                      const QString& columnID) const
{
    const std::optional<ColumnID> column = columnFromText(columnID);
    return column ? effectOf(dragPayloadFromText(text), *column) : DropEffect::refused;
}

bool BoardController::canDrop(const QString& text, const QString& columnID) const
{
    return effectOf(text, columnID) != DropEffect::refused;
}

bool BoardController::wouldDropMove(const QString& text, const QString& columnID) const
{
    return effectOf(text, columnID) == DropEffect::change;
}

bool BoardController::drop(const QString& text, const QString& columnID)
{
    const DropEffect effect = effectOf(text, columnID);
    if (effect != DropEffect::change)
        return effect == DropEffect::none;
    const std::optional<GoalID> target = goalFromColumnText(columnID);
    const DragPayload drop = dragPayloadFromText(text);
    if (const GoalID* const goalID = std::get_if<GoalID>(&drop); goalID != nullptr && target)
        m_store.moveGoal(*goalID, *target);
    else if (const WindowID* const windowID = std::get_if<WindowID>(&drop))
        m_store.assign(*windowID, target);
    else if (const TodoDragPayload* const todo = std::get_if<TodoDragPayload>(&drop))
        m_store.moveTodo(todo->todoID, todo->sourceGoalID, target);
    return true;
}

bool BoardController::isGoalDrag(const QString& text) const
{
    return std::holds_alternative<GoalID>(dragPayloadFromText(text));
}

QString BoardController::movableColumn(const QString& text) const
{
    const DragPayload drop = dragPayloadFromText(text);
    const GoalID* const goalID = std::get_if<GoalID>(&drop);
    if (goalID == nullptr || m_store.isAutoSortingGoals())
        return {};
    const QList<Goal> goals = m_store.visibleGoals();
    return goalWith(*goalID, goals) != nullptr ? columnText(*goalID) : QString();
}

bool BoardController::canDropAtEnd(const QString& text) const
{
    return !movableColumn(text).isEmpty();
}

bool BoardController::wouldDropAtEndMove(const QString& text) const
{
    return canMoveColumn(movableColumn(text), 1);
}

bool BoardController::dropAtEnd(const QString& text)
{
    const QString columnID = movableColumn(text);
    // The last one stays.
    moveColumnToEnd(columnID, 1);
    return !columnID.isEmpty();
}

} // namespace kelpa
