#include "windows/FirstPictures.h"

#include "windows/BlankPicture.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

class FirstPicturesTest : public testing::Test
{
protected:
    void list(WindowID id, bool isOnScreen = true)
    {
        WindowItem window;
        window.id = id;
        window.isOnScreen = isOnScreen;
        windows.append(window);
    }

    std::vector<WindowID> untried() const { return pictures.untried(windows, previews); }

    FirstPictures pictures;
    QList<WindowItem> windows;
    Previews previews;
};

using Windows = std::vector<WindowID>;

TEST_F(FirstPicturesTest, Windows_are_due_in_the_order_in_which_they_came_into_view)
{
    for (const WindowID id : {1U, 2U, 3U, 4U})
        list(id);
    for (const WindowID id : {3U, 1U, 4U, 3U})
        pictures.noteInView(id);
    EXPECT_EQ(untried(), (Windows{3, 1, 4}));
}

TEST_F(FirstPicturesTest, A_window_that_has_a_picture_or_was_tried_is_not_due)
{
    for (const WindowID id : {1U, 2U, 3U}) {
        list(id);
        pictures.noteInView(id);
    }
    previews.insert(1, {});
    pictures.noteTried(2);
    EXPECT_EQ(untried(), Windows{3});
    EXPECT_TRUE(pictures.wasTried(2));
    EXPECT_FALSE(pictures.wasTried(3));
}

TEST_F(FirstPicturesTest, A_minimised_window_is_due_once_it_is_on_screen)
{
    list(1, false);
    pictures.noteInView(1);
    EXPECT_EQ(untried(), Windows{});
    windows.first().isOnScreen = true;
    EXPECT_EQ(untried(), Windows{1});
}

TEST_F(FirstPicturesTest, A_window_that_goes_is_forgotten)
{
    list(1);
    pictures.noteInView(1);
    pictures.noteTried(1);
    EXPECT_EQ(pictures.restrictTo({}), 1);
    EXPECT_FALSE(pictures.wasTried(1));
    EXPECT_EQ(pictures.restrictTo(windows), 0);
    EXPECT_EQ(untried(), Windows{}) << "it is not known to be in view";
}

TEST_F(FirstPicturesTest, The_second_blank_picture_is_accepted_and_the_first_is_not)
{
    list(1);
    pictures.noteInView(1);
    EXPECT_EQ(pictures.blankOnce(windows, previews), QList<WindowID>{});
    EXPECT_FALSE(pictures.acceptsBlank(1));
    EXPECT_EQ(untried(), Windows{});
    EXPECT_FALSE(pictures.wasTried(1));
    EXPECT_EQ(pictures.blankOnce(windows, previews), QList<WindowID>{1});
    EXPECT_TRUE(pictures.acceptsBlank(1));
    pictures.noteTried(1);
    EXPECT_EQ(pictures.blankOnce(windows, previews), QList<WindowID>{});
}

QImage picture(QImage::Format format)
{
    QImage image(128, 72, format);
    image.fill(Qt::white);
    return image;
}

TEST(BlankPicture, A_picture_of_one_colour_is_blank_and_one_other_pixel_makes_the_difference)
{
    for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied}) {
        QImage image = picture(format);
        EXPECT_TRUE(isBlank(image));
        image.setPixel(127, 71, qRgb(255, 255, 254));
        EXPECT_FALSE(isBlank(image));
    }
}

TEST(BlankPicture, The_unused_byte_of_opaque_pixels_makes_no_difference)
{
    QImage image = picture(QImage::Format_RGB32);
    image.scanLine(3)[3] = 0;
    EXPECT_TRUE(isBlank(image));
}

TEST(BlankPicture, A_picture_of_one_pixel_and_none_are_blank)
{
    EXPECT_TRUE(isBlank(picture(QImage::Format_RGB32).copy(0, 0, 1, 1)));
    EXPECT_TRUE(isBlank(QImage()));
}

} // namespace
} // namespace kelpa::test
