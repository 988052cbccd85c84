// The first pictures of windows in view, and pictures that show nothing.
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class FirstPicturesOfWindows : public StoreFixture
{
protected:
    FirstPicturesOfWindows() { store().setLanguage(AppLanguage::english); }

    void open(int count)
    {
        for (int i = count; i >= 1; --i) {
            const auto id = static_cast<WindowID>(i);
            desktop.addWindow(id, 100, QString::number(i));
            desktop.captureSizes.insert(id, {640, 480});
        }
    }

    void noteInView(const QList<WindowID>& windows)
    {
        for (const WindowID id : windows)
            store().noteWindowInView(id);
    }

    void tick()
    {
        store().refreshPreviews(scheduler.now());
        scheduler.advance(0ms);
    }

    std::optional<QString> message(WindowID id)
    {
        for (const WindowItem& window : store().windows()) {
            if (window.id == id)
                return store().previewMessage(window);
        }
        ADD_FAILURE() << "window " << id << " is not listed";
        return std::nullopt;
    }

    const QString cannotBeCaptured = QStringLiteral("This window cannot be captured yet");
};

TEST_F(FirstPicturesOfWindows, Windows_in_view_are_captured_without_waiting_for_the_timer)
{
    open(20);
    store().startObserving();
    for (WindowID id = 1; id <= 20; ++id)
        store().noteWindowInView(id);
    scheduler.advance(0ms);
    EXPECT_EQ(store().previews().size(), 20);
    EXPECT_EQ(desktop.captured.size(), 20);
}

TEST_F(FirstPicturesOfWindows, One_is_captured_at_a_time_and_the_next_few_are_announced)
{
    open(20);
    store().startObserving();
    scheduler.advance(0ms);
    desktop.captured.clear();
    scheduler.holdBackgroundWork(true);
    for (WindowID id = 2; id <= 20; ++id) {
        store().noteWindowInView(id);
        EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    }
    scheduler.runBackgroundWork();
    EXPECT_EQ(desktop.captured, QList<WindowID>{2});
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    scheduler.runBackgroundWork();
    EXPECT_EQ(desktop.captured, (QList<WindowID>{2, 3}));
    EXPECT_EQ(desktop.announcedForCapture, (std::vector<WindowID>{4, 5, 6, 7, 8, 9, 10}));
}

TEST_F(FirstPicturesOfWindows, Windows_out_of_view_wait_for_their_turns)
{
    open(4);
    store().startObserving();
    noteInView({3, 2});
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 3, 2}));
    scheduler.advance(600ms);
    scheduler.advance(600ms);
    scheduler.advance(600ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 3, 2, 2, 3, 4}));
}

TEST_F(FirstPicturesOfWindows, A_window_that_opens_in_view_is_captured_at_once)
{
    open(3);
    store().startObserving();
    noteInView({1, 2, 3});
    scheduler.advance(100ms);
    desktop.captured.clear();
    desktop.addWindow(9, 100, {});
    desktop.captureSizes.insert(9, {640, 480});
    desktop.announceWindowChange();
    scheduler.advance(0ms);
    store().noteWindowInView(9);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, QList<WindowID>{9});
}

TEST_F(FirstPicturesOfWindows, A_minimised_window_is_captured_when_it_is_restored)
{
    open(1);
    desktop.addAccessibleWindow(2, 101, QStringLiteral("2"));
    bool& isMinimized = *desktop.accessibilityWindows[101]->front().isMinimized;
    isMinimized = true;
    desktop.onScreen.remove(2);
    store().startObserving();
    noteInView({1, 2});
    scheduler.advance(5s);
    EXPECT_EQ(message(2), QStringLiteral("Window is minimized; preview will return when restored"));
    desktop.captured.clear();

    isMinimized = false;
    desktop.onScreen.insert(2);
    desktop.captureSizes.insert(2, {640, 480});
    desktop.announceWindowChange();
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, QList<WindowID>{2});
    EXPECT_TRUE(store().previews().contains(2));
}

TEST_F(FirstPicturesOfWindows, A_window_that_cannot_be_captured_is_tried_once_and_then_in_turn)
{
    open(3);
    desktop.captureSizes.remove(2);
    store().startObserving();
    noteInView({1, 2, 3});
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2, 3}));
    noteInView({2});
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2, 3}));
    scheduler.advance(600ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2, 3, 2}));
}

TEST_F(FirstPicturesOfWindows, Scrolling_pauses_them_until_the_next_tick)
{
    open(5);
    store().startObserving();
    scheduler.advance(0ms);
    store().noteScrollActivity();
    noteInView({2, 3, 4, 5});
    scheduler.advance(599ms);
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});
    scheduler.advance(1ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2, 3, 4, 5}));
}

TEST_F(FirstPicturesOfWindows, A_capture_that_scrolling_stopped_is_made_up_for)
{
    open(2);
    store().startObserving();
    scheduler.advance(0ms);
    scheduler.holdBackgroundWork(true);
    noteInView({2});
    scheduler.hangBackgroundWork();
    store().noteScrollActivity();
    scheduler.runBackgroundWork();
    EXPECT_EQ(message(2), std::nullopt);
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});

    scheduler.holdBackgroundWork(false);
    scheduler.advance(600ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2}));
}

TEST_F(FirstPicturesOfWindows, Only_a_window_that_was_tried_says_that_it_cannot_be_captured)
{
    open(2);
    desktop.captureSizes.remove(2);
    store().refresh();
    EXPECT_EQ(message(1), std::nullopt);
    EXPECT_EQ(message(2), std::nullopt);
    takeSignals();
    tick();
    tick();
    EXPECT_EQ(message(2), cannotBeCaptured);
    EXPECT_EQ(takeSignals().value(QStringLiteral("previews")), 2);
}

TEST_F(FirstPicturesOfWindows, While_there_are_no_pictures_at_all_no_window_says_that_it_has_none)
{
    open(2);
    desktop.isPausingCaptures = true;
    store().startObserving();
    noteInView({2});
    scheduler.advance(0ms);
    desktop.captured.clear();
    // Once a tick, not one after the other.
    scheduler.advance(1200ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{2, 2}));
    EXPECT_EQ(message(2), std::nullopt);
    desktop.isPausingCaptures = false;
    scheduler.advance(600ms);
    EXPECT_TRUE(store().previews().contains(2));
}

TEST_F(FirstPicturesOfWindows, Without_permission_nothing_in_view_is_captured)
{
    open(2);
    store().startObserving();
    scheduler.advance(0ms);
    scheduler.holdBackgroundWork(true);
    noteInView({2});
    scheduler.hangBackgroundWork();
    scheduler.holdBackgroundWork(false);
    desktop.isScreenCaptureGranted = false;
    store().refresh();
    noteInView({1, 2});
    scheduler.advance(600ms);
    scheduler.runBackgroundWork();
    scheduler.advance(600ms);
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});
}

TEST_F(FirstPicturesOfWindows, Of_windows_that_came_into_view_without_permission_follow_it)
{
    open(4);
    store().startObserving();
    scheduler.advance(0ms);
    desktop.isScreenCaptureGranted = false;
    store().requestPermissions();
    noteInView({4});
    tick();
    tick();
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});

    desktop.grantsScreenCaptureWhenAsked = true;
    store().requestPermissions();
    tick();
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 4}));
}

TEST_F(FirstPicturesOfWindows, A_window_may_come_into_view_before_its_pass_has_ended)
{
    open(4);
    store().startObserving();
    scheduler.advance(0ms);
    noteInView({9});
    desktop.addWindow(9, 100, {});
    desktop.captureSizes.insert(9, {640, 480});
    desktop.announceWindowChange();
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 9}));
}

TEST_F(FirstPicturesOfWindows, Of_windows_that_come_and_go_all_the_time_are_few)
{
    store().startObserving();
    // Thirty windows a second, of which each is gone after a third of one.
    for (WindowID id = 1; id <= 300; ++id) {
        desktop.addWindow(id, 100, {});
        desktop.captureSizes.insert(id, {640, 480});
        if (id > 10)
            desktop.removeWindow(id - 10);
        desktop.announceWindowChange();
        scheduler.advance(0ms);
        store().noteWindowInView(id);
        scheduler.advance(33ms);
    }
    // Forty before their turns and then five a second, and with each tick one.
    EXPECT_GE(desktop.captured.size(), 40);
    EXPECT_LE(desktop.captured.size(), 40 + 50 + 17);
    // Then each has its picture soon.
    scheduler.advance(2s);
    for (WindowID id = 291; id <= 300; ++id)
        EXPECT_TRUE(store().previews().contains(id)) << id;
}

TEST_F(FirstPicturesOfWindows, Of_a_hundred_windows_that_stay_come_one_after_the_other)
{
    open(100);
    store().startObserving();
    for (WindowID id = 1; id <= 100; ++id)
        store().noteWindowInView(id);
    scheduler.advance(0ms);
    EXPECT_EQ(store().previews().size(), 100);
}

TEST_F(FirstPicturesOfWindows, A_store_that_does_not_observe_waits)
{
    open(2);
    store().refresh();
    noteInView({2, 1});
    scheduler.advance(0ms);
    EXPECT_TRUE(desktop.captured.isEmpty());
    store().startObserving();
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{2, 1}));
}

class BlankPictures : public FirstPicturesOfWindows
{
protected:
    qint64 picture() { return store().previews().value(1).image.cacheKey(); }
};

TEST_F(BlankPictures, Never_take_the_place_of_a_good_one)
{
    open(1);
    store().refresh();
    tick();
    const qint64 good = picture();
    ASSERT_NE(good, 0);
    desktop.blankWindows.insert(1);
    for (int i = 0; i < 3; ++i) {
        desktop.unchangedWindows.remove(1);
        tick();
    }
    EXPECT_EQ(picture(), good);

    desktop.blankWindows.remove(1);
    desktop.unchangedWindows.remove(1);
    tick();
    EXPECT_NE(picture(), good);
    EXPECT_EQ(desktop.captured.size(), 5);
}

TEST_F(BlankPictures, Are_shown_of_a_window_that_shows_nothing_else_when_it_is_captured_again)
{
    open(2);
    desktop.blankWindows.insert(1);
    store().startObserving();
    noteInView({1, 2});
    scheduler.advance(0ms);
    EXPECT_FALSE(store().previews().contains(1));
    EXPECT_EQ(message(1), std::nullopt);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2}));
    scheduler.advance(600ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2, 1}));
    EXPECT_TRUE(store().previews().contains(1));
}

TEST_F(BlankPictures, Of_a_window_that_was_about_to_draw_itself_are_not_shown)
{
    open(2);
    desktop.blankWindows.insert(1);
    store().startObserving();
    noteInView({1, 2});
    scheduler.advance(0ms);
    desktop.blankWindows.remove(1);
    scheduler.advance(600ms);
    EXPECT_EQ(store().previews().value(1).image.pixel(0, 0), qRgb(0, 0, 255));
}

TEST_F(BlankPictures, Take_the_place_of_one_another)
{
    open(1);
    desktop.blankWindows.insert(1);
    store().refresh();
    tick();
    tick();
    const qint64 before = picture();
    ASSERT_NE(before, 0);
    desktop.unchangedWindows.remove(1);
    tick();
    EXPECT_NE(picture(), before);
}

TEST_F(FirstPicturesOfWindows, Blank_ones_of_many_windows_are_taken_again_by_one_tick)
{
    open(20);
    for (WindowID id = 1; id <= 20; ++id)
        desktop.blankWindows.insert(id);
    store().startObserving();
    for (WindowID id = 1; id <= 20; ++id)
        store().noteWindowInView(id);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured.size(), 20);
    EXPECT_TRUE(store().previews().isEmpty());
    scheduler.advance(600ms);
    EXPECT_EQ(store().previews().size(), 20);
    EXPECT_EQ(desktop.captured.size(), 40);
}

} // namespace
} // namespace kelpa::test
