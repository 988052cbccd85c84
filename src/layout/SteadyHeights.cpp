#include "layout/SteadyHeights.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kelpa {

namespace {

/// By which a column that has grown is longer than the one that is to receive the next item: less
/// than half a pixel of any screen, and more than the error of a sum.
constexpr double margin = 0.25;

using Columns = QList<qsizetype>;

/// The columns of a waterfall while it is being filled.
struct Ends
{
    explicit Ends(qsizetype count, double gap) : spacing(gap), ends(count, 0.0), last(count, -1) {}

    /// The leftmost of the shortest.
    qsizetype shortest() const { return std::ranges::min_element(ends) - ends.begin(); }
    void append(qsizetype column, qsizetype item, double height)
    {
        ends[column] += height + spacing;
        last[column] = item;
    }
    /// Whether `column` receives the next item rather than `other` does.
    bool precedes(qsizetype column, qsizetype other) const
    {
        return ends.at(column) < ends.at(other) ||
               (ends.at(column) == ends.at(other) && column <= other);
    }
    /// By how much the column `other` has to grow so that `column` precedes it; negative where it
    /// could shrink.
    double missing(qsizetype other, qsizetype column) const
    {
        return ends.at(column) - ends.at(other) + margin;
    }

    double spacing = 0;
    /// With the spacing below the lowest item.
    QList<double> ends;
    /// The lowest item of each column; -1 for none.
    QList<qsizetype> last;
};

Columns columnsOf(Ends ends, const QList<double>& heights)
{
    Columns columns;
    columns.reserve(heights.size());
    for (qsizetype item = 0; item < heights.size(); ++item) {
        const qsizetype column = ends.shortest();
        ends.append(column, item, heights.at(item));
        columns.append(column);
    }
    return columns;
}

qsizetype displaced(const Columns& columns, const Columns& atRest)
{
    qsizetype count = 0;
    for (qsizetype item = 0; item < columns.size(); ++item)
        count += columns.at(item) != atRest.at(item) ? 1 : 0;
    return count;
}

/// Lets the lowest items of the other columns grow until `column` receives the next one; false, and
/// nothing has changed, where they cannot. One that shows everything and ends where `column` does
/// is long enough, unless it is further left.
bool growAround(qsizetype column, Ends& ends, const QList<HeightRange>& items,
                QList<double>& heights)
{
    Ends grown = ends;
    QList<double> grownHeights = heights;
    for (qsizetype other = 0; other < ends.ends.size(); ++other) {
        if (ends.precedes(column, other))
            continue;
        const qsizetype last = ends.last.at(other);
        if (last < 0)
            return false;
        const double most = items.at(last).atMost;
        const double wanted = heights.at(last) + ends.missing(other, column);
        grownHeights[last] = std::min(wanted, most);
        grown.ends[other] += grownHeights.at(last) - heights.at(last);
        if (!grown.precedes(column, other))
            return false;
    }
    ends = grown;
    heights = grownHeights;
    return true;
}

/// The heights with which each item that can has the column that it has at rest.
QList<double> heightsInColumns(const Columns& columns, Ends ends, const QList<HeightRange>& items)
{
    QList<double> heights;
    heights.reserve(items.size());
    for (qsizetype item = 0; item < items.size(); ++item) {
        heights.append(items.at(item).atLeast);
        const qsizetype wanted = columns.at(item);
        const bool isKept = ends.shortest() == wanted || growAround(wanted, ends, items, heights);
        ends.append(isKept ? wanted : ends.shortest(), item, heights.at(item));
    }
    return heights;
}

/// By how much an item can grow without leaving the room or moving another one into another column.
double growthWithin(double room, qsizetype growing, const Columns& columns, Ends ends,
                    const QList<double>& heights)
{
    const qsizetype column = columns.at(growing);
    double growth = std::numeric_limits<double>::max();
    for (qsizetype item = 0; item < heights.size(); ++item) {
        const bool isBelow = item > growing && columns.at(item) == column;
        for (qsizetype other = 0; isBelow && other < ends.ends.size(); ++other) {
            if (other != column)
                growth = std::min(growth, -ends.missing(other, column));
        }
        ends.append(columns.at(item), item, heights.at(item));
    }
    return std::min(growth, room - (ends.ends.at(column) - ends.spacing));
}

/// The items that could show more, those first that need the least to show everything.
QList<qsizetype> cutItems(const QList<HeightRange>& items, const QList<double>& heights)
{
    QList<qsizetype> cut;
    for (qsizetype item = 0; item < items.size(); ++item) {
        if (items.at(item).atMost > heights.at(item))
            cut.append(item);
    }
    std::ranges::stable_sort(
        cut, {}, [&](qsizetype item) { return items.at(item).atMost - heights.at(item); });
    return cut;
}

/// Fills the room without moving an item into another column.
void fillRoom(double room, const Columns& columns, const Ends& empty,
              const QList<HeightRange>& items, QList<double>& heights)
{
    const QList<qsizetype> cut = cutItems(items, heights);
    // An item that has grown can make way for one to its left.
    bool hasGrown = !cut.isEmpty();
    for (qsizetype round = 0; hasGrown && round < empty.ends.size(); ++round) {
        hasGrown = false;
        for (const qsizetype item : cut) {
            const double wanted = items.at(item).atMost - heights.at(item);
            if (wanted <= 0)
                continue;
            const double growth =
                std::min(wanted, growthWithin(room, item, columns, empty, heights));
            if (growth < margin)
                continue;
            // Exactly, so that nothing of it is cut off.
            heights[item] = growth == wanted ? items.at(item).atMost : heights.at(item) + growth;
            hasGrown = true;
        }
    }
}

double endOf(Ends ends, const QList<double>& heights)
{
    for (qsizetype item = 0; item < heights.size(); ++item)
        ends.append(ends.shortest(), item, heights.at(item));
    return *std::ranges::max_element(ends.ends) - ends.spacing;
}

/// The heights while every item is collapsed. Where all of them fit into the room, as many as
/// possible show everything in it, in whichever columns the others are then.
QList<double> heightsAtRest(double room, const Ends& empty, const QList<HeightRange>& items)
{
    QList<double> heights;
    heights.reserve(items.size());
    for (const HeightRange& item : items)
        heights.append(item.atRest);
    if (endOf(empty, heights) > room)
        return heights;
    for (const qsizetype item : cutItems(items, heights)) {
        const double before = std::exchange(heights[item], items.at(item).atMost);
        if (endOf(empty, heights) > room)
            heights[item] = before;
    }
    return heights;
}

/// The heights where some items show more than while every one is collapsed.
QList<double> heightsAround(const Columns& atRest, const Ends& empty,
                            const QList<HeightRange>& items)
{
    QList<double> least;
    least.reserve(items.size());
    for (const HeightRange& item : items)
        least.append(item.atLeast);
    QList<double> heights = heightsInColumns(atRest, empty, items);
    const bool isSteadier =
        displaced(columnsOf(empty, heights), atRest) < displaced(columnsOf(empty, least), atRest);
    return isSteadier ? heights : least;
}

} // namespace

QList<double> steadyHeights(const WaterfallLayout& layout, double width,
                            const QList<HeightRange>& items, double room)
{
    const qsizetype count = items.size();
    const Ends empty(std::clamp<qsizetype>(count, 1, layout.columnCount(std::max(width, 1.0))),
                     layout.spacing);
    const bool isAtRest = std::ranges::all_of(
        items, [](const HeightRange& item) { return item.atLeast == item.atRest; });
    QList<double> heights = heightsAtRest(room, empty, items);
    if (!isAtRest)
        heights = heightsAround(columnsOf(empty, heights), empty, items);
    fillRoom(room, columnsOf(empty, heights), empty, items, heights);
    return heights;
}

} // namespace kelpa
