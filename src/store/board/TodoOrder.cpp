#include "store/board/TodoOrder.h"

#include <algorithm>
#include <limits>

namespace kelpa {

QList<TodoItem> allTodos(const QList<Goal>& goals, const QList<TodoItem>& unassigned)
{
    qsizetype count = unassigned.size();
    for (const Goal& goal : goals)
        count += goal.todos.size();
    QList<TodoItem> todos;
    todos.reserve(count);
    for (const Goal& goal : goals)
        todos.append(goal.todos);
    todos.append(unassigned);
    return todos;
}

std::int64_t nextTodoOrder(const QList<Goal>& goals, const QList<TodoItem>& unassigned)
{
    std::optional<std::int64_t> largest;
    const auto consider = [&largest](const QList<TodoItem>& todos) {
        for (const TodoItem& todo : todos)
            largest = std::max(largest.value_or(todo.order), todo.order);
    };
    for (const Goal& goal : goals)
        consider(goal.todos);
    consider(unassigned);
    if (!largest)
        return 0;
    if (*largest == std::numeric_limits<std::int64_t>::max())
        qFatal("broken invariant: no todo order is left above %lld",
               static_cast<long long>(*largest));
    return *largest + 1;
}

TodoPositions positionsAlong(const QList<TodoItem>& sequence)
{
    TodoPositions positions;
    positions.reserve(sequence.size());
    std::int64_t position = 0;
    for (const TodoItem& todo : sequence)
        positions.insert(todo.id, position++);
    return positions;
}

TodoPositions normalizedPositions(const QList<Goal>& goals, const QList<TodoItem>& unassigned)
{
    QList<TodoItem> todos = allTodos(goals, unassigned);
    std::ranges::stable_sort(todos, {}, &TodoItem::order);
    return positionsAlong(todos);
}

std::optional<TodoPositions> positionsAfterMove(const QList<Goal>& goals,
                                                const QList<TodoItem>& unassigned, TodoID todoID,
                                                TodoID targetID, MovePlace place)
{
    if (todoID == targetID)
        return std::nullopt;
    QList<TodoItem> todos = allTodos(goals, unassigned);
    std::ranges::stable_sort(todos, {}, &TodoItem::order);
    const qsizetype source = indexOf(todos, todoID);
    if (source < 0 || indexOf(todos, targetID) < 0)
        return std::nullopt;
    TodoItem todo = todos.takeAt(source);
    const qsizetype target = indexOf(todos, targetID);
    todos.insert(place == MovePlace::before ? target : target + 1, std::move(todo));
    return positionsAlong(todos);
}

bool applyPositions(QList<TodoItem>& todos, const TodoPositions& positions)
{
    bool hasChanged = false;
    for (qsizetype i = 0; i < todos.size(); ++i) {
        const auto position = positions.constFind(todos.at(i).id);
        if (position == positions.constEnd() || *position == todos.at(i).order)
            continue;
        todos[i].order = *position;
        hasChanged = true;
    }
    return hasChanged;
}

bool applyPositions(QList<Goal>& goals, const TodoPositions& positions)
{
    bool hasChanged = false;
    for (qsizetype i = 0; i < goals.size(); ++i) {
        QList<TodoItem> todos = goals.at(i).todos;
        if (!applyPositions(todos, positions))
            continue;
        goals[i].todos = std::move(todos);
        hasChanged = true;
    }
    return hasChanged;
}

TodoStatus nextStatus(TodoStatus status)
{
    switch (status) {
    case TodoStatus::todo:
        return TodoStatus::ing;
    case TodoStatus::ing:
        return TodoStatus::completed;
    case TodoStatus::completed:
        return TodoStatus::todo;
    }
    Q_UNREACHABLE();
}

TodoItem withStatus(TodoItem todo, TodoStatus status, Date now)
{
    todo.status = status;
    todo.completedAt = status == TodoStatus::completed ? std::optional<Date>(now) : std::nullopt;
    return todo;
}

} // namespace kelpa
