#include "store/board/RestorationTarget.h"

#include "store/board/TodoOrder.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace kelpa {

namespace {

/// A todo in a list. Lists of a whole board are compared without a copy of any of its todos.
struct Row
{
    TodoID id;
    /// In the list of all todos, which names the goal.
    std::optional<GoalID> goalID;
    const TodoItem* todo = nullptr;
};

/// Only the sequence of todos can be seen, not the number that makes it.
bool operator==(const Row& a, const Row& b)
{
    return a.id == b.id && a.goalID == b.goalID && a.todo->title == b.todo->title &&
           a.todo->status == b.todo->status && a.todo->completedAt == b.todo->completedAt;
}

using Rows = std::vector<Row>;

Rows inSequence(const QList<TodoItem>& todos)
{
    std::vector<ListedTodo> listed;
    listed.reserve(static_cast<std::size_t>(todos.size()));
    for (const TodoItem& todo : todos)
        listed.push_back({nullptr, &todo});
    sortByOrder(listed);
    Rows rows;
    rows.reserve(listed.size());
    for (const ListedTodo& each : listed)
        rows.push_back({each.todo->id, std::nullopt, each.todo});
    return rows;
}

/// A goal or the unassigned list, as the board shows it.
struct Column
{
    TargetSelection id;
    /// The goal without its todos; absent for the unassigned list.
    std::optional<Goal> heading;
    Rows todos;

    friend bool operator==(const Column&, const Column&) = default;
};

Goal headingOf(Goal goal)
{
    goal.todos = {};
    return goal;
}

Column columnOf(const Goal& goal)
{
    return {TargetSelection::goal(goal.id), headingOf(goal), inSequence(goal.todos)};
}

Column unassignedColumn(const BoardContents& board)
{
    return {TargetSelection::unassigned(), {}, inSequence(board.unassignedTodos)};
}

/// The goals in order, then the unassigned list.
std::vector<Column> columns(const BoardContents& board)
{
    std::vector<Column> columns;
    columns.reserve(static_cast<std::size_t>(board.goals.size()) + 1);
    for (const Goal& goal : board.goals)
        columns.push_back(columnOf(goal));
    columns.push_back(unassignedColumn(board));
    return columns;
}

/// Whether the boards have the same goals in the same order, whatever their todos.
bool haveSameHeadings(const QList<Goal>& before, const QList<Goal>& after)
{
    return std::ranges::equal(before, after, {}, headingOf, headingOf);
}

/// The list of all todos.
Rows rows(const BoardContents& board)
{
    std::vector<ListedTodo> listed;
    const auto add = [&listed](const Goal* goal, const QList<TodoItem>& todos) {
        for (const TodoItem& todo : todos)
            if (todo.isOpen())
                listed.push_back({goal, &todo});
    };
    add(nullptr, board.unassignedTodos);
    for (const Goal& goal : board.goals)
        add(&goal, goal.todos);
    sortByOrder(listed);
    Rows rows;
    rows.reserve(listed.size());
    for (const auto& [goal, todo] : listed)
        rows.push_back({todo->id, goal != nullptr ? std::optional(goal->id) : std::nullopt, todo});
    return rows;
}

/// The item that a single operation inserted, changed or moved; null when it removed one.
template <class Item>
const Item* affectedItem(const std::vector<Item>& before, const std::vector<Item>& after)
{
    const auto [former, latter] = std::ranges::mismatch(before, after);
    if (latter == after.end() || after.size() < before.size())
        return nullptr;
    // Where an item was moved towards the end, its successor has taken its place.
    const bool hasLeft = former != before.end() && std::next(former) != before.end() &&
                         std::next(former)->id == latter->id;
    return hasLeft ? &*former : &*latter;
}

RestorationTarget changeAt(const TargetSelection& target, const Rows& before, const Rows& after)
{
    const Row* const todo = affectedItem(before, after);
    return {target, todo != nullptr ? std::optional(todo->id) : std::nullopt};
}

/// The place of a window whose assignment differs; none when all are the same.
std::optional<TargetSelection> placeOfMovedWindow(const Assignments& before,
                                                  const Assignments& after)
{
    for (const auto& [window, goalID] : after.asKeyValueRange()) {
        const auto former = before.constFind(window);
        if (former == before.constEnd() || *former != goalID)
            return TargetSelection::goal(goalID);
    }
    return before != after ? std::optional(TargetSelection::unassigned()) : std::nullopt;
}

/// A goal whose pin differs; none when all are the same.
std::optional<TargetSelection> goalOfMovedPin(const BoardContents& before,
                                              const BoardContents& after)
{
    const auto moved = std::ranges::find_if(after.goals, [&](const Goal& goal) {
        return before.pins.value(goal.id) != after.pins.value(goal.id);
    });
    return moved != after.goals.end() ? std::optional(TargetSelection::goal(moved->id))
                                      : std::nullopt;
}

} // namespace

std::optional<RestorationTarget> restorationTarget(const BoardContents& before,
                                                   const BoardContents& after,
                                                   const TargetSelection& present)
{
    if (present.isUnifiedTodos() && before.assignments == after.assignments &&
        haveSameHeadings(before.goals, after.goals)) {
        const Rows formerRows = rows(before);
        const Rows latterRows = rows(after);
        if (formerRows != latterRows)
            return changeAt(present, formerRows, latterRows);
    }

    // Lists that nothing has changed are shared, and so compared without sorting their todos.
    std::optional<RestorationTarget> changed;
    const auto compare = [&changed](const Column& then, const Column& now) {
        if (!changed && then != now)
            changed = changeAt(now.id, then.todos, now.todos);
    };
    for (const Goal& goal : after.goals) {
        const Goal* const then = goalWith(goal.id, before.goals);
        if (then == nullptr)
            return RestorationTarget{.target = TargetSelection::goal(goal.id)};
        if (then->todos.size() < goal.todos.size())
            return changeAt(TargetSelection::goal(goal.id), inSequence(then->todos),
                            inSequence(goal.todos));
        if (*then != goal)
            compare(columnOf(*then), columnOf(goal));
    }
    if (before.unassignedTodos != after.unassignedTodos) {
        const Column then = unassignedColumn(before);
        const Column now = unassignedColumn(after);
        if (then.todos.size() < now.todos.size())
            return changeAt(now.id, then.todos, now.todos);
        compare(then, now);
    }
    if (changed)
        return changed;

    // Windows left a goal that has gone because it went, unless it had nothing else.
    const auto hasGoneWithTodos = [&after](const Goal& goal) {
        return !goal.todos.isEmpty() && goalWith(goal.id, after.goals) == nullptr;
    };
    if (std::ranges::any_of(before.goals, hasGoneWithTodos))
        return std::nullopt;
    if (const auto place = placeOfMovedWindow(before.assignments, after.assignments))
        return RestorationTarget{.target = *place, .isPlaceOfWindow = true};
    if (const auto goal = goalOfMovedPin(before, after))
        return RestorationTarget{.target = *goal};
    const std::vector<Column> former = columns(before);
    const std::vector<Column> latter = columns(after);
    if (const Column* const moved = affectedItem(former, latter))
        return RestorationTarget{.target = moved->id};
    if (former.size() != latter.size() || before == after)
        return std::nullopt;
    return RestorationTarget{.target = TargetSelection::unifiedTodos()};
}

} // namespace kelpa
