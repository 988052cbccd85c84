// The items that a waterfall shows: made from a model's rows, and kept for other rows when theirs
// are out of sight.
#pragma once

#include "views/scene/WaterfallDelegate.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QList>
#include <QPointer>
#include <QQuickItem>

namespace kelpa {

/// Main thread. Owns its items.
class WaterfallItems
{
public:
    /// The items become children of `owner`, which outlives them.
    explicit WaterfallItems(QQuickItem& owner) : m_owner(owner) {}

    /// An item of `delegate`, `width` points wide, with the values of the row. Null, with a
    /// warning, where it cannot be made.
    QQuickItem* take(const WaterfallDelegate& delegate, const QAbstractItemModel& model, int row,
                     double width);
    /// Writes the values of the row into the item.
    static void write(QQuickItem& item, const QAbstractItemModel& model, int row);
    static void writeIndex(QQuickItem& item, int row);
    /// The item leaves the scene and waits for another row.
    void giveBack(const WaterfallDelegate& delegate, QQuickItem& item);
    /// The item leaves the scene for good; it may be the one that is just being heard.
    static void destroy(QQuickItem& item);

private:
    QQuickItem* make(const WaterfallDelegate& delegate, const QAbstractItemModel& model, int row,
                     double width);

    QQuickItem& m_owner;
    /// By their delegates, none of them in the scene.
    QHash<const WaterfallDelegate*, QList<QPointer<QQuickItem>>> m_waiting;
};

} // namespace kelpa
