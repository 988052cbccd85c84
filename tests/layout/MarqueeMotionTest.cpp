#include "layout/MarqueeMotion.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

TEST(MarqueeMotion, A_title_that_fits_stays_still)
{
    EXPECT_EQ(marqueeMotion(120, 120), (MarqueeMotion{0, 0}));
    EXPECT_EQ(marqueeMotion(0, 0), (MarqueeMotion{0, 0}));
}

TEST(MarqueeMotion, A_title_that_is_too_wide_travels_its_width_and_the_gap)
{
    EXPECT_EQ(marqueeMotion(121, 120).travel, 136);
    EXPECT_EQ(marqueeMotion(121, 120, 20).travel, 141);
}

TEST(MarqueeMotion, A_travel_of_140_points_takes_10_seconds)
{
    EXPECT_EQ(marqueeMotion(125, 100), (MarqueeMotion{140, 10}));
}

TEST(MarqueeMotion, A_travel_of_30_points_takes_4_seconds)
{
    EXPECT_EQ(marqueeMotion(15, 10), (MarqueeMotion{30, 4}));
}

} // namespace
} // namespace kelpa
