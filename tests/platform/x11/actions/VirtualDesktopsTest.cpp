// Sending windows to virtual desktops, and showing one of these.
#include "platform/x11/actions/ActingDesktop.h"

using namespace kelpa;
using namespace kelpa::test;

namespace {

class VirtualDesktops : public ActingDesktop
{
protected:
    /// From 0, as the window manager counts.
    std::optional<std::uint32_t> desktopOf(const WindowItem& window)
    {
        return client.word(idOf(window), "_NET_WM_DESKTOP");
    }
    std::optional<std::uint32_t> shown()
    {
        return client.word(client.root(), "_NET_CURRENT_DESKTOP");
    }
    void send(const QList<DesktopMove>& moves) { sendToDesktops(moves, windowActions, {}); }
    /// As the last pass lists it.
    std::optional<int> listedDesktop(const WindowItem& window)
    {
        const auto entry = entryNamed(runDiscoveryPass(*server), window.title);
        return entry ? entry->desktopNumber : std::nullopt;
    }
};

} // namespace

TEST_P(VirtualDesktops, Are_listed_with_the_window_managers_names)
{
    openWindow(client, "one");
    const auto names = [this] { return server->openDiscoverySource()->virtualDesktops(); };
    EXPECT_EQ(names().size(), 4);
    if (GetParam() == WindowManagerKind::openbox || GetParam() == WindowManagerKind::xfwm4) {
        // KWin and Mutter put their own names back.
        client.setProperty(client.root(), "_NET_DESKTOP_NAMES", client.atom("UTF8_STRING"), 8,
                           QByteArray("Mail\0 \0Web\0", 11));
        client.sync();
        // openbox names those that are left over.
        const QStringList expected{QStringLiteral("Mail"), QString(), QStringLiteral("Web")};
        EXPECT_TRUE(waitUntil([&] { return names().first(3) == expected; }))
            << qPrintable(names().join(u'|'));
    }
}

TEST_P(VirtualDesktops, Windows_go_there_and_the_present_one_stays)
{
    TestClient other(xServer.display());
    const WindowItem one = openWindow(client, "one");
    const WindowItem two = openWindow(other, "two");
    const WindowItem three = openWindow(client, "three");
    EXPECT_EQ(listedDesktop(one), 1);
    send({{one, {.number = 3}}, {two, {.number = 2}}});
    EXPECT_TRUE(waitUntil([&] { return desktopOf(one) == 2U && desktopOf(two) == 1U; })) << state();
    EXPECT_EQ(desktopOf(three), 0U);
    EXPECT_EQ(shown(), 0U);
    EXPECT_EQ(listedDesktop(one), 3);
    EXPECT_EQ(listedDesktop(two), 2);
    client.sendToDesktop(idOf(three), 0xFFFFFFFF);
    EXPECT_TRUE(waitUntil([&] { return listedDesktop(three) == everyVirtualDesktop; }));
}

TEST_P(VirtualDesktops, A_minimised_window_goes_there_minimised)
{
    const WindowItem window = openWindow(client, "minimised");
    const WindowItem other = openWindow(client, "other");
    minimize(window);
    send({{window, {.number = 2}}});
    EXPECT_TRUE(waitUntil([&] { return desktopOf(window) == 1U; })) << state();
    EXPECT_TRUE(isIconic(window));
    EXPECT_EQ(shown(), 0U);
}

TEST_P(VirtualDesktops, One_is_shown_where_no_window_is_and_the_goals_windows_come_forward_there)
{
    const WindowItem wanted = openWindow(client, "wanted");
    const WindowItem inTheWay = openWindow(client, "in the way");
    arrange({.desktop = {{.number = 4}}}, applications, windowActions, {});
    EXPECT_TRUE(waitUntil([&] { return shown() == 3U; })) << state();
    send({{wanted, {.number = 2}}, {inTheWay, {.number = 2}}});
    ASSERT_TRUE(waitUntil([&] { return desktopOf(wanted) == 1U && desktopOf(inTheWay) == 1U; }));
    arrange({.raised = {wanted}, .minimized = {inTheWay}, .desktop = {{.number = 2}}}, applications,
            windowActions, {});
    EXPECT_TRUE(waitUntil([&] { return shown() == 1U && isInFront(wanted) && isIconic(inTheWay); }))
        << state();
    EXPECT_EQ(desktopOf(wanted), 1U);
}

INSTANTIATE_TEST_SUITE_P(Under, VirtualDesktops, ::testing::ValuesIn(testedWindowManagers()),
                         nameOf);
