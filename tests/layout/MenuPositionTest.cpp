#include "layout/MenuPosition.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

constexpr MenuSpace space{{900, 620}, 8, 4};
constexpr QSizeF size{200, 300};

QRectF button(double x, double y)
{
    return {x, y, 32, 28};
}

TEST(MenuPosition, A_menu_is_below_its_button)
{
    EXPECT_EQ(menuPosition(button(100, 50), size, space), QPointF(100, 82));
    // The last place where all of it fits.
    EXPECT_EQ(menuPosition(button(100, 280), size, space), QPointF(100, 312));
}

TEST(MenuPosition, A_menu_without_room_below_its_button_is_above_it)
{
    EXPECT_EQ(menuPosition(button(100, 400), size, space), QPointF(100, 96));
    EXPECT_EQ(menuPosition(button(100, 312), size, space), QPointF(100, 8));
}

TEST(MenuPosition, A_menu_without_room_below_and_above_is_beside_its_button)
{
    const QSizeF tall(200, 604);
    EXPECT_EQ(menuPosition(button(100, 300), tall, space), QPointF(136, 8));
    EXPECT_EQ(menuPosition(button(800, 300), tall, space), QPointF(596, 8));
}

TEST(MenuPosition, A_menu_beside_its_button_begins_at_its_height_where_it_can)
{
    const QSizeF middling(200, 310);
    EXPECT_EQ(menuPosition({100, 290, 32, 28}, middling, space), QPointF(136, 290));
}

TEST(MenuPosition, A_menu_stays_within_the_sides_of_the_window)
{
    EXPECT_EQ(menuPosition(button(860, 50), size, space), QPointF(692, 82));
    EXPECT_EQ(menuPosition(button(-20, 50), size, space), QPointF(8, 82));
    EXPECT_EQ(menuPosition(button(860, 400), size, space), QPointF(692, 96));
}

TEST(MenuPosition, A_menu_at_a_press_begins_or_ends_there)
{
    constexpr MenuSpace near{{900, 620}, 8, 0};
    EXPECT_EQ(menuPosition({100, 50, 0, 0}, size, near), QPointF(100, 50));
    EXPECT_EQ(menuPosition({100, 500, 0, 0}, size, near), QPointF(100, 200));
}

TEST(MenuPosition, A_menu_without_any_free_place_is_within_the_window)
{
    EXPECT_EQ(menuPosition({20, 20, 860, 580}, size, space), QPointF(20, 312));
    EXPECT_EQ(menuPosition(button(100, 50), {2000, 2000}, space), QPointF(8, 8));
}

TEST(MenuPosition, A_menu_covers_its_button_nowhere_in_the_window)
{
    for (int x = 0; x <= 868; x += 31) {
        for (int y = 0; y <= 592; y += 23) {
            for (const double height : {60.0, 300.0, 604.0}) {
                const QSizeF menu(200, height);
                const QRectF place(menuPosition(button(x, y), menu, space), menu);
                EXPECT_FALSE(place.intersects(button(x, y))) << x << ' ' << y << ' ' << height;
                EXPECT_TRUE(QRectF(8, 8, 884, 604).contains(place))
                    << x << ' ' << y << ' ' << height;
            }
        }
    }
}

} // namespace
} // namespace kelpa
