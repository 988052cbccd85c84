#include "views/BoardTargetModel.h"

#include <algorithm>

namespace kelpa {

namespace {

constexpr int unifiedRow = 0;
/// Beyond the roles of the columns.
constexpr int kindRole = Qt::UserRole + 1000;

} // namespace

BoardTargetModel::BoardTargetModel(const GoalListModel& columns, QObject* parent)
    : QAbstractListModel(parent), m_columns(columns)
{
    using Model = QAbstractItemModel;
    // The unassigned column is always there: what comes, goes or moves are goals.
    connect(&columns, &Model::rowsAboutToBeInserted, this,
            [this](const QModelIndex&, int first, int last) { beginInsertRows({}, first, last); });
    connect(&columns, &Model::rowsInserted, this, [this] { endInsertRows(); });
    connect(&columns, &Model::rowsAboutToBeRemoved, this,
            [this](const QModelIndex&, int first, int last) { beginRemoveRows({}, first, last); });
    connect(&columns, &Model::rowsRemoved, this, [this] { endRemoveRows(); });
    connect(&columns, &Model::rowsAboutToBeMoved, this,
            [this](const QModelIndex&, int first, int last, const QModelIndex&, int before) {
                beginMoveRows({}, first, last, {}, before);
            });
    connect(&columns, &Model::rowsMoved, this, [this] { endMoveRows(); });
    connect(&columns, &Model::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                changed(first.row(), last.row());
            });
}

int BoardTargetModel::rowCount(const QModelIndex& parent) const
{
    constexpr int besideColumns = 2;
    return parent.isValid() ? 0 : m_columns.rowCount() + besideColumns;
}

QVariant BoardTargetModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const int row = index.row();
    const bool isColumn = row != unifiedRow && row <= unassignedRow();
    if (role != kindRole)
        return isColumn ? m_columns.data(m_columns.index(row % unassignedRow()), role) : QVariant();
    if (row == unifiedRow)
        return QStringLiteral("unifiedTodos");
    if (row == unassignedRow())
        return QStringLiteral("unassigned");
    return isColumn ? QStringLiteral("goal") : QStringLiteral("addGoal");
}

QHash<int, QByteArray> BoardTargetModel::roleNames() const
{
    QHash<int, QByteArray> names = m_columns.roleNames();
    names.insert(kindRole, QByteArrayLiteral("kind"));
    return names;
}

int BoardTargetModel::rowOf(const TargetSelection& target) const
{
    if (target.isUnifiedTodos())
        return unifiedRow;
    if (target.isUnassigned())
        return unassignedRow();
    const QList<ColumnRow>& columns = m_columns.rows();
    const auto found =
        std::find_if(columns.begin() + 1, columns.end(), [&target](const ColumnRow& column) {
            return column.goalID.has_value() && target == TargetSelection::goal(*column.goalID);
        });
    return found != columns.end() ? static_cast<int>(found - columns.begin()) : -1;
}

void BoardTargetModel::changed(int firstColumn, int lastColumn)
{
    if (firstColumn == 0)
        Q_EMIT dataChanged(index(unassignedRow()), index(unassignedRow()));
    const int first = std::max(firstColumn, 1);
    if (first <= lastColumn)
        Q_EMIT dataChanged(index(first), index(lastColumn));
}

} // namespace kelpa
