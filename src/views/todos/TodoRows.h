// Which todos a list of the board shows, and in which order.
#pragma once

#include "model/Goal.h"
#include "store/board/MovePlace.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace kelpa {

/// A todo with the place where it lives.
struct UnifiedTodoEntry
{
    /// Absent for an unassigned todo.
    std::optional<GoalID> goalID;
    TodoItem todo;
    QString goalTitle;

    QUuid key() const { return todo.id.value; }

    friend bool operator==(const UnifiedTodoEntry&, const UnifiedTodoEntry&) = default;
};

/// What the card of a goal shows: the open todos and the one completed last, in board order.
QList<UnifiedTodoEntry> goalTodoEntries(const Goal& goal);

/// All of `unassigned`, also completed ones, in board order. `title` is that of their column.
QList<UnifiedTodoEntry> unassignedTodoEntries(const QList<TodoItem>& unassigned,
                                              const QString& title);

/// The open todos of the whole board in board order; of equal orders the unassigned ones come
/// first, then those of the goals as the goals stand. `unassignedTitle` stands for the title of
/// the goal that unassigned todos do not have.
QList<UnifiedTodoEntry> unifiedTodoEntries(const QList<Goal>& goals,
                                           const QList<TodoItem>& unassigned,
                                           const QString& unassignedTitle);

/// A todo that takes the place beside another.
struct TodoMove
{
    TodoID todoID;
    TodoID targetID;
    MovePlace place = MovePlace::before;

    friend bool operator==(const TodoMove&, const TodoMove&) = default;
};

/// What moves the todo by one row in the list: up with a `step` of -1, down with 1. None when it is
/// not in the list or already at that end.
std::optional<TodoMove> todoMove(const QList<UnifiedTodoEntry>& entries, TodoID todoID, int step);

/// The name of the symbol that shows a status.
QString statusSymbol(TodoStatus status);

} // namespace kelpa
