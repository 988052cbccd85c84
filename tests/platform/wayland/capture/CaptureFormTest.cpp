#include "platform/wayland/capture/CaptureForm.h"

#include <wayland-client-protocol.h>

#include <gtest/gtest.h>

#include <array>
#include <span>
#include <string>
#include <vector>

namespace kelpa::test {
namespace {

using wayland::capturedPicture;
using wayland::CaptureForm;
using wayland::captureForm;

constexpr auto xrgb = std::uint32_t{WL_SHM_FORMAT_XRGB8888};
constexpr auto argb = std::uint32_t{WL_SHM_FORMAT_ARGB8888};
constexpr auto xbgr = std::uint32_t{WL_SHM_FORMAT_XBGR8888};

TEST(CaptureForms, The_first_known_format_without_transparency_is_taken)
{
    const auto form = captureForm({.width = 10, .height = 3, .formats = {7, argb, xbgr, xrgb}});
    ASSERT_TRUE(form.has_value());
    EXPECT_EQ(form->size, QSize(10, 3));
    EXPECT_EQ(form->wireFormat, xrgb);
    EXPECT_EQ(form->format, QImage::Format_RGB32);
    EXPECT_EQ(form->stride(), 40);
    EXPECT_EQ(form->byteCount(), 120U);
    const auto transparent = captureForm({.width = 1, .height = 1, .formats = {argb}});
    ASSERT_TRUE(transparent.has_value());
    EXPECT_EQ(transparent->format, QImage::Format_ARGB32_Premultiplied);
}

TEST(CaptureForms, What_no_buffer_can_be_like_is_refused)
{
    struct Row
    {
        std::string what;
        wayland::CaptureConstraints constraints;
    };
    constexpr auto huge = std::uint32_t{0xFFFFFFFF};
    const std::array rows{
        Row{"nothing told", {}},
        Row{"no width", {0, 5, {xrgb}}},
        Row{"no height", {5, 0, {xrgb}}},
        Row{"wider than screens", {16385, 1, {xrgb}}},
        Row{"of the greatest numbers", {huge, huge, {xrgb}}},
        Row{"of a product that is 0", {65536, 65536, {xrgb}}},
        Row{"more memory than a window takes", {16384, 16384, {xrgb}}},
        Row{"no format", {5, 5, {}}},
        Row{"no known format", {5, 5, {7, 42}}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(captureForm(row.constraints), std::nullopt) << row.what;
    EXPECT_TRUE(captureForm({16384, 4096, {xrgb}}).has_value());
}

/// Two pixels wide and one high: red, then blue.
class CapturedPictures : public testing::Test
{
protected:
    QImage picture(std::uint32_t transform, const QSize& largest) const
    {
        return capturedPicture(form, std::as_bytes(std::span(pixels)), transform, largest);
    }

    const CaptureForm form = *captureForm({.width = 2, .height = 1, .formats = {xrgb}});
    // What is beyond the colours means nothing.
    const std::vector<std::uint32_t> pixels{0x00FF0000, 0x550000FF};
};

TEST_F(CapturedPictures, A_picture_that_fits_keeps_its_pixels_without_their_transparency)
{
    const QImage image = picture(WL_OUTPUT_TRANSFORM_NORMAL, QSize(100, 100));
    ASSERT_EQ(image.size(), QSize(2, 1));
    EXPECT_EQ(image.pixel(0, 0), 0xFFFF0000U);
    EXPECT_EQ(image.pixel(1, 0), 0xFF0000FFU);
}

TEST_F(CapturedPictures, Each_side_is_scaled_down_to_the_largest_by_itself)
{
    EXPECT_EQ(picture(WL_OUTPUT_TRANSFORM_NORMAL, QSize(1, 100)).size(), QSize(1, 1));
    EXPECT_TRUE(picture(WL_OUTPUT_TRANSFORM_NORMAL, QSize(0, 100)).isNull());
}

TEST_F(CapturedPictures, Turned_content_comes_upright)
{
    struct Row
    {
        std::uint32_t transform;
        QSize size;
        QPoint red;
    };
    const std::array rows{
        Row{WL_OUTPUT_TRANSFORM_NORMAL, {2, 1}, {0, 0}},
        // Content that was turned anticlockwise has its former top to the left.
        Row{WL_OUTPUT_TRANSFORM_90, {1, 2}, {0, 0}},
        Row{WL_OUTPUT_TRANSFORM_180, {2, 1}, {1, 0}},
        Row{WL_OUTPUT_TRANSFORM_270, {1, 2}, {0, 1}},
        Row{WL_OUTPUT_TRANSFORM_FLIPPED, {2, 1}, {1, 0}},
        Row{WL_OUTPUT_TRANSFORM_FLIPPED_90, {1, 2}, {0, 0}},
        Row{WL_OUTPUT_TRANSFORM_FLIPPED_180, {2, 1}, {0, 0}},
        Row{WL_OUTPUT_TRANSFORM_FLIPPED_270, {1, 2}, {0, 1}},
    };
    for (const Row& row : rows) {
        const QImage image = picture(row.transform, QSize(100, 100));
        ASSERT_EQ(image.size(), row.size) << row.transform;
        EXPECT_EQ(wayland::uprightSize(form.size, row.transform), row.size) << row.transform;
        EXPECT_EQ(image.pixel(row.red), 0xFFFF0000U) << row.transform;
    }
    EXPECT_EQ(picture(WL_OUTPUT_TRANSFORM_90, QSize(100, 1)).size(), QSize(1, 1));
    EXPECT_TRUE(picture(8, QSize(100, 100)).isNull());
    EXPECT_TRUE(picture(0xFFFFFFFF, QSize(100, 100)).isNull());
}

TEST_F(CapturedPictures, Too_few_pixels_are_no_picture)
{
    EXPECT_TRUE(
        capturedPicture(form, std::as_bytes(std::span(pixels)).first(7), 0, QSize(9, 9)).isNull());
}

TEST_F(CapturedPictures, A_picture_is_its_own_once_the_memory_changes)
{
    std::vector<std::uint32_t> changing = pixels;
    const QImage image =
        capturedPicture(form, std::as_bytes(std::span(changing)), 0, QSize(100, 100));
    changing.assign(2, 0);
    EXPECT_EQ(image.pixel(0, 0), 0xFFFF0000U);
}

} // namespace
} // namespace kelpa::test
