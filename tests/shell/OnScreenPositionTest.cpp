#include "shell/WindowRaiser.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

struct PositionCase
{
    const char* name;
    QRect frame;
    std::optional<QPoint> position;
};

class OnScreenPosition : public testing::TestWithParam<PositionCase>
{};

// A screen of 1600 by 900 with a panel of 40 above.
TEST_P(OnScreenPosition, Makes_the_window_visible)
{
    EXPECT_EQ(onScreenPosition(GetParam().frame, QRect(0, 40, 1600, 860)), GetParam().position);
}

INSTANTIATE_TEST_SUITE_P(
    Frames, OnScreenPosition,
    testing::Values(
        PositionCase{"inside", QRect(100, 100, 1000, 700), std::nullopt},
        PositionCase{"filling", QRect(0, 40, 1600, 860), std::nullopt},
        PositionCase{"one_pixel_inside_on_the_right", QRect(1599, 100, 1000, 700), std::nullopt},
        PositionCase{"wholly_on_the_right", QRect(1600, 100, 1000, 700), QPoint(300, 120)},
        PositionCase{"one_pixel_inside_on_the_left", QRect(-999, 100, 1000, 700), std::nullopt},
        PositionCase{"wholly_on_the_left", QRect(-1000, 100, 1000, 700), QPoint(300, 120)},
        PositionCase{"wholly_behind_the_panel", QRect(100, -660, 1000, 700), QPoint(300, 120)},
        PositionCase{"wholly_below", QRect(100, 900, 1000, 700), QPoint(300, 120)},
        PositionCase{"larger_than_the_screen_and_off_it", QRect(5000, 0, 2000, 1000),
                     QPoint(0, 40)}),
    caseName);

TEST(OnScreenPositionWithoutScreen, Is_absent)
{
    EXPECT_EQ(onScreenPosition(QRect(5000, 0, 100, 100), QRect()), std::nullopt);
}

} // namespace
} // namespace kelpa::test
