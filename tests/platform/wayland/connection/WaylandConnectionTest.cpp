#include "platform/wayland/connection/WaylandConnection.h"

#include "platform/FileDescriptor.h"
#include "support/wayland/FakeCompositor.h"

#include <gtest/gtest.h>

#include <sys/eventfd.h>
#include <wayland-client.h>

#include <chrono>
#include <cstdint>
#include <future>
#include <optional>
#include <vector>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using wayland::DispatchEnd;
using wayland::WaylandConnection;

WaylandConnection::Time in(std::chrono::milliseconds limit)
{
    return std::chrono::steady_clock::now() + limit;
}

TEST(SocketPath, Is_the_variable_or_the_usual_name_below_the_runtime_folder)
{
    EXPECT_EQ(wayland::socketPath("wayland-1", "/run/user/1000"), "/run/user/1000/wayland-1");
    EXPECT_EQ(wayland::socketPath("", "/run/user/1000"), "/run/user/1000/wayland-0");
    EXPECT_EQ(wayland::socketPath("/tmp/socket", ""), "/tmp/socket");
    EXPECT_EQ(wayland::socketPath("/tmp/socket", "/run/user/1000"), "/tmp/socket");
}

TEST(SocketPath, Does_not_exist_without_an_absolute_folder)
{
    EXPECT_EQ(wayland::socketPath("wayland-0", ""), "");
    EXPECT_EQ(wayland::socketPath("wayland-0", "run"), "");
}

TEST(WaylandConnection, Is_absent_where_nobody_listens)
{
    EXPECT_EQ(WaylandConnection::open(""), nullptr);
    EXPECT_EQ(WaylandConnection::open("/nonexistent/wayland-0"), nullptr);
    EXPECT_EQ(WaylandConnection::open(QByteArray(200, 'x').prepend('/')), nullptr);
}

TEST(WaylandConnection, A_round_trip_ends_when_the_compositor_has_served)
{
    FakeCompositor compositor;
    const auto connection = WaylandConnection::open(compositor.path());
    ASSERT_NE(connection, nullptr);
    std::future<bool> trip =
        std::async(std::launch::async, [&] { return connection->roundTrip(in(20s)); });
    while (trip.wait_for(0s) != std::future_status::ready)
        compositor.serve();
    EXPECT_TRUE(trip.get());
    EXPECT_FALSE(connection->isBroken());
}

TEST(WaylandConnection, A_compositor_that_does_not_reply_costs_the_limit_and_no_more)
{
    const FakeCompositor compositor;
    const auto connection = WaylandConnection::open(compositor.path());
    ASSERT_NE(connection, nullptr);
    EXPECT_FALSE(connection->roundTrip(in(50ms)));
    EXPECT_FALSE(connection->isBroken());
}

TEST(WaylandConnection, A_compositor_that_never_stops_sending_costs_the_limit_and_no_more)
{
    FakeCompositor compositor;
    const auto connection = WaylandConnection::open(compositor.path());
    ASSERT_NE(connection, nullptr);
    // More than is read at once, all of which is there before the limit is over.
    constexpr int sent = 1000;
    int received = 0;
    static constexpr wl_callback_listener listener{
        .done = [](void* data, wl_callback* callback, std::uint32_t) {
            ++*static_cast<int*>(data);
            wl_callback_destroy(callback);
        }};
    for (int count = 0; count < sent; ++count)
        wl_callback_add_listener(wl_display_sync(connection->raw()), &listener, &received);
    ASSERT_TRUE(connection->canSend());
    for (int times = 0; times < 20; ++times)
        compositor.serve();
    EXPECT_FALSE(connection->roundTrip(in(0s)));
    EXPECT_GT(received, 0);
    EXPECT_LT(received, sent);
    EXPECT_FALSE(connection->isBroken());
    // Their callbacks live as long as they are awaited.
    while (received < sent)
        ASSERT_EQ(connection->dispatch(in(20s)), DispatchEnd::dispatched);
}

TEST(WaylandConnection, A_compositor_that_accepts_nobody_is_not_waited_for)
{
    const FakeCompositor compositor;
    std::vector<std::unique_ptr<WaylandConnection>> connections;
    do {
        connections.push_back(WaylandConnection::open(compositor.path()));
        ASSERT_LT(connections.size(), 1000U);
    } while (connections.back());
    EXPECT_GT(connections.size(), 1U);
}

TEST(WaylandConnection, A_compositor_that_ends_breaks_it)
{
    std::optional<FakeCompositor> compositor(std::in_place);
    const auto connection = WaylandConnection::open(compositor->path());
    ASSERT_NE(connection, nullptr);
    compositor->serve();
    compositor.reset();
    EXPECT_FALSE(connection->roundTrip(in(20s)));
    EXPECT_TRUE(connection->isBroken());
    EXPECT_EQ(connection->dispatch(in(20s)), DispatchEnd::lost);
}

TEST(WaylandConnection, Another_thread_wakes_one_that_waits)
{
    const FakeCompositor compositor;
    const auto connection = WaylandConnection::open(compositor.path());
    ASSERT_NE(connection, nullptr);
    const FileDescriptor waker(::eventfd(1, EFD_CLOEXEC));
    EXPECT_EQ(connection->dispatch(in(20s), waker.number()), DispatchEnd::wakened);
}

} // namespace
} // namespace kelpa::test
