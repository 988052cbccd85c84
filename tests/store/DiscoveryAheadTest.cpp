// The first discovery pass runs while the views load, so that the first frame shows the windows.
#include "store/WindowFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class DiscoveryAhead : public WindowFixture
{
protected:
    /// What the program does until it shows the board, whose first pass hangs.
    void startWithHangingPass()
    {
        scheduler.holdBackgroundWork(true);
        store().discoverAhead();
        scheduler.hangBackgroundWork();
        store().awaitWindows(50ms);
        scheduler.holdBackgroundWork(false);
    }

    int passes() const
    {
        return static_cast<int>(desktop.calls.count(QStringLiteral("openDiscoverySource")));
    }
};

TEST_F(DiscoveryAhead, The_windows_are_there_before_the_store_observes)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    desktop.addWindow(2, FakeDesktop::ownProcess, QStringLiteral("Kelpa"));
    store().discoverAhead();
    EXPECT_TRUE(listedIDs().isEmpty()) << "the views load meanwhile";
    EXPECT_EQ(scheduler.startedPriorities(), std::vector{WorkPriority::normal});

    store().awaitWindows(50ms);
    EXPECT_EQ(listedIDs(), QList<WindowID>{1});
    EXPECT_EQ(takeSignals(), onlyWindows);
    EXPECT_EQ(scheduler.timersDue(), 0);
    EXPECT_EQ(desktop.watcherCount(), 0);
}

TEST_F(DiscoveryAhead, A_pass_that_has_ended_by_itself_is_not_repeated_by_waiting)
{
    desktop.addWindow(1, 100, {});
    store().discoverAhead();
    scheduler.advance(0ms);
    EXPECT_EQ(listedIDs(), QList<WindowID>{1});

    store().awaitWindows(50ms);
    EXPECT_EQ(passes(), 1);
}

TEST_F(DiscoveryAhead, What_changes_before_the_store_observes_is_found_when_it_does)
{
    desktop.addWindow(1, 100, {});
    store().discoverAhead();
    store().awaitWindows(50ms);
    desktop.addWindow(2, 200, {});

    store().startObserving();
    EXPECT_EQ(listedIDs(), (QList<WindowID>{2, 1}));
}

TEST_F(DiscoveryAhead, A_pass_that_hangs_holds_nobody_back_and_reports_when_it_ends)
{
    desktop.addWindow(1, 100, {});
    startWithHangingPass();
    EXPECT_TRUE(listedIDs().isEmpty());
    EXPECT_TRUE(store().isScreenCaptureTrusted()) << "nothing is known to be missing";

    store().startObserving();
    scheduler.advance(10s);
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1) << "no second pass beside it";
    EXPECT_EQ(passes(), 0);

    desktop.addWindow(2, 200, {});
    scheduler.runBackgroundWork();
    EXPECT_EQ(listedIDs(), (QList<WindowID>{2, 1}));
    // It may have missed what happened before the store observed.
    desktop.addWindow(3, 300, {});
    scheduler.advance(0ms);
    EXPECT_EQ(passes(), 2);
    EXPECT_EQ(listedIDs(), (QList<WindowID>{3, 2, 1}));
}

TEST_F(DiscoveryAhead, A_refresh_takes_the_place_of_a_pass_that_hangs)
{
    desktop.addWindow(1, 100, {});
    startWithHangingPass();
    store().startObserving();

    store().refresh();
    desktop.addWindow(2, 200, {});
    scheduler.runBackgroundWork();
    EXPECT_TRUE(listedIDs().isEmpty()) << "the cancelled pass does not report";
    scheduler.advance(0ms);
    EXPECT_EQ(listedIDs(), (QList<WindowID>{2, 1}));
}

TEST_F(DiscoveryAhead, A_store_that_stops_observing_stays_empty)
{
    desktop.addWindow(1, 100, {});
    startWithHangingPass();
    store().startObserving();
    store().stopObserving();
    scheduler.runBackgroundWork();
    EXPECT_TRUE(listedIDs().isEmpty());

    store().startObserving();
    EXPECT_EQ(listedIDs(), QList<WindowID>{1});
}

TEST_F(DiscoveryAhead, A_pass_that_finds_a_permission_missing_publishes_that_and_no_windows)
{
    desktop.addWindow(1, 100, {});
    desktop.inTheMiddleOfAPass = [this] { desktop.isScreenCaptureGranted = false; };
    store().discoverAhead();
    EXPECT_TRUE(store().isScreenCaptureTrusted());

    store().awaitWindows(50ms);
    EXPECT_FALSE(store().isScreenCaptureTrusted());
    EXPECT_EQ(store().obstacles().screenCapture, Obstacle::permission);
    EXPECT_TRUE(listedIDs().isEmpty());
}

} // namespace
} // namespace kelpa::test
