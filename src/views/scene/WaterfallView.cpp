#include "views/scene/WaterfallView.h"

#include <algorithm>

namespace kelpa {

WaterfallView::WaterfallView(QQuickItem* parent)
    : QQuickItem(parent), m_rows(*this), m_motion(m_rows)
{
    connect(&m_motion, &WaterfallMotion::isRunningChanged, this, [this] {
        // Items that only passed through the visible range can go.
        polish();
        Q_EMIT isMovingChanged();
    });
    connect(&m_motion, &WaterfallMotion::isRestlessChanged, this,
            &WaterfallView::isRestlessChanged);
}

void WaterfallView::setModelValue(const QVariant& model)
{
    setModel(qobject_cast<QAbstractItemModel*>(model.value<QObject*>()));
}

void WaterfallView::setModel(QAbstractItemModel* model)
{
    if (m_model == model)
        return;
    if (m_model != nullptr)
        m_model->disconnect(this);
    m_model = model;
    connectModel();
    resetRows();
    Q_EMIT modelChanged();
}

QQmlListProperty<WaterfallDelegate> WaterfallView::delegates()
{
    return {this, &m_delegates};
}

void WaterfallView::setLayout(const WaterfallLayout& layout)
{
    if (layout == m_geometry.layout())
        return;
    m_geometry.setLayout(layout);
    invalidateLayout();
    Q_EMIT layoutChanged();
}

void WaterfallView::setMinimumColumnWidth(double width)
{
    WaterfallLayout layout = m_geometry.layout();
    layout.minimumColumnWidth = std::max(width, 1.0);
    setLayout(layout);
}

void WaterfallView::setSpacing(double spacing)
{
    WaterfallLayout layout = m_geometry.layout();
    layout.spacing = std::max(spacing, 0.0);
    setLayout(layout);
}

void WaterfallView::setFixedColumnCount(int count)
{
    WaterfallLayout layout = m_geometry.layout();
    layout.fixedColumnCount = count > 0 ? std::optional(count) : std::nullopt;
    setLayout(layout);
}

void WaterfallView::setFixedItemHeight(double height)
{
    WaterfallLayout layout = m_geometry.layout();
    layout.fixedItemHeight = height > 0 ? std::optional(height) : std::nullopt;
    setLayout(layout);
}

void WaterfallView::setRoom(double room)
{
    if (m_geometry.room() == room)
        return;
    m_geometry.setRoom(room);
    invalidateLayout();
    Q_EMIT layoutChanged();
}

void WaterfallView::setVisibleFrom(double top)
{
    if (m_visibleFrom == top)
        return;
    m_visibleFrom = top;
    polish();
    Q_EMIT visibleRangeChanged();
}

void WaterfallView::setVisibleTo(double bottom)
{
    if (m_visibleTo == bottom)
        return;
    m_visibleTo = bottom;
    polish();
    Q_EMIT visibleRangeChanged();
}

void WaterfallView::setPinnedRow(int row)
{
    if (m_pinnedRow == row)
        return;
    m_pinnedRow = row;
    polish();
    Q_EMIT pinnedRowChanged();
}

QRectF WaterfallView::rowRect(int row)
{
    if (row < 0 || row >= m_geometry.count() || !canLayOut())
        return {};
    updateGeometry();
    return itemFrame(row);
}

QQuickItem* WaterfallView::itemAtRow(int row) const
{
    const WaterfallRow* const found = m_rows.find(row);
    return found != nullptr ? found->item : nullptr;
}

int WaterfallView::rowOf(const QQuickItem* item) const
{
    const WaterfallRow* const found = m_rows.rowHolding(item);
    return found != nullptr ? found->row : -1;
}

void WaterfallView::updatePolish()
{
    layOut();
}

void WaterfallView::componentComplete()
{
    QQuickItem::componentComplete();
    m_geometry.setWidth(width());
    resetRows();
}

void WaterfallView::geometryChange(const QRectF& now, const QRectF& before)
{
    QQuickItem::geometryChange(now, before);
    if (now.width() == before.width())
        return;
    m_geometry.setWidth(now.width());
    // Cards keep up with the edge of the window.
    m_isFirstPass = true;
    invalidateLayout();
}

void WaterfallView::itemChange(ItemChange change, const ItemChangeData& value)
{
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange)
        polish();
    QQuickItem::itemChange(change, value);
}

void WaterfallView::invalidateLayout()
{
    // Known without a pass, so that the item that holds this view is laid out in the same frame.
    if (m_geometry.layout().fixedItemHeight)
        setImplicitHeight(m_geometry.height());
    polish();
}

} // namespace kelpa
