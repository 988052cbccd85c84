#include "store/board/GoalOrder.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace kelpa {

QList<Goal> automaticallySorted(const QList<Goal>& goals)
{
    // Open todos are counted once per goal, not once per comparison.
    struct Key
    {
        GoalPriority priority;
        qsizetype openTodoCount;
        qsizetype index;
    };
    std::vector<Key> keys;
    keys.reserve(static_cast<std::size_t>(goals.size()));
    for (qsizetype i = 0; i < goals.size(); ++i)
        keys.push_back({goals[i].priority, goals[i].openTodoCount(), i});
    std::ranges::sort(keys, [](const Key& a, const Key& b) {
        return std::tuple(a.priority, b.openTodoCount, a.index) <
               std::tuple(b.priority, a.openTodoCount, b.index);
    });

    QList<Goal> sorted;
    sorted.reserve(goals.size());
    for (const Key& key : keys)
        sorted.append(goals[key.index]);
    return sorted;
}

GoalAccent nextAccent(const QList<Goal>& goals)
{
    for (const GoalAccent accent : allGoalAccents) {
        if (std::ranges::find(goals, accent, &Goal::accent) == goals.end())
            return accent;
    }
    return allGoalAccents.front();
}

std::optional<QList<Goal>> movedGoal(const QList<Goal>& goals, GoalID sourceID, GoalID targetID,
                                     MovePlace place)
{
    const qsizetype source = indexOf(goals, sourceID);
    if (sourceID == targetID || source < 0 || indexOf(goals, targetID) < 0)
        return std::nullopt;
    QList<Goal> moved = goals;
    Goal goal = moved.takeAt(source);
    const qsizetype target = indexOf(moved, targetID);
    moved.insert(place == MovePlace::before ? target : target + 1, std::move(goal));
    return moved;
}

QList<Goal> withOpenTodos(const QList<Goal>& goals)
{
    QList<Goal> open;
    std::ranges::copy_if(goals, std::back_inserter(open), &Goal::hasOpenTodo);
    return open;
}

} // namespace kelpa
