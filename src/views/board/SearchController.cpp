#include "views/board/SearchController.h"

#include "store/WindowStore.h"
#include "views/goals/GoalController.h"
#include "views/models/ColumnID.h"
#include "views/todos/TodoController.h"

#include <QList>

#include <algorithm>
#include <optional>

namespace kelpa {

namespace {

/// The columns in the order of the board.
QList<std::optional<GoalID>> shownColumns(const WindowStore& store)
{
    QList<std::optional<GoalID>> columns{std::nullopt};
    for (const Goal& goal : store.visibleGoals())
        columns.append(goal.id);
    return columns;
}

} // namespace

SearchController::SearchController(WindowStore& store, GoalController& goals, TodoController& todos)
    : m_store(store), m_goals(goals), m_todos(todos)
{
    connect(&store, &WindowStore::searchTextChanged, this, &SearchController::textChanged);
    connect(&store, &WindowStore::searchTextChanged, this, [this] { setOld(false); });
    for (const auto signal : {&WindowStore::windowsChanged, &WindowStore::goalsChanged,
                              &WindowStore::unassignedTodosChanged, &WindowStore::searchTextChanged,
                              &WindowStore::isHidingGoalsWithoutOpenTodosChanged})
        connect(&store, signal, this, &SearchController::findingsChanged);
}

QString SearchController::text() const
{
    return m_store.searchText();
}

void SearchController::setText(const QString& text)
{
    m_store.setSearchText(text);
}

bool SearchController::isSearching() const
{
    return m_store.searchFindings().isSearching;
}

void SearchController::noteForward()
{
    setOld(isSearching());
}

void SearchController::setOld(bool isOld)
{
    if (m_isOld == isOld)
        return;
    m_isOld = isOld;
    Q_EMIT isOldChanged();
}

int SearchController::windowCount() const
{
    return static_cast<int>(m_store.searchFindings().windowCount);
}

int SearchController::goalCount() const
{
    return static_cast<int>(m_store.searchFindings().goals.size());
}

int SearchController::todoCount() const
{
    return static_cast<int>(m_store.searchFindings().todos.size());
}

int SearchController::hiddenCount() const
{
    return static_cast<int>(m_store.searchFindings().hiddenCount);
}

int SearchController::hiddenGoalCount() const
{
    return static_cast<int>(m_store.hiddenGoals().count);
}

int SearchController::hiddenGoalWithWindowsCount() const
{
    return static_cast<int>(m_store.hiddenGoals().countWithWindows);
}

bool SearchController::selectFirst()
{
    if (selectFirstWindow() || selectFirstGoal() || selectFirstTodo())
        return true;
    if (hiddenCount() == 0)
        return false;
    showHidden();
    return true;
}

bool SearchController::openFirst()
{
    if (!selectFirst())
        return false;
    if (m_store.boardNavigation().layer == BoardNavigationLayer::windows)
        m_store.activateSelection();
    return true;
}

void SearchController::showHidden()
{
    m_store.showHiddenFindings();
    Q_EMIT selectionRequested();
}

bool SearchController::selectFirstWindow()
{
    for (const std::optional<GoalID>& column : shownColumns(m_store)) {
        const QList<WindowItem> windows = m_store.windows(column);
        if (windows.isEmpty())
            continue;
        m_store.selectWindow(windows.front().id);
        Q_EMIT selectionRequested();
        return true;
    }
    return false;
}

bool SearchController::selectFirstGoal()
{
    const QList<Goal> goals = m_store.visibleGoals();
    const auto found = std::ranges::find_if(goals, [this](const Goal& goal) {
        return m_store.searchFindings().goals.contains(goal.id);
    });
    if (found == goals.end())
        return false;
    m_goals.showColumn(columnText(found->id));
    return true;
}

bool SearchController::selectFirstTodo()
{
    for (const std::optional<GoalID>& column : shownColumns(m_store)) {
        for (const UnifiedTodoEntry& entry : m_todos.entries(columnText(column))) {
            if (entry.match != SearchMatch::found)
                continue;
            m_todos.goToTodo(entry.todo.id.text(), columnText(column), false);
            return true;
        }
    }
    return false;
}

} // namespace kelpa
