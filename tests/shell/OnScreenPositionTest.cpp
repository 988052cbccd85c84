#include "shell/WindowRaiser.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

struct PlaceCase
{
    const char* name;
    QRect frame;
    std::optional<QPoint> place;
};

class WindowPlace : public testing::TestWithParam<PlaceCase>
{};

// A screen of 1600 by 900 with a panel of 40 above.
TEST_P(WindowPlace, Is_where_it_can_be_seen)
{
    EXPECT_EQ(rescuedPosition(GetParam().frame, QRect(0, 40, 1600, 860)), GetParam().place);
}

INSTANTIATE_TEST_SUITE_P(
    OnScreen, WindowPlace,
    testing::Values(
        PlaceCase{"inside", QRect(100, 100, 1000, 700), std::nullopt},
        PlaceCase{"filling", QRect(0, 40, 1600, 860), std::nullopt},
        PlaceCase{"one_pixel_inside_on_the_right", QRect(1599, 100, 1000, 700), std::nullopt},
        PlaceCase{"wholly_on_the_right", QRect(1600, 100, 1000, 700), QPoint(300, 120)},
        PlaceCase{"one_pixel_inside_on_the_left", QRect(-999, 100, 1000, 700), std::nullopt},
        PlaceCase{"wholly_on_the_left", QRect(-1000, 100, 1000, 700), QPoint(300, 120)},
        PlaceCase{"wholly_behind_the_panel", QRect(100, -660, 1000, 700), QPoint(300, 120)},
        PlaceCase{"wholly_below", QRect(100, 900, 1000, 700), QPoint(300, 120)},
        PlaceCase{"larger_than_the_screen_and_off_it", QRect(5000, 0, 2000, 1000), QPoint(0, 40)}),
    caseName);

TEST(WindowPlaceWithoutScreen, Stays)
{
    EXPECT_EQ(rescuedPosition(QRect(5000, 0, 100, 100), QRect()), std::nullopt);
}

} // namespace
} // namespace kelpa::test
