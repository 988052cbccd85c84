#include "views/todos/TodoRows.h"

#include "store/board/TodoOrder.h"

#include <utility>
#include <vector>

namespace kelpa {

namespace {

/// The rows of `todos`, in board order. `noGoalTitle` is the title of unassigned ones.
QList<UnifiedTodoEntry> entriesOf(std::vector<ListedTodo> todos, const QString& noGoalTitle)
{
    sortByOrder(todos);
    QList<UnifiedTodoEntry> entries;
    entries.reserve(static_cast<qsizetype>(todos.size()));
    for (const auto& [goal, todo] : todos) {
        entries.append({goal != nullptr ? std::optional(goal->id) : std::nullopt, *todo,
                        goal != nullptr ? goal->title : noGoalTitle});
    }
    return entries;
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
    std::vector<ListedTodo> todos;
    todos.reserve(static_cast<std::size_t>(unassigned.size()));
    for (const TodoItem& todo : unassigned)
        todos.push_back({nullptr, &todo});
    return entriesOf(std::move(todos), title);
}

QList<UnifiedTodoEntry> unifiedTodoEntries(const QList<Goal>& goals,
                                           const QList<TodoItem>& unassigned,
                                           const QString& unassignedTitle,
                                           std::optional<TodoID> lingering)
{
    std::vector<ListedTodo> todos;
    for (const TodoItem& todo : unassigned)
        if (todo.isOpen())
            todos.push_back({nullptr, &todo});
    for (const Goal& goal : goals)
        for (const TodoItem& todo : goal.todos)
            if (todo.isOpen() || todo.id == lingering)
                todos.push_back({&goal, &todo});
    return entriesOf(std::move(todos), unassignedTitle);
}

const QList<UnifiedTodoEntry>& UnifiedTodoRows::of(const QList<Goal>& goals,
                                                   const QList<TodoItem>& unassigned,
                                                   const QString& unassignedTitle,
                                                   std::optional<TodoID> lingering)
{
    m_isUsed = true;
    const bool isKnown = goals.isSharedWith(m_goals) && unassigned.isSharedWith(m_unassigned) &&
                         unassignedTitle == m_unassignedTitle && lingering == m_lingering;
    if (isKnown)
        return m_rows;
    m_goals = goals;
    m_unassigned = unassigned;
    m_unassignedTitle = unassignedTitle;
    m_lingering = lingering;
    m_rows = unifiedTodoEntries(goals, unassigned, unassignedTitle, lingering);
    return m_rows;
}

void UnifiedTodoRows::dropUnused()
{
    if (!std::exchange(m_isUsed, false))
        *this = {};
}

QList<UnifiedTodoEntry> columnTodoEntries(const ColumnID& column, const QList<Goal>& goals,
                                          const QList<TodoItem>& unassigned,
                                          const QString& unassignedTitle,
                                          std::optional<TodoID> lingering)
{
    if (!column.goalID)
        return unassignedTodoEntries(unassigned, unassignedTitle);
    const Goal* const goal = goalWith(*column.goalID, goals);
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
