// Operations on todos.

#include "model/Text.h"
#include "platform/Pasteboard.h"
#include "store/WindowStoreParts.h"
#include "store/board/GoalOrder.h"
#include "store/board/TodoOrder.h"

namespace kelpa {

void WindowStore::addTodo(const QString& title, std::optional<GoalID> to)
{
    const Update update(m_changes);
    const QString trimmed = trimmedText(title);
    QList<TodoItem>* const todos = todoList(to);
    if (trimmed.isEmpty() || todos == nullptr)
        return;
    const std::int64_t order = nextTodoOrder(m_goals, m_unassignedTodos);
    todos->append({TodoID::create(), trimmed, TodoStatus::todo, std::nullopt, order});
    markTodosChanged(to);
    sortGoalsIfNeeded();
    saveStep();
}

void WindowStore::updateTodo(TodoID todoID, const QString& title, std::optional<GoalID> in)
{
    const Update update(m_changes);
    const QString trimmed = trimmedText(title);
    QList<TodoItem>* const todos = todoList(in);
    const qsizetype index = todos != nullptr ? indexOf(*todos, todoID) : -1;
    if (trimmed.isEmpty() || index < 0 || todos->at(index).title == trimmed)
        return;
    (*todos)[index].title = trimmed;
    markTodosChanged(in);
    saveStep();
}

void WindowStore::toggleTodo(TodoID todoID, std::optional<GoalID> in)
{
    const Update update(m_changes);
    QList<TodoItem>* const todos = todoList(in);
    const qsizetype index = todos != nullptr ? indexOf(*todos, todoID) : -1;
    if (index < 0)
        return;
    (*todos)[index] = withNextStatus(todos->at(index), m_parts->scheduler.now());
    markTodosChanged(in);
    reconcileWithTodoCounts();
    saveStep();
}

void WindowStore::deleteTodo(TodoID todoID, std::optional<GoalID> from)
{
    const Update update(m_changes);
    QList<TodoItem>* const todos = todoList(from);
    const qsizetype index = todos != nullptr ? indexOf(*todos, todoID) : -1;
    if (index < 0)
        return;
    todos->removeAt(index);
    markTodosChanged(from);
    reconcileWithTodoCounts();
    saveDeletion(CopyKey::TodoDeleted);
}

void WindowStore::moveTodo(TodoID todoID, std::optional<GoalID> from, std::optional<GoalID> to)
{
    const Update update(m_changes);
    QList<TodoItem>* const source = todoList(from);
    QList<TodoItem>* const destination = todoList(to);
    const qsizetype index = source != nullptr ? indexOf(*source, todoID) : -1;
    // A todo that has nowhere to go stays where it is.
    if (index < 0 || destination == nullptr)
        return;
    if (source == destination && index == source->size() - 1)
        return;
    TodoItem todo = source->takeAt(index);
    destination->append(std::move(todo));
    markTodosChanged(from);
    markTodosChanged(to);
    reconcileWithTodoCounts();
    saveStep();
}

void WindowStore::moveTodo(TodoID todoID, TodoID targetID, MovePlace place)
{
    const Update update(m_changes);
    const auto positions = positionsAfterMove(m_goals, m_unassignedTodos, todoID, targetID, place);
    if (!positions)
        return;
    const bool haveGoalsChanged = applyPositions(m_goals, *positions);
    const bool haveUnassignedChanged = applyPositions(m_unassignedTodos, *positions);
    if (haveGoalsChanged)
        markChanged(Field::goals);
    if (haveUnassignedChanged)
        markChanged(Field::unassignedTodos);
    if (haveGoalsChanged || haveUnassignedChanged)
        saveStep();
}

void WindowStore::copyTodo(const TodoItem& todo)
{
    const Update update(m_changes);
    m_parts->platform.pasteboard.setText(todo.title);
    m_parts->toast.show(CopyKey::TodoCopied, Toast::OffersUndo::no);
}

void WindowStore::requestAddTodo(GoalID goalID)
{
    const Update update(m_changes);
    if (!hasGoal(goalID))
        return;
    activateTarget(TargetSelection::goal(goalID), EnterWindowLayer::no);
    publish(m_todoEditorGoalID, std::optional(goalID), Field::todoEditorGoalID);
    publish(m_todoEditorRequestID, m_todoEditorRequestID + 1, Field::todoEditorRequestID);
}

void WindowStore::cancelTodoEditor()
{
    const Update update(m_changes);
    if (m_todoEditorGoalID)
        closeTodoEditor();
}

void WindowStore::closeTodoEditor()
{
    publish(m_todoEditorGoalID, std::optional<GoalID>(), Field::todoEditorGoalID);
    publish(m_todoEditorRequestID, m_todoEditorRequestID + 1, Field::todoEditorRequestID);
}

QList<TodoItem>* WindowStore::todoList(std::optional<GoalID> goalID)
{
    if (!goalID)
        return &m_unassignedTodos;
    const qsizetype index = indexOf(m_goals, *goalID);
    return index >= 0 ? &m_goals[index].todos : nullptr;
}

void WindowStore::markTodosChanged(std::optional<GoalID> goalID)
{
    markChanged(goalID ? Field::goals : Field::unassignedTodos);
}

void WindowStore::reconcileWithTodoCounts()
{
    sortGoalsIfNeeded();
    reconcileSelectionWithVisibleGoals();
}

} // namespace kelpa
