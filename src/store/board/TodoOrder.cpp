#include "store/board/TodoOrder.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace kelpa {

namespace {

std::int64_t orderOf(const ListedTodo& listed)
{
    return listed.todo->order;
}

/// A counting sort. All orders are from `least` on, and below `least` + `count`.
void sortByDenseOrder(std::vector<ListedTodo>& todos, std::int64_t least, std::size_t count)
{
    const auto placeOf = [least](const ListedTodo& listed) {
        return static_cast<std::size_t>(orderOf(listed) - least);
    };
    // How many todos come before those of an order.
    std::vector<std::size_t> ends(count + 1, 0);
    for (const ListedTodo& listed : todos)
        ++ends[placeOf(listed) + 1];
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    std::vector<ListedTodo> sorted(todos.size());
    for (const ListedTodo& listed : todos)
        sorted[ends[placeOf(listed)]++] = listed;
    todos = std::move(sorted);
}

} // namespace

void sortByOrder(std::vector<ListedTodo>& todos)
{
    if (todos.empty() || std::ranges::is_sorted(todos, {}, orderOf))
        return;
    const auto [first, last] = std::ranges::minmax_element(todos, {}, orderOf);
    const auto least = orderOf(*first);
    // Any two numbers have their distance as an unsigned one.
    const std::uint64_t distance =
        static_cast<std::uint64_t>(orderOf(*last)) - static_cast<std::uint64_t>(least);
    constexpr std::uint64_t mostOrdersPerTodo = 4;
    if (distance < mostOrdersPerTodo * todos.size())
        sortByDenseOrder(todos, least, static_cast<std::size_t>(distance) + 1);
    else
        std::ranges::stable_sort(todos, {}, orderOf);
}

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
