// The targets of the board in the order of their layout, which the arrow keys follow too: the list
// of all todos, the unassigned column, the visible goals, and last the card that creates another
// goal.
#pragma once

#include "navigation/BoardNavigationState.h"
#include "views/board/BoardColumnModel.h"

#include <QAbstractListModel>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Follows the columns. Main thread. Has the roles of the columns, and "kind": "unifiedTodos",
/// "unassigned", "goal" or "addGoal". The rows of the first and the last have no other.
class BoardTargetModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

public:
    /// `columns` outlives the model.
    explicit BoardTargetModel(const BoardColumnModel& columns, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The row of a target; -1 for no target and for a goal that is hidden.
    int rowOf(const TargetSelection& target) const;
    /// The row of a column; -1 for one that does not show.
    Q_INVOKABLE int rowOfColumn(const QString& columnID) const;

private:
    const BoardColumnModel& m_columns;
};

} // namespace kelpa
