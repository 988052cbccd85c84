#include "platform/wayland/wlr/WlrWindowServer.h"

#include "platform/wayland/wlr/WlrAbilities.h"
#include "platform/wayland/wlr/WlrWindowActions.h"
#include "support/ListedTitles.h"
#include "support/ManualScheduler.h"
#include "support/MemoryNumbers.h"
#include "support/wayland/FakeToplevels.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

namespace kelpa::test {
namespace {

class WlrServerTest : public testing::Test
{
protected:
    /// The compositor has forgotten the windows of an earlier start.
    std::unique_ptr<wayland::WlrWindowServer> start()
    {
        manager.reset();
        identified.reset();
        manager.emplace(compositor);
        identified.emplace(compositor);
        return std::make_unique<wayland::WlrWindowServer>(
            wayland::WlrWindowServerNeeds{.socketPath = compositor.path(),
                                          .ownApplications = {QStringLiteral("kelpa")},
                                          .resolver = resolver,
                                          .reservation = reservation,
                                          .names = names,
                                          .highWaterMark = reservation.mark,
                                          .takenNumbers = {},
                                          .scheduler = scheduler});
    }

    /// The titles and numbers of a pass that has so many windows, in its order.
    Titles pass(wayland::WlrWindowServer& server, std::size_t count)
    {
        Titles all;
        const std::function<bool()> hasAll = [&] {
            std::optional<Titles> listed;
            // The first pass waits for the compositor.
            std::jthread reading([&] {
                listed = listedTitles(server);
                isRead = true;
            });
            while (!isRead.exchange(false))
                compositor.serve();
            reading.join();
            all = listed.value_or(Titles());
            return listed && all.size() == count;
        };
        serveUntil(hasAll);
        return all;
    }

    /// Returns when the server follows both lists, which are empty.
    void awaitLists(wayland::WlrWindowServer& server) { pass(server, 0); }

    /// False when it takes too long.
    bool serveUntil(const std::function<bool()>& condition)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            compositor.serve();
        }
        return true;
    }

    FakeCompositor compositor;
    std::optional<FakeToplevelManager> manager;
    std::optional<FakeIdentifiedToplevels> identified;
    ManualScheduler scheduler;
    NoResolver resolver;
    MemoryReservation reservation;
    MemoryNameTable names;
    std::atomic<bool> isRead = false;
};

TEST_F(WlrServerTest, Identified_windows_keep_their_numbers_when_kelpa_starts_again)
{
    Titles first;
    for (int start = 0; start < 2; ++start) {
        const auto server = this->start();
        awaitLists(*server);
        // Announced in another order, so that the order alone does not tell them apart.
        manager->open(start == 0 ? "a" : "b", "app");
        manager->open(start == 0 ? "b" : "a", "app");
        identified->open("a", "app", "id of a");
        identified->open("b", "app", "id of b");
        Titles listed;
        // One list may be told a moment before the other.
        ASSERT_TRUE(serveUntil([&] {
            listed = pass(*server, 2);
            return names.table && names.table->numbers.contains("id id of a") &&
                   names.table->numbers.contains("id id of b") && server->windows().size() == 2 &&
                   std::ranges::none_of(server->windows(), [](const auto& each) {
                       return each.window.identifier.isEmpty();
                   });
        }));
        std::ranges::sort(listed);
        ASSERT_EQ(listed.size(), 2U);
        EXPECT_NE(listed.at(0).second, listed.at(1).second);
        if (start == 0)
            first = listed;
        else
            EXPECT_EQ(listed, first);
    }
}

TEST_F(WlrServerTest, A_window_keeps_its_number_when_its_identifier_becomes_certain)
{
    const auto server = start();
    awaitLists(*server);
    // Nothing tells these two apart.
    FakeToplevel window = manager->open("twin", "app");
    manager->open("twin", "app");
    FakeIdentifiedToplevel identifiedWindow = identified->open("twin", "app", "first");
    identified->open("twin", "app", "second");
    auto before = pass(*server, 2);
    window.title("alone").done();
    identifiedWindow.title("alone").done();
    ASSERT_TRUE(serveUntil([&] {
        pass(*server, 2);
        return names.table->numbers.contains("id first") &&
               names.table->numbers.contains("id second");
    }));
    const std::set<WindowID> after{names.table->numbers.at("id first"),
                                   names.table->numbers.at("id second")};
    EXPECT_EQ(after, (std::set{before.at(0).second, before.at(1).second}));
}

TEST_F(WlrServerTest, Windows_without_identifiers_never_get_the_number_of_an_earlier_start)
{
    std::set<WindowID> given;
    for (int start = 0; start < 2; ++start) {
        const auto server = this->start();
        awaitLists(*server);
        manager->open("a", "app");
        const auto listed = pass(*server, 1);
        ASSERT_EQ(listed.size(), 1U);
        EXPECT_TRUE(given.insert(listed.front().second).second);
    }
}

TEST_F(WlrServerTest, A_list_that_is_offered_no_more_is_reported_until_it_is_back)
{
    const auto server = start();
    awaitLists(*server);
    EXPECT_TRUE(server->isListing());
    manager->remove();
    ASSERT_TRUE(serveUntil([&] {
        return !server->openDiscoverySource()->windowList(WindowListScope::all).has_value();
    }));
    EXPECT_FALSE(server->isListing());
    EXPECT_FALSE(wayland::abilitiesWithoutList().has(DesktopAbility::windows));
    manager.reset();
    manager.emplace(compositor);
    awaitLists(*server);
    EXPECT_TRUE(server->isListing());
}

TEST_F(WlrServerTest, A_request_reaches_the_one_window)
{
    const auto server = start();
    awaitLists(*server);
    manager->open("a", "app");
    manager->open("b", "app", {minimizedState});
    manager->open("own", "kelpa");
    // Of another board.
    manager->open("other", "kelpa");
    const auto listed = pass(*server, 2);
    ASSERT_EQ(listed.size(), 2U);
    const auto minimized =
        std::ranges::find(listed, QStringLiteral("b"), &std::pair<QString, WindowID>::first);
    wayland::WlrWindowActions actions(*server);
    const auto elements = actions.elements(-static_cast<ProcessID>(minimized->second));
    ASSERT_TRUE(elements);
    ASSERT_EQ(elements->size(), 1U);
    elements->front()->requestMinimized(false);
    elements->front()->requestMinimized(true);
    elements->front()->requestFocus();
    elements->front()->requestClose();
    server->activateOwn(QStringLiteral("own"));
    ASSERT_TRUE(serveUntil([&] { return manager->requests.size() >= 6; }));
    EXPECT_EQ(manager->requests,
              (QStringList{QStringLiteral("restore 1"), QStringLiteral("minimize 1"),
                           QStringLiteral("activate 1"), QStringLiteral("close 1"),
                           QStringLiteral("restore 2"), QStringLiteral("activate 2")}));
}

} // namespace
} // namespace kelpa::test
