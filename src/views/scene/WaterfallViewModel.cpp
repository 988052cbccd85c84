// How the view follows its model: the geometry and the rows with items are renumbered at once, the
// next pass gives and takes items.
#include "views/scene/WaterfallView.h"

#include <QQuickWindow>

namespace kelpa {

void WaterfallView::connectModel()
{
    if (m_model == nullptr)
        return;
    using Model = QAbstractItemModel;
    connect(m_model, &Model::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) { insertRows(first, last); });
    connect(m_model, &Model::rowsRemoved, this,
            [this](const QModelIndex&, int first, int last) { removeRows(first, last); });
    connect(m_model, &Model::rowsMoved, this,
            [this](const QModelIndex&, int first, int last, const QModelIndex&, int before) {
                moveRows(first, last, before);
            });
    connect(m_model, &Model::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                changeRows(first.row(), last.row());
            });
    connect(m_model, &Model::modelReset, this, &WaterfallView::resetRows);
    connect(m_model, &Model::layoutChanged, this, &WaterfallView::resetRows);
    connect(m_model, &QObject::destroyed, this, &WaterfallView::resetRows);
}

void WaterfallView::resetRows()
{
    if (!isComponentComplete())
        return;
    const bool hadItems = m_rows.size() > 0;
    m_rows.clear();
    m_changes.clear();
    m_geometry.remove(0, m_geometry.count());
    if (m_model != nullptr)
        m_geometry.insert(0, m_model->rowCount(), m_assumedHeight);
    m_isFirstPass = true;
    invalidateLayout();
    if (hadItems)
        Q_EMIT itemCountChanged();
}

void WaterfallView::insertRows(int first, int last)
{
    if (!isComponentComplete())
        return;
    const int count = last - first + 1;
    m_geometry.insert(first, count, m_assumedHeight);
    m_rows.rowsInserted(first, count);
    // They name rows by their former numbers.
    m_changes.clear();
    invalidateLayout();
}

void WaterfallView::reportFocusedRow(int first, int last)
{
    const QQuickItem* const focused = window() != nullptr ? window()->activeFocusItem() : nullptr;
    const WaterfallRow* const found = m_rows.rowHolding(focused);
    if (found != nullptr && found->row >= first && found->row <= last)
        Q_EMIT focusedRowRemoved(found->row, found->item);
}

void WaterfallView::removeRows(int first, int last)
{
    if (!isComponentComplete())
        return;
    reportFocusedRow(first, last);
    m_geometry.remove(first, last - first + 1);
    const std::size_t countBefore = m_rows.size();
    m_rows.rowsRemoved(first, last,
                       [this](const WaterfallRow& each) { return mustKeepItem(each); });
    m_changes.clear();
    invalidateLayout();
    if (m_rows.size() != countBefore)
        Q_EMIT itemCountChanged();
}

void WaterfallView::moveRows(int first, int last, int before)
{
    if (!isComponentComplete())
        return;
    const int count = last - first + 1;
    const int to = before > first ? before - count : before;
    m_geometry.move(first, count, to);
    m_rows.rowsMoved(first, last, to);
    m_changes.clear();
    invalidateLayout();
}

void WaterfallView::changeRows(int first, int last)
{
    for (const WaterfallRow& each : m_rows) {
        if (each.row >= first && each.row <= last)
            WaterfallDelegate::writeValues(*each.item, *m_model, each.row);
    }
}

} // namespace kelpa
