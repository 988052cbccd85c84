#include "views/goals/BreadcrumbModel.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "views/models/ColumnID.h"

#include <algorithm>

namespace kelpa {

namespace {

enum Role {
    columnIDRole = Qt::UserRole + 1,
    titleRole,
    accentRole,
    isSelectedRole,
};

} // namespace

QString breadcrumbTitle(const Goal& goal)
{
    return QStringLiteral("(%1)").arg(goal.openTodoCount()) + singleLine(goal.title);
}

BreadcrumbModel::BreadcrumbModel(const WindowStore& store, QObject* parent)
    : RowListModel(parent), m_store(store)
{
    for (const auto signal : {&WindowStore::goalsChanged, &WindowStore::boardNavigationChanged,
                              &WindowStore::isHidingGoalsWithoutOpenTodosChanged})
        connect(&store, signal, this, &BreadcrumbModel::update);
    update();
}

QVariant BreadcrumbModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const BreadcrumbRow& row = rows().at(index.row());
    switch (role) {
    case columnIDRole:
        return columnText(row.goalID);
    case titleRole:
        return row.title;
    case accentRole:
        return rawValue(row.accent);
    case isSelectedRole:
        return row.isSelected;
    default:
        return {};
    }
}

QHash<int, QByteArray> BreadcrumbModel::roleNames() const
{
    return {{columnIDRole, "columnID"},
            {titleRole, "title"},
            {accentRole, "accent"},
            {isSelectedRole, "isSelected"}};
}

int BreadcrumbModel::selectedRow() const
{
    const auto found = std::ranges::find_if(rows(), &BreadcrumbRow::isSelected);
    return found != rows().end() ? static_cast<int>(found - rows().begin()) : -1;
}

void BreadcrumbModel::update()
{
    const TargetSelection& selected = m_store.boardNavigation().target;
    QList<BreadcrumbRow> goals;
    for (const Goal& goal : m_store.visibleGoals()) {
        goals.append({goal.id, breadcrumbTitle(goal), goal.accent,
                      selected == TargetSelection::goal(goal.id)});
    }
    const int countBefore = count();
    setRows(goals);
    if (count() != countBefore)
        Q_EMIT countChanged();
}

} // namespace kelpa
