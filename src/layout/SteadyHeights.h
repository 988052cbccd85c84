// Which heights the items of a waterfall have where their states leave a choice: an item may show
// more than it has to. Items beside one that has grown do so where that keeps the items below in
// their columns, and all do where the screen has room to spare. Pure geometry in points.
#pragma once

#include "layout/WaterfallLayout.h"

#include <QList>

namespace kelpa {

/// Not negative, and finite.
struct HeightRange
{
    /// While every item is collapsed.
    double atRest = 0;
    /// In its present state, with which it is never lower.
    double atLeast = 0;
    /// With all of its content; not less than `atLeast`.
    double atMost = 0;

    friend bool operator==(const HeightRange&, const HeightRange&) = default;
};

/// The heights, each within the range of its item. `room` is the height that can be filled without
/// scrolling. Wherever the ranges permit, items have the columns that they have while every item is
/// collapsed and the room is filled. The time grows with the square of the number of items.
QList<double> steadyHeights(const WaterfallLayout& layout, double width,
                            const QList<HeightRange>& items, double room);

} // namespace kelpa
