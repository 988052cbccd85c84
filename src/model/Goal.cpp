#include "model/Goal.h"

#include <algorithm>

namespace kelpa {

namespace {

/// The completed todo with the latest time; of equal times the earlier one in stored order, and an
/// absent time counts as the distant past.
const TodoItem* lastCompleted(const QList<TodoItem>& todos)
{
    const auto completionTime = [](const TodoItem& todo) {
        return todo.completedAt.value_or(Date::distantPast());
    };
    const TodoItem* best = nullptr;
    for (const TodoItem& todo : todos) {
        if (todo.isOpen())
            continue;
        if (best == nullptr || completionTime(*best) < completionTime(todo))
            best = &todo;
    }
    return best;
}

} // namespace

bool Goal::hasOpenTodo() const
{
    return std::ranges::any_of(todos, &TodoItem::isOpen);
}

qsizetype Goal::openTodoCount() const
{
    return std::ranges::count_if(todos, &TodoItem::isOpen);
}

QList<TodoItem> Goal::visibleTodos() const
{
    if (!hasOpenTodo())
        return {};
    const TodoItem* const completed = lastCompleted(todos);
    QList<TodoItem> visible;
    std::ranges::copy_if(todos, std::back_inserter(visible), [completed](const TodoItem& todo) {
        return todo.isOpen() || (completed != nullptr && todo.id == completed->id);
    });
    std::ranges::stable_sort(visible, {}, &TodoItem::order);
    return visible;
}

size_t qHash(const Goal& goal, size_t seed)
{
    return qHashMulti(seed, goal.id, goal.title, static_cast<int>(goal.accent),
                      static_cast<int>(goal.priority), goal.todos);
}

qsizetype indexOf(const QList<Goal>& goals, GoalID id)
{
    const auto found = std::ranges::find(goals, id, &Goal::id);
    return found != goals.end() ? std::distance(goals.begin(), found) : -1;
}

qsizetype indexOf(const QList<TodoItem>& todos, TodoID id)
{
    const auto found = std::ranges::find(todos, id, &TodoItem::id);
    return found != todos.end() ? std::distance(todos.begin(), found) : -1;
}

const Goal* goalWith(GoalID id, const QList<Goal>& goals)
{
    const qsizetype index = indexOf(goals, id);
    return index >= 0 ? &goals.at(index) : nullptr;
}

const TodoItem* todoWith(TodoID id, const QList<TodoItem>& todos)
{
    const qsizetype index = indexOf(todos, id);
    return index >= 0 ? &todos.at(index) : nullptr;
}

const TodoItem* todoAt(std::optional<GoalID> goalID, TodoID id, const QList<Goal>& goals,
                       const QList<TodoItem>& unassigned)
{
    if (!goalID)
        return todoWith(id, unassigned);
    const Goal* const goal = goalWith(*goalID, goals);
    return goal != nullptr ? todoWith(id, goal->todos) : nullptr;
}

} // namespace kelpa
