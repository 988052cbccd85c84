#include "layout/ExpandableHeightLayout.h"

#include "layout/BoardMetrics.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

struct HeightRow
{
    double progress;
    double contentHeight;
    double height;
};

TEST(ExpandableHeightLayout, A_card_grows_from_the_collapsed_to_its_natural_height)
{
    for (const HeightRow& row : {
             HeightRow{0, 500, 292},
             HeightRow{0.25, 500, 344},
             HeightRow{0.5, 500, 396},
             HeightRow{1, 500, 500},
             HeightRow{0, 292, 292},
             HeightRow{1, 292, 292},
             HeightRow{1, 293, 293},
         }) {
        const ExpandableHeightLayout layout{row.progress, collapsedGoalCardHeight};
        EXPECT_EQ(layout.sizeThatFits(320, QSizeF(320, row.contentHeight)), QSizeF(320, row.height))
            << row.progress << ' ' << row.contentHeight;
    }
}

TEST(ExpandableHeightLayout, A_height_has_its_progress)
{
    const ExpandableHeightLayout layout{0, collapsedGoalCardHeight};
    for (const HeightRow& row : {
             HeightRow{0, 500, 292},
             HeightRow{0.5, 500, 396},
             HeightRow{1, 500, 500},
             // Beyond the content and below the collapsed height, there is nothing to show.
             HeightRow{1, 500, 900},
             HeightRow{0, 500, 100},
             HeightRow{0, 200, 292},
             HeightRow{0, 292, 400},
         }) {
        EXPECT_EQ(layout.progressAt(row.height, row.contentHeight), row.progress)
            << row.height << ' ' << row.contentHeight;
    }
}

TEST(ExpandableHeightLayout, A_card_with_little_content_stays_at_the_collapsed_height)
{
    for (const double progress : {0.0, 0.3, 0.5, 1.0}) {
        for (const double contentHeight : {0.0, 200.0, 291.0}) {
            const ExpandableHeightLayout layout{progress, collapsedGoalCardHeight};
            EXPECT_EQ(layout.sizeThatFits(320, QSizeF(320, contentHeight)), QSizeF(320, 292));
        }
    }
}

TEST(ExpandableHeightLayout, Progress_outside_0_to_1_counts_as_the_nearer_end)
{
    EXPECT_EQ((ExpandableHeightLayout{-0.5, 292}).sizeThatFits(320, QSizeF(320, 500)),
              QSizeF(320, 292));
    EXPECT_EQ((ExpandableHeightLayout{1.5, 292}).sizeThatFits(320, QSizeF(320, 500)),
              QSizeF(320, 500));
}

TEST(ExpandableHeightLayout, The_width_is_the_proposed_one_or_else_the_child_s)
{
    const ExpandableHeightLayout layout{1, 292};
    EXPECT_EQ(layout.sizeThatFits(400, QSizeF(250, 500)), QSizeF(400, 500));
    EXPECT_EQ(layout.sizeThatFits(std::nullopt, QSizeF(250, 500)), QSizeF(250, 500));
}

TEST(ExpandableHeightLayout, Without_a_child_the_size_is_nothing)
{
    EXPECT_EQ((ExpandableHeightLayout{1, 292}).sizeThatFits(400, std::nullopt), QSizeF(0, 0));
}

TEST(ExpandableHeightLayout, The_child_keeps_its_height_at_the_top_left_of_the_bounds)
{
    EXPECT_EQ(ExpandableHeightLayout::childFrame(QRectF(10, 20, 300, 292), 500),
              QRectF(10, 20, 300, 500));
}

} // namespace
} // namespace kelpa
