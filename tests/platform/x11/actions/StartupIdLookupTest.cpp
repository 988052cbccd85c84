#include "platform/x11/actions/StartupIdLookup.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "support/desktop/Programs.h"
#include "support/desktop/TestClient.h"

#include <gtest/gtest.h>

#include <map>

namespace kelpa::test {
namespace {

const QByteArray startupID = "kelpa-1-2_TIME345";

class StartupIdLookupTest : public testing::Test
{
protected:
    xcb_window_t open(WindowID number)
    {
        const xcb_window_t window = client.open({});
        client.setCardinals(window, "_KELPA_WINDOW_NUMBER", {number});
        client.sync();
        windows[number] = window;
        return window;
    }

    void setStartupID(xcb_window_t window, const QByteArray& id)
    {
        client.setText(window, "_NET_STARTUP_ID", id);
        client.sync();
    }

    void setLeader(xcb_window_t window, xcb_window_t leader)
    {
        client.setWindows(window, "WM_CLIENT_LEADER", {leader});
        client.sync();
    }

    std::optional<WindowID> first(const std::vector<WindowID>& numbers)
    {
        return lookup.firstWith(startupID, numbers);
    }

    XServer server;
    TestClient client{server.display()};
    std::map<WindowID, xcb_window_t> windows;
    x11::StartupIdLookup lookup{
        std::make_shared<x11::DisplayConnector>(server.display()), [this](WindowID number) {
            const auto found = windows.find(number);
            return found == windows.end() ? std::nullopt : std::optional(found->second);
        }};
};

TEST_F(StartupIdLookupTest, A_window_that_carries_the_startup_id_is_found)
{
    open(1);
    setStartupID(open(2), startupID);
    setStartupID(open(3), startupID + '6');
    EXPECT_EQ(first({1, 2, 3}), 2U);
    EXPECT_EQ(first({1, 3}), std::nullopt);
    EXPECT_EQ(lookup.firstWith({}, {1}), std::nullopt)
        << "windows without an id do not match an empty one";
}

TEST_F(StartupIdLookupTest, A_window_whose_leader_carries_the_startup_id_is_found)
{
    const xcb_window_t leader = client.create({});
    setStartupID(leader, startupID);
    open(1);
    setLeader(open(2), leader);
    EXPECT_EQ(first({1, 2}), 2U);
}

TEST_F(StartupIdLookupTest, Of_several_windows_the_first_in_the_given_order_is_found)
{
    const xcb_window_t leader = client.create({});
    setStartupID(leader, startupID);
    setLeader(open(1), leader);
    setStartupID(open(2), startupID);
    EXPECT_EQ(first({1, 2}), 1U);
    EXPECT_EQ(first({2, 1}), 2U);
}

TEST_F(StartupIdLookupTest, A_window_whose_server_id_was_reused_is_skipped)
{
    const xcb_window_t window = open(1);
    setStartupID(window, startupID);
    client.setCardinals(window, "_KELPA_WINDOW_NUMBER", {9});
    client.sync();
    EXPECT_EQ(first({1}), std::nullopt);
    EXPECT_EQ(first({8}), std::nullopt) << "not known";
}

TEST_F(StartupIdLookupTest,
       A_malformed_id_a_leader_that_is_gone_or_a_server_that_is_gone_yields_none)
{
    const xcb_window_t window = open(1);
    client.setCardinals(window, "_NET_STARTUP_ID", {1, 2});
    setLeader(window, 0x3fffffff);
    EXPECT_EQ(first({1}), std::nullopt);
    setStartupID(window, startupID + QByteArray(100000, 'x'));
    EXPECT_EQ(first({1}), std::nullopt);
    setStartupID(window, startupID);
    EXPECT_EQ(first({1}), 1U);
    client.destroy(window);
    client.sync();
    EXPECT_EQ(first({1}), std::nullopt);
    server.kill();
    EXPECT_EQ(first({1}), std::nullopt);
}

} // namespace
} // namespace kelpa::test
