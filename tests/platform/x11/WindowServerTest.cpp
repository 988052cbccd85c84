#include "platform/x11/actions/EwmhPager.h"
#include "platform/x11/actions/X11WindowActions.h"
#include "support/LogRecorder.h"
#include "support/desktop/X11Desktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>

using namespace kelpa;
using namespace kelpa::test;

namespace {

class WindowServerOnDisplay : public ::testing::Test
{
protected:
    XServer xServer;
    X11Surroundings surroundings;
    std::unique_ptr<x11::X11WindowServer> server = surroundings.makeServer(xServer.display());
};

} // namespace

TEST_F(WindowServerOnDisplay, Without_a_discovery_pass_nothing_is_trusted)
{
    EXPECT_FALSE(server->isScreenCaptureTrusted());
    x11::EwmhPager pager(std::make_shared<x11::DisplayConnector>(xServer.display()), {});
    const x11::X11WindowActions windowActions(server->trust(), pager);
    EXPECT_FALSE(windowActions.isTrusted());
    // That does not mean that anything is missing.
    EXPECT_EQ(server->screenCaptureObstacle(), std::nullopt);
    EXPECT_EQ(windowActions.accessibilityObstacle(), std::nullopt);
    server->openDiscoverySource();
    EXPECT_EQ(server->screenCaptureObstacle(), Obstacle::windowManager);
    EXPECT_EQ(windowActions.accessibilityObstacle(), Obstacle::windowManager);
}

TEST_F(WindowServerOnDisplay, Without_a_window_manager_there_is_no_list_and_no_trust)
{
    const auto source = server->openDiscoverySource();
    EXPECT_FALSE(source->windowList(WindowListScope::all).has_value());
    EXPECT_FALSE(source->isAccessibilityTrusted());
    EXPECT_FALSE(server->isScreenCaptureTrusted());
    EXPECT_EQ(server->screenCaptureObstacle(), Obstacle::windowManager);
    x11::EwmhPager pager(std::make_shared<x11::DisplayConnector>(xServer.display()), {});
    EXPECT_EQ(x11::X11WindowActions(server->trust(), pager).accessibilityObstacle(),
              Obstacle::windowManager);
}

TEST_F(WindowServerOnDisplay, Trust_goes_and_comes_with_the_window_manager)
{
    x11::EwmhPager pager(std::make_shared<x11::DisplayConnector>(xServer.display()), {});
    const x11::X11WindowActions windowActions(server->trust(), pager);
    std::optional<WindowManager> manager(xServer.display());
    EXPECT_TRUE(server->openDiscoverySource()->isAccessibilityTrusted());
    EXPECT_TRUE(server->isScreenCaptureTrusted());
    EXPECT_TRUE(windowActions.isTrusted());

    // Killed, it leaves its hint behind.
    manager->kill();
    TestClient client(xServer.display());
    ASSERT_TRUE(waitUntil([&] { return !client.isManaged(); }));
    EXPECT_TRUE(client.word(client.root(), "_NET_SUPPORTING_WM_CHECK").has_value());
    EXPECT_FALSE(server->openDiscoverySource()->windowList(WindowListScope::all).has_value());
    EXPECT_FALSE(server->isScreenCaptureTrusted());
    EXPECT_FALSE(windowActions.isTrusted());

    manager.emplace(xServer.display());
    server->openDiscoverySource();
    EXPECT_TRUE(server->isScreenCaptureTrusted());
    EXPECT_TRUE(windowActions.isTrusted());
    EXPECT_TRUE(server->openDiscoverySource()->windowList(WindowListScope::all).has_value());
}

TEST_F(WindowServerOnDisplay, A_hint_that_names_a_strangers_window_is_not_believed)
{
    TestClient client(xServer.display());
    const xcb_window_t window = client.create({});
    client.setWindows(client.root(), "_NET_SUPPORTING_WM_CHECK", {window});
    server->openDiscoverySource();
    EXPECT_FALSE(server->isScreenCaptureTrusted());
}

TEST_F(WindowServerOnDisplay, A_server_that_dies_leaves_absent_lists)
{
    const WindowManager manager(xServer.display());
    ASSERT_TRUE(server->openDiscoverySource()->windowList(WindowListScope::all).has_value());
    xServer.kill();
    for (int count = 0; count < 3; ++count) {
        const auto source = server->openDiscoverySource();
        EXPECT_FALSE(source->windowList(WindowListScope::all).has_value());
        EXPECT_FALSE(source->windowList(WindowListScope::onScreen).has_value());
    }
    EXPECT_FALSE(server->isScreenCaptureTrusted());
}

TEST_F(WindowServerOnDisplay, A_display_that_does_not_exist_leaves_absent_lists)
{
    const auto nowhere = surroundings.makeServer(":64999");
    EXPECT_FALSE(nowhere->openDiscoverySource()->windowList(WindowListScope::all).has_value());
    EXPECT_FALSE(nowhere->isScreenCaptureTrusted());
}

TEST_F(WindowServerOnDisplay,
       A_discovery_pass_while_another_client_holds_the_server_ends_when_it_lets_go)
{
    const WindowManager manager(xServer.display());
    server->openDiscoverySource();
    TestClient client(xServer.display());
    xcb_grab_server(client.connection());
    client.sync();
    auto pass = std::async(std::launch::async, [&] {
        return server->openDiscoverySource()->windowList(WindowListScope::all).has_value();
    });
    EXPECT_EQ(pass.wait_for(std::chrono::milliseconds(300)), std::future_status::timeout);
    // What was seen last is still told at once.
    EXPECT_TRUE(server->isScreenCaptureTrusted());
    xcb_ungrab_server(client.connection());
    client.sync();
    EXPECT_TRUE(pass.get());
}

TEST_F(WindowServerOnDisplay, A_pass_is_logged_with_its_cost_and_without_titles)
{
    const WindowManager manager(xServer.display());
    TestClient client(xServer.display());
    const xcb_window_t window = client.open({.title = "secret"});
    ASSERT_TRUE(waitUntil([&] { return client.isListed(window); }));
    const LogRecorder log(QStringLiteral("kelpa.x11.discovery"));
    server->openDiscoverySource();
    ASSERT_EQ(log.messages().size(), 2);
    EXPECT_EQ(log.messages().first(), QStringLiteral("this program numbers the windows"));
    EXPECT_THAT(log.messages().last().toStdString(),
                testing::MatchesRegex("pass read 1 windows in [0-9.]+ ms, [0-9]+ round trips"));
}

TEST_F(WindowServerOnDisplay, A_pass_that_finds_no_list_of_windows_is_logged_with_the_reason)
{
    server->openDiscoverySource();
    const LogRecorder log(QStringLiteral("kelpa.x11.discovery"));
    server->openDiscoverySource();
    EXPECT_EQ(log.messages().last(),
              QStringLiteral("pass without a window list: there is no window manager"));
}
