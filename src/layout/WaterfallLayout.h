// Lays out items in columns of equal width, each appended to the shortest column. Pure geometry in
// points; a layout is a value without state between calls.
#pragma once

#include <QList>
#include <QRectF>
#include <QSizeF>

#include <optional>

namespace kelpa {

/// The result of a layout.
struct WaterfallPlacement
{
    /// One frame per item, in the items' order, in the coordinate system of the given origin.
    QList<QRectF> frames;
    /// From the top to the bottom of the lowest item, without spacing below it; 0 without items.
    double height = 0;

    friend bool operator==(const WaterfallPlacement&, const WaterfallPlacement&) = default;
};

/// A value outside the stated ranges is a programming error and ends the program.
struct WaterfallLayout
{
    /// Greater than 0; only a single column may be narrower.
    double minimumColumnWidth = 0;
    /// Between columns and between the items of a column; finite, 0 or more.
    double spacing = 0;
    /// When set, the height of every item; items then fill the columns row by row.
    std::optional<double> fixedItemHeight;
    /// When set, the number of columns whatever the width; 1 or more.
    std::optional<int> fixedColumnCount;

    /// At least 1. `width` is finite and greater than 0.
    int columnCount(double width) const;

    /// The width of each column; `columnCount` is at least 1, `width` finite, greater than 0 and
    /// more than the total spacing between the columns.
    static double itemWidth(double width, int columnCount, double spacing);

    /// The width at which to measure items for a layout of `width`, which counts as at least 1.
    double itemWidth(double width) const;

    /// False for a width that cannot be laid out: a fixed number of columns leaves no width for the
    /// items.
    bool fits(double width) const;

    /// `height`, or 0 when it is negative or not finite.
    static double usableHeight(double height);

    /// `heights` are the items' own heights at `itemWidth(width)`; with `fixedItemHeight` only
    /// their number matters. A height that is negative or not finite counts as 0.
    /// Linear in the number of items, with memory for the columns' heights besides the result.
    WaterfallPlacement place(QPointF origin, double width, const QList<double>& heights) const;

    /// The width as proposed and the height of the placement.
    QSizeF sizeThatFits(double width, const QList<double>& heights) const;

    friend bool operator==(const WaterfallLayout&, const WaterfallLayout&) = default;
};

} // namespace kelpa
