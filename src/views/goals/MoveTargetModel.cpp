#include "views/goals/MoveTargetModel.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"
#include "views/models/ColumnID.h"

namespace kelpa {

namespace {

enum Role {
    columnIDRole = Qt::UserRole + 1,
    titleRole,
    accentRole,
    isUnassignedRole,
};

} // namespace

MoveTargetModel::MoveTargetModel(const WindowStore& store, QObject* parent)
    : RowListModel(parent), m_store(store)
{
    connect(&store, &WindowStore::goalsChanged, this, &MoveTargetModel::update);
    connect(&store, &WindowStore::languageChanged, this, &MoveTargetModel::update);
    update();
}

QVariant MoveTargetModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const WindowMoveTarget& row = rows().at(index.row());
    switch (role) {
    case columnIDRole:
        return columnText(row.goalID);
    case titleRole:
        return singleLine(row.title);
    case accentRole:
        return rawValue(row.accent);
    case isUnassignedRole:
        return !row.goalID.has_value();
    default:
        return {};
    }
}

QHash<int, QByteArray> MoveTargetModel::roleNames() const
{
    return {{columnIDRole, "columnID"},
            {titleRole, "title"},
            {accentRole, "accent"},
            {isUnassignedRole, "isUnassigned"}};
}

void MoveTargetModel::update()
{
    QList<WindowMoveTarget> targets;
    targets.reserve(m_store.goals().size() + 1);
    for (const Goal& goal : m_store.goals())
        targets.append({goal.id, goal.title, goal.accent});
    targets.append({std::nullopt, KelpaCopy::text(CopyKey::Unsorted, m_store.language()), {}});
    setRows(targets);
}

} // namespace kelpa
