#include "platform/x11/discovery/WindowIcons.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "support/desktop/Programs.h"
#include "support/desktop/TestClient.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

/// A two by one picture.
const std::vector<std::uint32_t> picture{2, 1, 0xffff0000, 0xff0000ff};

class WindowIconsTest : public testing::Test
{
protected:
    XServer server;
    TestClient client{server.display()};
    const xcb_window_t window = client.open({});
    x11::WindowIcons icons{
        std::make_shared<x11::DisplayConnector>(server.display()), [this](WindowID number) {
            return number == 7 ? std::optional<std::uint32_t>(window) : std::nullopt;
        }};
};

TEST_F(WindowIconsTest, The_icon_of_a_window_is_read)
{
    client.setCardinals(window, "_KELPA_WINDOW_NUMBER", {7});
    client.setCardinals(window, "_NET_WM_ICON", picture);
    client.sync();
    EXPECT_EQ(icons.read(7), picture);
}

TEST_F(WindowIconsTest, A_window_without_an_icon_or_an_unknown_one_has_none)
{
    client.setCardinals(window, "_KELPA_WINDOW_NUMBER", {7});
    client.sync();
    EXPECT_TRUE(icons.read(7).empty());
    EXPECT_TRUE(icons.read(8).empty());
}

TEST_F(WindowIconsTest, An_id_that_belongs_to_another_window_by_now_has_none)
{
    client.setCardinals(window, "_KELPA_WINDOW_NUMBER", {8});
    client.setCardinals(window, "_NET_WM_ICON", picture);
    client.sync();
    EXPECT_TRUE(icons.read(7).empty());
}

TEST_F(WindowIconsTest, A_property_of_another_type_or_a_destroyed_window_has_none)
{
    client.setCardinals(window, "_KELPA_WINDOW_NUMBER", {7});
    client.setText(window, "_NET_WM_ICON", "not a picture");
    client.sync();
    EXPECT_TRUE(icons.read(7).empty());
    client.destroy(window);
    client.sync();
    EXPECT_TRUE(icons.read(7).empty());
}

TEST_F(WindowIconsTest, A_server_that_has_ended_has_none)
{
    icons.read(7);
    server.kill();
    EXPECT_TRUE(icons.read(7).empty());
}

} // namespace
} // namespace kelpa::test
