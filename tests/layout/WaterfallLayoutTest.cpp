#include "layout/WaterfallLayout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace kelpa {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const WaterfallLayout boardLayout{320, 22, std::nullopt, std::nullopt};

WaterfallLayout withColumns(int count, double spacing = 10)
{
    return {320, spacing, std::nullopt, count};
}

/// The column of each item, by its left edge.
QList<int> columns(const WaterfallLayout& layout, double width, const QList<double>& heights)
{
    QList<int> result;
    const double step = layout.itemWidth(width) + layout.spacing;
    for (const QRectF& frame : layout.place({}, width, heights).frames)
        result.append(static_cast<int>(std::lround(frame.x() / step)));
    return result;
}

struct CountRow
{
    double width;
    int count;
};

TEST(WaterfallLayout, As_many_columns_as_fit_at_their_minimum_width)
{
    for (const CountRow& row : {CountRow{700, 2}, CountRow{661.999, 1}, CountRow{662, 2},
                                CountRow{1003.999, 2}, CountRow{1004, 3}, CountRow{320, 1}})
        EXPECT_EQ(boardLayout.columnCount(row.width), row.count) << row.width;
}

TEST(WaterfallLayout, A_width_of_700_holds_two_columns_of_339)
{
    EXPECT_EQ(boardLayout.columnCount(700), 2);
    EXPECT_EQ(WaterfallLayout::itemWidth(700, 2, 22), 339);
    EXPECT_EQ(boardLayout.itemWidth(700), 339);
}

TEST(WaterfallLayout, A_width_narrower_than_a_column_is_one_column_of_the_whole_width)
{
    for (const double width : {319.0, 100.0, 1.0, 0.5}) {
        EXPECT_EQ(boardLayout.columnCount(width), 1) << width;
        EXPECT_EQ(WaterfallLayout::itemWidth(width, 1, 22), width);
    }
}

TEST(WaterfallLayout, A_fixed_column_count_holds_at_every_width)
{
    for (const double width : {1.0, 320.0, 5000.0})
        EXPECT_EQ(withColumns(2).columnCount(width), 2) << width;
}

TEST(WaterfallLayout, A_width_beyond_all_screens_has_as_many_columns_as_can_be_counted)
{
    EXPECT_EQ(boardLayout.columnCount(1e300), std::numeric_limits<int>::max());
}

TEST(WaterfallLayout, Columns_without_spacing_share_the_width)
{
    EXPECT_EQ(WaterfallLayout::itemWidth(900, 3, 0), 300);
    EXPECT_EQ(withColumns(3, 0).place({}, 900, {10, 10, 10}).frames,
              (QList<QRectF>{{0, 0, 300, 10}, {300, 0, 300, 10}, {600, 0, 300, 10}}));
}

TEST(WaterfallLayout, Each_item_goes_to_the_shortest_column)
{
    const WaterfallPlacement placement = boardLayout.place({}, 700, {100, 50, 30, 40, 10});
    EXPECT_EQ(placement.frames, (QList<QRectF>{{0, 0, 339, 100},
                                               {361, 0, 339, 50},
                                               {361, 72, 339, 30},
                                               {0, 122, 339, 40},
                                               {361, 124, 339, 10}}));
    EXPECT_EQ(placement.height, 162);
}

TEST(WaterfallLayout, Equal_columns_put_the_next_item_into_the_leftmost)
{
    EXPECT_EQ(columns(boardLayout, 1100, {50, 50, 50, 20, 20, 20, 5}),
              (QList<int>{0, 1, 2, 0, 1, 2, 0}));
}

TEST(WaterfallLayout, Items_of_fixed_height_are_dealt_to_the_columns_in_turn)
{
    const WaterfallLayout windows{320, 10, 126, 2};
    EXPECT_EQ(columns(windows, 400, {500, 1, 900, 2, 3}), (QList<int>{0, 1, 0, 1, 0}));
    const WaterfallPlacement placement = windows.place({}, 410, {500, 1, 900});
    EXPECT_EQ(placement.frames,
              (QList<QRectF>{{0, 0, 200, 126}, {210, 0, 200, 126}, {0, 136, 200, 126}}));
    EXPECT_EQ(placement.height, 262);
}

TEST(WaterfallLayout, Fewer_items_than_columns_leave_columns_empty)
{
    EXPECT_EQ(columns(boardLayout, 2000, {10, 10}), (QList<int>{0, 1}));
    EXPECT_EQ(columns({320, 10, 126, 5}, 2000, {0, 0, 0}), (QList<int>{0, 1, 2}));
}

TEST(WaterfallLayout, Items_are_placed_from_the_origin_on)
{
    EXPECT_EQ(boardLayout.place({30, 400}, 700, {100, 50, 30}).frames,
              (QList<QRectF>{{30, 400, 339, 100}, {391, 400, 339, 50}, {391, 472, 339, 30}}));
    EXPECT_EQ(boardLayout.place({30, 400}, 700, {100, 50, 30}).height, 102);
}

TEST(WaterfallLayout, The_size_is_the_proposed_width_and_the_height_of_the_longest_column)
{
    EXPECT_EQ(boardLayout.sizeThatFits(700, {100, 50, 30, 40, 10}), QSizeF(700, 162));
    EXPECT_EQ(boardLayout.sizeThatFits(700, {100}), QSizeF(700, 100));
    EXPECT_EQ(boardLayout.sizeThatFits(700, {}), QSizeF(700, 0));
}

TEST(WaterfallLayout, A_view_without_width_is_laid_out_one_point_wide)
{
    for (const double width : {0.0, -20.0}) {
        EXPECT_EQ(boardLayout.place({}, width, {100, 50}).frames,
                  (QList<QRectF>{{0, 0, 1, 100}, {0, 122, 1, 50}}));
        EXPECT_EQ(boardLayout.sizeThatFits(width, {100, 50}), QSizeF(width, 172));
        EXPECT_EQ(boardLayout.itemWidth(width), 1);
    }
}

TEST(WaterfallLayout, Items_without_a_usable_height_are_flat)
{
    EXPECT_EQ(boardLayout.place({}, 320, {-5, infinity, notANumber, 10}).frames,
              (QList<QRectF>{{0, 0, 320, 0}, {0, 22, 320, 0}, {0, 44, 320, 0}, {0, 66, 320, 10}}));
}

TEST(WaterfallLayout, Fixed_columns_that_leave_no_width_do_not_fit)
{
    EXPECT_FALSE(withColumns(3).fits(0));
    EXPECT_FALSE(withColumns(3).fits(20));
    EXPECT_TRUE(withColumns(3).fits(20.5));
    EXPECT_TRUE(boardLayout.fits(0));
}

TEST(WaterfallLayout, Items_never_overlap_and_stay_inside_whatever_their_heights)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 200; ++round) {
        const double width = std::uniform_real_distribution(1.0, 3000.0)(random);
        QList<double> heights;
        for (int i = std::uniform_int_distribution(0, 40)(random); i > 0; --i)
            heights.append(std::uniform_real_distribution(0.5, 600.0)(random));
        const WaterfallPlacement placement = boardLayout.place({}, width, heights);
        ASSERT_EQ(placement.frames.size(), heights.size());
        for (qsizetype i = 0; i < heights.size(); ++i) {
            const QRectF& frame = placement.frames.at(i);
            EXPECT_EQ(frame.height(), heights.at(i));
            EXPECT_GE(frame.left(), 0);
            EXPECT_LE(frame.right(), width + 1e-9);
            EXPECT_LE(frame.bottom(), placement.height + 1e-9);
            for (qsizetype j = 0; j < i; ++j)
                EXPECT_FALSE(frame.intersects(placement.frames.at(j))) << i << ' ' << j;
        }
    }
}

TEST(WaterfallLayoutDeathTest, A_width_that_is_not_finite_and_above_0_halts_the_program)
{
    for (const double width : {0.0, -1.0, infinity, -infinity, notANumber}) {
        EXPECT_DEATH(static_cast<void>(boardLayout.columnCount(width)),
                     "is not finite and above 0");
        EXPECT_DEATH(static_cast<void>(WaterfallLayout::itemWidth(width, 1, 0)),
                     "is not finite and above 0");
    }
    EXPECT_DEATH(static_cast<void>(boardLayout.place({}, infinity, {})),
                 "is not finite and above 0");
    EXPECT_DEATH(static_cast<void>(boardLayout.place({}, notANumber, {})),
                 "is not finite and above 0");
}

TEST(WaterfallLayoutDeathTest, A_minimum_column_width_that_is_not_above_0_halts_the_program)
{
    for (const double minimum : {0.0, -320.0, notANumber}) {
        const WaterfallLayout layout{minimum, 22, std::nullopt, std::nullopt};
        EXPECT_DEATH(static_cast<void>(layout.columnCount(700)), "minimum column width");
        const WaterfallLayout fixed{minimum, 22, std::nullopt, 2};
        EXPECT_DEATH(static_cast<void>(fixed.columnCount(700)), "minimum column width");
    }
}

TEST(WaterfallLayoutDeathTest, A_spacing_below_0_halts_the_program)
{
    for (const double spacing : {-1.0, infinity, notANumber}) {
        const WaterfallLayout layout{320, spacing, std::nullopt, std::nullopt};
        EXPECT_DEATH(static_cast<void>(layout.columnCount(700)), "spacing .* 0 or more");
        EXPECT_DEATH(static_cast<void>(WaterfallLayout::itemWidth(700, 2, spacing)),
                     "spacing .* 0 or more");
    }
}

TEST(WaterfallLayoutDeathTest, Fewer_than_one_column_halts_the_program)
{
    for (const int count : {0, -1}) {
        EXPECT_DEATH(static_cast<void>(withColumns(count).columnCount(700)), "fewer than 1");
        EXPECT_DEATH(static_cast<void>(WaterfallLayout::itemWidth(700, count, 22)), "fewer than 1");
    }
}

TEST(WaterfallLayoutDeathTest, Gaps_that_take_the_whole_width_halt_the_program)
{
    EXPECT_DEATH(static_cast<void>(WaterfallLayout::itemWidth(22, 2, 22)), "leave no width");
    EXPECT_DEATH(static_cast<void>(WaterfallLayout::itemWidth(10, 2, 22)), "leave no width");
    EXPECT_DEATH(static_cast<void>(withColumns(2).place({}, 0, {10})), "leave no width");
}

} // namespace
} // namespace kelpa
