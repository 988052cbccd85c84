// A pass of the waterfall: gives items to the rows in the visible range, applies the geometry to
// them, and takes items back from rows outside. A new item may be higher or lower than assumed,
// which moves other rows into or out of the range; the pass repeats until nothing changes.
#include "views/scene/ReadingOrder.h"
#include "views/scene/WaterfallView.h"

#include <QQuickWindow>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kelpa {

namespace {

/// Items whose heights depend on their places might never come to rest; beyond this many rounds
/// they wait for the next frame.
constexpr int maximumRounds = 20;

} // namespace

void WaterfallView::layOut()
{
    if (!isComponentComplete() || m_isLayingOut || !canLayOut())
        return;
    m_isLayingOut = true;
    const std::size_t countBefore = m_rows.size();
    bool isChanged = true;
    for (int round = 0; isChanged && round < maximumRounds; ++round) {
        updateGeometry();
        showRowsInMotion();
        applyGeometry();
        grantHeights();
        // A granted height may be the least that its item has from now on: the next round has the
        // places.
        isChanged = !m_geometry.isSettled() || showVisibleRows() || !m_geometry.isSettled();
    }
    releaseHiddenRows();
    stackInRowOrder();
    m_rows.endPass();
    if (m_visibleFrom < m_visibleTo)
        m_isFirstPass = false;
    m_isLayingOut = false;
    if (!m_geometry.isSettled())
        polish();
    if (m_rows.size() != countBefore)
        Q_EMIT itemCountChanged();
    reportShownItems();
}

bool WaterfallView::canLayOut() const
{
    return m_geometry.layout().fits(m_geometry.width());
}

void WaterfallView::updateGeometry()
{
    m_changes.append(m_geometry.settle());
    setImplicitHeight(m_geometry.height());
}

WaterfallView::Transition WaterfallView::transition() const
{
    if (m_isFirstPass || m_motionTime <= 0 || m_motion.isRestless())
        return Transition::immediate;
    // Before its window is on the screen, nobody has seen an item in its place.
    const bool isSeen = isVisible() && window() != nullptr && window()->isExposed();
    if (!isSeen)
        return Transition::immediate;
    return std::ranges::any_of(m_rows, &WaterfallRow::isRestless) ? Transition::immediate
                                                                  : Transition::animated;
}

/// Rows that move into or out of the visible range are seen on their way.
void WaterfallView::showRowsInMotion()
{
    const bool isAnimated = transition() == Transition::animated;
    for (const WaterfallGeometry::Change& change : std::exchange(m_changes, {})) {
        const auto row = static_cast<int>(change.index);
        if (!isAnimated || change.before.isNull() || row >= m_geometry.count() ||
            itemAtRow(row) != nullptr)
            continue;
        if (isInVisibleRange(change.before) || isInVisibleRange(m_geometry.frame(row)))
            show(row, change.before.topLeft(), false);
    }
}

void WaterfallView::applyGeometry()
{
    const bool isAnimated = transition() == Transition::animated;
    const bool hasFixedHeight = m_geometry.layout().fixedItemHeight.has_value();
    bool hasMoved = false;
    for (WaterfallRow& each : m_rows) {
        const QRectF frame = itemFrame(each.row);
        each.item->setWidth(frame.width());
        if (hasFixedHeight)
            each.item->setHeight(frame.height());
        if (each.to == frame.topLeft())
            continue;
        each.to = frame.topLeft();
        hasMoved = hasMoved || !each.isNew;
        if (!isAnimated || each.isNew)
            each.item->setPosition(each.to);
    }
    // Rows of other lists also move where one of them expands, at the person's own pace.
    if (hasMoved && m_motionTime > 0 && hasFixedHeight)
        m_motion.noteChange(m_motionTime, m_patience);
    if (!isAnimated)
        m_motion.finish();
    else if (hasMoved)
        m_motion.restart(m_motionTime);
}

/// A height that rows have while the view itself changes its size is there at once, like their
/// places.
void WaterfallView::grantHeights()
{
    if (m_geometry.layout().fixedItemHeight)
        return;
    using Grant = WaterfallDelegateAttached::Grant;
    for (const WaterfallRow& each : m_rows) {
        const double height = m_geometry.itemHeight(each.row);
        if (each.attached == nullptr || each.attached->grantedHeight() == height)
            continue;
        const bool isEased = !each.isNew && transition() == Transition::animated;
        each.attached->grant(height, isEased ? Grant::eased : Grant::immediate);
    }
}

/// True when a row received an item.
bool WaterfallView::showVisibleRows()
{
    QList<qsizetype> wanted = m_geometry.between(m_visibleFrom, m_visibleTo);
    if (m_pinnedRow >= 0 && m_pinnedRow < m_geometry.count())
        wanted.append(m_pinnedRow);
    const std::size_t countBefore = m_rows.size();
    for (const qsizetype index : std::as_const(wanted)) {
        const auto row = static_cast<int>(index);
        if (itemAtRow(row) == nullptr)
            show(row, itemFrame(row).topLeft(), true);
    }
    return m_rows.size() > countBefore;
}

void WaterfallView::releaseHiddenRows()
{
    m_rows.keepIf([this](const WaterfallRow& each) {
        return isInVisibleRange(m_geometry.frame(each.row)) ||
               // Still on its way through the range.
               isInVisibleRange({each.item->position(), each.item->size()}) || mustKeepItem(each);
    });
}

/// An item that the keyboard or the pointer is in stays with its row.
bool WaterfallView::mustKeepItem(const WaterfallRow& each) const
{
    const QQuickWindow* const scene = window();
    return each.row == m_pinnedRow || each.isPinned() ||
           (scene != nullptr &&
            (each.holds(scene->activeFocusItem()) || each.holds(scene->mouseGrabberItem())));
}

bool WaterfallView::isInVisibleRange(const QRectF& rect) const
{
    return rect.top() < m_visibleTo && rect.bottom() > m_visibleFrom;
}

/// Columns share the width in fractions of a point; items have their edges on whole pixels, so that
/// lines are sharp.
QRectF WaterfallView::itemFrame(int row) const
{
    const double ratio = window() != nullptr ? window()->effectiveDevicePixelRatio() : 1;
    const auto onPixel = [ratio](double edge) { return std::round(edge * ratio) / ratio; };
    const QRectF frame = m_geometry.frame(row);
    const double left = onPixel(frame.left());
    return {left, onPixel(frame.top()), onPixel(frame.right()) - left, frame.height()};
}

void WaterfallView::show(int row, QPointF position, bool isNew)
{
    const WaterfallDelegate* const delegate = WaterfallDelegate::forRow(m_delegates, *m_model, row);
    if (delegate == nullptr)
        return;
    const WaterfallRow* const added =
        m_rows.add(*delegate, *m_model, row, itemFrame(row).width(), position, isNew);
    if (added == nullptr)
        return;
    QQuickItem* const item = added->item;
    if (added->attached != nullptr) {
        connect(added->attached, &WaterfallDelegateAttached::isPinnedChanged, this,
                &QQuickItem::polish);
        connect(added->attached, &WaterfallDelegateAttached::heightsChanged, this,
                [this, item] { updateRowHeight(*item); });
    }
    m_shownItems.append(item);
    if (m_geometry.layout().fixedItemHeight) {
        item->setHeight(m_geometry.itemHeight(row));
        return;
    }
    connect(item, &QQuickItem::implicitHeightChanged, this,
            [this, item] { updateRowHeight(*item); });
    updateRowHeight(*item);
}

void WaterfallView::updateRowHeight(QQuickItem& item)
{
    const WaterfallRow* const row = m_rows.find(item);
    if (row == nullptr)
        return;
    const double height = item.implicitHeight();
    const WaterfallDelegateAttached* const attached = row->attached;
    if (attached != nullptr && attached->restHeight() > 0)
        m_geometry.setHeights(row->row, {attached->restHeight(), height, attached->fullHeight()});
    else
        m_geometry.setHeight(row->row, height);
    if (!m_geometry.isSettled() && !m_isLayingOut)
        invalidateLayout();
}

void WaterfallView::stackInRowOrder()
{
    QList<QQuickItem*> items;
    items.reserve(static_cast<qsizetype>(m_rows.size()));
    for (const WaterfallRow& each : m_rows)
        items.append(each.item);
    stackSiblings(items);
}

void WaterfallView::reportShownItems()
{
    for (const QPointer<QQuickItem>& item : std::exchange(m_shownItems, {})) {
        if (item != nullptr)
            Q_EMIT itemShown(item);
    }
}

} // namespace kelpa
