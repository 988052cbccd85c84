// The identifiers that a session manager gives to clients, on a real server: what a pass reads of
// them, what it believes, and what it costs.
#include "support/desktop/X11Desktop.h"
#include "windows/WindowDiscovery.h"

#include <gtest/gtest.h>

using namespace kelpa;
using namespace kelpa::test;

namespace {

class SessionIDs : public ::testing::Test
{
protected:
    /// Of `of`: a window that is never mapped, as toolkits have one for a whole program.
    static xcb_window_t leader(TestClient& of, const QByteArray& sessionID)
    {
        const xcb_window_t window = of.create({0, 0, 1, 1, "leader", {}});
        of.setProperty(window, "SM_CLIENT_ID", XCB_ATOM_STRING, 8, sessionID);
        return window;
    }

    xcb_window_t openLed(const QByteArray& title, xcb_window_t leader)
    {
        const xcb_window_t window = client.create({100, 100, 300, 200, title, "Editor"});
        client.setWindows(window, "WM_CLIENT_LEADER", {leader});
        client.map(window);
        EXPECT_TRUE(waitUntil([&] { return client.isListed(window); }));
        return window;
    }

    /// As the board gets it.
    QString sessionID(const char* title)
    {
        const auto source = server->openDiscoverySource();
        for (const WindowItem& window : WindowDiscovery::visibleWindows(*source, 0)) {
            if (window.title == QString::fromUtf8(title))
                return window.sessionID;
        }
        return QStringLiteral("not listed");
    }

    std::uint64_t roundTripsOfPass()
    {
        const std::uint64_t before = server->traffic().roundTrips;
        EXPECT_FALSE(runDiscoveryPass(*server).empty());
        return server->traffic().roundTrips - before;
    }

    XServer xServer;
    WindowManager manager{xServer.display()};
    X11Surroundings surroundings;
    std::unique_ptr<x11::X11WindowServer> server = surroundings.makeServer(xServer.display());
    TestClient client{xServer.display()};
};

} // namespace

TEST_F(SessionIDs, A_window_has_the_identifier_of_its_leader_in_every_pass)
{
    openLed("Letter", leader(client, "10a0b1c2d3"));
    client.open({100, 100, 300, 200, "Alone", "Editor"});
    ASSERT_TRUE(waitUntil([&] { return runDiscoveryPass(*server).size() == 2; }));
    EXPECT_EQ(sessionID("Letter"), QStringLiteral("10a0b1c2d3"));
    EXPECT_EQ(sessionID("Letter"), QStringLiteral("10a0b1c2d3"));
    EXPECT_EQ(sessionID("Alone"), QString());
    // Another start has another connection, and finds the windows numbered.
    server = surroundings.makeServer(xServer.display());
    EXPECT_EQ(sessionID("Letter"), QStringLiteral("10a0b1c2d3"));
}

TEST_F(SessionIDs, A_window_may_be_its_own_leader)
{
    const xcb_window_t window = client.create({100, 100, 300, 200, "Letter", "Editor"});
    client.setWindows(window, "WM_CLIENT_LEADER", {window});
    client.setProperty(window, "SM_CLIENT_ID", XCB_ATOM_STRING, 8, "10a0b1c2d3");
    client.map(window);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(window); }));
    EXPECT_EQ(sessionID("Letter"), QStringLiteral("10a0b1c2d3"));
}

TEST_F(SessionIDs, What_cannot_be_an_identifier_is_none)
{
    const QByteArray longest(160, 'x');
    openLed("longest", leader(client, longest));
    openLed("too long", leader(client, longest + 'x'));
    openLed("huge", leader(client, QByteArray(200'000, 'x')));
    openLed("empty", leader(client, {}));
    openLed("NUL", leader(client, QByteArray("10a\0b1", 6)));
    const xcb_window_t numbers = leader(client, {});
    client.setCardinals(numbers, "SM_CLIENT_ID", {0x30613031, 0x30613031});
    openLed("numbers", numbers);
    EXPECT_EQ(sessionID("longest"), QString::fromLatin1(longest));
    EXPECT_EQ(sessionID("NUL"), QStringLiteral("10ab1"));
    for (const char* const title : {"too long", "huge", "empty", "numbers"})
        EXPECT_EQ(sessionID(title), QString()) << title;
}

TEST_F(SessionIDs, A_leader_that_is_gone_or_another_clients_gives_none)
{
    const xcb_window_t gone = leader(client, "10a0b1c2d3");
    client.destroy(gone);
    openLed("of a leader that is gone", gone);
    TestClient other(xServer.display());
    openLed("of another client", leader(other, "20a0b1c2d3"));
    openLed("of the root", client.root());
    openLed("of no window", 0xFFFFFFFF);
    openLed("of none", XCB_WINDOW_NONE);
    const xcb_window_t odd = client.create({100, 100, 300, 200, "of a text", "Editor"});
    client.setText(odd, "WM_CLIENT_LEADER", "1234");
    client.map(odd);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(odd); }));
    for (const char* const title : {"of a leader that is gone", "of another client", "of the root",
                                    "of no window", "of none", "of a text"})
        EXPECT_EQ(sessionID(title), QString()) << title;
}

TEST_F(SessionIDs, An_id_that_another_window_gets_does_not_keep_its_identifier)
{
    const xcb_window_t window = openLed("Letter", leader(client, "10a0b1c2d3"));
    EXPECT_EQ(sessionID("Letter"), QStringLiteral("10a0b1c2d3"));
    client.destroy(window);
    client.openAgain(window, {100, 100, 300, 200, "Another", "Editor"});
    ASSERT_TRUE(waitUntil([&] { return sessionID("Another") != QStringLiteral("not listed"); }));
    EXPECT_EQ(sessionID("Another"), QString());
}

TEST_F(SessionIDs, Leaders_cost_one_round_trip_for_all_new_windows_and_none_for_known_ones)
{
    openLed("first", leader(client, "0"));
    runDiscoveryPass(*server);
    EXPECT_EQ(roundTripsOfPass(), 2U);
    for (int count = 0; count < 40; ++count)
        openLed("more", leader(client, QByteArray::number(count)));
    // One for the leaders, and one until the server has the numbers.
    EXPECT_EQ(roundTripsOfPass(), 2U + 2U);
    EXPECT_EQ(roundTripsOfPass(), 2U);
    // Nothing is asked for windows without a leader.
    const xcb_window_t last = client.open({100, 100, 300, 200, "last", {}});
    ASSERT_TRUE(waitUntil([&] { return client.isListed(last); }));
    EXPECT_EQ(roundTripsOfPass(), 2U + 1U);
}
