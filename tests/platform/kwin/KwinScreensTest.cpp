// The screens of KWin, and the pixel of which it is asked for a frame.
#include "platform/kwin/KwinScreens.h"

#include "platform/kwin/KwinServerFixture.h"

#include <vector>

namespace kelpa::test {
namespace {

using Rects = std::vector<Rect>;

TEST(KwinScreens, Are_those_of_the_report_that_have_a_place)
{
    EXPECT_EQ(kwin::screensIn(R"([{"x":0,"y":-10,"width":1920,"height":1080},{"width":7},)"
                              R"(7,{"x":1920,"y":0,"width":10,"height":-5},)"
                              R"({"x":"no","y":2,"width":3,"height":4}])"),
              (Rects{{0, -10, 1920, 1080}, {0, 2, 3, 4}}));
    for (const char* malformed : {"", "[", "{}", "null", "[[1,2,3,4]]"})
        EXPECT_TRUE(kwin::screensIn(malformed).empty()) << malformed;
    const QByteArray one = R"({"width":1,"height":1},)";
    EXPECT_EQ(kwin::screensIn('[' + one.repeated(100) + "{}]").size(), 64);
    EXPECT_EQ(kwin::screensIn(R"([{"x":-1e300,"width":1e300,"height":1}])"),
              (Rects{{-1e6, 0, 1e6, 1}}));
}

TEST(KwinScreens, The_pixel_is_on_a_screen_and_in_a_window_that_is_shown_there)
{
    struct Row
    {
        const char* name;
        Rects screens, windows;
        QPoint pixel;
    };
    const Rect left{0, 0, 1600, 1000};
    const Rect right{1600, 200, 800, 600};
    for (const Row& row : {
             Row{"a window", {left}, {{100, 200, 300, 400}}, {250, 400}},
             Row{"mostly off the screen", {left}, {{-290, 900, 300, 400}}, {5, 950}},
             Row{"over both, more on the second",
                 {left, right},
                 {{1500, 300, 500, 100}},
                 {1550, 350}},
             Row{"on the second", {left, right}, {{1700, 300, 100, 100}}, {1750, 350}},
             Row{"at the corner that no screen has",
                 {left, right},
                 {{1650, 100, 100, 200}},
                 {1700, 250}},
             Row{"beside all screens", {right}, {{0, 0, 100, 100}}, {2000, 500}},
             Row{"the next one is on a screen",
                 {left},
                 {{-500, 0, 100, 100}, {10, 10, 10, 10}},
                 {15, 15}},
             Row{"a corner of a point", {left}, {{1599.5, 999.75, 10, 10}}, {1599, 999}},
             Row{"only touching", {left}, {{1600, 0, 10, 10}}, {800, 500}},
             Row{"left of the origin", {{-1600, -1000, 1600, 1000}}, {{-3, -5, 30, 30}}, {-2, -3}},
             Row{"no window", {left}, {}, {800, 500}},
             Row{"no size", {left}, {{10, 10, 0, 50}}, {800, 500}},
             Row{"unknown screens", {}, {{1, 2, 300, 200}}, {151, 102}},
             Row{"nothing", {}, {}, {0, 0}},
         })
        EXPECT_EQ(kwin::pixelOnScreen(row.screens, row.windows), row.pixel) << row.name;
}

TEST_F(KwinServerTest, A_frame_is_asked_for_on_a_screen_though_the_window_is_mostly_beside_it)
{
    const QByteArray beside = QByteArray(notes).replace("\"x\":1,", "\"x\":-298,");
    kwin->screens = R"([{"x":0,"y":0,"width":1600,"height":1000}])";
    begin('[' + beside + ',' + mail + ']');
    givePictures();
    kwin->hiddenWindow = QStringLiteral("{22222222-2222-2222-2222-222222222222}");
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    EXPECT_TRUE(capture(*server, 2));
    // Two points of the window are on the screen.
    EXPECT_EQ(kwin->pixel, QPoint(1, 102));
}

} // namespace
} // namespace kelpa::test
