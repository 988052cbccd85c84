// How the view follows its model.
#include "views/scene/WaterfallView.h"

#include <QQuickWindow>

#include <algorithm>

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
    const bool hadItems = !m_shown.empty();
    for (const Shown& each : std::exchange(m_shown, {}))
        giveBack(each);
    m_changes.clear();
    m_geometry.remove(0, m_geometry.count());
    if (m_model != nullptr)
        m_geometry.insert(0, m_model->rowCount(), m_assumedHeight);
    m_isFresh = true;
    markSoiled();
    if (hadItems)
        Q_EMIT itemCountChanged();
}

void WaterfallView::insertRows(int first, int last)
{
    if (!isComponentComplete())
        return;
    const int count = last - first + 1;
    m_geometry.insert(first, count, m_assumedHeight);
    for (Shown& each : m_shown) {
        if (each.row < first)
            continue;
        each.row += count;
        WaterfallItems::writeIndex(*each.item, each.row);
    }
    // They name rows as they were.
    m_changes.clear();
    markSoiled();
}

void WaterfallView::announceFocusedRow(int first, int last)
{
    const QQuickWindow* const where = window();
    const QQuickItem* const focused = where != nullptr ? where->activeFocusItem() : nullptr;
    const auto found = std::ranges::find_if(
        m_shown, [this, focused](const Shown& each) { return holds(each, focused); });
    if (found != m_shown.end() && found->row >= first && found->row <= last)
        Q_EMIT focusedRowRemoved(found->row, found->item);
}

void WaterfallView::removeRows(int first, int last)
{
    if (!isComponentComplete())
        return;
    announceFocusedRow(first, last);
    const int count = last - first + 1;
    m_geometry.remove(first, count);
    std::vector<Shown> kept;
    kept.reserve(m_shown.size());
    const std::size_t countBefore = m_shown.size();
    for (Shown each : std::exchange(m_shown, {})) {
        if (each.row >= first && each.row <= last) {
            each.item->disconnect(this);
            // It may be in the middle of what removed its row.
            if (mustStay(each))
                WaterfallItems::destroy(*each.item);
            else
                giveBack(each);
            continue;
        }
        if (each.row > last) {
            each.row -= count;
            WaterfallItems::writeIndex(*each.item, each.row);
        }
        kept.push_back(each);
    }
    m_shown = std::move(kept);
    m_changes.clear();
    markSoiled();
    if (m_shown.size() != countBefore)
        Q_EMIT itemCountChanged();
}

void WaterfallView::moveRows(int first, int last, int before)
{
    if (!isComponentComplete())
        return;
    const int count = last - first + 1;
    const int to = before > first ? before - count : before;
    m_geometry.move(first, count, to);
    for (Shown& each : m_shown) {
        const int row = each.row;
        if (row >= first && row <= last)
            each.row = to + row - first;
        else if (row > last && row < to + count)
            each.row -= count;
        else if (row >= to && row < first)
            each.row += count;
        if (each.row != row)
            WaterfallItems::writeIndex(*each.item, each.row);
    }
    std::ranges::sort(m_shown, {}, &Shown::row);
    m_changes.clear();
    markSoiled();
}

void WaterfallView::changeRows(int first, int last)
{
    for (const Shown& each : m_shown) {
        if (each.row >= first && each.row <= last)
            WaterfallItems::write(*each.item, *m_model, each.row);
    }
}

} // namespace kelpa
