// The entries of the rail beside the board: one for each visible goal.
#pragma once

#include "model/Goal.h"
#include "views/models/RowListModel.h"

#include <QUuid>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class WindowStore;

/// The number of the goal's open todos in parentheses and, without a space, its title in a line.
QString breadcrumbTitle(const Goal& goal);

struct BreadcrumbRow
{
    GoalID goalID;
    QString title;
    GoalAccent accent = GoalAccent::blue;
    bool isSelected = false;

    QUuid key() const { return goalID.value; }

    friend bool operator==(const BreadcrumbRow&, const BreadcrumbRow&) = default;
};

/// Follows a store. Main thread.
class BreadcrumbModel : public RowListModel<BreadcrumbRow>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    /// `store` outlives the model.
    explicit BreadcrumbModel(const WindowStore& store, QObject* parent = nullptr);

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    int count() const { return rowCount(); }
    /// The row of the selected goal; -1 while no visible goal is selected.
    int selectedRow() const;

Q_SIGNALS:
    void countChanged();

private:
    void update();

    const WindowStore& m_store;
};

} // namespace kelpa
