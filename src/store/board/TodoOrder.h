// The rules of the todos: the one order across all lists, and the steps of a todo's status.
#pragma once

#include "model/Goal.h"
#include "store/board/MovePlace.h"

#include <QHash>
#include <QList>

#include <optional>
#include <vector>

namespace kelpa {

/// Every todo of the board: those of all goals in goal order, then the unassigned ones.
QList<TodoItem> allTodos(const QList<Goal>& goals, const QList<TodoItem>& unassigned);

/// A todo in its list, and the goal that has it; none for an unassigned one. Until the lists
/// change.
struct ListedTodo
{
    const Goal* goal = nullptr;
    const TodoItem* todo = nullptr;
};

/// Sorts by ascending order, and leaves todos of equal order as they are. Moves no records, and
/// takes O(n) where the orders are as close together as those of a stored board.
void sortByOrder(std::vector<ListedTodo>& todos);

/// The order of a new todo, which comes last: one more than the largest, 0 on an empty board.
/// Halts the program when no larger number exists.
std::int64_t nextTodoOrder(const QList<Goal>& goals, const QList<TodoItem>& unassigned);

/// The position that each todo takes.
using TodoPositions = QHash<TodoID, std::int64_t>;

/// 0, 1, 2, … along `sequence`.
TodoPositions positionsAlong(const QList<TodoItem>& sequence);

/// The positions that make all orders 0 … n−1 without changing the sequence; todos of equal order
/// keep the order of `allTodos`.
TodoPositions normalizedPositions(const QList<Goal>& goals, const QList<TodoItem>& unassigned);

/// The positions after `todoID` has been moved to `targetID` in the order of the whole board; none
/// when either is absent or they are the same.
std::optional<TodoPositions> positionsAfterMove(const QList<Goal>& goals,
                                                const QList<TodoItem>& unassigned, TodoID todoID,
                                                TodoID targetID,
                                                MovePlace place = MovePlace::before);

/// Gives every todo that `positions` names its order; the others keep theirs. True when an order
/// changed. A list in which nothing changes is not detached from its copies.
bool applyPositions(QList<TodoItem>& todos, const TodoPositions& positions);
bool applyPositions(QList<Goal>& goals, const TodoPositions& positions);

/// One step on: from todo to in progress, to completed, and back to todo.
TodoStatus nextStatus(TodoStatus status);

/// `todo` with another status; one that is completed becomes so at `now`.
TodoItem withStatus(TodoItem todo, TodoStatus status, Date now);

} // namespace kelpa
