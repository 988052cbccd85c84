// The columns to which a window can be moved: every goal in board order, then the unassigned one.
#pragma once

#include "model/GoalAccent.h"
#include "model/Identifiers.h"
#include "views/models/RowListModel.h"

#include <QUuid>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kelpa {

class WindowStore;

struct WindowMoveTarget
{
    /// Absent for the unassigned column.
    std::optional<GoalID> goalID;
    QString title;
    GoalAccent accent = GoalAccent::blue;

    QUuid key() const { return goalID ? goalID->value : QUuid(); }

    friend bool operator==(const WindowMoveTarget&, const WindowMoveTarget&) = default;
};

/// Follows a store. Main thread.
class MoveTargetModel : public RowListModel<WindowMoveTarget>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

public:
    /// `store` outlives the model.
    explicit MoveTargetModel(const WindowStore& store, QObject* parent = nullptr);

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    void update();

    const WindowStore& m_store;
};

} // namespace kelpa
