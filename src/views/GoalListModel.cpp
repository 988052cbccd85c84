#include "views/GoalListModel.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"

#include <algorithm>

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
    isSelectedRole,
    windowsRole,
};

} // namespace

GoalListModel::GoalListModel(const WindowStore& store, QObject* parent)
    : RowListModel(parent), m_store(store)
{
    for (const auto signal :
         {&WindowStore::goalsChanged, &WindowStore::unassignedTodosChanged,
          &WindowStore::windowsChanged, &WindowStore::searchTextChanged,
          &WindowStore::previewsChanged, &WindowStore::boardNavigationChanged,
          &WindowStore::isScreenCaptureTrustedChanged, &WindowStore::languageChanged,
          &WindowStore::isHidingGoalsWithoutOpenTodosChanged})
        connect(&store, signal, this, &GoalListModel::update);
    update();
}

QVariant GoalListModel::data(const QModelIndex& index, int role) const
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
    case isSelectedRole:
        return row.isSelected;
    case windowsRole:
        return QVariant::fromValue(windows(row.goalID));
    default:
        return {};
    }
}

QHash<int, QByteArray> GoalListModel::roleNames() const
{
    return {{columnIDRole, "columnID"},
            {isUnassignedRole, "isUnassigned"},
            {titleRole, "title"},
            {accentRole, "accent"},
            {priorityRole, "priority"},
            {openTodoCountRole, "openTodoCount"},
            {windowCountRole, "windowCount"},
            {isSelectedRole, "isSelected"},
            {windowsRole, "windows"}};
}

WindowListModel* GoalListModel::windows(std::optional<GoalID> goalID) const
{
    return m_windows.value(goalID ? goalID->value : QUuid(), nullptr);
}

void GoalListModel::update()
{
    const BoardNavigationState& navigation = m_store.boardNavigation();
    const auto columnOf = [&](std::optional<GoalID> goalID) {
        const TargetSelection target =
            goalID ? TargetSelection::goal(*goalID) : TargetSelection::unassigned();
        ColumnRow column;
        column.goalID = goalID;
        column.windowCount = static_cast<int>(m_store.windows(goalID).size());
        column.isSelected = navigation.target == target;
        return column;
    };

    QList<ColumnRow> columns{columnOf(std::nullopt)};
    columns.front().title = KelpaCopy::text(CopyKey::Unsorted, m_store.language());
    columns.front().openTodoCount =
        static_cast<int>(std::ranges::count_if(m_store.unassignedTodos(), &TodoItem::isOpen));
    const QList<Goal> goals = m_store.visibleGoals();
    for (const Goal& goal : goals) {
        ColumnRow column = columnOf(goal.id);
        column.title = goal.title;
        column.accent = goal.accent;
        column.priority = goal.priority;
        column.openTodoCount = static_cast<int>(goal.openTodoCount());
        columns.append(column);
    }
    updateWindows(columns);
    setRows(columns);
}

/// Cards come before their columns, so that a new column is made with its cards in place, and go
/// after them, since a view lets go of a column's cards only later.
void GoalListModel::updateWindows(const QList<ColumnRow>& columns)
{
    QHash<QUuid, WindowListModel*> kept;
    for (const ColumnRow& column : columns) {
        WindowListModel* model = m_windows.take(column.key());
        if (model == nullptr)
            model = new WindowListModel(this);
        model->setWindows(
            m_store.windows(column.goalID), m_store.boardNavigation().selectedWindowID,
            [this](const WindowItem& window) { return cardPreview(m_store, window); });
        kept.insert(column.key(), model);
    }
    for (WindowListModel* const unused : std::as_const(m_windows))
        unused->deleteLater();
    m_windows = kept;
}

} // namespace kelpa
