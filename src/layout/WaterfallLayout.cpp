#include "layout/WaterfallLayout.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kelpa {

namespace {

void requireWidth(double width)
{
    if (!std::isfinite(width) || width <= 0)
        qFatal("broken invariant: the width %f of a waterfall is not finite and above 0", width);
}

void requireSpacing(double spacing)
{
    if (!std::isfinite(spacing) || spacing < 0)
        qFatal("broken invariant: the spacing %f of a waterfall is not finite and 0 or more",
               spacing);
}

/// The width to lay items out in: a view without a width still has columns.
double usableWidth(double width)
{
    return std::max(width, 1.0);
}

} // namespace

double WaterfallLayout::usableHeight(double height)
{
    return std::isfinite(height) ? std::max(height, 0.0) : 0.0;
}

int WaterfallLayout::columnCount(double width) const
{
    requireWidth(width);
    if (!(minimumColumnWidth > 0)) {
        qFatal("broken invariant: the minimum column width %f of a waterfall is not above 0",
               minimumColumnWidth);
    }
    requireSpacing(spacing);
    if (fixedColumnCount) {
        if (*fixedColumnCount < 1)
            qFatal("broken invariant: a waterfall has %d columns, fewer than 1", *fixedColumnCount);
        return *fixedColumnCount;
    }
    const double columns = (width + spacing) / (minimumColumnWidth + spacing);
    // Clamped before the conversion, which is undefined beyond the range of int.
    return static_cast<int>(
        std::clamp(columns, 1.0, static_cast<double>(std::numeric_limits<int>::max())));
}

double WaterfallLayout::itemWidth(double width, int columnCount, double spacing)
{
    if (columnCount < 1)
        qFatal("broken invariant: a waterfall has %d columns, fewer than 1", columnCount);
    requireWidth(width);
    requireSpacing(spacing);
    const double columnsWidth = width - spacing * (columnCount - 1);
    if (!(columnsWidth > 0)) {
        qFatal("broken invariant: %d columns with a spacing of %f leave no width of %f",
               columnCount, spacing, width);
    }
    return columnsWidth / columnCount;
}

double WaterfallLayout::itemWidth(double width) const
{
    const double usable = usableWidth(width);
    return itemWidth(usable, columnCount(usable), spacing);
}

bool WaterfallLayout::fits(double width) const
{
    const double usable = usableWidth(width);
    return usable - spacing * (columnCount(usable) - 1) > 0;
}

WaterfallPlacement WaterfallLayout::place(QPointF origin, double width,
                                          const QList<double>& heights) const
{
    const double usable = usableWidth(width);
    const int columns = columnCount(usable);
    const double columnWidth = itemWidth(usable, columns, spacing);

    // There can be far more columns than items on a wide board; those stay empty.
    QList<double> columnHeights(std::clamp<qsizetype>(heights.size(), 1, columns), 0.0);
    WaterfallPlacement placement;
    placement.frames.reserve(heights.size());
    for (qsizetype index = 0; index < heights.size(); ++index) {
        // The shortest column; on a tie, the leftmost of them.
        const qsizetype column =
            fixedItemHeight ? index % columnHeights.size()
                            : std::ranges::min_element(columnHeights) - columnHeights.begin();
        const double height = usableHeight(fixedItemHeight.value_or(heights.at(index)));
        double& columnHeight = columnHeights[column];
        placement.frames.append({origin.x() + static_cast<double>(column) * (columnWidth + spacing),
                                 origin.y() + columnHeight, columnWidth, height});
        placement.height = std::max(placement.height, columnHeight + height);
        columnHeight += height + spacing;
    }
    return placement;
}

QSizeF WaterfallLayout::sizeThatFits(double width, const QList<double>& heights) const
{
    return {width, place({}, width, heights).height};
}

} // namespace kelpa
