// The rows of a virtualised waterfall that have items at present, in their order; renumbered as
// rows of the model are inserted, removed and moved. WaterfallViewLayout.cpp decides which rows
// have items.
#pragma once

#include "views/scene/WaterfallDelegate.h"
#include "views/scene/WaterfallItemPool.h"

#include <QPersistentModelIndex>
#include <QPointF>
#include <QQuickItem>

#include <concepts>
#include <utility>
#include <vector>

namespace kelpa {

/// A row that has an item. Positions in points, in the view's coordinates.
struct WaterfallRow
{
    int row = 0;
    /// Tells the model that the row is in use.
    QPersistentModelIndex index;
    QQuickItem* item = nullptr;
    const WaterfallDelegate* delegate = nullptr;
    /// Null for an item that declares none.
    WaterfallDelegateAttached* attached = nullptr;
    /// Where the item's last motion began; see WaterfallMotion.
    QPointF from;
    /// The position of the item when nothing moves.
    QPointF to;
    /// Has received its item during this pass, so nobody has seen the item anywhere else.
    bool isNew = false;

    /// Whether `other` is the row's item or inside it; false for null.
    bool holds(const QQuickItem* other) const;
    bool isPinned() const { return attached != nullptr && attached->isPinned(); }
    bool isRestless() const { return attached != nullptr && attached->isRestless(); }
};

/// Main thread. Connections from an item and from what it attaches to the view end when its row
/// loses the item.
class WaterfallRows
{
public:
    /// `view` is the parent of the items and outlives the list.
    explicit WaterfallRows(QQuickItem& view) : m_view(view), m_pool(view) {}
    ~WaterfallRows();
    Q_DISABLE_COPY_MOVE(WaterfallRows)

    auto begin() { return m_rows.begin(); }
    auto end() { return m_rows.end(); }
    auto begin() const { return m_rows.begin(); }
    auto end() const { return m_rows.end(); }
    std::size_t size() const { return m_rows.size(); }

    /// Null for a row without an item. Valid until a row receives or loses an item.
    const WaterfallRow* find(int row) const;
    /// Null where `item` is not itself the item of a row.
    const WaterfallRow* find(const QQuickItem& item) const;
    /// The row whose item is `item` or holds it; null for none, as for null.
    const WaterfallRow* rowHolding(const QQuickItem* item) const;

    /// Gives a row that has no item one of the given width at `position`; null where none can be
    /// created. Valid as long as what `find` returns.
    const WaterfallRow* add(const WaterfallDelegate& delegate, const QAbstractItemModel& model,
                            int row, double width, QPointF position, bool isNew);
    /// Pools the items of all rows for which `isWanted` is false.
    template <std::predicate<const WaterfallRow&> Predicate>
    void keepIf(const Predicate& isWanted);
    void clear();
    /// No row is new any more.
    void endPass();

    /// The model has inserted, removed or moved rows. `to` is the row of the first moved one
    /// afterwards.
    void rowsInserted(int first, int count);
    /// An item for which `isInUse` is true is not pooled but deleted: it may be handling the very
    /// event that removed its row.
    template <std::predicate<const WaterfallRow&> Predicate>
    void rowsRemoved(int first, int last, const Predicate& isInUse);
    void rowsMoved(int first, int last, int to);

private:
    static void renumber(WaterfallRow& each, int row);
    void disconnectFromView(const WaterfallRow& each) const;
    void release(const WaterfallRow& each);
    void destroy(const WaterfallRow& each);

    QQuickItem& m_view;
    WaterfallItemPool m_pool;
    /// By ascending rows.
    std::vector<WaterfallRow> m_rows;
};

template <std::predicate<const WaterfallRow&> Predicate>
void WaterfallRows::keepIf(const Predicate& isWanted)
{
    std::vector<WaterfallRow> remaining;
    remaining.reserve(m_rows.size());
    for (const WaterfallRow& each : std::exchange(m_rows, {})) {
        if (isWanted(each))
            remaining.push_back(each);
        else
            release(each);
    }
    m_rows = std::move(remaining);
}

template <std::predicate<const WaterfallRow&> Predicate>
void WaterfallRows::rowsRemoved(int first, int last, const Predicate& isInUse)
{
    std::vector<WaterfallRow> remaining;
    remaining.reserve(m_rows.size());
    for (WaterfallRow each : std::exchange(m_rows, {})) {
        if (each.row >= first && each.row <= last) {
            if (isInUse(each))
                destroy(each);
            else
                release(each);
            continue;
        }
        if (each.row > last)
            renumber(each, each.row - (last - first + 1));
        remaining.push_back(each);
    }
    m_rows = std::move(remaining);
}

} // namespace kelpa
