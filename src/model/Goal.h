// One goal of the board with its todos.
#pragma once

#include "model/GoalAccent.h"
#include "model/GoalPriority.h"
#include "model/Identifiers.h"
#include "model/TodoItem.h"

#include <QList>
#include <QString>

namespace kelpa {

struct Goal
{
    GoalID id;
    QString title;
    GoalAccent accent = GoalAccent::blue;
    GoalPriority priority = defaultGoalPriority;
    /// In stored order; a card shows `visibleTodos`.
    QList<TodoItem> todos;

    /// False for a goal without todos.
    bool hasOpenTodo() const;
    qsizetype openTodoCount() const;

    /// The todos that a goal's card shows, by ascending `order`: the open ones and the one that was
    /// completed last. Empty when none is open.
    QList<TodoItem> visibleTodos() const;

    friend bool operator==(const Goal&, const Goal&) = default;
};

size_t qHash(const Goal& goal, size_t seed = 0);

/// The position of a goal or a todo in its list; -1 when it is absent.
qsizetype indexOf(const QList<Goal>& goals, GoalID id);
qsizetype indexOf(const QList<TodoItem>& todos, TodoID id);

/// The goal of the list; null when it is absent. Until the list changes.
const Goal* goalWith(GoalID id, const QList<Goal>& goals);
/// The todo of the list; null when it is absent. Until the list changes.
const TodoItem* todoWith(TodoID id, const QList<TodoItem>& todos);
/// The todo in a goal's list, or in `unassigned` without a goal; null when either is absent. Valid
/// until the lists change.
const TodoItem* todoAt(std::optional<GoalID> goalID, TodoID id, const QList<Goal>& goals,
                       const QList<TodoItem>& unassigned);

} // namespace kelpa
