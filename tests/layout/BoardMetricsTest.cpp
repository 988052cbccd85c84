#include "layout/BoardMetrics.h"

#include <gtest/gtest.h>

#include <limits>

namespace kelpa {
namespace {

struct BoardRow
{
    double width;
    int withoutRail;
    int withRail;
};

TEST(BoardMetrics, The_column_count_follows_the_board_s_width)
{
    for (const BoardRow& row : {
             // Two columns need 662 points, three 1004: margins of 64 and the rail's 136 on top.
             BoardRow{725.999, 1, 1},
             BoardRow{726, 2, 1},
             BoardRow{861.999, 2, 1},
             BoardRow{862, 2, 2},
             BoardRow{900, 2, 2},
             BoardRow{1067.999, 2, 2},
             BoardRow{1068, 3, 2},
             BoardRow{1204, 3, 3},
             BoardRow{1280, 3, 3},
             BoardRow{1920, 5, 5},
             BoardRow{3840, 11, 10},
         }) {
        EXPECT_EQ(targetGridColumnCount(row.width, BreadcrumbRail::hidden), row.withoutRail)
            << row.width;
        EXPECT_EQ(targetGridColumnCount(row.width, BreadcrumbRail::shown), row.withRail)
            << row.width;
    }
}

TEST(BoardMetrics, A_board_narrower_than_one_column_has_one_column)
{
    for (const double width : {300.0, 200.0, 65.0, 64.0, 1.0, 0.0, -50.0}) {
        EXPECT_EQ(targetGridColumnCount(width, BreadcrumbRail::hidden), 1) << width;
        EXPECT_EQ(targetGridColumnCount(width, BreadcrumbRail::shown), 1) << width;
    }
}

TEST(BoardMetrics, The_targets_have_at_least_one_point_of_width)
{
    EXPECT_EQ(targetAreaWidth(64, BreadcrumbRail::hidden), 1);
    EXPECT_EQ(targetAreaWidth(64.5, BreadcrumbRail::hidden), 1);
    EXPECT_EQ(targetAreaWidth(66, BreadcrumbRail::hidden), 2);
    EXPECT_EQ(targetAreaWidth(1000, BreadcrumbRail::hidden), 936);
    EXPECT_EQ(targetAreaWidth(1000, BreadcrumbRail::shown), 800);
}

TEST(BoardMetrics, A_width_that_is_not_finite_gives_no_column_count)
{
    for (const double width :
         {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(targetGridColumnCount(width, BreadcrumbRail::hidden), std::nullopt);
        EXPECT_EQ(targetGridColumnCount(width, BreadcrumbRail::shown), std::nullopt);
    }
}

TEST(BoardMetrics, The_reported_columns_are_those_of_the_targets_layout)
{
    for (int width = 1; width < 4000; ++width) {
        EXPECT_EQ(targetGridColumnCount(width, BreadcrumbRail::shown),
                  targetLayout().columnCount(targetAreaWidth(width, BreadcrumbRail::shown)));
    }
    EXPECT_EQ(targetLayout(), (WaterfallLayout{320, 22, std::nullopt, std::nullopt}));
}

} // namespace
} // namespace kelpa
