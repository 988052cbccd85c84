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
    const std::optional<Match> match = firstShown();
    if (!match) {
        if (hiddenCount() == 0)
            return false;
        showHidden();
    } else if (match->window) {
        m_store.selectWindow(*match->window);
        Q_EMIT selectionRequested();
    } else if (match->todo) {
        m_todos.goToTodo(match->todo->text(), columnText(match->column), false);
    } else {
        m_goals.showColumn(columnText(match->column));
    }
    return true;
}

QVariantMap SearchController::firstMatch() const
{
    const std::optional<Match> match = firstShown();
    if (!match)
        return {};
    const QList<WindowItem> windows = m_store.windows(match->column);
    const auto found = std::ranges::find(
        windows, match->window, [](const WindowItem& window) { return std::optional(window.id); });
    const auto row = found != windows.end() ? found - windows.begin() : -1;
    return {{QStringLiteral("columnID"), columnText(match->column)},
            {QStringLiteral("window"), static_cast<int>(row)},
            {QStringLiteral("todoID"), match->todo ? match->todo->text() : QString()}};
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

std::optional<SearchController::Match> SearchController::firstShown() const
{
    for (const auto first : {&SearchController::firstWindow, &SearchController::firstGoal,
                             &SearchController::firstTodo}) {
        if (std::optional<Match> match = (this->*first)())
            return match;
    }
    return std::nullopt;
}

std::optional<SearchController::Match> SearchController::firstWindow() const
{
    for (const std::optional<GoalID>& column : shownColumns(m_store)) {
        const QList<WindowItem> windows = m_store.windows(column);
        if (!windows.isEmpty())
            return Match{column, windows.front().id, {}};
    }
    return std::nullopt;
}

std::optional<SearchController::Match> SearchController::firstGoal() const
{
    const QList<Goal> goals = m_store.visibleGoals();
    const auto found = std::ranges::find_if(goals, [this](const Goal& goal) {
        return m_store.searchFindings().goals.contains(goal.id);
    });
    return found != goals.end() ? std::optional(Match{found->id, {}, {}}) : std::nullopt;
}

std::optional<SearchController::Match> SearchController::firstTodo() const
{
    for (const std::optional<GoalID>& column : shownColumns(m_store)) {
        for (const UnifiedTodoEntry& entry : m_todos.entries(columnText(column))) {
            if (entry.match == SearchMatch::found)
                return Match{column, {}, entry.todo.id};
        }
    }
    return std::nullopt;
}

} // namespace kelpa
