#include "platform/x11/discovery/WindowEventMonitor.h"
#include "support/ProgramArguments.h"
#include "support/desktop/X11Desktop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>

using namespace kelpa;
using namespace kelpa::test;

namespace {

/// Counts how often something came from a server.
class Arrivals : public QObject
{
public:
    bool eventFilter(QObject* /*receiver*/, QEvent* event) override
    {
        if (event->type() == QEvent::SockAct) {
            ++count;
        }
        return false;
    }

    int count = 0;
};

class WindowWatching : public ::testing::Test
{
protected:
    /// Waits until no more notifications come, then counts from 0 again.
    void settle()
    {
        ASSERT_TRUE(waitUntil([&] { return notices > 0; }));
        int before = 0;
        const auto isQuiet = [&] {
            before = notices;
            return !waitUntil([&] { return notices != before; }, std::chrono::milliseconds(400));
        };
        ASSERT_TRUE(waitUntil(isQuiet));
        notices = 0;
    }

    bool isNoticed()
    {
        return waitUntil([&] { return notices > 0; });
    }

    xcb_window_t openAndSettle()
    {
        const xcb_window_t window = client.open({100, 100, 300, 200, "a", {}});
        EXPECT_TRUE(waitUntil([&] { return client.isListed(window); }));
        settle();
        return window;
    }

    ProgramArguments arguments;
    QCoreApplication application{arguments.count, arguments.values.data()};
    XServer xServer;
    std::optional<WindowManager> manager{xServer.display()};
    X11Surroundings surroundings;
    std::unique_ptr<x11::X11WindowServer> server = surroundings.makeServer(xServer.display());
    TestClient client{xServer.display()};
    int notices = 0;
    std::unique_ptr<Subscription> watch = server->watchWindows([this] { ++notices; });
};

} // namespace

TEST_F(WindowWatching, It_notifies_once_it_is_connected)
{
    EXPECT_TRUE(isNoticed());
    EXPECT_TRUE(server->isScreenCaptureTrusted());
}

TEST_F(WindowWatching, A_new_window_is_noticed_in_few_calls)
{
    settle();
    client.open({100, 100, 300, 200, "a", {}});
    EXPECT_TRUE(isNoticed());
    EXPECT_LE(notices, 2);
}

TEST_F(WindowWatching, A_closed_window_is_noticed)
{
    const xcb_window_t window = openAndSettle();
    client.destroy(window);
    EXPECT_TRUE(isNoticed());
}

TEST_F(WindowWatching, A_renamed_window_is_noticed)
{
    const xcb_window_t window = openAndSettle();
    client.setText(window, "_NET_WM_NAME", "another name");
    EXPECT_TRUE(isNoticed());
}

TEST_F(WindowWatching, Another_icon_is_noticed_and_listed_without_another_request)
{
    const std::vector<std::uint32_t> red{1, 1, 0xffff0000};
    const xcb_window_t window = client.open({100, 100, 300, 200, "a", {}});
    const xcb_window_t other = client.open({400, 100, 300, 200, "b", {}});
    client.setCardinals(window, "_NET_WM_ICON", red);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(window) && client.isListed(other); }));
    settle();
    runDiscoveryPass(*server);
    const std::uint64_t before = server->traffic().roundTrips;
    const std::vector<WindowListEntry> first = runDiscoveryPass(*server);
    const std::uint64_t cost = server->traffic().roundTrips - before;

    client.setCardinals(window, "_NET_WM_ICON", {1, 1, 0xff0000ff});
    client.sync();
    EXPECT_TRUE(isNoticed());
    const std::vector<WindowListEntry> second = runDiscoveryPass(*server);
    EXPECT_EQ(server->traffic().roundTrips - before, 2 * cost);
    const auto revision = [](const std::vector<WindowListEntry>& entries, const QString& name) {
        return entryNamed(entries, name).value().iconRevision;
    };
    const QString changed = QStringLiteral("a");
    const QString same = QStringLiteral("b");
    EXPECT_NE(revision(first, changed), revision(second, changed));
    EXPECT_EQ(revision(first, same), revision(second, same));
    EXPECT_EQ(revision(second, changed), revision(runDiscoveryPass(*server), changed));
}

TEST_F(WindowWatching, A_minimized_window_is_noticed)
{
    const xcb_window_t window = openAndSettle();
    client.minimize(window);
    EXPECT_TRUE(isNoticed());
}

TEST_F(WindowWatching, A_window_that_goes_to_another_desktop_and_another_name_of_that_are_noticed)
{
    const xcb_window_t window = openAndSettle();
    client.sendToDesktop(window, 1);
    EXPECT_TRUE(isNoticed());
    settle();
    client.setText(client.root(), "_NET_DESKTOP_NAMES", QByteArray("Mail\0Web\0", 9));
    EXPECT_TRUE(isNoticed());
}

TEST_F(WindowWatching, A_window_that_turns_out_to_belong_to_another_is_noticed)
{
    const xcb_window_t window = openAndSettle();
    client.setWindows(window, "WM_TRANSIENT_FOR", {client.root()});
    EXPECT_TRUE(isNoticed());
}

TEST_F(WindowWatching, A_moved_window_is_noticed)
{
    const xcb_window_t window = openAndSettle();
    const std::array<std::uint32_t, 2> place{300, 250};
    xcb_configure_window(client.connection(), window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y,
                         place.data());
    client.sync();
    EXPECT_TRUE(isNoticed());
}

TEST_F(WindowWatching, A_property_that_the_board_does_not_show_is_not_noticed)
{
    const xcb_window_t window = openAndSettle();
    client.setCardinals(window, "_NET_WM_USER_TIME", {5});
    // Events arrive in order: when the later one has arrived, so has the earlier one.
    client.setText(window, "_NET_WM_NAME", "b");
    EXPECT_TRUE(isNoticed());
    EXPECT_EQ(notices, 1);
}

TEST_F(WindowWatching, A_killed_window_manager_takes_the_trust_and_a_new_one_brings_it_back)
{
    settle();
    ASSERT_TRUE(server->isScreenCaptureTrusted());
    manager->kill();
    EXPECT_TRUE(waitUntil([&] { return !server->isScreenCaptureTrusted(); }));
    EXPECT_TRUE(isNoticed());
    manager.emplace(xServer.display());
    EXPECT_TRUE(waitUntil([&] { return server->isScreenCaptureTrusted(); }));
}

TEST_F(WindowWatching,
       A_killed_window_manager_whose_check_property_stays_is_not_read_again_and_again)
{
    settle();
    Arrivals arrivals;
    application.installEventFilter(&arrivals);
    manager->kill();
    ASSERT_TRUE(waitUntil([&] { return !server->isScreenCaptureTrusted(); }));
    // Its property stays on the root window and names a window that is gone.
    EXPECT_FALSE(waitUntil([&] { return notices > 4; }, std::chrono::milliseconds(600)));
    EXPECT_LT(arrivals.count, 30);

    notices = 0;
    manager.emplace(xServer.display());
    EXPECT_TRUE(waitUntil([&] { return server->isScreenCaptureTrusted(); }));
    EXPECT_TRUE(isNoticed());
}

TEST_F(WindowWatching, Events_that_come_one_by_one_wake_the_main_thread_once_in_a_while)
{
    const xcb_window_t window = openAndSettle();
    Arrivals arrivals;
    application.installEventFilter(&arrivals);
    const auto begin = std::chrono::steady_clock::now();
    for (std::uint32_t count = 0; count < 400; ++count) {
        client.setCardinals(window, "_NET_WM_USER_TIME", {count});
        client.sync();
        QCoreApplication::processEvents();
    }
    const auto rests =
        (std::chrono::steady_clock::now() - begin) / x11::WindowEventMonitor::restTime;
    EXPECT_LE(arrivals.count, rests + 2);
    EXPECT_LT(arrivals.count, 400);
    client.setText(window, "_NET_WM_NAME", "b");
    EXPECT_TRUE(isNoticed());
}

TEST_F(WindowWatching, A_dropped_subscription_is_not_notified)
{
    const xcb_window_t window = openAndSettle();
    watch.reset();
    client.setText(window, "_NET_WM_NAME", "another name");
    EXPECT_FALSE(waitUntil([&] { return notices > 0; }, std::chrono::milliseconds(300)));
}

TEST_F(WindowWatching, A_subscription_may_be_dropped_by_its_own_notification)
{
    settle();
    int calls = 0;
    std::unique_ptr<Subscription> brief;
    brief = server->watchWindows([&] {
        ++calls;
        brief.reset();
    });
    EXPECT_TRUE(waitUntil([&] { return calls > 0; }));
    client.open({100, 100, 300, 200, "a", {}});
    EXPECT_TRUE(isNoticed());
    EXPECT_EQ(calls, 1);
}

TEST_F(WindowWatching, A_server_that_dies_ends_nothing_but_the_trust)
{
    settle();
    xServer.kill();
    EXPECT_TRUE(waitUntil([&] { return !server->isScreenCaptureTrusted(); }));
}

TEST_F(WindowWatching, A_server_held_by_another_client_does_not_stop_the_main_thread)
{
    openAndSettle();
    xcb_grab_server(client.connection());
    client.sync();
    client.setText(client.open({100, 100, 300, 200, "b", {}}), "_NET_WM_NAME", "c");
    const auto begin = std::chrono::steady_clock::now();
    for (int count = 0; count < 50; ++count) {
        QCoreApplication::processEvents();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(500));
    xcb_ungrab_server(client.connection());
    client.sync();
    EXPECT_TRUE(isNoticed());
}

TEST_F(WindowWatching, A_flood_of_events_is_handled_in_turns)
{
    const auto icons = std::make_shared<x11::IconRevisions>();
    const x11::WindowEventMonitor monitor(
        surroundings.scheduler, std::make_shared<x11::DisplayConnector>(xServer.display()),
        std::make_shared<x11::DesktopTrust>(), icons, [] {});
    const xcb_window_t window = client.open({100, 100, 300, 200, "a", {}});
    const auto changeIcon = [&](std::uint32_t color) {
        client.setCardinals(window, "_NET_WM_ICON", {1, 1, color});
    };
    ASSERT_TRUE(waitUntil([&] {
        changeIcon(0);
        return icons->of(window) > 0;
    }));
    client.sync();
    waitUntil([] { return false; }, std::chrono::milliseconds(100));

    // Many times what may be handled at once arrives while the main thread does something else.
    const std::uint32_t before = icons->of(window);
    constexpr std::uint32_t flood = 20 * x11::WindowEventMonitor::mostEventsAtOnce;
    for (std::uint32_t color = 0; color < flood; ++color) {
        changeIcon(color);
    }
    client.sync();
    std::uint32_t most = 0;
    EXPECT_TRUE(waitUntil([&] {
        const std::uint32_t handled = icons->of(window);
        QCoreApplication::processEvents();
        most = std::max(most, icons->of(window) - handled);
        return icons->of(window) - before >= flood;
    }));
    EXPECT_GT(most, 0U);
    // The socket and the rest of the turn before may each have had their share.
    EXPECT_LE(most, 2 * x11::WindowEventMonitor::mostEventsAtOnce);
}
