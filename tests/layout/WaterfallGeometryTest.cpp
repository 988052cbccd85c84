#include "layout/WaterfallGeometry.h"

#include "support/Seed.h"

#include <gtest/gtest.h>

#include <random>

namespace kelpa {
namespace {

const WaterfallLayout board{320, 22, std::nullopt, std::nullopt};
const WaterfallLayout column{320, 22, std::nullopt, 1};
const WaterfallLayout rows{1, 0, 34, 1};
const WaterfallLayout grid{1, 8, 126, 2};

WaterfallGeometry settled(const WaterfallLayout& layout, double width, const QList<double>& heights)
{
    WaterfallGeometry geometry(layout);
    geometry.setWidth(width);
    for (qsizetype i = 0; i < heights.size(); ++i)
        geometry.insert(i, 1, heights.at(i));
    geometry.settle();
    return geometry;
}

/// The expected result of `between`, from a scan of every frame.
QList<qsizetype> reaching(const WaterfallPlacement& placement, double top, double bottom)
{
    QList<qsizetype> result;
    for (qsizetype i = 0; i < placement.frames.size(); ++i) {
        const QRectF& frame = placement.frames.at(i);
        if (top < bottom && frame.top() < bottom && frame.bottom() > top)
            result.append(i);
    }
    return result;
}

/// The expected heights of the items of a board.
QList<double> chosenHeights(double width, const QList<HeightRange>& ranges, double room)
{
    if (ranges.size() <= WaterfallGeometry::maximumSteadyCount)
        return steadyHeights(board, width, ranges, room);
    QList<double> heights;
    for (const HeightRange& range : ranges)
        heights.append(range.atLeast);
    return heights;
}

QList<qsizetype> indexes(const QList<WaterfallGeometry::Change>& changes)
{
    QList<qsizetype> result;
    for (const WaterfallGeometry::Change& change : changes)
        result.append(change.index);
    return result;
}

TEST(WaterfallGeometry, Cards_stand_where_the_layout_puts_them)
{
    const QList<double> heights{606, 292, 292, 100, 700, 292, 292};
    const WaterfallGeometry geometry = settled(board, 1004, heights);
    const WaterfallPlacement expected = board.place({}, 1004, heights);
    for (qsizetype i = 0; i < heights.size(); ++i)
        EXPECT_EQ(geometry.frame(i), expected.frames.at(i)) << i;
    EXPECT_EQ(geometry.height(), expected.height);
}

TEST(WaterfallGeometry, A_new_height_changes_what_lies_below_and_nothing_else)
{
    WaterfallGeometry geometry = settled(board, 700, {292, 292, 292, 292});
    geometry.setHeight(2, 400);
    const QList<WaterfallGeometry::Change> changes = geometry.settle();
    ASSERT_EQ(indexes(changes), QList<qsizetype>{2});
    EXPECT_EQ(changes.front().before, QRectF(0, 314, 339, 292));
    EXPECT_EQ(geometry.frame(2), QRectF(0, 314, 339, 400));
    EXPECT_EQ(geometry.height(), 714);
}

TEST(WaterfallGeometry, The_same_height_again_changes_nothing)
{
    WaterfallGeometry geometry = settled(board, 700, {292, 292});
    geometry.setHeight(1, 292);
    EXPECT_TRUE(geometry.settle().isEmpty());
}

TEST(WaterfallGeometry, A_card_that_comes_had_no_place_and_those_behind_it_keep_theirs_as_before)
{
    WaterfallGeometry geometry = settled(board, 320, {100, 200});
    geometry.insert(1, 1, 50);
    const QList<WaterfallGeometry::Change> changes = geometry.settle();
    ASSERT_EQ(indexes(changes), (QList<qsizetype>{1, 2}));
    EXPECT_TRUE(changes.at(0).before.isNull());
    EXPECT_EQ(changes.at(1).before, QRectF(0, 122, 320, 200));
    EXPECT_EQ(geometry.frame(2), QRectF(0, 194, 320, 200));
}

TEST(WaterfallGeometry, Removing_the_last_cards_makes_the_board_lower)
{
    WaterfallGeometry geometry = settled(board, 320, {100, 200, 300});
    geometry.remove(1, 2);
    EXPECT_TRUE(geometry.settle().isEmpty());
    EXPECT_EQ(geometry.height(), 100);
    geometry.remove(0, 1);
    geometry.settle();
    EXPECT_EQ(geometry.height(), 0);
}

TEST(WaterfallGeometry, A_moved_card_takes_its_height_with_it)
{
    WaterfallGeometry geometry = settled(board, 320, {100, 200, 300});
    geometry.move(2, 1, 0);
    geometry.settle();
    EXPECT_EQ(geometry.frame(0), QRectF(0, 0, 320, 300));
    EXPECT_EQ(geometry.frame(1), QRectF(0, 322, 320, 100));
    geometry.move(0, 1, 2);
    geometry.settle();
    EXPECT_EQ(geometry.frame(2), QRectF(0, 344, 320, 300));
}

TEST(WaterfallGeometry, A_pass_after_any_changes_places_as_one_from_the_start)
{
    const std::uint64_t seed = test::seed();
    SCOPED_TRACE(test::seedText(seed));
    std::mt19937_64 random(seed);
    WaterfallGeometry geometry(board);
    QList<HeightRange> ranges;
    const auto below = [&random](qsizetype end) {
        return std::uniform_int_distribution<qsizetype>(0, end)(random);
    };
    const auto height = [&below] { return static_cast<double>(below(500)); };
    double room = 0;
    double width = 1400;
    for (int step = 0; step < 2000; ++step) {
        const qsizetype kind = below(9);
        if (kind < 3 || ranges.isEmpty()) {
            const qsizetype at = below(ranges.size());
            const qsizetype count = 1 + below(3);
            const double same = height();
            ranges.insert(at, count, {same, same, same});
            geometry.insert(at, count, same);
        } else if (kind < 5) {
            const qsizetype at = below(ranges.size() - 1);
            ranges.remove(at, 1);
            geometry.remove(at, 1);
        } else if (kind < 6) {
            const qsizetype from = below(ranges.size() - 1);
            const qsizetype to = below(ranges.size() - 1);
            ranges.move(from, to);
            geometry.move(from, 1, to);
        } else if (kind < 7) {
            width = static_cast<double>(200 + below(2000));
            room = height() * 4;
        } else {
            const qsizetype at = below(ranges.size() - 1);
            const double least = height();
            const bool isFlexible = below(1) == 0;
            ranges[at] = {isFlexible ? height() : least, least, least + isFlexible * height()};
            geometry.setHeights(at, ranges.at(at));
        }
        geometry.setRoom(room);
        geometry.setWidth(width);
        if (below(2) == 0)
            continue;
        geometry.settle();
        const WaterfallPlacement expected =
            board.place({}, width, chosenHeights(width, ranges, room));
        ASSERT_EQ(geometry.height(), expected.height) << step;
        for (qsizetype i = 0; i < ranges.size(); ++i)
            ASSERT_EQ(geometry.frame(i), expected.frames.at(i)) << step << " at " << i;
        const auto top = static_cast<double>(below(4000)) - 200;
        const double bottom = top + static_cast<double>(below(900));
        const QList<qsizetype> found = geometry.between(top, bottom);
        const QList<qsizetype> wanted = reaching(expected, top, bottom);
        // Comparing two empty lists would pass null pointers to memcmp.
        ASSERT_TRUE(wanted.isEmpty() ? found.isEmpty() : found == wanted)
            << step << " between " << top << " and " << bottom;
    }
}

/// 2,000 cards of seven heights in three columns.
WaterfallGeometry manyCards()
{
    WaterfallGeometry geometry(board);
    geometry.setWidth(1004);
    for (qsizetype i = 0; i < 2000; ++i)
        geometry.insert(i, 1, 292 + static_cast<double>(i % 7) * 50);
    geometry.settle();
    return geometry;
}

template <class Work>
qsizetype visits(WaterfallGeometry& geometry, const Work& work)
{
    const qsizetype before = geometry.visitCount();
    work();
    return geometry.visitCount() - before;
}

TEST(WaterfallGeometry, A_visible_range_of_a_long_board_costs_no_more_than_what_it_shows)
{
    WaterfallGeometry geometry = manyCards();
    EXPECT_EQ(visits(geometry, [] {}), 0);
    const double height = geometry.height();
    for (const double top : {0.0, height / 2, height - 800}) {
        qsizetype found = 0;
        const qsizetype visited =
            visits(geometry, [&] { found = geometry.between(top, top + 800).size(); });
        EXPECT_GE(found, 6) << top;
        // Besides the result: a binary search among 2,000, and up to 16 items from a checkpoint.
        EXPECT_LE(visited, found + 11 + 16) << top;
    }
}

TEST(WaterfallGeometry, Cards_beside_a_very_high_one_are_not_visited_above_the_visible_range)
{
    WaterfallGeometry geometry = manyCards();
    geometry.setHeight(1, 150000);
    geometry.settle();
    QList<qsizetype> found;
    const qsizetype visited = visits(geometry, [&] { found = geometry.between(140000, 140800); });
    EXPECT_EQ(found.front(), 1);
    EXPECT_GE(found.size(), 4);
    EXPECT_LE(visited, found.size() + 11 + 16);
}

TEST(WaterfallGeometry, A_pass_visits_what_changed_its_place_and_little_else)
{
    WaterfallGeometry geometry = manyCards();
    EXPECT_EQ(visits(geometry, [&] { geometry.settle(); }), 0);

    qsizetype changed = 0;
    const auto pass = [&changed](WaterfallGeometry& of) {
        return visits(of, [&] { changed = of.settle().size(); });
    };
    geometry.setHeight(1980, 700);
    EXPECT_LE(pass(geometry), 2 * 16);
    EXPECT_LE(changed, 20);
    geometry.insert(2000, 1, 292);
    EXPECT_LE(pass(geometry), 1 + 16);
    EXPECT_EQ(changed, 1);
    geometry.remove(2000, 1);
    EXPECT_LE(pass(geometry), 16);

    // Two cards of one column change heights, so that all below them stays.
    WaterfallGeometry list = settled(column, 320, QList<double>(2000, 40.0));
    list.setHeight(1000, 50);
    list.setHeight(1001, 30);
    EXPECT_LE(pass(list), 2 * 16);
    EXPECT_EQ(changed, 2);
}

TEST(WaterfallGeometry, Cards_of_one_height_stand_where_the_layout_puts_them)
{
    const WaterfallGeometry geometry = settled(grid, 300, {0, 0, 0, 0, 0});
    const WaterfallPlacement expected = grid.place({}, 300, {0, 0, 0, 0, 0});
    for (qsizetype i = 0; i < 5; ++i)
        EXPECT_EQ(geometry.frame(i), expected.frames.at(i)) << i;
    EXPECT_EQ(geometry.height(), 394);
    EXPECT_EQ(settled(grid, 300, {}).height(), 0);
}

TEST(WaterfallGeometry, Items_that_intersect_a_range_are_found)
{
    const WaterfallGeometry cards = settled(board, 700, {100, 300, 100, 100});
    EXPECT_EQ(cards.between(0, 1), (QList<qsizetype>{0, 1}));
    EXPECT_EQ(cards.between(100, 122), QList<qsizetype>{1});
    EXPECT_EQ(cards.between(121, 123), (QList<qsizetype>{1, 2}));
    EXPECT_EQ(cards.between(5, 5), QList<qsizetype>());

    WaterfallGeometry list(rows);
    list.insert(0, 10000, 34);
    EXPECT_EQ(list.between(-50, 35), (QList<qsizetype>{0, 1}));
    EXPECT_EQ(list.between(340, 374), QList<qsizetype>{10});
    EXPECT_EQ(list.between(339966, 400000), QList<qsizetype>{9999});
    EXPECT_EQ(list.between(-50, 0), QList<qsizetype>());
}

TEST(WaterfallGeometry, A_grid_counts_the_gap_below_a_row_to_the_row)
{
    const WaterfallGeometry cards = settled(grid, 300, {0, 0, 0});
    EXPECT_EQ(cards.between(0, 10), (QList<qsizetype>{0, 1}));
    EXPECT_EQ(cards.between(134, 140), QList<qsizetype>{2});
}

} // namespace
} // namespace kelpa
