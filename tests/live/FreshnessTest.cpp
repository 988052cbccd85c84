// Changes of windows reach the board through events alone, without a timer.
#include "live/LiveBoard.h"
#include "support/desktop/LoopScheduler.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <list>

using namespace kelpa;
using namespace kelpa::test;
using namespace std::chrono_literals;

namespace {

class FreshBoard : public ::testing::Test
{
protected:
    void SetUp() override
    {
        board.store()->startObserving();
        settle();
    }

    std::optional<WindowItem> window() const { return board.window(QStringLiteral("window")); }

    xcb_window_t open()
    {
        const xcb_window_t opened = client.open({.title = "window"});
        EXPECT_TRUE(waitUntil([&] { return window().has_value(); }));
        settle();
        return opened;
    }

    /// Waits until the board has processed every change so far.
    void settle()
    {
        int before = 0;
        const auto isQuiet = [&] {
            before = board.discoveryPasses();
            return !waitUntil([&] { return board.discoveryPasses() != before; }, 400ms);
        };
        ASSERT_TRUE(waitUntil(isQuiet));
    }

    XServer xServer;
    WindowManager manager{xServer.display()};
    TestClient client{xServer.display()};
    TimerlessScheduler scheduler;
    LiveBoard board{xServer.display(), scheduler};
};

} // namespace

TEST_F(FreshBoard, A_new_window_appears)
{
    client.open({.title = "window"});
    EXPECT_TRUE(waitUntil([&] { return window().has_value(); }));
}

TEST_F(FreshBoard, A_closed_window_goes)
{
    const xcb_window_t opened = open();
    client.destroy(opened);
    EXPECT_TRUE(waitUntil([&] { return board.store()->windows().isEmpty(); }));
}

TEST_F(FreshBoard, A_renamed_window_bears_its_new_title)
{
    const xcb_window_t opened = open();
    client.setText(opened, "_NET_WM_NAME", "renamed");
    EXPECT_TRUE(waitUntil([&] { return board.window(QStringLiteral("renamed")).has_value(); }));
}

TEST_F(FreshBoard, A_minimised_window_says_so_and_a_restored_one_no_longer)
{
    const xcb_window_t opened = open();
    EXPECT_FALSE(window()->isMinimized);
    client.minimize(opened);
    EXPECT_TRUE(waitUntil([&] { return window()->isMinimized && !window()->isOnScreen; }));
    settle();
    client.map(opened);
    EXPECT_TRUE(waitUntil([&] { return !window()->isMinimized && window()->isOnScreen; }));
}

TEST_F(FreshBoard, A_storm_of_changes_takes_few_discovery_passes)
{
    const xcb_window_t opened = open();
    const int before = board.discoveryPasses();
    const auto begin = std::chrono::steady_clock::now();
    constexpr int changes = 1000;
    for (int count = 1; count <= changes; ++count) {
        client.setText(opened, "_NET_WM_NAME", "title " + QByteArray::number(count));
        QCoreApplication::processEvents();
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_TRUE(waitUntil([&] { return board.window(QStringLiteral("title 1000")).has_value(); }));
    const auto seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    // One pass at once, some more at growing intervals, then one after each longest interval, and
    // one for changes during the last pass.
    EXPECT_LE(board.discoveryPasses() - before, static_cast<int>(seconds / 0.5) + 6);
    EXPECT_LT(board.discoveryPasses() - before, changes / 10);
}
