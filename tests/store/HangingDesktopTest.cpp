// A window server that hangs holds one capture and one discovery pass, whatever the person does.
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class HangingDesktop : public StoreFixture
{
protected:
    HangingDesktop()
    {
        for (const WindowID id : {3U, 2U, 1U}) {
            desktop.addAccessibleWindow(id, 100 + static_cast<ProcessID>(id), QString::number(id));
            desktop.captureSizes.insert(id, {640, 480});
        }
        store().refresh();
    }

    /// Starts a capture, which hangs.
    void hangInCapture()
    {
        scheduler.holdBackgroundWork(true);
        store().refreshPreviews(scheduler.now());
        scheduler.hangBackgroundWork();
        scheduler.holdBackgroundWork(false);
    }

    /// Starts a discovery pass, which hangs.
    void hangInPass()
    {
        scheduler.holdBackgroundWork(true);
        store().refreshInBackground();
        scheduler.hangBackgroundWork();
        scheduler.holdBackgroundWork(false);
    }

    void tick()
    {
        store().refreshPreviews(scheduler.now());
        scheduler.advance(0ms);
    }

    int passes() const
    {
        return static_cast<int>(desktop.calls.count(QStringLiteral("openDiscoverySource")));
    }

    QList<WindowID> listed()
    {
        QList<WindowID> ids;
        for (const WindowItem& window : store().windows())
            ids.append(window.id);
        return ids;
    }
};

TEST_F(HangingDesktop, Scrolling_starts_no_capture_beside_one_that_hangs)
{
    hangInCapture();
    for (int i = 0; i < 5; ++i) {
        store().noteScrollActivity(scheduler.now());
        scheduler.advance(300ms);
        tick();
    }
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    EXPECT_TRUE(desktop.captured.isEmpty());

    scheduler.runBackgroundWork();
    EXPECT_TRUE(store().previews().isEmpty()) << "stopped before the picture was taken";
    tick();
    EXPECT_EQ(desktop.captured, QList<WindowID>{2});
}

TEST_F(HangingDesktop, A_change_of_the_screen_starts_no_capture_beside_one_that_hangs)
{
    hangInCapture();
    for (const int width : {256, 512, 384}) {
        store().setPreviewPixels({width, width / 2});
        tick();
    }
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    EXPECT_TRUE(desktop.captured.isEmpty());
    scheduler.runBackgroundWork();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 0);
}

TEST_F(HangingDesktop, A_picture_that_was_taken_for_another_screen_is_shown_until_the_next_turn)
{
    scheduler.holdBackgroundWork(true);
    store().refreshPreviews(scheduler.now());
    desktop.inTheMiddleOfACapture = [this] { store().setPreviewPixels({256, 144}); };
    scheduler.runBackgroundWork();
    desktop.inTheMiddleOfACapture = nullptr;
    scheduler.holdBackgroundWork(false);
    EXPECT_EQ(store().previews().value(1).image.size(), QSize(128, 72));

    // It has not changed since.
    for (int i = 0; i < 3; ++i)
        tick();
    EXPECT_EQ(store().previews().value(1).image.size(), QSize(256, 144));
}

TEST_F(HangingDesktop, A_capture_that_lost_the_permission_keeps_its_place_and_shows_nothing)
{
    hangInCapture();
    desktop.isScreenCaptureGranted = false;
    store().refresh();
    tick();
    desktop.isScreenCaptureGranted = true;
    store().refresh();
    tick();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);

    scheduler.runBackgroundWork();
    EXPECT_TRUE(store().previews().isEmpty());
    tick();
    EXPECT_EQ(store().previews().size(), 1);
}

TEST_F(HangingDesktop, Observing_anew_waits_for_what_hangs)
{
    hangInCapture();
    hangInPass();
    for (int i = 0; i < 4; ++i) {
        store().startObserving();
        scheduler.advance(5s);
        store().stopObserving();
    }
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 2);
    store().startObserving();
    EXPECT_TRUE(listed().isEmpty());

    scheduler.runBackgroundWork();
    scheduler.advance(600ms);
    EXPECT_EQ(listed(), (QList<WindowID>{1, 2, 3}));
    EXPECT_EQ(store().previews().size(), 1);
}

TEST_F(HangingDesktop, Refreshing_starts_no_pass_beside_one_that_hangs_and_one_follows_it)
{
    const int before = passes();
    hangInPass();
    desktop.addWindow(4, 104, {});
    for (int i = 0; i < 5; ++i)
        store().refresh();
    store().refreshInBackground();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    EXPECT_EQ(listed(), (QList<WindowID>{1, 2, 3}));

    scheduler.runBackgroundWork();
    EXPECT_EQ(listed(), (QList<WindowID>{1, 2, 3})) << "the older pass must not be applied";
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    scheduler.advance(0ms);
    EXPECT_EQ(listed(), (QList<WindowID>{4, 1, 2, 3}));
    EXPECT_EQ(passes() - before, 2);
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 0);
}

TEST_F(HangingDesktop, A_pass_that_hangs_while_the_permission_goes_lists_nothing)
{
    hangInPass();
    desktop.isScreenCaptureGranted = false;
    store().refresh();
    EXPECT_TRUE(listed().isEmpty());
    scheduler.runBackgroundWork();
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 0);
}

TEST_F(HangingDesktop, Whatever_is_clicked_a_launch_and_a_focus_go_through)
{
    store().createGoal(QStringLiteral("Taxes"));
    const QList<WindowItem> windows = store().windows();
    store().startObserving();
    scheduler.advance(0ms);
    desktop.calls.clear();
    scheduler.holdBackgroundWork(true);
    // A request to quit goes to the window server as well.
    for (int i = 0; i < 12; ++i) {
        store().createGoal(QString::number(i));
        store().closeProcess(windows.at(i % 3));
        store().setPreviewPixels({100 + i, 100});
        scheduler.advance(600ms);
        scheduler.hangBackgroundWork();
        store().noteScrollActivity(scheduler.now());
        store().deleteGoal(store().goals().first().id);
        desktop.announceWindowChange();
        scheduler.hangBackgroundWork();
    }
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 3) << "a capture, a pass and a request to quit";

    scheduler.holdBackgroundWork(false);
    store().createTerminal(store().goals().first().id);
    store().focus(windows.at(1));
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("launch terminal")), 1);
    EXPECT_EQ(desktop.calls.count(QStringLiteral("raise 2")), 1);

    scheduler.runBackgroundWork();
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls.filter(QStringLiteral("quit ")).size(), 12);
}

} // namespace
} // namespace kelpa::test
