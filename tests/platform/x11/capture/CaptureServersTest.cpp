#include "CaptureFixture.h"

#include <xcb/composite.h>
#include <xcb/res.h>

#include <cstdlib>
#include <future>
#include <set>

using namespace kelpa;
using namespace kelpa::test;

namespace {

class CaptureWithoutComposite : public CaptureOnDisplay
{
protected:
    CaptureWithoutComposite()
        : CaptureOnDisplay({QStringLiteral("-extension"), QStringLiteral("Composite")})
    {}
};

class CaptureWithoutSharedMemory : public CaptureOnDisplay
{
protected:
    CaptureWithoutSharedMemory()
        : CaptureOnDisplay({QStringLiteral("-extension"), QStringLiteral("MIT-SHM")})
    {}
};

class CaptureWithoutDamage : public CaptureOnDisplay
{
protected:
    CaptureWithoutDamage()
        : CaptureOnDisplay({QStringLiteral("-extension"), QStringLiteral("DAMAGE")})
    {}
};

class CaptureOnAnyServer : public CaptureOnDisplay
{};

/// Redirects the root's children and composites none of them, which is all that matters here.
class Compositor
{
public:
    explicit Compositor(const QByteArray& display) : m_client(display)
    {
        xcb_connection_t* connection = m_client.connection();
        xcb_discard_reply(connection, xcb_composite_query_version(connection, 0, 4).sequence);
        xcb_composite_redirect_subwindows(connection, m_client.root(),
                                          XCB_COMPOSITE_REDIRECT_MANUAL);
        xcb_set_selection_owner(connection, m_client.create({}), m_client.atom("_NET_WM_CM_S0"),
                                XCB_CURRENT_TIME);
        m_client.sync();
    }

private:
    TestClient m_client;
};

/// The part that the resource ids of each client have in common, for all clients of the server.
std::set<std::uint32_t> clientsOf(const TestClient& asking)
{
    std::set<std::uint32_t> clients;
    xcb_res_query_clients_reply_t* reply = xcb_res_query_clients_reply(
        asking.connection(), xcb_res_query_clients(asking.connection()), nullptr);
    for (auto it = xcb_res_query_clients_clients_iterator(reply); it.rem > 0;
         xcb_res_client_next(&it)) {
        clients.insert(it.data->resource_base);
    }
    std::free(reply);
    return clients;
}

} // namespace

TEST_F(CaptureWithoutComposite, Nothing_is_trusted_and_nothing_captured)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    ASSERT_NE(id, 0U);
    EXPECT_FALSE(server->isScreenCaptureTrusted());
    EXPECT_FALSE(server->requestScreenCapture());
    EXPECT_FALSE(capture(id).has_value());
    EXPECT_FALSE(capture(id).has_value());
}

TEST_F(CaptureWithoutSharedMemory, Pictures_come_over_the_connection)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    EXPECT_TRUE(isPlain(settled(id).image, opaque(red)));
    EXPECT_EQ(server->captureCounts().pictures, 1U);
    EXPECT_EQ(server->captureCounts().shared, 0U);
}

TEST_F(CaptureWithoutDamage, Every_window_is_read_every_time)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    EXPECT_TRUE(isPlain(settled(id).image, opaque(red)));
    EXPECT_TRUE(capture(id, CaptureNeed::ifChanged).has_value());
    EXPECT_TRUE(capture(id, CaptureNeed::ifChanged).has_value());
    EXPECT_EQ(server->captureCounts().unchanged, 0U);
}

TEST_F(CaptureOnAnyServer, Pictures_do_not_come_over_the_connection_where_memory_is_shared)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    settled(id);
    EXPECT_EQ(server->captureCounts().pictures, 1U);
    EXPECT_EQ(server->captureCounts().shared, 1U);
}

TEST_F(CaptureOnAnyServer, What_the_display_offers_is_the_answer_to_the_request)
{
    EXPECT_FALSE(server->requestScreenCapture());
    runDiscoveryPass(*server);
    EXPECT_TRUE(server->requestScreenCapture());
}

TEST_F(CaptureOnAnyServer, A_killed_connection_is_opened_again)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    x11::WindowCapturer capturer(std::make_shared<x11::DisplayConnector>(xServer.display()));
    const x11::CaptureTarget target{id, server->clientWindow(id).value_or(0)};
    const auto take = [&] {
        return capturer.capture(target, {}, {720, 450}, CaptureNeed::always, {}).has_value();
    };
    const std::set<std::uint32_t> before = clientsOf(client);
    ASSERT_TRUE(take());
    EXPECT_FALSE(capturer.capture(target, {}, {720, 450}, CaptureNeed::ifChanged, {}).has_value());
    int killed = 0;
    for (const std::uint32_t resources : clientsOf(client)) {
        if (!before.contains(resources)) {
            xcb_kill_client(client.connection(), resources);
            ++killed;
        }
    }
    client.sync();
    EXPECT_EQ(killed, 1);
    EXPECT_TRUE(waitUntil([&] { return take(); }));
    EXPECT_EQ(capturer.counts().pictures, 1U) << "counted from the new connection on";
}

TEST_F(CaptureOnAnyServer, A_server_that_died_leaves_no_picture)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    settled(id);
    xServer.kill();
    for (int count = 0; count < 3; ++count) {
        EXPECT_FALSE(capture(id).has_value());
        EXPECT_FALSE(capture(id, CaptureNeed::ifChanged).has_value());
    }
}

TEST_F(CaptureOnAnyServer, A_capture_while_another_client_holds_the_server_delays_no_trust)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    const WindowID id = number("a");
    settled(id);
    xcb_grab_server(client.connection());
    client.sync();
    auto held = std::async(std::launch::async, [&] { return capture(id).has_value(); });
    EXPECT_EQ(held.wait_for(std::chrono::milliseconds(300)), std::future_status::timeout);
    EXPECT_TRUE(server->isScreenCaptureTrusted());
    EXPECT_FALSE(server->captureWindow({4711, {720, 450}}, {}).has_value());
    xcb_ungrab_server(client.connection());
    client.sync();
    EXPECT_TRUE(held.get());
}

TEST_F(CaptureOnAnyServer, With_a_compositor_the_windows_it_redirects_are_read)
{
    const Compositor compositor(xServer.display());
    const xcb_window_t below = open(client, {100, 100, 300, 200, "below", {}, false, red});
    const xcb_window_t cover = open(client, {80, 80, 500, 400, "cover", {}, false, green});
    client.raise(cover);
    const WindowID id = number("below");
    const auto first = capture(id);
    ASSERT_TRUE(first.has_value()) << "nothing has to be drawn for it";
    EXPECT_EQ(first->pixelSize, QSize(300, 200));
    EXPECT_TRUE(isPlain(first->image, opaque(red)));
    EXPECT_FALSE(capture(id, CaptureNeed::ifChanged).has_value());
    client.fill(below, {0, 0, 300, 200}, blue);
    std::optional<WindowCapture> second;
    ASSERT_TRUE(waitUntil([&] {
        second = capture(id, CaptureNeed::ifChanged);
        return second.has_value();
    }));
    EXPECT_TRUE(isPlain(second->image, opaque(blue)));
}

TEST_F(CaptureOnAnyServer, A_compositor_that_starts_or_stops_does_not_matter)
{
    open(client, {100, 100, 300, 200, "below", {}, false, red});
    const xcb_window_t cover = open(client, {80, 80, 500, 400, "cover", {}, false, green});
    client.raise(cover);
    const WindowID id = number("below");
    EXPECT_TRUE(isPlain(settled(id).image, opaque(red)));
    {
        const Compositor compositor(xServer.display());
        EXPECT_TRUE(isPlain(settled(id).image, opaque(red)));
    }
    EXPECT_TRUE(isPlain(settled(id).image, opaque(red)));
}

TEST_F(CaptureOnAnyServer, A_window_that_is_not_captured_for_a_while_is_unredirected)
{
    open(client, {50, 60, 300, 200, "a", {}, false, red});
    open(client, {450, 60, 300, 200, "b", {}, false, red});
    const WindowID a = number("a");
    const WindowID b = number("b");
    const x11::CaptureTarget targetA{a, server->clientWindow(a).value_or(0)};
    const x11::CaptureTarget targetB{b, server->clientWindow(b).value_or(0)};
    x11::CaptureLimits limits;
    limits.unredirectAfter = std::chrono::milliseconds(100);
    x11::WindowCapturer capturer(std::make_shared<x11::DisplayConnector>(xServer.display()),
                                 limits);
    const auto take = [&](const x11::CaptureTarget& target) {
        return capturer.capture(target, {}, {720, 450}, CaptureNeed::ifChanged, {}).has_value();
    };
    ASSERT_TRUE(take(targetA));
    EXPECT_FALSE(take(targetA));
    // Its time passes while only the other is captured; then it counts as captured for the first
    // time.
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(150);
    ASSERT_TRUE(waitUntil([&] {
        take(targetB);
        return std::chrono::steady_clock::now() > end;
    }));
    EXPECT_TRUE(take(targetA));
}
