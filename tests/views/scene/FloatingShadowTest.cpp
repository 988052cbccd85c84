// The opacity of the shadow of menus and sheets.
#include "views/scene/FloatingShadow.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

TEST(FloatingShadow, It_is_whole_at_the_edge_and_nothing_at_its_reach)
{
    EXPECT_DOUBLE_EQ(shadowStrength(0, 16), 1);
    EXPECT_DOUBLE_EQ(shadowStrength(-5, 16), 1);
    EXPECT_DOUBLE_EQ(shadowStrength(16, 16), 0);
    EXPECT_DOUBLE_EQ(shadowStrength(40, 16), 0);
}

TEST(FloatingShadow, It_fades_with_every_pixel_and_nowhere_in_a_step_that_is_seen)
{
    for (int pixel = 1; pixel <= 16; ++pixel) {
        const double step = shadowStrength(pixel - 1, 16) - shadowStrength(pixel, 16);
        EXPECT_GT(step, 0) << pixel;
        EXPECT_LT(step, 0.11) << pixel;
    }
}

} // namespace
} // namespace kelpa::test
