#include "layout/WaterfallGeometry.h"

#include <algorithm>
#include <cmath>

namespace kelpa {

namespace {

/// Items from one checkpoint to the next.
constexpr qsizetype checkpointInterval = 16;

bool isFlexible(const HeightRange& range)
{
    return range.atMost > range.atLeast;
}

} // namespace

WaterfallGeometry::WaterfallGeometry(const WaterfallLayout& layout) : m_layout(layout) {}

void WaterfallGeometry::setLayout(const WaterfallLayout& layout)
{
    if (m_layout == layout)
        return;
    const bool hadFixedHeight = hasFixedHeight();
    m_layout = layout;
    if (hadFixedHeight != hasFixedHeight()) {
        m_ranges.clear();
        m_flexibleCount = 0;
        m_heights.clear();
        m_frames.clear();
        if (!hasFixedHeight()) {
            m_ranges.resize(m_count);
            m_heights.resize(m_count);
            m_frames.resize(m_count);
        }
    }
    markDirty(0, m_count - 1);
}

void WaterfallGeometry::setWidth(double width)
{
    const double usable = std::isfinite(width) ? std::max(width, 1.0) : 1.0;
    if (m_width == usable)
        return;
    m_width = usable;
    markDirty(0, m_count - 1);
}

void WaterfallGeometry::insert(qsizetype first, qsizetype count, double height)
{
    Q_ASSERT(first >= 0 && first <= m_count && count >= 0);
    m_count += count;
    if (!hasFixedHeight()) {
        const double usable = WaterfallLayout::usableHeight(height);
        m_ranges.insert(first, count, {usable, usable, usable});
        m_heights.insert(first, count, usable);
        m_frames.insert(first, count, QRectF());
    }
    markDirty(first, m_count - 1);
}

void WaterfallGeometry::remove(qsizetype first, qsizetype count)
{
    Q_ASSERT(first >= 0 && count >= 0 && first + count <= m_count);
    m_count -= count;
    if (!hasFixedHeight()) {
        m_flexibleCount -=
            std::count_if(m_ranges.begin() + first, m_ranges.begin() + first + count, isFlexible);
        m_ranges.remove(first, count);
        m_heights.remove(first, count);
        m_frames.remove(first, count);
    }
    markDirty(first, m_count - 1);
}

void WaterfallGeometry::move(qsizetype from, qsizetype count, qsizetype to)
{
    Q_ASSERT(from >= 0 && from + count <= m_count && to >= 0 && to + count <= m_count);
    const qsizetype first = std::min(from, to);
    const qsizetype last = std::max(from, to) + count;
    if (!hasFixedHeight()) {
        const auto rotate = [&](auto& list) {
            const auto begin = list.begin();
            if (from < to)
                std::rotate(begin + from, begin + from + count, begin + last);
            else
                std::rotate(begin + to, begin + from, begin + from + count);
        };
        rotate(m_ranges);
        rotate(m_heights);
        rotate(m_frames);
    }
    markDirty(first, m_count - 1);
}

void WaterfallGeometry::setHeights(qsizetype index, const HeightRange& heights)
{
    if (hasFixedHeight())
        return;
    const double least = WaterfallLayout::usableHeight(heights.atLeast);
    const HeightRange range{WaterfallLayout::usableHeight(heights.atRest), least,
                            std::max(WaterfallLayout::usableHeight(heights.atMost), least)};
    if (m_ranges.at(index) == range)
        return;
    m_flexibleCount += (isFlexible(range) ? 1 : 0) - (isFlexible(m_ranges.at(index)) ? 1 : 0);
    m_ranges[index] = range;
    // The pass may choose more.
    m_heights[index] = range.atLeast;
    markDirty(index, index);
}

void WaterfallGeometry::setRoom(double room)
{
    if (m_room == room)
        return;
    m_room = room;
    if (m_flexibleCount > 0 && m_count > 0)
        markDirty(m_count - 1, m_count - 1);
}

void WaterfallGeometry::changeHeight(qsizetype index, double height)
{
    if (m_heights.at(index) == height)
        return;
    m_heights[index] = height;
    markDirty(index, index);
}

/// Any change may leave another choice.
void WaterfallGeometry::chooseHeights()
{
    const bool isSteady = m_flexibleCount > 0 && m_count <= maximumSteadyCount;
    if (!isSteady && !m_isSteady)
        return;
    m_isSteady = isSteady;
    const QList<double> heights =
        isSteady ? steadyHeights(m_layout, m_width, m_ranges, m_room) : QList<double>();
    for (qsizetype index = 0; index < m_count; ++index)
        changeHeight(index, isSteady ? heights.at(index) : m_ranges.at(index).atLeast);
}

double WaterfallGeometry::itemHeight(qsizetype index) const
{
    return m_layout.fixedItemHeight ? WaterfallLayout::usableHeight(*m_layout.fixedItemHeight)
                                    : m_heights.at(index);
}

void WaterfallGeometry::markDirty(qsizetype first, qsizetype last)
{
    const bool isFirst = isSettled();
    m_firstDirty = isFirst ? first : std::min(m_firstDirty, first);
    m_lastDirty = isFirst ? last : std::max(m_lastDirty, last);
    // Not empty even where the last items were removed: the total height has changed.
    m_lastDirty = std::max(m_lastDirty, m_firstDirty);
}

QList<WaterfallGeometry::Change> WaterfallGeometry::settle()
{
    if (isSettled())
        return {};
    if (!hasFixedHeight())
        chooseHeights();
    const qsizetype firstDirty = m_firstDirty;
    const qsizetype lastDirty = m_lastDirty;
    m_firstDirty = 0;
    m_lastDirty = -1;
    if (hasFixedHeight())
        return {};

    const int columns = m_layout.columnCount(m_width);
    const double columnWidth = WaterfallLayout::itemWidth(m_width, columns, m_layout.spacing);
    const qsizetype usedColumns = std::clamp<qsizetype>(m_count, 1, columns);
    qsizetype start = std::min(firstDirty / checkpointInterval, m_checkpoints.size() - 1);
    if (start < 0 || m_checkpoints.at(start).ends.size() != usedColumns)
        start = 0;
    Checkpoint columnsNow =
        start > 0 ? m_checkpoints.at(start)
                  : Checkpoint{QList<double>(usedColumns, 0.0), QList<qsizetype>(usedColumns, -1)};

    QList<Change> changes;
    qsizetype index = start * checkpointInterval;
    for (; index < m_count; ++index) {
        if (index % checkpointInterval == 0) {
            const qsizetype checkpoint = index / checkpointInterval;
            if (checkpoint >= m_checkpoints.size())
                m_checkpoints.append(columnsNow);
            else if (index > lastDirty && m_checkpoints.at(checkpoint) == columnsNow)
                break; // All following frames are unchanged.
            else
                m_checkpoints[checkpoint] = columnsNow;
        }
        // The shortest column; on a tie, the leftmost of them.
        double& end = *std::ranges::min_element(columnsNow.ends);
        const qsizetype column = &end - columnsNow.ends.constData();
        const QRectF frame(static_cast<double>(column) * (columnWidth + m_layout.spacing), end,
                           columnWidth, m_heights.at(index));
        ++m_visitCount;
        columnsNow.lowest[column] = index;
        if (m_frames.at(index) != frame || m_frames.at(index).isNull()) {
            changes.append({index, m_frames.at(index)});
            m_frames[index] = frame;
        }
        end += frame.height() + m_layout.spacing;
    }
    if (index == m_count) {
        m_checkpoints.resize((m_count + checkpointInterval - 1) / checkpointInterval);
        const double lowest = *std::ranges::max_element(columnsNow.ends);
        m_height = m_count > 0 ? std::max(lowest - m_layout.spacing, 0.0) : 0;
    }
    return changes;
}

QRectF WaterfallGeometry::frame(qsizetype index) const
{
    if (!hasFixedHeight())
        return m_frames.at(index);
    const int columns = m_layout.columnCount(m_width);
    const double columnWidth = WaterfallLayout::itemWidth(m_width, columns, m_layout.spacing);
    const double itemHeight = WaterfallLayout::usableHeight(*m_layout.fixedItemHeight);
    const qsizetype column = index % columns;
    const qsizetype row = index / columns;
    return {static_cast<double>(column) * (columnWidth + m_layout.spacing),
            static_cast<double>(row) * (itemHeight + m_layout.spacing), columnWidth, itemHeight};
}

double WaterfallGeometry::height() const
{
    if (!hasFixedHeight())
        return m_height;
    if (m_count == 0)
        return 0;
    const qsizetype columns = m_layout.columnCount(m_width);
    const qsizetype rows = (m_count + columns - 1) / columns;
    return static_cast<double>(rows) *
               (WaterfallLayout::usableHeight(*m_layout.fixedItemHeight) + m_layout.spacing) -
           m_layout.spacing;
}

qsizetype WaterfallGeometry::firstFrom(double top) const
{
    const auto found = std::ranges::lower_bound(m_frames, top, {}, [this](const QRectF& frame) {
        ++m_visitCount;
        return frame.top();
    });
    return found - m_frames.begin();
}

QList<qsizetype> WaterfallGeometry::lowestBefore(qsizetype index) const
{
    const qsizetype checkpoint = std::min(index / checkpointInterval, m_checkpoints.size() - 1);
    QList<qsizetype> lowest = m_checkpoints.at(checkpoint).lowest;
    const double step = m_frames.front().width() + m_layout.spacing;
    for (qsizetype before = checkpoint * checkpointInterval; before < index;
         ++before, ++m_visitCount)
        lowest[std::lround(m_frames.at(before).left() / step)] = before;
    lowest.removeAll(-1);
    std::ranges::sort(lowest);
    return lowest;
}

QList<qsizetype> WaterfallGeometry::between(double top, double bottom) const
{
    QList<qsizetype> result;
    if (!(top < bottom) || m_count == 0)
        return result;
    if (!hasFixedHeight()) {
        Q_ASSERT(isSettled());
        const qsizetype first = firstFrom(top);
        // Of the items that begin above the range, only the lowest of a column can reach into it.
        result = lowestBefore(first);
        result.removeIf([&](qsizetype index) { return m_frames.at(index).bottom() <= top; });
        for (qsizetype index = first; index < m_count; ++index, ++m_visitCount) {
            const QRectF& frame = m_frames.at(index);
            if (frame.top() >= bottom)
                break;
            // An item without height may lie on the upper edge.
            if (frame.bottom() > top)
                result.append(index);
        }
        return result;
    }
    const qsizetype columns = m_layout.columnCount(m_width);
    const double step = WaterfallLayout::usableHeight(*m_layout.fixedItemHeight) + m_layout.spacing;
    if (!(step > 0))
        return result;
    const qsizetype rows = (m_count + columns - 1) / columns;
    const auto bounded = [rows](double row) {
        return static_cast<qsizetype>(std::clamp(row, 0.0, static_cast<double>(rows)));
    };
    const qsizetype firstRow = bounded(std::floor(top / step));
    const qsizetype endRow = bounded(std::ceil(bottom / step));
    const qsizetype end = std::min(endRow * columns, m_count);
    for (qsizetype index = firstRow * columns; index < end; ++index)
        result.append(index);
    return result;
}

} // namespace kelpa
