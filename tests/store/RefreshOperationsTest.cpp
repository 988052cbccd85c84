// Discovery passes that the store runs, and how it observes the desktop.

#include "store/WindowFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using RefreshOperations = WindowFixture;

TEST_F(RefreshOperations, A_refresh_lists_what_the_desktop_shows)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    desktop.addWindow(2, FakeDesktop::ownProcess, QStringLiteral("Kelpa"));
    store().refresh();

    EXPECT_EQ(listedIDs(), QList<WindowID>{1});
    EXPECT_EQ(takeSignals(), onlyWindows);
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(RefreshOperations, A_refresh_that_finds_the_same_wakes_nobody)
{
    desktop.addWindow(1, 100, QStringLiteral("a"));
    store().refresh();
    forgetWhatHappened();

    store().refresh();
    store().refreshInBackground();
    scheduler.advance(0ms);

    EXPECT_TRUE(takeSignals().isEmpty());
    EXPECT_EQ(takeWriteCount(), 0);
}

TEST_F(RefreshOperations, Without_screen_capture_no_window_is_listed)
{
    desktop.addWindow(1, 100, {});
    store().refresh();
    desktop.isScreenCaptureGranted = false;
    forgetWhatHappened();

    store().refresh();

    EXPECT_TRUE(listedIDs().isEmpty());
    EXPECT_FALSE(store().isScreenCaptureTrusted());
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("isScreenCaptureTrusted"), 1},
                                                 {QStringLiteral("obstacles"), 1},
                                                 {QStringLiteral("windows"), 1}}));

    desktop.isScreenCaptureGranted = true;
    store().refreshInBackground();
    scheduler.advance(0ms);
    EXPECT_EQ(listedIDs(), QList<WindowID>{1});
}

TEST_F(RefreshOperations, Windows_that_may_not_be_read_any_more_are_never_shown_as_closed)
{
    desktop.addWindow(1, 100, {});
    store().refresh();
    scheduler.holdBackgroundWork(true);
    store().refreshInBackground();
    // The desktop goes away during the pass.
    desktop.isScreenCaptureGranted = false;
    desktop.windowList.reset();
    scheduler.holdBackgroundWork(false);
    scheduler.advance(0ms);

    EXPECT_TRUE(listedIDs().isEmpty());
    EXPECT_FALSE(store().isScreenCaptureTrusted());
}

TEST_F(RefreshOperations, Windows_that_may_be_read_from_a_pass_on_are_listed_with_the_next)
{
    desktop.addWindow(1, 100, {});
    desktop.isScreenCaptureGranted = false;
    scheduler.holdBackgroundWork(true);
    store().refreshInBackground();
    desktop.isScreenCaptureGranted = true;
    scheduler.holdBackgroundWork(false);
    scheduler.advance(0ms);
    // A list that was not read is not an empty one.
    EXPECT_FALSE(store().isScreenCaptureTrusted());

    store().refreshInBackground();
    scheduler.advance(0ms);
    EXPECT_TRUE(store().isScreenCaptureTrusted());
    EXPECT_EQ(listedIDs(), QList<WindowID>{1});
}

TEST_F(RefreshOperations, The_permissions_follow_the_desktop_with_every_pass)
{
    store();
    desktop.isAccessibilityGranted = false;
    store().refreshInBackground();
    EXPECT_FALSE(store().isAccessibilityTrusted());
    scheduler.advance(0ms);
    desktop.isAccessibilityGranted = true;
    store().refresh();
    EXPECT_TRUE(store().isAccessibilityTrusted());
}

TEST_F(RefreshOperations, A_background_pass_applies_when_it_ends_and_only_one_is_under_way)
{
    desktop.addWindow(1, 100, {});
    scheduler.holdBackgroundWork(true);
    store().refreshInBackground();
    store().refreshInBackground();
    EXPECT_TRUE(listedIDs().isEmpty());
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);

    scheduler.runBackgroundWork();
    EXPECT_EQ(listedIDs(), QList<WindowID>{1});

    store().refreshInBackground();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1) << "the next one may start";
}

TEST_F(RefreshOperations, A_refresh_cancels_the_pass_under_way)
{
    desktop.addWindow(1, 100, {});
    scheduler.holdBackgroundWork(true);
    store().refreshInBackground();
    scheduler.holdBackgroundWork(false);
    desktop.addWindow(2, 100, {});

    store().refresh();
    EXPECT_EQ(listedIDs(), (QList<WindowID>{2, 1}));

    desktop.removeWindow(2);
    scheduler.runBackgroundWork();
    EXPECT_EQ(listedIDs(), (QList<WindowID>{2, 1})) << "the older pass must not be applied";
}

TEST_F(RefreshOperations, A_refresh_that_the_window_server_keeps_waiting_ends_in_the_background)
{
    desktop.addWindow(1, 100, {});
    store();
    scheduler.holdBackgroundWork(true);

    store().refresh();
    EXPECT_TRUE(listedIDs().isEmpty());
    store().refreshInBackground();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);

    scheduler.runBackgroundWork();
    EXPECT_EQ(listedIDs(), QList<WindowID>{1});
}

TEST_F(RefreshOperations, Observing_runs_a_pass_at_once_and_then_every_two_seconds)
{
    desktop.addWindow(1, 100, {});
    store().startObserving();
    EXPECT_EQ(listedIDs(), QList<WindowID>{1});
    store().startObserving();
    EXPECT_EQ(desktop.calls.count(QStringLiteral("openDiscoverySource")), 1);

    desktop.addWindow(2, 100, {});
    scheduler.advance(1999ms);
    EXPECT_EQ(listedIDs(), QList<WindowID>{1});
    scheduler.advance(1ms);
    EXPECT_EQ(listedIDs(), (QList<WindowID>{2, 1}));
    EXPECT_EQ(desktop.calls.count(QStringLiteral("openDiscoverySource")), 2);
}

TEST_F(RefreshOperations, A_tick_during_a_pass_is_dropped)
{
    store().startObserving();
    scheduler.holdBackgroundWork(true);
    scheduler.advance(6s);
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    EXPECT_EQ(scheduler.backgroundWorkStarted(), 2);
}

TEST_F(RefreshOperations, A_change_on_the_desktop_starts_a_pass_without_waiting_for_the_tick)
{
    store().startObserving();
    desktop.addWindow(1, 100, {});
    desktop.announceWindowChange();
    scheduler.advance(0ms);

    EXPECT_EQ(listedIDs(), QList<WindowID>{1});
}

TEST_F(RefreshOperations, A_change_during_a_pass_starts_one_more_pass)
{
    store().startObserving();
    scheduler.holdBackgroundWork(true);
    desktop.announceWindowChange();
    desktop.announceWindowChange();
    desktop.announceWindowChange();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);

    scheduler.runBackgroundWork();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    scheduler.runBackgroundWork();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 0);
}

TEST_F(RefreshOperations, Observing_ends_with_an_empty_list_and_no_work)
{
    desktop.addWindow(1, 100, {});
    store().startObserving();
    scheduler.holdBackgroundWork(true);
    store().refreshInBackground();

    store().stopObserving();

    EXPECT_TRUE(listedIDs().isEmpty());
    EXPECT_EQ(scheduler.timersDue(), 0);
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 0);
    EXPECT_EQ(desktop.watcherCount(), 0);

    scheduler.holdBackgroundWork(false);
    store().startObserving();
    EXPECT_EQ(listedIDs(), QList<WindowID>{1});
}

} // namespace
} // namespace kelpa::test
