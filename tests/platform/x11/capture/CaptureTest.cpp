#include "CaptureFixture.h"
#include "support/LogRecorder.h"

#include <xcb/composite.h>
#include <xcb/shape.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <future>
#include <thread>

using namespace kelpa;
using namespace kelpa::test;
using namespace std::chrono_literals;

using Capture = CaptureOnDisplay;

TEST_F(Capture, A_window_in_front_is_captured_at_once_at_its_own_size)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const auto result = capture(number("a"));
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->pixelSize, QSize(300, 200));
    EXPECT_EQ(result->image.size(), QSize(300, 200));
    EXPECT_TRUE(isPlain(result->image, opaque(red)));
}

TEST_F(Capture, A_window_of_1440_by_900_becomes_720_by_450)
{
    const xcb_window_t window = open(client, {0, 0, 1440, 900, "a", {}, false, red});
    const WindowID id = number("a");
    settled(id);
    // Also beyond the edges of the screen.
    client.fill(window, {720, 0, 720, 450}, green);
    client.fill(window, {0, 450, 720, 450}, blue);
    const WindowCapture result = settled(id);
    EXPECT_EQ(result.pixelSize, QSize(1440, 900));
    ASSERT_EQ(result.image.size(), QSize(720, 450));
    EXPECT_TRUE(isPlain(result.image.copy(0, 0, 359, 224), opaque(red)));
    EXPECT_TRUE(isPlain(result.image.copy(361, 0, 359, 224), opaque(green)));
    EXPECT_TRUE(isPlain(result.image.copy(0, 226, 359, 224), opaque(blue)));
    EXPECT_TRUE(isPlain(result.image.copy(361, 226, 359, 224), opaque(red)));
}

TEST_F(Capture, Each_direction_is_scaled_down_by_itself_and_never_up)
{
    open(client, {0, 0, 300, 900, "high", {}});
    const WindowCapture result = settled(number("high"));
    EXPECT_EQ(result.pixelSize, QSize(300, 900));
    EXPECT_EQ(result.image.size(), QSize(300, 450));
}

TEST_F(Capture, The_picture_costs_no_more_memory_than_its_pixels)
{
    open(client, {0, 0, 1280, 800, "a", {}, false, red});
    const WindowCapture result = settled(number("a"));
    EXPECT_EQ(result.image.format(), QImage::Format_RGB32);
    EXPECT_EQ(result.image.sizeInBytes(), 720 * 450 * 4);
}

TEST_F(Capture, A_pattern_of_single_pixels_is_averaged_when_reduced_far)
{
    // Lines of one pixel, black and white, on a quarter of the size: all grey, no stripes.
    const xcb_window_t window = open(client, {0, 0, 1200, 780, "a", {}, false, 0x000000});
    for (std::int16_t x = 0; x < 1200; x += 2) {
        client.fill(window, {x, 0, 1, 780}, 0xFFFFFF);
    }
    const WindowID id = number("a");
    ASSERT_TRUE(settled(id).image.width() > 0);
    const auto result = server->captureWindow({id, {300, 195}}, {});
    ASSERT_TRUE(result.has_value());
    ASSERT_EQ(result->image.size(), QSize(300, 195));
    for (int x = 1; x < 299; ++x) {
        EXPECT_NEAR(qRed(result->image.pixel(x, 90)), 128, 2);
    }
}

TEST_F(Capture, An_obscured_window_shows_its_own_pixels)
{
    open(client, {100, 100, 300, 200, "below", {}, false, red});
    const xcb_window_t cover = open(client, {80, 80, 500, 400, "cover", {}, false, green});
    client.raise(cover);
    EXPECT_TRUE(isPlain(settled(number("below")).image, opaque(red)));
    EXPECT_TRUE(isPlain(settled(number("cover")).image, opaque(green)));
}

TEST_F(Capture, An_obscured_window_has_its_settle_time_before_it_is_captured)
{
    // The server paints nothing where this window was obscured.
    const xcb_window_t below = open(client, {100, 100, 300, 200, "below", {}});
    const xcb_window_t cover = open(client, {80, 80, 500, 400, "cover", {}, false, green});
    client.raise(cover);
    const WindowID id = number("below");
    x11::WindowCapturer capturer(std::make_shared<x11::DisplayConnector>(xServer.display()),
                                 {.settleTime = 500ms});
    // A small part over and over from the start, all of it only much later.
    const auto begin = std::chrono::steady_clock::now();
    const std::jthread drawing([&](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            client.fill(below, {0, 0, 10, 10}, red);
            if (std::chrono::steady_clock::now() - begin >= 100ms) {
                client.fill(below, {0, 0, 300, 200}, blue);
            }
            client.sync();
        }
    });
    const auto result = capturer.capture({id, below}, {}, {720, 450}, CaptureNeed::always, {});
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 500ms);
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->image.pixel(150, 100), opaque(blue));
}

TEST_F(Capture, A_stopped_capture_waits_no_longer_for_an_obscured_window)
{
    const xcb_window_t below = open(client, {100, 100, 300, 200, "below", {}});
    const xcb_window_t cover = open(client, {80, 80, 500, 400, "cover", {}, false, green});
    client.raise(cover);
    const WindowID id = number("below");
    x11::WindowCapturer capturer(std::make_shared<x11::DisplayConnector>(xServer.display()),
                                 {.settleTime = 1h});
    std::stop_source stop;
    auto capturing = std::async(std::launch::async, [&] {
        return capturer.capture({id, below}, {}, {720, 450}, CaptureNeed::always, stop.get_token());
    });
    stop.request_stop();
    EXPECT_FALSE(capturing.get().has_value());
}

TEST_F(Capture, Only_the_window_and_those_that_come_next_are_redirected)
{
    const auto isRedirected = [&](xcb_window_t window) {
        const xcb_pixmap_t pixmap = xcb_generate_id(client.connection());
        const std::unique_ptr<xcb_generic_error_t, x11::XcbFree> error(xcb_request_check(
            client.connection(),
            xcb_composite_name_window_pixmap_checked(client.connection(), window, pixmap)));
        if (!error) {
            xcb_free_pixmap(client.connection(), pixmap);
        }
        return error == nullptr;
    };
    const xcb_window_t a = open(client, {50, 60, 300, 200, "a", {}, false, red});
    const xcb_window_t b = open(client, {450, 60, 300, 200, "b", {}, false, red});
    const xcb_window_t c = open(client, {50, 400, 300, 200, "c", {}, false, red});
    const xcb_window_t d = open(client, {450, 400, 300, 200, "d", {}, false, red});
    const WindowID numberOfA = number("a");
    const WindowID numberOfB = number("b");
    const WindowID numberOfD = number("d");
    client.minimize(d);
    ASSERT_TRUE(waitUntil(
        [&] { return runDiscoveryPass(*server, WindowListScope::onScreen).size() == 3; }));
    ASSERT_TRUE(capture(numberOfA, CaptureNeed::always, {numberOfB, numberOfD}).has_value());
    EXPECT_TRUE(isRedirected(a));
    EXPECT_TRUE(isRedirected(b));
    EXPECT_FALSE(isRedirected(c));
    EXPECT_FALSE(isRedirected(d));

    // A window redirected ahead costs one round trip at its turn.
    const std::uint64_t before = server->captureTraffic().roundTrips;
    ASSERT_TRUE(capture(numberOfB, CaptureNeed::always, {numberOfA, numberOfD}).has_value());
    EXPECT_EQ(server->captureTraffic().roundTrips, before + 1);
}

TEST_F(Capture, A_window_partly_beyond_the_screen_is_captured_whole)
{
    open(client, {1180, 700, 300, 200, "a", {}, false, red});
    const WindowCapture result = settled(number("a"));
    EXPECT_EQ(result.pixelSize, QSize(300, 200));
    EXPECT_TRUE(isPlain(result.image, opaque(red)));
}

TEST_F(Capture, The_shadow_that_a_client_draws_itself_is_cut_off)
{
    const xcb_window_t window = client.create({50, 60, 340, 260, "a", {}, false, blue});
    // Left, right, top, bottom.
    client.setCardinals(window, "_GTK_FRAME_EXTENTS", {10, 30, 20, 40});
    client.map(window);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(window); }));
    client.fill(window, {10, 20, 300, 200}, red);
    const WindowCapture result = settled(number("a"));
    EXPECT_EQ(result.pixelSize, QSize(300, 200));
    EXPECT_TRUE(isPlain(result.image, opaque(red)));
}

TEST_F(Capture, A_minimized_window_has_no_picture_until_it_returns)
{
    const xcb_window_t window = open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    ASSERT_TRUE(capture(id).has_value());
    client.minimize(window);
    ASSERT_TRUE(
        waitUntil([&] { return runDiscoveryPass(*server, WindowListScope::onScreen).empty(); }));
    EXPECT_FALSE(capture(id).has_value());
    EXPECT_FALSE(capture(id, CaptureNeed::ifChanged).has_value());
    client.map(window);
    EXPECT_TRUE(waitUntil([&] { return capture(id, CaptureNeed::ifChanged).has_value(); }));
}

TEST_F(Capture, A_resized_window_is_captured_at_its_new_size)
{
    const xcb_window_t window = open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    ASSERT_TRUE(capture(id).has_value());
    client.resize(window, 400, 100);
    EXPECT_TRUE(waitUntil([&] {
        const auto result = capture(id);
        return result && result->pixelSize == QSize(400, 100) &&
               result->image.size() == QSize(400, 100);
    }));
}

TEST_F(Capture, A_window_that_is_gone_has_no_picture)
{
    const xcb_window_t window = open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    ASSERT_TRUE(capture(id).has_value());
    client.destroy(window);
    EXPECT_FALSE(capture(id).has_value());
    EXPECT_FALSE(capture(id).has_value());
    EXPECT_FALSE(capture(4711).has_value());
}

TEST_F(Capture, Redirections_and_failures_are_logged_without_titles)
{
    open(client, {50, 60, 300, 200, "secret", {}, false, red});
    const WindowID id = number("secret");
    const xcb_window_t gone = open(client, {400, 60, 300, 200, "gone", {}, false, red});
    const WindowID goneID = number("gone");
    client.destroy(gone);
    const LogRecorder log(QStringLiteral("kelpa.x11.capture"));
    settled(id);
    EXPECT_FALSE(capture(goneID).has_value());
    const QStringList messages = log.messages();
    EXPECT_TRUE(messages.contains(QStringLiteral("window %1 redirected").arg(id)));
    EXPECT_EQ(messages.last(),
              QStringLiteral("window %1 not captured: gone, not shown, too large, or of an "
                             "unknown format")
                  .arg(goneID));
    EXPECT_TRUE(messages.filter(QStringLiteral("secret")).isEmpty());
}

TEST_F(Capture, A_window_that_bears_another_number_is_not_captured_in_its_place)
{
    const xcb_window_t window = open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    ASSERT_TRUE(capture(id).has_value());
    // As if another window had got the server's id meanwhile.
    client.setCardinals(window, "_KELPA_WINDOW_NUMBER", {id + 1});
    EXPECT_FALSE(capture(id).has_value());
    client.setCardinals(window, "_KELPA_WINDOW_NUMBER", {id});
    EXPECT_TRUE(waitUntil([&] { return capture(id).has_value(); }));
}

TEST_F(Capture, A_stopped_capture_takes_no_picture)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_FALSE(server->captureWindow({id, {720, 450}}, stop.get_token()).has_value());
    EXPECT_EQ(server->captureCounts().pictures, 0U);
    EXPECT_EQ(server->captureTraffic().bytesSent, 0U);
}

TEST_F(Capture, A_translucent_window_keeps_its_transparency)
{
    open(client, {50, 60, 300, 200, "a", {}, false, 0x80400000, true});
    const WindowCapture result = settled(number("a"));
    EXPECT_EQ(result.image.format(), QImage::Format_ARGB32_Premultiplied);
    ASSERT_EQ(result.image.size(), QSize(300, 200));
    EXPECT_EQ(qAlpha(result.image.pixel(150, 100)), 128);
}

TEST_F(Capture, Outside_the_shape_of_a_window_there_is_nothing)
{
    const xcb_window_t window = client.create({50, 60, 300, 200, "a", {}, false, red});
    const xcb_rectangle_t left{0, 0, 150, 200};
    xcb_shape_rectangles(client.connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                         XCB_CLIP_ORDERING_UNSORTED, window, 0, 0, 1, &left);
    client.map(window);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(window); }));
    const WindowCapture result = settled(number("a"));
    EXPECT_TRUE(isPlain(result.image.copy(0, 0, 150, 200), opaque(red)));
    EXPECT_TRUE(isPlain(result.image.copy(150, 0, 150, 200), 0));
}

TEST_F(Capture, A_window_of_one_pixel_is_one_pixel)
{
    open(client, {50, 60, 1, 1, "a", {}, false, red});
    const WindowCapture result = settled(number("a"));
    EXPECT_EQ(result.pixelSize, QSize(1, 1));
    EXPECT_TRUE(isPlain(result.image, opaque(red)));
}

TEST_F(Capture, A_window_of_10000_by_1_becomes_720_by_1)
{
    open(client, {0, 60, 10000, 1, "a", {}, false, red});
    const WindowCapture result = settled(number("a"));
    EXPECT_EQ(result.pixelSize, QSize(10000, 1));
    EXPECT_EQ(result.image.size(), QSize(720, 1));
    EXPECT_TRUE(isPlain(result.image, opaque(red)));
}

TEST_F(Capture, A_giant_window_is_left_alone)
{
    open(client, {0, 0, 20000, 20000, "giant", {}, false, red});
    const WindowID id = number("giant");
    ASSERT_NE(id, 0U);
    EXPECT_FALSE(capture(id).has_value());
    EXPECT_FALSE(capture(id).has_value());
}

TEST_F(Capture, A_border_of_the_window_itself_is_not_in_the_picture)
{
    const xcb_window_t window = client.create({50, 60, 300, 200, "a", {}, false, red});
    const std::uint32_t width = 7;
    xcb_configure_window(client.connection(), window, XCB_CONFIG_WINDOW_BORDER_WIDTH, &width);
    client.map(window);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(window); }));
    const WindowCapture result = settled(number("a"));
    EXPECT_EQ(result.pixelSize, QSize(300, 200));
    EXPECT_TRUE(isPlain(result.image, opaque(red)));
}

TEST_F(Capture, A_program_that_hangs_is_captured_as_it_last_looked)
{
    Program terminal(xServer.display(), QStringLiteral("xterm"),
                     {QStringLiteral("-bg"), QStringLiteral("#2030d0"), QStringLiteral("-T"),
                      QStringLiteral("hung"), QStringLiteral("-e"), QStringLiteral("cat")});
    ASSERT_TRUE(waitUntil([&] { return number("hung") != 0; }));
    const WindowID id = number("hung");
    ASSERT_TRUE(settled(id).image.width() > 0);
    ASSERT_EQ(::kill(static_cast<pid_t>(terminal.processID()), SIGSTOP), 0);
    open(client, {0, 0, 1200, 780, "cover", {}, false, green});
    const auto result = capture(id);
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->image.pixel(result->image.width() / 2, result->image.height() / 2),
              opaque(blue));
}

TEST_F(Capture, The_screen_looks_the_same_while_windows_are_captured)
{
    open(client, {100, 100, 300, 200, "below", {}, false, red});
    const xcb_window_t cover = open(client, {200, 150, 300, 200, "cover", {}, false, green});
    client.raise(cover);
    settled(number("below"));
    settled(number("cover"));
    const auto colorAt = [&](std::int16_t x, std::int16_t y) {
        xcb_get_image_reply_t* reply =
            xcb_get_image_reply(client.connection(),
                                xcb_get_image(client.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP,
                                              client.root(), x, y, 1, 1, 0xFFFFFFFF),
                                nullptr);
        const std::uint8_t* bytes = xcb_get_image_data(reply);
        const std::uint32_t color = static_cast<std::uint32_t>(bytes[0] | bytes[1] << 8U) |
                                    static_cast<std::uint32_t>(bytes[2]) << 16U;
        std::free(reply);
        return color;
    };
    EXPECT_TRUE(waitUntil([&] { return colorAt(150, 180) == red && colorAt(350, 250) == green; }));
}
