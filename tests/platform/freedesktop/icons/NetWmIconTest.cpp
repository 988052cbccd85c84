#include "platform/freedesktop/icons/NetWmIcon.h"

#include <gtest/gtest.h>

#include <QColor>

#include <cstdint>
#include <random>
#include <vector>

using namespace kelpa;

namespace {

using Data = std::vector<std::uint32_t>;

constexpr std::uint32_t red = 0xffff0000;
constexpr std::uint32_t green = 0xff00ff00;
constexpr std::uint32_t blue = 0xff0000ff;

void append(Data& data, std::uint32_t width, std::uint32_t height, std::uint32_t value)
{
    data.push_back(width);
    data.push_back(height);
    data.insert(data.end(), std::size_t{width} * height, value);
}

Data threeSizes()
{
    Data data;
    append(data, 16, 16, red);
    append(data, 64, 64, green);
    append(data, 32, 32, blue);
    return data;
}

} // namespace

TEST(NetWmIcon, The_exact_size_is_taken_where_there_is_one)
{
    const QImage image = iconFromNetWmIcon(threeSizes(), 32);
    EXPECT_EQ(image.size(), QSize(32, 32));
    EXPECT_EQ(image.pixel(5, 5), blue);
}

TEST(NetWmIcon, The_nearest_larger_picture_is_scaled_down)
{
    const QImage image = iconFromNetWmIcon(threeSizes(), 48);
    EXPECT_EQ(image.size(), QSize(48, 48));
    EXPECT_EQ(image.pixel(20, 20), green);
}

TEST(NetWmIcon, The_largest_is_taken_as_it_is_where_all_are_smaller)
{
    const QImage image = iconFromNetWmIcon(threeSizes(), 256);
    EXPECT_EQ(image.size(), QSize(64, 64));
    EXPECT_EQ(image.pixel(0, 0), green);
}

TEST(NetWmIcon, A_picture_that_is_not_square_keeps_its_shape)
{
    Data data;
    append(data, 64, 32, red);
    EXPECT_EQ(iconFromNetWmIcon(data, 32).size(), QSize(32, 16));
}

TEST(NetWmIcon, Rows_and_transparency_are_kept)
{
    const QImage image = iconFromNetWmIcon({2, 2, red, 0x80123456, 0, blue}, 2);
    EXPECT_EQ(image.pixel(0, 0), red);
    EXPECT_EQ(image.pixel(1, 0), 0x80123456U);
    EXPECT_EQ(image.pixel(0, 1), 0U);
    EXPECT_EQ(image.pixel(1, 1), blue);
}

TEST(NetWmIcon, Data_that_is_no_picture_gives_none)
{
    const std::vector<Data> lies{
        {},
        {16},
        {16, 16},
        {16, 16, red},
        {0, 0, red},
        {0, 16, red},
        {0xffffffff, 0xffffffff, red},
        {0x80000000, 2, red},
        {0x10000, 0x10000, red, red},
        {100000, 1, red},
    };
    for (const Data& data : lies) {
        EXPECT_TRUE(iconFromNetWmIcon(data, 32).isNull()) << testing::PrintToString(data);
    }
}

TEST(NetWmIcon, A_lying_header_leaves_the_pictures_before_it)
{
    Data data;
    append(data, 16, 16, red);
    data.insert(data.end(), {4000000000, 4000000000, green});
    const QImage image = iconFromNetWmIcon(data, 32);
    EXPECT_EQ(image.size(), QSize(16, 16));
    EXPECT_EQ(image.pixel(0, 0), red);
}

TEST(NetWmIcon, A_wholly_transparent_picture_is_skipped)
{
    Data data;
    append(data, 32, 32, 0x00ffffff);
    append(data, 16, 16, red);
    EXPECT_EQ(iconFromNetWmIcon(data, 32).size(), QSize(16, 16));
}

TEST(NetWmIcon, A_request_for_no_pixels_gives_none)
{
    EXPECT_TRUE(iconFromNetWmIcon(threeSizes(), 0).isNull());
    EXPECT_TRUE(iconFromNetWmIcon(threeSizes(), -5).isNull());
}

TEST(NetWmIcon, Random_data_gives_at_most_the_requested_pixels)
{
    for (std::uint32_t seed = 0; seed < 2000; ++seed) {
        std::mt19937 random(seed);
        Data data(random() % 400);
        for (std::uint32_t& value : data) {
            value = static_cast<std::uint32_t>(random() % 3 == 0 ? random() : random() % 20);
        }
        const QImage image = iconFromNetWmIcon(data, 7);
        ASSERT_LE(image.width(), 7) << "seed " << seed;
        ASSERT_LE(image.height(), 7) << "seed " << seed;
    }
}
