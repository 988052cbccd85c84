#include "store/board/RestorationTarget.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kelpa {

namespace {

/// A goal or the unassigned list, as the board shows it.
struct Column
{
    TargetSelection id;
    /// The goal without its todos; absent for the unassigned list.
    std::optional<Goal> heading;
    QList<TodoItem> todos;

    friend bool operator==(const Column&, const Column&) = default;
};

/// A row of the list of all todos, which names the goal.
struct Row
{
    TodoID id;
    std::optional<GoalID> goalID;
    TodoItem todo;

    friend bool operator==(const Row&, const Row&) = default;
};

/// Only the sequence of todos can be seen, not the number that makes it.
QList<TodoItem> inSequence(QList<TodoItem> todos)
{
    std::ranges::stable_sort(todos, {}, &TodoItem::order);
    for (TodoItem& todo : todos)
        todo.order = 0;
    return todos;
}

Column columnOf(Goal goal)
{
    QList<TodoItem> todos = inSequence(std::exchange(goal.todos, {}));
    return {TargetSelection::goal(goal.id), std::move(goal), std::move(todos)};
}

Column unassignedColumn(const BoardContents& board)
{
    return {TargetSelection::unassigned(), {}, inSequence(board.unassignedTodos)};
}

/// The goals in order, then the unassigned list.
QList<Column> columns(const BoardContents& board)
{
    QList<Column> columns;
    for (const Goal& goal : board.goals)
        columns.append(columnOf(goal));
    columns.append(unassignedColumn(board));
    return columns;
}

/// Whether the boards have the same goals in the same order, whatever their todos.
bool haveSameHeadings(const QList<Goal>& before, const QList<Goal>& after)
{
    const auto heading = [](Goal goal) {
        goal.todos = {};
        return goal;
    };
    return std::ranges::equal(before, after, {}, heading, heading);
}

/// The list of all todos.
QList<Row> rows(const BoardContents& board)
{
    QList<Row> rows;
    const auto add = [&rows](std::optional<GoalID> goalID, const QList<TodoItem>& todos) {
        for (const TodoItem& todo : todos)
            if (todo.isOpen())
                rows.append({todo.id, goalID, todo});
    };
    add(std::nullopt, board.unassignedTodos);
    for (const Goal& goal : board.goals)
        add(goal.id, goal.todos);
    std::ranges::stable_sort(rows, {}, [](const Row& row) { return row.todo.order; });
    for (Row& row : rows)
        row.todo.order = 0;
    return rows;
}

/// The item that a single operation inserted, changed or moved; null when it removed one.
template <class Item>
const Item* affectedItem(const QList<Item>& before, const QList<Item>& after)
{
    const auto [former, latter] = std::ranges::mismatch(before, after);
    if (latter == after.end() || after.size() < before.size())
        return nullptr;
    // Where an item was moved towards the end, its successor has taken its place.
    const bool hasLeft = former != before.end() && std::next(former) != before.end() &&
                         std::next(former)->id == latter->id;
    return hasLeft ? &*former : &*latter;
}

template <class Item>
RestorationTarget changeAt(const TargetSelection& target, const QList<Item>& before,
                           const QList<Item>& after)
{
    const Item* const todo = affectedItem(before, after);
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
        const QList<Row> formerRows = rows(before);
        const QList<Row> latterRows = rows(after);
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
    const QList<Column> former = columns(before);
    const QList<Column> latter = columns(after);
    if (const Column* const moved = affectedItem(former, latter))
        return RestorationTarget{.target = moved->id};
    if (former.size() != latter.size() || before == after)
        return std::nullopt;
    return RestorationTarget{.target = TargetSelection::unifiedTodos()};
}

} // namespace kelpa
