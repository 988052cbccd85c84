#include "support/desktop/X11Desktop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <list>
#include <map>
#include <random>
#include <set>
#include <thread>

using namespace kelpa;
using namespace kelpa::test;

namespace {

/// Opens, renames, hides and destroys windows from several connections until told to stop.
void churn(const QByteArray& display, const std::stop_token& stop, unsigned int seed)
{
    std::mt19937 random(seed);
    int serial = 0;
    std::list<std::pair<TestClient, xcb_window_t>> open;
    while (!stop.stop_requested()) {
        const unsigned int choice = random() % 4;
        if (open.size() < 8 && choice < 2) {
            TestClient client(display);
            const QByteArray title = "churn " + QByteArray::number(++serial);
            const xcb_window_t window = client.open({10, 10, 200, 150, title, "Churn"});
            open.emplace_back(std::move(client), window);
        } else if (!open.empty()) {
            const auto it = std::next(
                open.begin(), static_cast<int>(random() % static_cast<unsigned int>(open.size())));
            auto& [client, window] = *it;
            if (choice == 2) {
                client.unmap(window);
            } else {
                client.destroy(window);
            }
            // The connection goes too, so that its ids are soon used again.
            open.erase(it);
        }
    }
}

} // namespace

TEST(Churn, Two_hundred_passes_during_opening_and_closing_never_pass_a_number_on)
{
    const XServer xServer;
    const WindowManager manager(xServer.display());
    X11Surroundings surroundings;
    const auto server = surroundings.makeServer(xServer.display());
    TestClient steadyClient(xServer.display());
    const xcb_window_t steady = steadyClient.open({300, 300, 150, 150, "steady", "Steady"});
    ASSERT_TRUE(waitUntil([&] { return steadyClient.isListed(steady); }));
    const auto steadyNumber =
        entryNamed(runDiscoveryPass(*server), QStringLiteral("steady"))->number;

    const unsigned int seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::jthread worker([&](const std::stop_token& stop) { churn(xServer.display(), stop, seed); });

    std::map<WindowID, QString> titles;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    for (int pass = 0; pass < 200 || titles.size() < 30; ++pass) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "too little was opened";
        const auto list = server->openDiscoverySource()->windowList(WindowListScope::all);
        ASSERT_TRUE(list.has_value());
        std::set<WindowID> seen;
        for (const WindowListEntry& entry : *list) {
            ASSERT_TRUE(entry.number.has_value());
            EXPECT_TRUE(seen.insert(*entry.number).second) << "one number twice in a pass";
            // The window manager may take a window that is being made for the dead one whose id it
            // has, and list it before it has its title.
            if (!entry.name->isEmpty()) {
                const auto known = titles.try_emplace(*entry.number, *entry.name).first;
                ASSERT_EQ(known->second.toStdString(), entry.name->toStdString())
                    << "a number passed to another window";
            }
        }
        EXPECT_EQ(entryNamed(*list, QStringLiteral("steady"))->number, steadyNumber);
    }
}
