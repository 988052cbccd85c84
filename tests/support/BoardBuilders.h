// Builds records for tests, and reads lists of them.
#pragma once

#include "model/Goal.h"
#include "model/TodoItem.h"
#include "model/WindowItem.h"

#include <QList>
#include <QString>

namespace kelpa::test {

inline TodoItem todo(const QString& title, std::int64_t order = 0,
                     TodoStatus status = TodoStatus::todo)
{
    return {TodoID::create(), title, status, std::nullopt, order};
}

inline Goal goal(const QString& title, const QList<TodoItem>& todos = {},
                 GoalPriority priority = GoalPriority::p2)
{
    return {GoalID::create(), title, GoalAccent::blue, priority, todos};
}

inline WindowItem window(WindowID id, const QString& title = {}, const QString& ownerName = {})
{
    WindowItem item;
    item.id = id;
    item.title = title;
    item.ownerName = ownerName;
    return item;
}

/// In the order of the windows.
inline QList<WindowID> idsOf(const QList<WindowItem>& windows)
{
    QList<WindowID> ids;
    for (const WindowItem& each : windows)
        ids.append(each.id);
    return ids;
}

} // namespace kelpa::test
