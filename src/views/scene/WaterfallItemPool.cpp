#include "views/scene/WaterfallItemPool.h"

namespace kelpa {

namespace {

/// The limit for one delegate: as many as two screens of cards that scroll past quickly.
constexpr qsizetype maximumPooledItems = 12;

} // namespace

QQuickItem* WaterfallItemPool::take(const WaterfallDelegate& delegate,
                                    const QAbstractItemModel& model, int row, double width)
{
    QList<QPointer<QQuickItem>>& pooled = m_pooled[&delegate];
    while (!pooled.isEmpty()) {
        QQuickItem* const item = pooled.takeLast();
        if (item == nullptr)
            continue;
        item->setWidth(width);
        WaterfallDelegate::writeValues(*item, model, row);
        item->setParentItem(&m_view);
        return item;
    }
    return delegate.createItem(m_view, model, row, width);
}

void WaterfallItemPool::release(const WaterfallDelegate& delegate, QQuickItem& item)
{
    QList<QPointer<QQuickItem>>& pooled = m_pooled[&delegate];
    if (pooled.size() >= maximumPooledItems) {
        destroy(item);
        return;
    }
    // Not just hidden: assistive programs would still find it.
    item.setParentItem(nullptr);
    pooled.append(&item);
}

void WaterfallItemPool::destroy(QQuickItem& item)
{
    item.setParentItem(nullptr);
    item.deleteLater();
}

} // namespace kelpa
