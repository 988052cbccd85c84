#include "CaptureFixture.h"

using namespace kelpa;
using namespace kelpa::test;

using UnchangedWindows = CaptureOnDisplay;

TEST_F(UnchangedWindows, A_window_that_did_not_change_costs_the_server_no_request)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    settled(id);
    const x11::XcbTraffic before = server->captureTraffic();
    const std::uint64_t pictures = server->captureCounts().pictures;
    for (int count = 0; count < 10; ++count) {
        EXPECT_FALSE(capture(id, CaptureNeed::ifChanged).has_value());
    }
    EXPECT_EQ(server->captureCounts().unchanged, 10U);
    EXPECT_EQ(server->captureCounts().pictures, pictures);
    EXPECT_EQ(server->captureTraffic().bytesSent, before.bytesSent);
    EXPECT_EQ(server->captureTraffic().roundTrips, before.roundTrips);
}

TEST_F(UnchangedWindows, A_window_that_was_drawn_to_is_read_once)
{
    const xcb_window_t window = open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    settled(id);
    for (const std::uint32_t color : {green, blue, red}) {
        client.fill(window, {0, 0, 300, 200}, color);
        std::optional<WindowCapture> result;
        ASSERT_TRUE(waitUntil([&] {
            result = capture(id, CaptureNeed::ifChanged);
            return result.has_value();
        }));
        EXPECT_TRUE(isPlain(result->image, opaque(color)));
        EXPECT_FALSE(capture(id, CaptureNeed::ifChanged).has_value());
    }
}

TEST_F(UnchangedWindows, Only_the_window_that_changed_is_read)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const xcb_window_t b = open(client, {450, 60, 300, 200, "b", {}, false, green});
    open(client, {50, 400, 300, 200, "c", {}, false, blue});
    const std::vector<WindowID> ids{number("a"), number("b"), number("c")};
    for (const WindowID id : ids) {
        settled(id);
    }
    client.fill(b, {10, 10, 1, 1}, red);
    std::vector<WindowID> read;
    ASSERT_TRUE(waitUntil([&] {
        for (const WindowID id : ids) {
            if (capture(id, CaptureNeed::ifChanged)) {
                read.push_back(id);
            }
        }
        return !read.empty();
    }));
    EXPECT_EQ(read, std::vector<WindowID>{ids.at(1)});
}

TEST_F(UnchangedWindows, Damage_to_an_obscured_window_is_noticed)
{
    const xcb_window_t below = open(client, {100, 100, 300, 200, "below", {}, false, red});
    const xcb_window_t cover = open(client, {80, 80, 500, 400, "cover", {}, false, green});
    client.raise(cover);
    const WindowID id = number("below");
    settled(id);
    EXPECT_FALSE(capture(id, CaptureNeed::ifChanged).has_value());
    client.fill(below, {0, 0, 300, 200}, blue);
    std::optional<WindowCapture> result;
    ASSERT_TRUE(waitUntil([&] {
        result = capture(id, CaptureNeed::ifChanged);
        return result.has_value();
    }));
    EXPECT_TRUE(isPlain(result->image, opaque(blue)));
}

TEST_F(UnchangedWindows, A_window_wanted_always_is_read_though_it_did_not_change)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    settled(id);
    EXPECT_FALSE(capture(id, CaptureNeed::ifChanged).has_value());
    EXPECT_TRUE(capture(id, CaptureNeed::always).has_value());
}

TEST_F(UnchangedWindows, The_first_capture_costs_two_round_trips_and_each_later_one_one)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    open(client, {450, 60, 300, 200, "b", {}, false, red});
    const WindowID a = number("a");
    settled(a);
    const std::uint64_t before = server->captureTraffic().roundTrips;
    EXPECT_TRUE(capture(a).has_value());
    EXPECT_EQ(server->captureTraffic().roundTrips, before + 1);
    open(client, {50, 400, 300, 200, "c", {}, false, red});
    EXPECT_TRUE(capture(number("c")).has_value());
    EXPECT_EQ(server->captureTraffic().roundTrips, before + 3);
}
