// Items that no row needs any more are pooled, so that a row that scrolls into view takes one of
// them instead of creating its own.
#pragma once

#include "views/scene/WaterfallDelegate.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QList>
#include <QPointer>
#include <QQuickItem>

namespace kelpa {

/// Main thread. Pooled items are outside the scene and belong to the view.
class WaterfallItemPool
{
public:
    /// `view` becomes the parent of the items and outlives the pool.
    explicit WaterfallItemPool(QQuickItem& view) : m_view(view) {}

    /// A pooled item of `delegate`, or a new one, `width` points wide, with the values of the row.
    /// Null, with a warning, where none can be created.
    QQuickItem* take(const WaterfallDelegate& delegate, const QAbstractItemModel& model, int row,
                     double width);
    /// Takes the item out of the scene, and pools it unless there are enough of its delegate.
    void release(const WaterfallDelegate& delegate, QQuickItem& item);
    /// Takes the item out of the scene and deletes it from the event loop: it may be the one whose
    /// signal is being handled.
    static void destroy(QQuickItem& item);

private:
    QQuickItem& m_view;
    QHash<const WaterfallDelegate*, QList<QPointer<QQuickItem>>> m_pooled;
};

} // namespace kelpa
