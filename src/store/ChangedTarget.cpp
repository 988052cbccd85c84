#include "store/ChangedTarget.h"

#include <algorithm>

namespace kelpa {

namespace {

/// In the order in which they show, which alone is what a list shows of `order`.
QList<TodoItem> asShown(QList<TodoItem> todos)
{
    std::ranges::stable_sort(todos, {}, &TodoItem::order);
    for (TodoItem& todo : todos)
        todo.order = 0;
    return todos;
}

bool looksDifferent(const Goal& before, const Goal& after)
{
    return before.title != after.title || before.priority != after.priority ||
           before.accent != after.accent || asShown(before.todos) != asShown(after.todos);
}

const Goal* goalIn(const BoardContents& board, GoalID id)
{
    const auto found = std::ranges::find(board.goals, id, &Goal::id);
    return found != board.goals.end() ? &*found : nullptr;
}

/// The goal, or none, of a window whose place differs.
std::optional<TargetSelection> placeOfMovedWindow(const BoardContents& before,
                                                  const BoardContents& after)
{
    for (auto each = after.assignments.begin(); each != after.assignments.end(); ++each) {
        const auto former = before.assignments.constFind(each.key());
        if (former == before.assignments.constEnd() || *former != each.value())
            return TargetSelection::goal(each.value());
    }
    const auto isGone = [&after](const QString& key) { return !after.assignments.contains(key); };
    const QStringList keys = before.assignments.keys();
    return std::ranges::any_of(keys, isGone) ? std::optional(TargetSelection::unassigned())
                                             : std::nullopt;
}

/// Of two orders of the same goals.
std::optional<TargetSelection> movedGoal(const QList<Goal>& before, const QList<Goal>& after)
{
    if (before.size() != after.size())
        return std::nullopt;
    const auto [former, latter] = std::ranges::mismatch(before, after, {}, &Goal::id, &Goal::id);
    if (former == before.end())
        return std::nullopt;
    // Taken from here to somewhere later, or brought here from there.
    const auto next = std::next(former);
    const bool isTaken = next != before.end() && next->id == latter->id;
    return TargetSelection::goal(isTaken ? former->id : latter->id);
}

} // namespace

std::optional<TargetSelection> changedTarget(const BoardContents& before,
                                             const BoardContents& after)
{
    std::optional<TargetSelection> changed;
    for (const Goal& goal : after.goals) {
        const Goal* const former = goalIn(before, goal.id);
        if (former == nullptr || former->todos.size() < goal.todos.size())
            return TargetSelection::goal(goal.id);
        if (!changed && looksDifferent(*former, goal))
            changed = TargetSelection::goal(goal.id);
    }
    if (before.unassignedTodos.size() < after.unassignedTodos.size())
        return TargetSelection::unassigned();
    if (changed)
        return changed;
    if (asShown(before.unassignedTodos) != asShown(after.unassignedTodos))
        return TargetSelection::unassigned();
    // The windows and the order of a goal that has gone went with it.
    if (before.goals.size() != after.goals.size())
        return std::nullopt;
    if (const std::optional<TargetSelection> place = placeOfMovedWindow(before, after))
        return place;
    if (const std::optional<TargetSelection> moved = movedGoal(before.goals, after.goals))
        return moved;
    return before == after ? std::nullopt : std::optional(TargetSelection::unifiedTodos());
}

} // namespace kelpa
