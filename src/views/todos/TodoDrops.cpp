#include "views/todos/TodoDrops.h"

#include "store/WindowStore.h"
#include "views/todos/TodoController.h"
#include "views/todos/TodoMoves.h"
#include "views/todos/TodoPlace.h"

#include <algorithm>
#include <utility>

namespace kelpa {

TodoDrops::TodoDrops(WindowStore& store, TodoController& todos) : m_store(store), m_todos(todos) {}

TodoDrops::Answer TodoDrops::answerOnRow(const QString& text, const QString& listID,
                                         const QString& todoID) const
{
    if (!TodoDragPayload::fromEncodedValue(text))
        return Answer::PassOn;
    return outcomeOnRow(text, listID, todoID).isAccepted ? Answer::Accept : Answer::Refuse;
}

bool TodoDrops::wouldMoveOnRow(const QString& text, const QString& todoID) const
{
    const std::optional<TodoDragPayload> dragged = TodoDragPayload::fromEncodedValue(text);
    const std::optional<TodoID> target = TodoID::fromText(todoID);
    return dragged && target &&
           changesOrder(dragged->todoID, *target, m_store.goals(), m_store.unassignedTodos());
}

bool TodoDrops::dropOnRow(const QString& text, const QString& listID, const QString& todoID)
{
    const TodoRowDropOutcome outcome = outcomeOnRow(text, listID, todoID);
    const std::optional<TodoID> target = TodoID::fromText(todoID);
    if (outcome.movedTodoID && target)
        m_store.moveTodo(*outcome.movedTodoID, *target);
    return outcome.isAccepted;
}

bool TodoDrops::canDropAtEnd(const QString& text, const QString& listID) const
{
    return shownTodo(text, listID).has_value();
}

bool TodoDrops::wouldMoveAtEnd(const QString& text, const QString& listID) const
{
    const std::optional<ShownTodo> dragged = shownTodo(text, listID);
    return dragged && todoMove(dragged->entries, dragged->id, 1).has_value();
}

bool TodoDrops::dropAtEnd(const QString& text, const QString& listID)
{
    const std::optional<ShownTodo> dragged = shownTodo(text, listID);
    if (!dragged)
        return false;
    // The last todo is accepted and stays.
    m_todos.moveToEndOfList(dragged->id.text(), listID, 1);
    return true;
}

TodoRowDropOutcome TodoDrops::outcomeOnRow(const QString& text, const QString& listID,
                                           const QString& todoID) const
{
    const std::optional<TodoDragPayload> dragged = TodoDragPayload::fromEncodedValue(text);
    const std::optional<TodoList> list = todoListFromText(listID);
    const std::optional<TodoID> target = TodoID::fromText(todoID);
    const bool isThere =
        dragged && todoAt(TodoPlace{dragged->todoID, dragged->sourceGoalID}, m_store) != nullptr;
    return isThere && list && target ? todoRowDropOutcome(*dragged, {*list, *target})
                                     : TodoRowDropOutcome();
}

std::optional<TodoDrops::ShownTodo> TodoDrops::shownTodo(const QString& text,
                                                         const QString& listID) const
{
    const std::optional<TodoDragPayload> dragged = TodoDragPayload::fromEncodedValue(text);
    if (!dragged)
        return std::nullopt;
    ShownTodo todo{dragged->todoID, m_todos.entries(listID)};
    const bool isShown =
        std::ranges::any_of(todo.entries, [&dragged](const UnifiedTodoEntry& entry) {
            return entry.todo.id == dragged->todoID && entry.goalID == dragged->sourceGoalID;
        });
    return isShown ? std::optional(std::move(todo)) : std::nullopt;
}

} // namespace kelpa
