// A waterfall that is kept: items come, go, move and change their heights, and a pass places anew
// only what that can have moved. Pure geometry in points.
#pragma once

#include "layout/WaterfallLayout.h"

#include <QList>
#include <QRectF>

namespace kelpa {

/// Until `settle`, frames are those of the last pass, and items that came since have none.
class WaterfallGeometry
{
public:
    /// An item that changed its place; `before` is null for one that had none.
    struct Change
    {
        qsizetype index = 0;
        QRectF before;

        friend bool operator==(const Change&, const Change&) = default;
    };

    explicit WaterfallGeometry(const WaterfallLayout& layout);

    const WaterfallLayout& layout() const { return m_layout; }
    /// The next pass places everything.
    void setLayout(const WaterfallLayout& layout);
    double width() const { return m_width; }
    void setWidth(double width);

    qsizetype count() const { return m_count; }
    /// Indexes and counts outside the items are a programming error.
    void insert(qsizetype first, qsizetype count, double height);
    void remove(qsizetype first, qsizetype count);
    /// The `count` items at `from` are then at `to`, counted without them.
    void move(qsizetype from, qsizetype count, qsizetype to);
    /// Of no effect where all items have one height.
    void setHeight(qsizetype index, double height);
    double itemHeight(qsizetype index) const;

    /// Places what may have moved. The items that changed their places, in their order; always
    /// empty where all items have one height, since frames are then not kept but computed.
    QList<Change> settle();
    /// Whether nothing changed since the last pass.
    bool isSettled() const { return m_lastSoiled < m_firstSoiled; }
    /// Of the last pass; null for an item that has not been placed.
    QRectF frame(qsizetype index) const;
    /// Of all items, as in `WaterfallPlacement`.
    double height() const;
    /// The items that reach into the stripe between two heights, in their order. Nothing may have
    /// changed since the last pass, unless all items have one height.
    QList<qsizetype> between(double top, double bottom) const;
    /// How many frames `settle` and `between` have looked at so far: what they cost.
    qsizetype visitCount() const { return m_visitCount; }

private:
    /// What a pass knows before it places an item.
    struct Checkpoint
    {
        /// Of each column, with the spacing below it.
        QList<double> ends;
        /// The lowest item of each column; -1 for none.
        QList<qsizetype> lowest;

        friend bool operator==(const Checkpoint&, const Checkpoint&) = default;
    };

    bool hasFixedHeight() const { return m_layout.fixedItemHeight.has_value(); }
    void soil(qsizetype first, qsizetype last);
    /// The first item whose top is at or below a height. Tops never rise from item to item, since
    /// each item stands where the highest column ends.
    qsizetype firstFrom(double top) const;
    /// The lowest items, in their order, that each column has before an item.
    QList<qsizetype> lowestBefore(qsizetype index) const;

    WaterfallLayout m_layout;
    double m_width = 1;
    qsizetype m_count = 0;
    /// Empty where all items have one height.
    QList<double> m_heights;
    QList<QRectF> m_frames;
    /// Before every so-manieth item: a pass can begin there.
    QList<Checkpoint> m_checkpoints;
    /// The items whose heights or neighbours changed since the last pass; none when `first` is
    /// beyond the items.
    qsizetype m_firstSoiled = 0;
    qsizetype m_lastSoiled = -1;
    double m_height = 0;
    mutable qsizetype m_visitCount = 0;
};

} // namespace kelpa
