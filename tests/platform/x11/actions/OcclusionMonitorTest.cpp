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

/// A display of 1280 by 800 with a window of Kelpa's and those of another program.
class CoveredWindow : public testing::Test
{
protected:
    void watch(xcb_window_t window)
    {
        subscription = std::make_unique<x11::OcclusionMonitor>(
            connector, scheduler, window, [this](bool isCovered) { changes.push_back(isCovered); });
    }

    /// What has been told by the time the server has carried out everything asked so far.
    bool tells(const std::vector<bool>& expected)
    {
        other.sync();
        const bool isTold = waitUntil([&] { return changes.size() >= expected.size(); });
        EXPECT_EQ(changes, expected);
        return isTold && changes == expected;
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

/// A watch that has begun.
class WatchedWindow : public CoveredWindow
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
            const bool isTold =
                waitUntil([this] { return !changes.empty(); }, std::chrono::milliseconds(20));
            other.destroy(above);
            other.sync();
            return isTold;
        }));
        ASSERT_TRUE(waitUntil([this] { return !changes.back(); }));
        changes.clear();
    }

    xcb_window_t window = XCB_WINDOW_NONE;
};

TEST_F(WatchedWindow, Is_covered_once_another_lies_all_over_it_and_until_it_is_in_front)
{
    other.open(all);
    EXPECT_TRUE(tells({true}));
    own.raise(window);
    own.sync();
    EXPECT_TRUE(tells({true, false}));
}

TEST_F(WatchedWindow, Is_covered_by_several_windows_together)
{
    other.open(left);
    const xcb_window_t second = other.open(right);
    EXPECT_TRUE(tells({true}));
    other.unmap(second);
    EXPECT_TRUE(tells({true, false}));
}

TEST_F(WatchedWindow, Is_not_covered_while_a_strip_of_it_shows)
{
    TestWindow most = all;
    most.width = 1279;
    const xcb_window_t above = other.open(most);
    // What is superfluous comes before what is asked for now.
    const xcb_window_t whole = other.open(all);
    EXPECT_TRUE(tells({true}));
    other.destroy(whole);
    EXPECT_TRUE(tells({true, false}));
    other.resize(above, 1280, 800);
    EXPECT_TRUE(tells({true, false, true}));
}

TEST_F(WatchedWindow, That_comes_back_in_front_from_being_unmapped_is_not_covered_any_more)
{
    other.open(all);
    EXPECT_TRUE(tells({true}));
    own.unmap(window);
    own.raise(window);
    own.map(window);
    own.sync();
    EXPECT_TRUE(tells({true, false}));
}

TEST_F(WatchedWindow, Under_a_window_manager_is_told_of_too)
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

TEST_F(WatchedWindow, Is_told_of_while_windows_are_captured_which_its_own_are_not)
{
    const WindowManager manager(server.display());
    const xcb_window_t captured = other.open(left);
    ASSERT_TRUE(waitUntil([&] { return own.isListed(window) && other.isListed(captured); }));
    own.maximize(window);
    X11Surroundings surroundings;
    const auto windowServer = surroundings.makeServer(server.display(), ::getpid());
    std::optional<WindowCapture> picture;
    ASSERT_TRUE(waitUntil([&] {
        const std::vector<WindowListEntry> entries = look(*windowServer);
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

TEST_F(WatchedWindow, Is_not_told_of_once_the_subscription_is_dropped)
{
    subscription.reset();
    other.open(all);
    other.sync();
    waitUntil([] { return true; });
    EXPECT_TRUE(changes.empty());
}

TEST_F(WatchedWindow, Is_left_as_it_was_by_a_server_that_goes_away)
{
    server.kill();
    waitUntil([] { return false; }, std::chrono::milliseconds(50));
    EXPECT_TRUE(changes.empty());
}

} // namespace
