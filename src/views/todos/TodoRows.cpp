#include "views/todos/TodoRows.h"

#include <algorithm>

namespace kelpa {

namespace {

void sortByOrder(QList<UnifiedTodoEntry>& entries)
{
    std::ranges::stable_sort(entries, {},
                             [](const UnifiedTodoEntry& entry) { return entry.todo.order; });
}

} // namespace

QList<UnifiedTodoEntry> goalTodoEntries(const Goal& goal, std::optional<TodoID> lingering)
{
    QList<UnifiedTodoEntry> entries;
    const QList<TodoItem> todos = goal.visibleTodos();
    const TodoItem* const last = lingering ? todoWith(*lingering, goal.todos) : nullptr;
    if (todos.isEmpty() && last != nullptr)
        return {{goal.id, *last, goal.title}};
    entries.reserve(todos.size());
    for (const TodoItem& todo : todos)
        entries.append({goal.id, todo, goal.title});
    return entries;
}

QList<UnifiedTodoEntry> unassignedTodoEntries(const QList<TodoItem>& unassigned,
                                              const QString& title)
{
    QList<UnifiedTodoEntry> entries;
    entries.reserve(unassigned.size());
    for (const TodoItem& todo : unassigned)
        entries.append({std::nullopt, todo, title});
    sortByOrder(entries);
    return entries;
}

QList<UnifiedTodoEntry> unifiedTodoEntries(const QList<Goal>& goals,
                                           const QList<TodoItem>& unassigned,
                                           const QString& unassignedTitle,
                                           std::optional<TodoID> lingering)
{
    QList<UnifiedTodoEntry> entries;
    for (const TodoItem& todo : unassigned)
        if (todo.isOpen())
            entries.append({std::nullopt, todo, unassignedTitle});
    for (const Goal& goal : goals)
        for (const TodoItem& todo : goal.todos)
            if (todo.isOpen() || todo.id == lingering)
                entries.append({goal.id, todo, goal.title});
    sortByOrder(entries);
    return entries;
}

QList<UnifiedTodoEntry> todoEntries(const TodoList& list, const QList<Goal>& goals,
                                    const QList<TodoItem>& unassigned,
                                    const QString& unassignedTitle, std::optional<TodoID> lingering)
{
    const ColumnID* const column = std::get_if<ColumnID>(&list);
    if (column == nullptr)
        return unifiedTodoEntries(goals, unassigned, unassignedTitle, lingering);
    if (!column->goalID)
        return unassignedTodoEntries(unassigned, unassignedTitle);
    const Goal* const goal = goalWith(*column->goalID, goals);
    return goal != nullptr ? goalTodoEntries(*goal, lingering) : QList<UnifiedTodoEntry>();
}

QList<UnifiedTodoEntry> withMatches(QList<UnifiedTodoEntry> entries, const SearchFindings& findings)
{
    if (!findings.isSearching)
        return entries;
    for (UnifiedTodoEntry& entry : entries)
        entry.match =
            findings.todos.contains(entry.todo.id) ? SearchMatch::found : SearchMatch::missed;
    return entries;
}

QString statusSymbol(TodoStatus status)
{
    switch (status) {
    case TodoStatus::todo:
        return QStringLiteral("circle");
    case TodoStatus::ing:
        return QStringLiteral("circle-half");
    case TodoStatus::completed:
        return QStringLiteral("circle-check-filled");
    }
    return {};
}

} // namespace kelpa
