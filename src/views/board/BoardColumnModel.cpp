#include "views/board/BoardColumnModel.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "text/DesktopCopy.h"
#include "text/KelpaCopy.h"
#include "views/goals/DesktopLabel.h"

#include <QSet>

#include <algorithm>
#include <functional>
#include <utility>

namespace kelpa {

namespace {

enum Role {
    columnIDRole = Qt::UserRole + 1,
    isUnassignedRole,
    titleRole,
    accentRole,
    priorityRole,
    openTodoCountRole,
    windowCountRole,
    pinnedDesktopRole,
    pinTextRole,
    foldedCountRole,
    foldedApplicationsRole,
    isUnfoldedRole,
    absentWindowCountRole,
    areFromLastTimeRole,
    isSearchedEmptyRole,
    isTitleFoundRole,
    isRecedingRole,
    isSelectedRole,
    isEnteredRole,
    windowsRole,
};

} // namespace

BoardColumnModel::BoardColumnModel(const WindowStore& store, QObject* parent)
    : RowListModel(parent), m_store(store)
{
    for (const auto signal :
         {&WindowStore::goalsChanged, &WindowStore::unassignedTodosChanged,
          &WindowStore::windowsChanged, &WindowStore::windowMemoryChanged,
          &WindowStore::searchTextChanged, &WindowStore::previewsChanged,
          &WindowStore::boardNavigationChanged, &WindowStore::isScreenCaptureTrustedChanged,
          &WindowStore::languageChanged, &WindowStore::isHidingGoalsWithoutOpenTodosChanged,
          &WindowStore::unsortedFoldChanged, &WindowStore::pinsChanged,
          &WindowStore::abilitiesChanged, &WindowStore::isAccessibilityTrustedChanged})
        connect(&store, signal, this, &BoardColumnModel::update);
    update();
}

QVariant BoardColumnModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ColumnRow& row = rows().at(index.row());
    switch (role) {
    case columnIDRole:
        return columnText(row.goalID);
    case isUnassignedRole:
        return !row.goalID.has_value();
    case titleRole:
        return singleLine(row.title);
    case accentRole:
        return rawValue(row.accent);
    case priorityRole:
        return rawValue(row.priority);
    case openTodoCountRole:
        return row.openTodoCount;
    case windowCountRole:
        return row.windowCount;
    case pinnedDesktopRole:
        return row.pinnedDesktop;
    case pinTextRole:
        return row.pinText;
    case foldedCountRole:
        return row.foldedCount;
    case foldedApplicationsRole:
        return row.foldedApplications;
    case isUnfoldedRole:
        return row.isUnfolded;
    case absentWindowCountRole:
        return row.absentWindowCount;
    case areFromLastTimeRole:
        return row.areFromLastTime;
    case isSearchedEmptyRole:
        return row.isSearchedEmpty;
    case isTitleFoundRole:
        return row.isTitleFound;
    case isRecedingRole:
        return row.isReceding;
    case isSelectedRole:
        return row.isSelected;
    case isEnteredRole:
        return row.isEntered;
    case windowsRole:
        return QVariant::fromValue(windows(row.goalID));
    default:
        return {};
    }
}

QHash<int, QByteArray> BoardColumnModel::roleNames() const
{
    return {{columnIDRole, "columnID"},
            {isUnassignedRole, "isUnassigned"},
            {titleRole, "title"},
            {accentRole, "accent"},
            {priorityRole, "priority"},
            {openTodoCountRole, "openTodoCount"},
            {windowCountRole, "windowCount"},
            {pinnedDesktopRole, "pinnedDesktop"},
            {pinTextRole, "pinText"},
            {foldedCountRole, "foldedCount"},
            {foldedApplicationsRole, "foldedApplications"},
            {isUnfoldedRole, "isUnfolded"},
            {absentWindowCountRole, "absentWindowCount"},
            {areFromLastTimeRole, "areFromLastTime"},
            {isSearchedEmptyRole, "isSearchedEmpty"},
            {isTitleFoundRole, "isTitleFound"},
            {isRecedingRole, "isReceding"},
            {isSelectedRole, "isSelected"},
            {isEnteredRole, "isEntered"},
            {windowsRole, "windows"}};
}

WindowListModel* BoardColumnModel::windows(std::optional<GoalID> goalID) const
{
    const QUuid key = goalID ? goalID->value : QUuid();
    if (WindowListModel* const known = m_windows.value(key, nullptr))
        return known;
    if (std::ranges::find(rows(), key, &ColumnRow::key) == rows().end())
        return nullptr;
    auto* const model = new WindowListModel(m_windowsOwner.get());
    fill(*model, goalID);
    m_windows.insert(key, model);
    return model;
}

void BoardColumnModel::fill(WindowListModel& model, std::optional<GoalID> goalID) const
{
    QList<WindowItem> windows = m_store.windows(goalID);
    if (!goalID)
        windows.resize(m_store.shownUnsortedCount());
    model.setWindows(
        windows, m_store.boardNavigation().selectedWindowID,
        [this](const WindowItem& window) { return windowPresentation(m_store, window); });
}

void BoardColumnModel::describeFold(ColumnRow& column) const
{
    const QList<WindowItem> windows = m_store.windows(std::nullopt);
    const qsizetype shown = m_store.shownUnsortedCount();
    column.foldedCount = static_cast<int>(windows.size() - shown);
    column.isUnfolded = m_store.unsortedFold() == UnsortedFold::unfolded &&
                        isFoldable(windows.size()) && !m_store.searchFindings().isSearching;
    QList<std::pair<QString, int>> applications;
    for (const WindowItem& window : windows.mid(shown)) {
        const auto same =
            std::ranges::find(applications, window.ownerName, &std::pair<QString, int>::first);
        if (same == applications.end())
            applications.emplaceBack(window.ownerName, 1);
        else
            ++same->second;
    }
    std::ranges::stable_sort(applications, std::ranges::greater{},
                             &std::pair<QString, int>::second);
    QStringList texts;
    for (const auto& [name, count] : applications)
        texts.append(singleLine(name) + u' ' + QString::number(count));
    column.foldedApplications = texts.join(QString(3, u' '));
}

void BoardColumnModel::update()
{
    const BoardNavigationState& navigation = m_store.boardNavigation();
    QSet<QUuid> withWindows;
    for (const WindowItem& window : m_store.windows())
        withWindows.insert(window.goalID ? window.goalID->value : QUuid());
    const SearchFindings& findings = m_store.searchFindings();
    const auto columnOf = [&](std::optional<GoalID> goalID) {
        ColumnRow column;
        column.goalID = goalID;
        column.windowCount = static_cast<int>(m_store.windows(goalID).size());
        column.isSearchedEmpty = column.windowCount == 0 && withWindows.contains(column.key());
        column.isTitleFound = goalID && findings.goals.contains(*goalID);
        column.isReceding = findings.isSearching && !hasMatches(findings, goalID);
        column.isSelected = navigation.target == TargetSelection::of(goalID);
        column.isEntered = column.isSelected && navigation.layer == BoardNavigationLayer::windows;
        return column;
    };

    QList<ColumnRow> columns{columnOf(std::nullopt)};
    columns.front().title = KelpaCopy::text(CopyKey::Unsorted, m_store.language());
    describeFold(columns.front());
    columns.front().openTodoCount =
        static_cast<int>(std::ranges::count_if(m_store.unassignedTodos(), &TodoItem::isOpen));
    const QList<Goal> goals = m_store.visibleGoals();
    for (const Goal& goal : goals) {
        ColumnRow column = columnOf(goal.id);
        column.title = goal.title;
        column.accent = goal.accent;
        column.priority = goal.priority;
        column.openTodoCount = static_cast<int>(goal.openTodoCount());
        if (const std::optional<int> pin =
                m_store.canPinGoals() ? m_store.pinOf(goal.id) : std::nullopt) {
            column.pinnedDesktop = *pin;
            column.pinText = KelpaCopy::pinnedTo(desktopLabel(m_store, *pin), m_store.language());
        }
        column.absentWindowCount = static_cast<int>(m_store.absentWindows(goal.id).size());
        column.areFromLastTime = m_store.areFromLastTime(goal.id);
        columns.append(column);
    }
    updateWindows(columns);
    setRows(columns);
    dropWindowsOfGoneColumns();
}

void BoardColumnModel::updateWindows(const QList<ColumnRow>& columns)
{
    for (const ColumnRow& column : columns) {
        if (WindowListModel* const model = m_windows.value(column.key(), nullptr))
            fill(*model, column.goalID);
    }
}

/// Runs after the columns themselves have changed, and later, since a view releases a column's
/// cards only then.
void BoardColumnModel::dropWindowsOfGoneColumns()
{
    QSet<QUuid> columns;
    columns.reserve(rows().size());
    for (const ColumnRow& column : rows())
        columns.insert(column.key());
    m_windows.removeIf([&columns](const QHash<QUuid, WindowListModel*>::iterator& each) {
        const bool isGone = !columns.contains(each.key());
        if (isGone)
            each.value()->deleteLater();
        return isGone;
    });
}

} // namespace kelpa
