#include "platform/x11/actions/OcclusionMonitor.h"

#include "support/ProgramArguments.h"
#include "support/desktop/LoopScheduler.h"
#include "support/desktop/Programs.h"
#include "support/desktop/TestClient.h"
#include "support/desktop/WaitUntil.h"
#include "support/desktop/X11Desktop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <unistd.h>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

using namespace kelpa;
using namespace kelpa::test;

namespace {

/// A display of 1280 by 800 pixels with a window of Kelpa's and windows of another program.
class OccludedWindow : public testing::Test
{
protected:
    void watch(xcb_window_t window)
    {
        subscription = std::make_unique<x11::OcclusionMonitor>(
            connector, scheduler, window,
            [this](bool isOccluded) { changes.push_back(isOccluded); });
    }

    /// Compares the changes reported once the server has carried out all requests so far.
    bool reports(const std::vector<bool>& expected)
    {
        other.sync();
        const bool isReported = waitUntil([&] { return changes.size() >= expected.size(); });
        EXPECT_EQ(changes, expected);
        return isReported && changes == expected;
    }

    ProgramArguments arguments;
    QCoreApplication application{arguments.count, arguments.values.data()};
    XServer server;
    TestClient own{server.display()};
    TestClient other{server.display()};
    LoopScheduler scheduler;
    std::shared_ptr<x11::DisplayConnector> connector =
        std::make_shared<x11::DisplayConnector>(server.display());
    std::vector<bool> changes;
    std::unique_ptr<Subscription> subscription;
};

const TestWindow all{.x = 0, .y = 0, .width = 1280, .height = 800, .title = "all"};
const TestWindow left{.x = 0, .y = 0, .width = 640, .height = 800, .title = "left"};
const TestWindow right{.x = 640, .y = 0, .width = 640, .height = 800, .title = "right"};

/// The monitor is connected and reports changes.
class WatchedWindow : public OccludedWindow
{
protected:
    void SetUp() override
    {
        window = own.open(all);
        own.sync();
        watch(window);
        ASSERT_TRUE(waitUntil([&] {
            const xcb_window_t above = other.open(all);
            other.sync();
            const bool isReported =
                waitUntil([this] { return !changes.empty(); }, std::chrono::milliseconds(20));
            other.destroy(above);
            other.sync();
            return isReported;
        }));
        ASSERT_TRUE(waitUntil([this] { return !changes.back(); }));
        changes.clear();
    }

    xcb_window_t window = XCB_WINDOW_NONE;
};

TEST_F(WatchedWindow, Is_occluded_while_another_window_covers_all_of_it_until_it_is_raised)
{
    other.open(all);
    EXPECT_TRUE(reports({true}));
    own.raise(window);
    own.sync();
    EXPECT_TRUE(reports({true, false}));
}

TEST_F(WatchedWindow, Is_occluded_by_several_windows_together)
{
    other.open(left);
    const xcb_window_t second = other.open(right);
    EXPECT_TRUE(reports({true}));
    other.unmap(second);
    EXPECT_TRUE(reports({true, false}));
}

TEST_F(WatchedWindow, Is_not_occluded_while_a_strip_of_it_shows)
{
    TestWindow most = all;
    most.width = 1279;
    const xcb_window_t above = other.open(most);
    // A wrong report would come before the one that this causes.
    const xcb_window_t whole = other.open(all);
    EXPECT_TRUE(reports({true}));
    other.destroy(whole);
    EXPECT_TRUE(reports({true, false}));
    other.resize(above, 1280, 800);
    EXPECT_TRUE(reports({true, false, true}));
}

TEST_F(WatchedWindow, Is_not_occluded_once_it_is_mapped_again_in_front)
{
    other.open(all);
    EXPECT_TRUE(reports({true}));
    own.unmap(window);
    own.raise(window);
    own.map(window);
    own.sync();
    EXPECT_TRUE(reports({true, false}));
}

TEST_F(WatchedWindow, Is_reported_under_a_window_manager_too)
{
    const WindowManager manager(server.display());
    own.maximize(window);
    ASSERT_TRUE(waitUntil([&] { return own.isListed(window); }));
    changes.clear();
    const xcb_window_t above = other.open(left);
    ASSERT_TRUE(waitUntil([&] { return other.isListed(above); }));
    other.maximize(above);
    EXPECT_TRUE(waitUntil([this] { return !changes.empty() && changes.back(); }));
    other.minimize(above);
    EXPECT_TRUE(waitUntil([this] { return !changes.back(); }));
}

TEST_F(WatchedWindow, Is_reported_while_windows_of_others_but_not_its_own_are_captured)
{
    const WindowManager manager(server.display());
    const xcb_window_t captured = other.open(left);
    ASSERT_TRUE(waitUntil([&] { return own.isListed(window) && other.isListed(captured); }));
    own.maximize(window);
    X11Surroundings surroundings;
    const auto windowServer = surroundings.makeServer(server.display(), ::getpid());
    std::optional<WindowCapture> picture;
    ASSERT_TRUE(waitUntil([&] {
        const std::vector<WindowListEntry> entries = runDiscoveryPass(*windowServer);
        const auto entry = entryNamed(entries, QStringLiteral("left"));
        std::vector<WindowID> next;
        next.reserve(entries.size());
        for (const WindowListEntry& each : entries) {
            next.push_back(each.number.value_or(0));
        }
        picture = entry ? windowServer->captureWindow(
                              {*entry->number, {200, 200}, CaptureNeed::always, next}, {})
                        : std::nullopt;
        return picture.has_value();
    }));
    changes.clear();
    other.maximize(captured);
    own.raise(window);
    other.raise(captured);
    EXPECT_TRUE(waitUntil([this] { return !changes.empty() && changes.back(); }));
}

TEST_F(WatchedWindow, Is_not_reported_once_the_subscription_is_dropped)
{
    subscription.reset();
    other.open(all);
    other.sync();
    waitUntil([] { return true; });
    EXPECT_TRUE(changes.empty());
}

TEST_F(WatchedWindow, Keeps_its_state_when_the_server_goes_away)
{
    server.kill();
    waitUntil([] { return false; }, std::chrono::milliseconds(50));
    EXPECT_TRUE(changes.empty());
}

} // namespace
