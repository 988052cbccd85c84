#include "views/scene/WaterfallRows.h"

#include <algorithm>

namespace kelpa {

bool WaterfallRow::holds(const QQuickItem* other) const
{
    return other != nullptr && (other == item || item->isAncestorOf(other));
}

WaterfallRows::~WaterfallRows()
{
    // The view deletes the items after this list; they then lose their parent, and report new
    // heights that no one can receive any more.
    for (const WaterfallRow& each : m_rows)
        disconnectFromView(each);
}

const WaterfallRow* WaterfallRows::find(int row) const
{
    const auto found = std::ranges::lower_bound(m_rows, row, {}, &WaterfallRow::row);
    return found != m_rows.end() && found->row == row ? &*found : nullptr;
}

const WaterfallRow* WaterfallRows::find(const QQuickItem& item) const
{
    const auto found = std::ranges::find(m_rows, &item, &WaterfallRow::item);
    return found != m_rows.end() ? &*found : nullptr;
}

const WaterfallRow* WaterfallRows::rowHolding(const QQuickItem* item) const
{
    const auto found =
        std::ranges::find_if(m_rows, [item](const WaterfallRow& each) { return each.holds(item); });
    return found != m_rows.end() ? &*found : nullptr;
}

const WaterfallRow* WaterfallRows::add(const WaterfallDelegate& delegate,
                                       const QAbstractItemModel& model, int row, double width,
                                       QPointF position, bool isNew)
{
    QQuickItem* const item = m_pool.take(delegate, model, row, width);
    if (item == nullptr)
        return nullptr;
    item->setPosition(position);
    const auto next = std::ranges::lower_bound(m_rows, row, {}, &WaterfallRow::row);
    return &*m_rows.insert(next, {row, model.index(row, 0), item, &delegate,
                                  WaterfallDelegate::attachedTo(*item), position, position, isNew});
}

void WaterfallRows::clear()
{
    keepIf([](const WaterfallRow&) { return false; });
}

void WaterfallRows::endPass()
{
    for (WaterfallRow& each : m_rows)
        each.isNew = false;
}

void WaterfallRows::rowsInserted(int first, int count)
{
    for (WaterfallRow& each : m_rows) {
        if (each.row >= first)
            renumber(each, each.row + count);
    }
}

void WaterfallRows::rowsMoved(int first, int last, int to)
{
    const int count = last - first + 1;
    for (WaterfallRow& each : m_rows) {
        const int row = each.row;
        if (row >= first && row <= last)
            renumber(each, to + row - first);
        else if (row > last && row < to + count)
            renumber(each, row - count);
        else if (row >= to && row < first)
            renumber(each, row + count);
    }
    std::ranges::sort(m_rows, {}, &WaterfallRow::row);
}

void WaterfallRows::renumber(WaterfallRow& each, int row)
{
    if (each.row == row)
        return;
    each.row = row;
    WaterfallDelegate::writeIndex(*each.item, row);
}

void WaterfallRows::disconnectFromView(const WaterfallRow& each) const
{
    each.item->disconnect(&m_view);
    if (each.attached != nullptr)
        each.attached->disconnect(&m_view);
}

void WaterfallRows::release(const WaterfallRow& each)
{
    disconnectFromView(each);
    m_pool.release(*each.delegate, *each.item);
}

void WaterfallRows::destroy(const WaterfallRow& each)
{
    disconnectFromView(each);
    WaterfallItemPool::destroy(*each.item);
}

} // namespace kelpa
