// An incremental waterfall layout: items are inserted, removed, moved and resized, and a pass lays
// out only those that this can have displaced. Pure geometry in points.
#pragma once

#include "layout/SteadyHeights.h"
#include "layout/WaterfallLayout.h"

#include <QList>
#include <QRectF>

namespace kelpa {

/// Until `settle`, frames are those of the last pass, and items inserted since then have none.
class WaterfallGeometry
{
public:
    /// An item whose frame has changed; `before` is null for one that had none.
    struct Change
    {
        qsizetype index = 0;
        QRectF before;

        friend bool operator==(const Change&, const Change&) = default;
    };

    explicit WaterfallGeometry(const WaterfallLayout& layout);

    const WaterfallLayout& layout() const { return m_layout; }
    /// The next pass lays out all items.
    void setLayout(const WaterfallLayout& layout);
    double width() const { return m_width; }
    void setWidth(double width);

    qsizetype count() const { return m_count; }
    /// An index or a count beyond the items is a programming error.
    void insert(qsizetype first, qsizetype count, double height);
    void remove(qsizetype first, qsizetype count);
    /// Moves the `count` items at `from` so that they are then at `to`.
    void move(qsizetype from, qsizetype count, qsizetype to);
    /// Has no effect with a fixed item height.
    void setHeight(qsizetype index, double height) { setHeights(index, {height, height, height}); }
    /// The pass chooses the height of the item, as `steadyHeights` does; among more than
    /// `maximumSteadyCount` items, it has the least.
    void setHeights(qsizetype index, const HeightRange& heights);
    static constexpr qsizetype maximumSteadyCount = 200;
    /// The height that can be filled without scrolling.
    double room() const { return m_room; }
    void setRoom(double room);
    /// As of the last pass.
    double itemHeight(qsizetype index) const;

    /// Runs a pass and returns the items whose frames have changed, in their order; always none
    /// with a fixed item height, since frames are then computed on demand and not stored.
    QList<Change> settle();
    /// Whether nothing has changed since the last pass.
    bool isSettled() const { return m_lastDirty < m_firstDirty; }
    /// The frame as of the last pass; null for an item that has not been placed.
    QRectF frame(qsizetype index) const;
    /// Of all items, as in `WaterfallPlacement`.
    double height() const;
    /// The items that intersect the range from `top` to `bottom`, in their order. Requires
    /// `isSettled`, except with a fixed item height.
    QList<qsizetype> between(double top, double bottom) const;
    /// The number of frames that `settle` and `between` have visited so far: their cost.
    qsizetype visitCount() const { return m_visitCount; }

private:
    /// The state of a pass before it lays out an item, from which a later pass can resume.
    struct Checkpoint
    {
        /// The bottom of each column, including the spacing below it.
        QList<double> ends;
        /// The lowest item of each column; -1 for none.
        QList<qsizetype> lowest;

        friend bool operator==(const Checkpoint&, const Checkpoint&) = default;
    };

    bool hasFixedHeight() const { return m_layout.fixedItemHeight.has_value(); }
    void chooseHeights();
    void changeHeight(qsizetype index, double height);
    /// Extends the range of dirty items.
    void markDirty(qsizetype first, qsizetype last);
    /// The first item whose top is at `top` or below. Items are sorted by their tops, since each is
    /// appended to the shortest column.
    qsizetype firstFrom(double top) const;
    /// The lowest item of each column among those before `index`, in their order.
    QList<qsizetype> lowestBefore(qsizetype index) const;

    WaterfallLayout m_layout;
    double m_width = 1;
    qsizetype m_count = 0;
    /// All are empty with a fixed item height.
    QList<HeightRange> m_ranges;
    QList<double> m_heights;
    QList<QRectF> m_frames;
    /// At regular intervals of items.
    QList<Checkpoint> m_checkpoints;
    /// The dirty items, whose heights or indexes have changed since the last pass; none when the
    /// last is before the first.
    qsizetype m_firstDirty = 0;
    qsizetype m_lastDirty = -1;
    double m_height = 0;
    double m_room = 0;
    /// How many items have a choice of heights.
    qsizetype m_flexibleCount = 0;
    /// Whether the last pass chose heights.
    bool m_isSteady = false;
    mutable qsizetype m_visitCount = 0;
};

} // namespace kelpa
