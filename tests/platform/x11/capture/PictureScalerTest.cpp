#include "platform/x11/capture/PictureScaler.h"

#include <gtest/gtest.h>

using namespace kelpa::x11;

TEST(ScalingSteps, No_step_leaves_pixels_out)
{
    const std::vector<QSize> steps = scalingSteps({3840, 2160}, {720, 405});
    EXPECT_EQ(steps, (std::vector<QSize>{{1920, 1080}, {960, 540}, {720, 405}}));
}

TEST(ScalingSteps, A_reduction_to_half_or_less_far_is_one_step)
{
    EXPECT_EQ(scalingSteps({1440, 900}, {720, 450}), (std::vector<QSize>{{720, 450}}));
    EXPECT_EQ(scalingSteps({800, 600}, {720, 540}), (std::vector<QSize>{{720, 540}}));
    EXPECT_EQ(scalingSteps({300, 200}, {300, 200}), (std::vector<QSize>{{300, 200}}));
}

TEST(ScalingSteps, Each_direction_ends_at_its_own_size)
{
    EXPECT_EQ(scalingSteps({3000, 1}, {720, 1}),
              (std::vector<QSize>{{1500, 1}, {750, 1}, {720, 1}}));
}
