#include "platform/wayland/toplevels/ToplevelClient.h"

#include "platform/wayland/connection/WaylandConnection.h"
#include "support/wayland/FakeToplevels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using wayland::Toplevel;
using wayland::ToplevelAction;

class ToplevelClientTest : public testing::Test
{
protected:
    void connect()
    {
        connection = wayland::WaylandConnection::open(compositor.path());
        ASSERT_NE(connection, nullptr);
        client.emplace(*connection, nextID, [this] { ++changes; });
        settle();
    }

    /// Until neither side has anything more to say.
    void settle()
    {
        for (int i = 0; i < 12; ++i) {
            connection->dispatch(std::chrono::steady_clock::now());
            compositor.serve(0ms);
        }
        connection->dispatch(std::chrono::steady_clock::now());
    }

    std::optional<QStringList> titles() const
    {
        if (!client->windows())
            return std::nullopt;
        QStringList all;
        for (const Toplevel& window : *client->windows())
            all.append(window.title);
        return all;
    }

    const Toplevel& only() const { return client->windows()->at(0); }

    FakeCompositor compositor;
    std::unique_ptr<wayland::WaylandConnection> connection;
    wayland::ToplevelID nextID = 1;
    std::optional<wayland::ToplevelClient> client;
    int changes = 0;
};

QStringList list(std::initializer_list<const char*> titles)
{
    QStringList all;
    for (const char* const title : titles)
        all.append(QString::fromUtf8(title));
    return all;
}

TEST_F(ToplevelClientTest, Without_a_list_there_are_no_windows_and_not_none)
{
    connect();
    EXPECT_EQ(titles(), std::nullopt);
    EXPECT_EQ(changes, 0);
}

TEST_F(ToplevelClientTest, An_empty_desktop_has_an_empty_list)
{
    const FakeToplevelManager manager(compositor);
    connect();
    EXPECT_EQ(titles(), list({}));
    EXPECT_EQ(changes, 1);
}

TEST_F(ToplevelClientTest, A_window_is_as_its_last_done_described_it)
{
    FakeToplevelManager manager(compositor);
    connect();
    FakeToplevel window = manager.open();
    window.title("A").appID("org.a").states({activatedState, minimizedState, 0, 3, 99});
    settle();
    EXPECT_EQ(titles(), list({}));
    window.done();
    settle();
    ASSERT_EQ(titles(), list({"A"}));
    EXPECT_EQ(only().appID, QStringLiteral("org.a"));
    EXPECT_TRUE(only().isActivated);
    EXPECT_TRUE(only().isMinimized);
    window.title("B").states({});
    settle();
    EXPECT_EQ(titles(), list({"A"}));
    window.done();
    settle();
    EXPECT_EQ(titles(), list({"B"}));
    EXPECT_FALSE(only().isActivated);
    EXPECT_FALSE(only().isMinimized);
}

TEST_F(ToplevelClientTest, Every_order_of_a_windows_events_gives_the_same_window)
{
    FakeToplevelManager manager(compositor);
    connect();
    std::vector<int> events{0, 1, 2, 3};
    std::optional<Toplevel> expected;
    do {
        FakeToplevel window = manager.open();
        for (const int event : events) {
            switch (event) {
            case 0:
                window.title("T");
                break;
            case 1:
                window.appID("app");
                break;
            case 2:
                window.states({minimizedState});
                break;
            default:
                window.parent(nullptr);
            }
        }
        window.done();
        settle();
        ASSERT_EQ(client->windows()->size(), 1U);
        Toplevel seen = only();
        seen.id = 0;
        EXPECT_EQ(seen, expected.value_or(seen));
        expected = seen;
        window.closed();
        settle();
        EXPECT_EQ(titles(), list({}));
    } while (std::ranges::next_permutation(events).found);
    EXPECT_EQ(expected->title, QStringLiteral("T"));
}

TEST_F(ToplevelClientTest, A_burst_is_one_change)
{
    FakeToplevelManager manager(compositor);
    connect();
    changes = 0;
    for (int i = 0; i < 100; ++i)
        manager.open("W" + std::to_string(i), "app");
    settle();
    EXPECT_EQ(client->windows()->size(), 100U);
    EXPECT_EQ(changes, 1);
    // What opens and closes within one was never there.
    manager.open("brief", "app").closed();
    settle();
    EXPECT_EQ(changes, 1);
}

TEST_F(ToplevelClientTest, Repeated_events_are_no_change)
{
    FakeToplevelManager manager(compositor);
    connect();
    FakeToplevel window = manager.open("A", "app", {activatedState});
    settle();
    changes = 0;
    for (int i = 0; i < 10; ++i)
        window.title("A").states({activatedState}).done();
    settle();
    EXPECT_EQ(changes, 0);
}

TEST_F(ToplevelClientTest, Titles_and_states_may_be_any_bytes)
{
    FakeToplevelManager manager(compositor);
    connect();
    FakeToplevel window = manager.open();
    window.title("\xff\xfe broken \x80").appID(std::string(3000, 'a'));
    window.stateBytes(std::string("\1\0\0\0\2\0", 6)).done();
    manager.open("", "", {activatedState});
    settle();
    ASSERT_EQ(client->windows()->size(), 2U);
    EXPECT_EQ(client->windows()->at(1).appID.size(), 3000);
    EXPECT_TRUE(client->windows()->at(1).isMinimized);
    EXPECT_FALSE(client->windows()->at(1).isActivated);
    EXPECT_FALSE(connection->isBroken());
}

TEST_F(ToplevelClientTest, A_dialogue_knows_its_window_as_long_as_that_is_there)
{
    FakeToplevelManager manager(compositor);
    connect();
    FakeToplevel main = manager.open("main", "app");
    FakeToplevel dialogue = manager.open("dialogue", "app");
    dialogue.parent(&main).done();
    settle();
    ASSERT_EQ(titles(), list({"dialogue", "main"}));
    EXPECT_EQ(only().parent, client->windows()->at(1).id);
    main.closed();
    settle();
    ASSERT_EQ(titles(), list({"dialogue"}));
    EXPECT_EQ(only().parent, std::nullopt);
}

TEST_F(ToplevelClientTest, Requests_reach_the_window_that_they_are_for)
{
    FakeToplevelManager manager(compositor);
    connect();
    manager.open("first", "app");
    FakeToplevel second = manager.open("second", "app");
    settle();
    const wayland::ToplevelID first = client->windows()->at(1).id;
    const wayland::ToplevelID gone = client->windows()->at(0).id;
    client->request(first, ToplevelAction::activate);
    client->request(first, ToplevelAction::minimize);
    client->request(first, ToplevelAction::restore);
    client->request(first, ToplevelAction::close);
    settle();
    EXPECT_EQ(manager.requests, list({"activate 0", "minimize 0", "restore 0", "close 0"}));
    second.closed();
    settle();
    client->request(gone, ToplevelAction::close);
    client->request(4711, ToplevelAction::close);
    settle();
    EXPECT_EQ(manager.requests.size(), 4);
    EXPECT_FALSE(connection->isBroken());
}

TEST_F(ToplevelClientTest, Without_a_seat_nothing_is_activated_and_the_rest_is_done)
{
    FakeToplevelManager manager(compositor, 3, false);
    connect();
    manager.open("A", "app");
    settle();
    client->request(only().id, ToplevelAction::activate);
    client->request(only().id, ToplevelAction::close);
    settle();
    EXPECT_EQ(manager.requests, list({"close 0"}));
}

TEST_F(ToplevelClientTest, A_list_that_is_finished_or_offered_no_more_is_absent)
{
    FakeToplevelManager finished(compositor);
    connect();
    finished.open("A", "app");
    settle();
    ASSERT_EQ(titles(), list({"A"}));
    finished.finish();
    settle();
    EXPECT_EQ(titles(), std::nullopt);
}

TEST_F(ToplevelClientTest, A_list_that_comes_back_is_read_again)
{
    std::optional<FakeToplevelManager> manager(std::in_place, compositor);
    connect();
    manager->open("A", "app");
    settle();
    const wayland::ToplevelID before = only().id;
    manager->remove();
    settle();
    EXPECT_EQ(titles(), std::nullopt);
    manager.emplace(compositor);
    settle();
    EXPECT_EQ(titles(), list({}));
    manager->open("A", "app");
    settle();
    ASSERT_EQ(titles(), list({"A"}));
    EXPECT_NE(only().id, before);
}

TEST_F(ToplevelClientTest, No_newer_version_is_bound_than_is_known_and_an_older_one_serves)
{
    {
        const FakeToplevelManager newer(compositor, 3);
        connect();
        EXPECT_EQ(newer.boundVersion(), 3U);
        client.reset();
    }
    FakeToplevelManager older(compositor, 1);
    connect();
    EXPECT_EQ(older.boundVersion(), 1U);
    older.open("A", "app");
    settle();
    EXPECT_EQ(titles(), list({"A"}));
}

TEST_F(ToplevelClientTest, Windows_have_the_identifiers_that_are_certain)
{
    FakeToplevelManager manager(compositor);
    FakeIdentifiedToplevels identities(compositor);
    connect();
    FakeToplevel a = manager.open("A", "app");
    manager.open("twin", "app");
    manager.open("twin", "app");
    FakeIdentifiedToplevel identified = identities.open("A", "app", "id-a");
    identities.open("twin", "app", "id-1");
    identities.open("twin", "app", "id-2");
    settle();
    ASSERT_EQ(titles(), list({"twin", "twin", "A"}));
    EXPECT_EQ(client->windows()->at(0).identifier, "");
    EXPECT_EQ(client->windows()->at(1).identifier, "");
    EXPECT_EQ(client->windows()->at(2).identifier, "id-a");
    // What is certain stays so, whatever the title becomes.
    a.title("twin").done();
    settle();
    EXPECT_EQ(client->windows()->at(2).identifier, "id-a");
    identified.title("twin").done();
    settle();
    EXPECT_EQ(client->windows()->at(2).identifier, "id-a");
    identified.closed();
    settle();
    EXPECT_EQ(client->windows()->at(2).identifier, "");
}

TEST_F(ToplevelClientTest, Nothing_is_listed_before_both_lists_are_whole)
{
    FakeToplevelManager manager(compositor);
    FakeIdentifiedToplevels identities(compositor);
    connection = wayland::WaylandConnection::open(compositor.path());
    ASSERT_NE(connection, nullptr);
    client.emplace(*connection, nextID, [this] { ++changes; });
    while (manager.boundVersion() == 0) {
        connection->dispatch(std::chrono::steady_clock::now());
        compositor.serve(0ms);
    }
    // The manager is bound first, and what was asked after that is answered by now.
    manager.open("A", "app");
    identities.open("A", "app", "id-a");
    settle();
    ASSERT_EQ(titles(), list({"A"}));
    EXPECT_EQ(only().identifier, "id-a");
    EXPECT_EQ(changes, 1);
}

TEST_F(ToplevelClientTest, Any_sequence_of_events_leaves_the_windows_that_are_there)
{
    constexpr unsigned int seed = 20'26;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    FakeToplevelManager manager(compositor);
    connect();
    struct Open
    {
        FakeToplevel window;
        std::string title;
        bool isListed = false;
        std::string listedTitle;
    };
    std::vector<Open> open;
    const auto pick = [&random](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    for (int step = 0; step < 2000; ++step) {
        const std::size_t event = pick(5);
        if (event == 0 || open.empty()) {
            open.push_back({manager.open(), {}, false, {}});
        } else if (event == 1) {
            const auto at = static_cast<std::ptrdiff_t>(pick(open.size()));
            open[static_cast<std::size_t>(at)].window.closed();
            open.erase(open.begin() + at);
        } else if (event == 2) {
            Open& each = open[pick(open.size())];
            each.title = "T" + std::to_string(step);
            each.window.title(each.title);
        } else {
            Open& each = open[pick(open.size())];
            each.window.states({static_cast<std::uint32_t>(pick(4))}).done();
            each.isListed = true;
            each.listedTitle = each.title;
        }
        if (step % 50 != 0)
            continue;
        settle();
        QStringList expected;
        for (const Open& each : open) {
            if (each.isListed)
                expected.append(QString::fromStdString(each.listedTitle));
        }
        std::optional<QStringList> seen = titles();
        ASSERT_TRUE(seen);
        seen->sort();
        expected.sort();
        ASSERT_EQ(*seen, expected) << step;
    }
    EXPECT_FALSE(connection->isBroken());
}

} // namespace
} // namespace kelpa::test
