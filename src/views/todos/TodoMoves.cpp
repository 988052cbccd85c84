#include "views/todos/TodoMoves.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

/// The order of a todo, then its place in the walk over all goals and the unassigned list: the
/// order of the whole board sorts stably.
using SortKey = std::pair<std::int64_t, qsizetype>;

/// Calls `visit` with every todo and its sort key.
template <typename Visit>
void forEachTodo(const QList<Goal>& goals, const QList<TodoItem>& unassigned, Visit visit)
{
    qsizetype place = 0;
    for (const Goal& goal : goals)
        for (const TodoItem& todo : goal.todos)
            visit(todo, SortKey{todo.order, place++});
    for (const TodoItem& todo : unassigned)
        visit(todo, SortKey{todo.order, place++});
}

} // namespace

std::optional<TodoMove> todoMove(const QList<UnifiedTodoEntry>& entries, TodoID todoID, int step)
{
    const auto found = std::ranges::find(
        entries, todoID, [](const UnifiedTodoEntry& entry) { return entry.todo.id; });
    const qsizetype row = found - entries.begin();
    const qsizetype other = row + step;
    if (found == entries.end() || (step != -1 && step != 1) || other < 0 || other >= entries.size())
        return std::nullopt;
    // The move also passes todos of other lists that are between the two.
    return TodoMove{todoID, entries.at(other).todo.id,
                    step < 0 ? MovePlace::before : MovePlace::behind};
}

bool changesOrder(TodoID todoID, TodoID targetID, const QList<Goal>& goals,
                  const QList<TodoItem>& unassigned)
{
    std::optional<SortKey> source;
    std::optional<SortKey> target;
    forEachTodo(goals, unassigned, [&](const TodoItem& todo, const SortKey& key) {
        if (todo.id == todoID)
            source = key;
        else if (todo.id == targetID)
            target = key;
    });
    if (!source || !target)
        return false;
    if (*target < *source)
        return true;
    bool isAnyBetween = false;
    forEachTodo(goals, unassigned, [&](const TodoItem&, const SortKey& key) {
        isAnyBetween = isAnyBetween || (*source < key && key < *target);
    });
    return isAnyBetween;
}

} // namespace kelpa
