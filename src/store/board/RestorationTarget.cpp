#include "store/board/RestorationTarget.h"

#include <QHash>

#include <algorithm>
#include <functional>
#include <type_traits>

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

/// An item of `after` that `before` has not, or has otherwise; null when there is none.
template <class Item, class ID>
const Item* changedItem(const QList<Item>& before, const QList<Item>& after, ID id)
{
    QHash<std::decay_t<std::invoke_result_t<ID, const Item&>>, const Item*> former;
    for (const Item& item : before)
        former.insert(std::invoke(id, item), &item);
    const auto isChanged = [&former, &id](const Item& item) {
        const Item* const then = former.value(std::invoke(id, item));
        return then == nullptr || *then != item;
    };
    const auto changed = std::ranges::find_if(after, isChanged);
    return changed != after.end() ? &*changed : nullptr;
}

/// Of two orders of the same items, the one that was moved; null when there is none.
template <class Item, class ID>
const Item* movedItem(const QList<Item>& before, const QList<Item>& after, ID id)
{
    if (before.size() != after.size())
        return nullptr;
    const auto [former, latter] = std::ranges::mismatch(before, after, {}, id, id);
    if (former == before.end())
        return nullptr;
    // Taken from here to somewhere later, or brought here from there.
    const auto next = std::next(former);
    const bool isTaken = next != before.end() && std::invoke(id, *next) == std::invoke(id, *latter);
    return isTaken ? &*former : &*latter;
}

/// Of two states of one list.
std::optional<TodoID> changedTodo(const QList<TodoItem>& before, const QList<TodoItem>& after)
{
    const QList<TodoItem> former = asShown(before);
    const QList<TodoItem> latter = asShown(after);
    const TodoItem* todo = changedItem(former, latter, &TodoItem::id);
    if (todo == nullptr)
        todo = movedItem(former, latter, &TodoItem::id);
    return todo != nullptr ? std::optional(todo->id) : std::nullopt;
}

/// A todo of the list of the whole board.
struct PlacedTodo
{
    std::optional<GoalID> goalID;
    TodoItem todo;

    TodoID id() const { return todo.id; }

    friend bool operator==(const PlacedTodo&, const PlacedTodo&) = default;
};

/// What that list shows, as it shows it.
QList<PlacedTodo> openTodos(const BoardContents& board)
{
    QList<PlacedTodo> open;
    const auto add = [&open](std::optional<GoalID> goalID, const QList<TodoItem>& todos) {
        for (const TodoItem& todo : todos)
            if (todo.isOpen())
                open.append({goalID, todo});
    };
    add(std::nullopt, board.unassignedTodos);
    for (const Goal& goal : board.goals)
        add(goal.id, goal.todos);
    std::ranges::stable_sort(open, {}, [](const PlacedTodo& each) { return each.todo.order; });
    for (PlacedTodo& each : open)
        each.todo.order = 0;
    return open;
}

bool areGoalsSameButForTodos(const QList<Goal>& before, const QList<Goal>& after)
{
    return std::ranges::equal(before, after, [](Goal a, Goal b) {
        a.todos.clear();
        b.todos.clear();
        return a == b;
    });
}

/// Whoever works in the list of the whole board stays there, where it shows what differs.
std::optional<RestorationTarget> changeInUnifiedTodos(const BoardContents& before,
                                                      const BoardContents& after)
{
    if (before.assignments != after.assignments ||
        !areGoalsSameButForTodos(before.goals, after.goals))
        return std::nullopt;
    const QList<PlacedTodo> former = openTodos(before);
    const QList<PlacedTodo> latter = openTodos(after);
    if (former == latter)
        return std::nullopt;
    const PlacedTodo* todo = changedItem(former, latter, &PlacedTodo::id);
    if (todo == nullptr)
        todo = movedItem(former, latter, &PlacedTodo::id);
    return RestorationTarget{TargetSelection::unifiedTodos(),
                             todo != nullptr ? std::optional(todo->id()) : std::nullopt};
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

/// Of goals that have gone; whether nothing went with them but their windows.
bool wereVanishedGoalsWithoutTodos(const QList<Goal>& before, const QList<Goal>& after)
{
    return std::ranges::all_of(before, [&after](const Goal& goal) {
        return goal.todos.isEmpty() || goalWith(goal.id, after) != nullptr;
    });
}

} // namespace

std::optional<RestorationTarget> restorationTarget(const BoardContents& before,
                                                   const BoardContents& after,
                                                   const TargetSelection& present)
{
    if (present.isUnifiedTodos())
        if (const auto change = changeInUnifiedTodos(before, after))
            return change;
    std::optional<RestorationTarget> changed;
    for (const Goal& goal : after.goals) {
        const TargetSelection target = TargetSelection::goal(goal.id);
        const Goal* const former = goalWith(goal.id, before.goals);
        if (former == nullptr)
            return RestorationTarget{.target = target};
        if (former->todos.size() < goal.todos.size())
            return RestorationTarget{target, changedTodo(former->todos, goal.todos)};
        if (!changed && looksDifferent(*former, goal))
            changed = RestorationTarget{target, changedTodo(former->todos, goal.todos)};
    }
    const RestorationTarget unassigned{TargetSelection::unassigned(),
                                       changedTodo(before.unassignedTodos, after.unassignedTodos)};
    if (before.unassignedTodos.size() < after.unassignedTodos.size())
        return unassigned;
    if (changed)
        return changed;
    if (asShown(before.unassignedTodos) != asShown(after.unassignedTodos))
        return unassigned;
    // The windows and the order of a goal that has gone went with it. Where it was made for a
    // window, that is what came back.
    if (before.goals.size() != after.goals.size() &&
        !wereVanishedGoalsWithoutTodos(before.goals, after.goals))
        return std::nullopt;
    if (const std::optional<TargetSelection> place = placeOfMovedWindow(before, after))
        return RestorationTarget{.target = *place, .isPlaceOfWindow = true};
    if (const Goal* const moved = movedItem(before.goals, after.goals, &Goal::id))
        return RestorationTarget{.target = TargetSelection::goal(moved->id)};
    if (before.goals.size() != after.goals.size() || before == after)
        return std::nullopt;
    return RestorationTarget{.target = TargetSelection::unifiedTodos()};
}

} // namespace kelpa
