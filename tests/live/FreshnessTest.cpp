// What happens to windows shows on the board by itself, without a timer.
#include "live/LiveBoard.h"
#include "support/desktop/LoopScheduler.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <list>

using namespace kelpa;
using namespace kelpa::test;
using namespace std::chrono_literals;

namespace {

/// Nothing that is to be repeated ever comes.
class TimerlessScheduler : public LoopScheduler
{
public:
    [[nodiscard]] TaskHandle repeat(Duration /*interval*/, std::function<void()> /*tick*/) override
    {
        return std::make_unique<Never>();
    }

private:
    class Never : public ScheduledWork
    {};
};

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

    /// Waits until the board has taken in all that has happened so far.
    void settle()
    {
        int before = 0;
        const auto isQuiet = [&] {
            before = board.looks();
            return !waitUntil([&] { return board.looks() != before; }, 400ms);
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

TEST_F(FreshBoard, A_storm_of_changes_takes_few_looks)
{
    const xcb_window_t opened = open();
    const int before = board.looks();
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
    // One look at once, some more with growing rests between them, then one after each long rest;
    // and one for what came during the last look.
    EXPECT_LE(board.looks() - before, static_cast<int>(seconds / 0.5) + 6);
    EXPECT_LT(board.looks() - before, changes / 10);
}
