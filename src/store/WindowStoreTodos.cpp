// Operations on todos.

#include "model/Text.h"
#include "model/TodoLines.h"
#include "platform/Pasteboard.h"
#include "store/WindowStoreParts.h"
#include "store/board/GoalOrder.h"
#include "store/board/TodoOrder.h"

#include <chrono>
#include <utility>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// As long as it takes to see what was struck through.
constexpr Scheduler::Duration timeToLinger = 1500ms;

/// The position of the todo in its list; -1 when the list or the todo is absent.
qsizetype indexIn(const QList<TodoItem>* todos, TodoID id)
{
    return todos != nullptr ? indexOf(*todos, id) : -1;
}

} // namespace

void WindowStore::addTodo(const QString& title, std::optional<GoalID> to)
{
    addTodos({{title, false}}, to);
}

void WindowStore::addTodos(const QList<TodoLine>& todos, std::optional<GoalID> to)
{
    const Update update(m_state.changes);
    QList<TodoItem>* const list = m_state.todoList(to);
    if (list == nullptr)
        return;
    const qsizetype countBefore = list->size();
    std::int64_t order = nextTodoOrder(m_state.goals, m_state.unassignedTodos);
    for (const TodoLine& todo : todos) {
        const QString trimmed = trimmedText(todo.title);
        if (trimmed.isEmpty())
            continue;
        TodoItem item{TodoID::create(), trimmed, TodoStatus::todo, std::nullopt, order++};
        if (todo.isCompleted) {
            item.status = TodoStatus::completed;
            item.completedAt = m_parts->scheduler.calendarTime();
        }
        list->append(std::move(item));
    }
    if (list->size() == countBefore)
        return;
    m_state.markTodosChanged(to);
    m_state.sortGoalsIfNeeded();
    m_parts->steps.saveStep();
}

void WindowStore::updateTodo(TodoID todoID, const QString& title, std::optional<GoalID> in)
{
    const Update update(m_state.changes);
    const QString trimmed = trimmedText(title);
    QList<TodoItem>* const todos = m_state.todoList(in);
    const qsizetype index = indexIn(todos, todoID);
    if (trimmed.isEmpty() || index < 0 || todos->at(index).title == trimmed)
        return;
    (*todos)[index].title = trimmed;
    m_state.markTodosChanged(in);
    m_parts->steps.saveStep();
}

void WindowStore::toggleTodo(TodoID todoID, std::optional<GoalID> in)
{
    const TodoItem* const todo = todoAt(in, todoID, m_state.goals, m_state.unassignedTodos);
    if (todo != nullptr)
        setTodoStatus(todoID, nextStatus(todo->status), in);
}

void WindowStore::setTodoStatus(TodoID todoID, TodoStatus status, std::optional<GoalID> in)
{
    const Update update(m_state.changes);
    QList<TodoItem>* const todos = m_state.todoList(in);
    const qsizetype index = indexIn(todos, todoID);
    if (index < 0 || todos->at(index).status == status)
        return;
    (*todos)[index] = withStatus(todos->at(index), status, m_parts->scheduler.calendarTime());
    const bool wasLast =
        !todos->at(index).isOpen() && in && !goalWith(*in, m_state.goals)->hasOpenTodo();
    m_state.markTodosChanged(in);
    m_parts->reconcileWithTodoCounts();
    if (!wasLast) {
        m_parts->steps.saveStep();
        return;
    }
    m_parts->letLinger(todoID);
    m_parts->steps.saveAnnounced(CopyKey::LastTodoCompleted);
}

void WindowStore::Parts::letLinger(TodoID todoID)
{
    state.assign(state.lingeringTodoID, todoID, Field::lingeringTodoID);
    lingering = scheduler.after(timeToLinger, [this] {
        const Update update(state.changes);
        state.assign(state.lingeringTodoID, std::nullopt, Field::lingeringTodoID);
    });
}

void WindowStore::deleteTodo(TodoID todoID, std::optional<GoalID> from)
{
    const Update update(m_state.changes);
    QList<TodoItem>* const todos = m_state.todoList(from);
    const qsizetype index = indexIn(todos, todoID);
    if (index < 0)
        return;
    todos->removeAt(index);
    m_state.markTodosChanged(from);
    m_parts->reconcileWithTodoCounts();
    m_parts->steps.saveAnnounced(CopyKey::TodoDeleted);
}

void WindowStore::deleteCompletedTodos(std::optional<GoalID> from)
{
    const Update update(m_state.changes);
    QList<TodoItem>* const todos = m_state.todoList(from);
    if (todos == nullptr)
        return;
    const qsizetype count = todos->removeIf([](const TodoItem& each) { return !each.isOpen(); });
    if (count == 0)
        return;
    m_state.markTodosChanged(from);
    m_parts->reconcileWithTodoCounts();
    m_parts->steps.saveAnnounced(DeletedTodos{count});
}

void WindowStore::moveTodo(TodoID todoID, std::optional<GoalID> from, std::optional<GoalID> to)
{
    const Update update(m_state.changes);
    QList<TodoItem>* const source = m_state.todoList(from);
    QList<TodoItem>* const destination = m_state.todoList(to);
    const qsizetype index = indexIn(source, todoID);
    // A todo that has nowhere to go stays where it is.
    if (index < 0 || destination == nullptr)
        return;
    if (source == destination && index == source->size() - 1)
        return;
    TodoItem todo = source->takeAt(index);
    destination->append(std::move(todo));
    m_state.markTodosChanged(from);
    m_state.markTodosChanged(to);
    m_parts->reconcileWithTodoCounts();
    m_parts->steps.saveStep();
}

void WindowStore::moveTodo(TodoID todoID, TodoID targetID, MovePlace place)
{
    const Update update(m_state.changes);
    const auto positions =
        positionsAfterMove(m_state.goals, m_state.unassignedTodos, todoID, targetID, place);
    if (!positions)
        return;
    const bool haveGoalsChanged = applyPositions(m_state.goals, *positions);
    const bool haveUnassignedChanged = applyPositions(m_state.unassignedTodos, *positions);
    if (haveGoalsChanged)
        m_state.markChanged(Field::goals);
    if (haveUnassignedChanged)
        m_state.markChanged(Field::unassignedTodos);
    if (haveGoalsChanged || haveUnassignedChanged)
        m_parts->steps.saveStep();
}

void WindowStore::copyTodo(const TodoItem& todo)
{
    const Update update(m_state.changes);
    m_parts->platform.pasteboard.setText(todo.title);
    m_parts->toast.show(CopyKey::TodoCopied, Toast::Offer::none);
}

void WindowStore::copyShowCommand()
{
    const Update update(m_state.changes);
    m_parts->platform.pasteboard.setText(QStringLiteral("kelpa --show"));
    m_parts->toast.show(CopyKey::CommandCopied, Toast::Offer::none);
}

void WindowStore::announceExport(bool isWritten)
{
    const Update update(m_state.changes);
    m_parts->toast.show(isWritten ? CopyKey::Exported : CopyKey::FileNotWritten,
                        Toast::Offer::none);
}

void WindowStore::requestAddTodo(GoalID goalID)
{
    const Update update(m_state.changes);
    if (!m_state.hasGoal(goalID))
        return;
    activateTarget(TargetSelection::goal(goalID), EnterWindowLayer::no);
    m_parts->selection.openTodoEditor(goalID);
}

void WindowStore::cancelTodoEditor()
{
    const Update update(m_state.changes);
    if (m_state.todoEditorGoalID)
        m_parts->selection.closeTodoEditor();
}

} // namespace kelpa
