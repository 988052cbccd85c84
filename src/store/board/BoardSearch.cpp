#include "store/board/BoardSearch.h"

#include "windows/WindowSearch.h"

#include <QHash>

#include <algorithm>
#include <iterator>

namespace kelpa {

namespace {

bool isHidden(const Goal& goal, EmptyGoals emptyGoals)
{
    return emptyGoals == EmptyGoals::hidden && !goal.hasOpenTodo();
}

QList<TodoItem> matchingTodos(const QList<TodoItem>& todos, const TextSearch& search)
{
    QList<TodoItem> found;
    std::ranges::copy_if(todos, std::back_inserter(found),
                         [&search](const TodoItem& todo) { return search.matches(todo.title); });
    return found;
}

} // namespace

SearchFindings searchFindings(const QList<Goal>& goals, const QList<TodoItem>& unassignedTodos,
                              const QList<WindowItem>& foundWindows, EmptyGoals emptyGoals,
                              const QString& searchText, const QLocale& locale)
{
    const TextSearch search(searchText, locale);
    if (search.isEmpty())
        return {};
    SearchFindings findings;
    findings.isSearching = true;
    QHash<GoalID, qsizetype> windowCounts;
    for (const WindowItem& window : foundWindows) {
        if (window.goalID)
            ++windowCounts[*window.goalID];
        else
            ++findings.windowCount;
    }
    for (const TodoItem& todo : matchingTodos(unassignedTodos, search))
        findings.todos.insert(todo.id);
    findings.hasUnassignedMatches = findings.windowCount > 0 || !findings.todos.isEmpty();
    for (const Goal& goal : goals) {
        const bool isFound = search.matches(goal.title);
        const QList<TodoItem> todos = matchingTodos(goal.visibleTodos(), search);
        const qsizetype windows = windowCounts.value(goal.id);
        const qsizetype count = (isFound ? 1 : 0) + todos.size() + windows;
        if (isHidden(goal, emptyGoals)) {
            findings.hiddenCount += count;
            continue;
        }
        findings.windowCount += windows;
        if (isFound)
            findings.goals.insert(goal.id);
        if (count > 0)
            findings.goalsWithMatches.insert(goal.id);
        for (const TodoItem& todo : todos)
            findings.todos.insert(todo.id);
    }
    return findings;
}

bool hasMatches(const SearchFindings& findings, const std::optional<GoalID>& goalID)
{
    return goalID ? findings.goalsWithMatches.contains(*goalID) : findings.hasUnassignedMatches;
}

HiddenGoals hiddenGoals(const QList<Goal>& goals, const QList<WindowItem>& windows,
                        EmptyGoals emptyGoals)
{
    QSet<GoalID> withWindows;
    for (const WindowItem& window : windows) {
        if (window.goalID)
            withWindows.insert(*window.goalID);
    }
    HiddenGoals hidden;
    for (const Goal& goal : goals) {
        if (!isHidden(goal, emptyGoals))
            continue;
        ++hidden.count;
        if (withWindows.contains(goal.id))
            ++hidden.countWithWindows;
    }
    return hidden;
}

} // namespace kelpa
