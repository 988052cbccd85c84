// Todos that are dragged onto the rows of a list, or to its end.
#include "views/todos/TodoController.h"

#include "store/WindowStore.h"
#include "store/board/TodoOrder.h"
#include "views/models/DragPayload.h"

#include <algorithm>
#include <optional>

namespace kelpa {

QString TodoController::dragText(const QString& todoID, const QString& columnID) const
{
    const std::optional<TodoPlace> place = placeFromTexts(todoID, columnID);
    return place ? TodoDragPayload{place->goalID, place->todoID}.encodedValue() : QString();
}

/// A todo that has been deleted or moved while it is being dragged is not there any more.
bool TodoController::isThere(const QString& text) const
{
    const std::optional<TodoDragPayload> dragged = TodoDragPayload::fromEncodedValue(text);
    return dragged && hasTodo({dragged->todoID, dragged->sourceGoalID});
}

bool TodoController::isTodoDrag(const QString& text) const
{
    return TodoDragPayload::fromEncodedValue(text).has_value();
}

bool TodoController::canDropOnRow(const QString& text, const QString& listID,
                                  const QString& todoID) const
{
    const std::optional<TodoList> list = todoListFromText(listID);
    const std::optional<TodoID> target = TodoID::fromText(todoID);
    return list && target && isThere(text) &&
           todoRowDropOutcome(dragPayloadFromText(text), {*list, *target}).isAccepted;
}

bool TodoController::wouldDropOnRowMove(const QString& text, const QString& todoID) const
{
    const std::optional<TodoDragPayload> dragged = TodoDragPayload::fromEncodedValue(text);
    const std::optional<TodoID> target = TodoID::fromText(todoID);
    if (!dragged || !target)
        return false;
    const QList<Goal>& goals = m_store.goals();
    const QList<TodoItem>& unassigned = m_store.unassignedTodos();
    const auto moved = positionsAfterMove(goals, unassigned, dragged->todoID, *target);
    return moved && *moved != normalizedPositions(goals, unassigned);
}

bool TodoController::dropOnRow(const QString& text, const QString& listID, const QString& todoID)
{
    const std::optional<TodoList> list = todoListFromText(listID);
    const std::optional<TodoID> target = TodoID::fromText(todoID);
    if (!list || !target || !isThere(text))
        return false;
    const TodoRowDropOutcome outcome =
        todoRowDropOutcome(dragPayloadFromText(text), {*list, *target});
    if (outcome.movedTodoID)
        m_store.moveTodo(*outcome.movedTodoID, *target);
    return outcome.isAccepted;
}

QString TodoController::rowTodoID(const QString& text, const QString& listID) const
{
    const std::optional<TodoDragPayload> dragged = TodoDragPayload::fromEncodedValue(text);
    const QList<UnifiedTodoEntry> shown = dragged ? entries(listID) : QList<UnifiedTodoEntry>();
    const bool isShown = std::ranges::any_of(shown, [&dragged](const UnifiedTodoEntry& entry) {
        return entry.todo.id == dragged->todoID && entry.goalID == dragged->sourceGoalID;
    });
    return isShown ? dragged->todoID.text() : QString();
}

bool TodoController::canDropAtEnd(const QString& text, const QString& listID) const
{
    return !rowTodoID(text, listID).isEmpty();
}

bool TodoController::wouldDropAtEndMove(const QString& text, const QString& listID) const
{
    return canMoveInList(rowTodoID(text, listID), listID, 1);
}

bool TodoController::dropAtEnd(const QString& text, const QString& listID)
{
    const QString todoID = rowTodoID(text, listID);
    // The last one stays.
    moveToEndOfList(todoID, listID, 1);
    return !todoID.isEmpty();
}

} // namespace kelpa
