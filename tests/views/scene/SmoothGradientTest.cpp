// A gradient without bands.
#include "views/scene/SmoothGradient.h"

#include <gtest/gtest.h>

#include <QSet>

#include <cmath>

namespace kelpa::test {
namespace {

const QColor top(0xe6, 0xea, 0xf2);
const QColor bottom(0xef, 0xf0, 0xf3);

TEST(SmoothGradient, The_mean_of_a_few_pixels_is_the_colour_at_their_place)
{
    const QImage image = ditheredGradient({16, 800}, top, bottom, 0);
    for (int y = 0; y + 4 <= image.height(); y += 4) {
        double red = 0;
        for (int x = 0; x < 4; ++x) {
            for (int line = y; line < y + 4; ++line)
                red += qRed(image.pixel(x, line));
        }
        const double exact = 0xe6 + (0xef - 0xe6) * (y + 2.0) / image.height();
        // A level is what a band would differ by from the next one.
        EXPECT_NEAR(red / 16, exact, 0.1) << y;
    }
}

TEST(SmoothGradient, No_pixel_is_a_level_away_from_its_colour)
{
    const QImage image = ditheredGradient({8, 300}, bottom, top, 0);
    for (int y = 0; y < image.height(); ++y) {
        const double exact = 0xf0 + (0xea - 0xf0) * (y + 0.5) / image.height();
        for (int x = 0; x < image.width(); ++x)
            EXPECT_LT(std::abs(qGreen(image.pixel(x, y)) - exact), 1) << x << ',' << y;
    }
}

TEST(SmoothGradient, Equal_colours_are_one_colour)
{
    const QImage image = ditheredGradient({8, 40}, top, top, 0);
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    }
    EXPECT_EQ(colors, QSet<QRgb>{top.rgb()});
}

TEST(SmoothGradient, Its_corners_are_round)
{
    const QImage image = ditheredGradient({40, 40}, top, bottom, 14);
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(image.pixel(39, 39)), 0);
    EXPECT_EQ(qAlpha(image.pixel(20, 0)), 255);
    EXPECT_EQ(qAlpha(image.pixel(0, 20)), 255);
    EXPECT_TRUE(ditheredGradient({0, 40}, top, bottom, 14).isNull());
}

} // namespace
} // namespace kelpa::test
