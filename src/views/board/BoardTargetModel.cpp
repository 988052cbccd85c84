#include "views/board/BoardTargetModel.h"

#include "views/models/ColumnID.h"

#include <algorithm>

namespace kelpa {

namespace {

constexpr int unifiedRow = 0;
/// The number of rows before the columns.
constexpr int firstColumnRow = 1;
/// A role beyond those of the columns.
constexpr int kindRole = Qt::UserRole + 1000;

} // namespace

BoardTargetModel::BoardTargetModel(const BoardColumnModel& columns, QObject* parent)
    : QAbstractListModel(parent), m_columns(columns)
{
    using Model = QAbstractItemModel;
    connect(&columns, &Model::rowsAboutToBeInserted, this,
            [this](const QModelIndex&, int first, int last) {
                beginInsertRows({}, first + firstColumnRow, last + firstColumnRow);
            });
    connect(&columns, &Model::rowsInserted, this, [this] { endInsertRows(); });
    connect(&columns, &Model::rowsAboutToBeRemoved, this,
            [this](const QModelIndex&, int first, int last) {
                beginRemoveRows({}, first + firstColumnRow, last + firstColumnRow);
            });
    connect(&columns, &Model::rowsRemoved, this, [this] { endRemoveRows(); });
    connect(&columns, &Model::rowsAboutToBeMoved, this,
            [this](const QModelIndex&, int first, int last, const QModelIndex&, int before) {
                beginMoveRows({}, first + firstColumnRow, last + firstColumnRow, {},
                              before + firstColumnRow);
            });
    connect(&columns, &Model::rowsMoved, this, [this] { endMoveRows(); });
    connect(&columns, &Model::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                Q_EMIT dataChanged(index(first.row() + firstColumnRow),
                                   index(last.row() + firstColumnRow));
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
    const int column = index.row() - firstColumnRow;
    const bool isColumn = column >= 0 && column < m_columns.rowCount();
    if (role != kindRole)
        return isColumn ? m_columns.data(m_columns.index(column), role) : QVariant();
    if (index.row() == unifiedRow)
        return QStringLiteral("unifiedTodos");
    if (!isColumn)
        return QStringLiteral("addGoal");
    return m_columns.rows().at(column).goalID ? QStringLiteral("goal")
                                              : QStringLiteral("unassigned");
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
    const QList<ColumnRow>& columns = m_columns.rows();
    const auto found =
        std::find_if(columns.begin(), columns.end(), [&target](const ColumnRow& column) {
            return column.goalID ? target == TargetSelection::goal(*column.goalID)
                                 : target.isUnassigned();
        });
    return found != columns.end() ? static_cast<int>(found - columns.begin()) + firstColumnRow : -1;
}

int BoardTargetModel::rowOfColumn(const QString& columnID) const
{
    const std::optional<ColumnID> column = columnFromText(columnID);
    return column ? rowOf(TargetSelection::of(column->goalID)) : -1;
}

} // namespace kelpa
