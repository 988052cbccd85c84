#include "platform/x11/actions/ServerTimeRequest.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/DisplayConnector.h"
#include "platform/x11/connection/XcbEvent.h"
#include "support/desktop/Programs.h"
#include "support/desktop/TestClient.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

namespace kelpa::x11 {
namespace {

class ServerTimeRequests : public testing::Test
{
protected:
    std::unique_ptr<DisplayConnection> connect()
    {
        auto opened = DisplayConnector(server.display()).open();
        for (const xcb_window_t window : {opened->connection().root(), opened->helperWindow()})
            selectEvents(opened->connection(), window, XCB_EVENT_MASK_PROPERTY_CHANGE);
        return opened;
    }

    /// The server's time by another connection, which leaves the events of `display` alone.
    xcb_timestamp_t now() { return ServerTimeRequest(*other).get().value_or(0); }

    /// Waits until the server's clock has advanced, and returns the time before that.
    xcb_timestamp_t awaitLaterTime()
    {
        const xcb_timestamp_t before = now();
        EXPECT_TRUE(test::waitUntil([&] { return now() > before; }));
        return before;
    }

    /// Once this returns, the server has carried out all requests of `display`.
    void sync() { InputFocusReply(display->connection()).get(); }

    test::XServer server;
    std::unique_ptr<DisplayConnection> display = connect();
    std::unique_ptr<DisplayConnection> other = connect();
};

TEST_F(ServerTimeRequests, Return_the_time_at_which_the_server_carries_them_out)
{
    const xcb_timestamp_t before = awaitLaterTime();
    const auto time = ServerTimeRequest(*display).get();
    ASSERT_TRUE(time);
    EXPECT_GT(*time, before);
    EXPECT_LE(*time, now());
}

TEST_F(ServerTimeRequests, Do_not_mistake_the_event_of_a_later_request_for_their_own)
{
    ServerTimeRequest first(*display);
    sync();
    const xcb_timestamp_t between = awaitLaterTime();
    const ServerTimeRequest second(*display);
    sync();
    const auto time = first.get();
    ASSERT_TRUE(time);
    EXPECT_LE(*time, between);
}

TEST_F(ServerTimeRequests, Do_not_mistake_a_property_change_of_another_client_for_their_own)
{
    ServerTimeRequest request(*display);
    sync();
    const xcb_timestamp_t between = awaitLaterTime();
    test::TestClient client(server.display());
    client.setCardinals(client.root(), "_KELPA_TIME", {1});
    client.sync();
    sync();
    const auto time = request.get();
    ASSERT_TRUE(time);
    EXPECT_LE(*time, between);
}

TEST_F(ServerTimeRequests, Return_nothing_without_a_server)
{
    server.kill();
    const BrokenPipeGuard guard;
    EXPECT_EQ(ServerTimeRequest(*display).get(), std::nullopt);
}

} // namespace
} // namespace kelpa::x11
