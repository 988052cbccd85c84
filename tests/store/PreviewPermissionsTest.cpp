// Previews without the permission to capture, and what is said and done about it.

#include "store/PreviewFixture.h"

namespace kelpa::test {
namespace {

using PreviewPermissions = PreviewFixture;

TEST_F(PreviewPermissions, Losing_the_permission_empties_the_previews_at_the_next_tick)
{
    addWindows(1);
    tick();
    desktop.isScreenCaptureGranted = false;
    store().refresh();
    tick();
    EXPECT_TRUE(store().previews().isEmpty());
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});
    desktop.isScreenCaptureGranted = true;
    store().refresh();
    tick();
    EXPECT_EQ(store().previews().size(), 1);
}

TEST_F(PreviewPermissions, Losing_the_permission_ends_the_capture_in_flight_at_the_next_tick)
{
    addWindows(2);
    tick();
    scheduler.holdBackgroundWork(true);
    store().refreshPreviews(scheduler.now());
    ASSERT_EQ(scheduler.backgroundWorkInFlight(), 1);
    desktop.isScreenCaptureGranted = false;
    store().refresh();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    store().refreshPreviews(scheduler.now());
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 0);
    EXPECT_TRUE(store().previews().isEmpty());

    // Nothing waits for it once the permission is back.
    scheduler.holdBackgroundWork(false);
    desktop.isScreenCaptureGranted = true;
    store().refresh();
    tick();
    EXPECT_EQ(store().previews().keys(), QList<WindowID>{1});
}

TEST_F(PreviewPermissions, A_picture_that_was_taken_before_the_permission_went_is_not_shown)
{
    addWindows(1);
    scheduler.holdBackgroundWork(true);
    store().refreshPreviews(scheduler.now());
    desktop.inTheMiddleOfACapture = [this] {
        desktop.isScreenCaptureGranted = false;
        store().refresh();
        store().refreshPreviews(scheduler.now());
    };
    scheduler.runBackgroundWork();
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});
    EXPECT_TRUE(store().previews().isEmpty());
}

TEST_F(PreviewPermissions,
       Losing_the_permission_empties_the_previews_though_scrolling_pauses_captures)
{
    addWindows(1);
    tick();
    store().noteScrollActivity(scheduler.now());
    desktop.isScreenCaptureGranted = false;
    store().refresh();
    EXPECT_EQ(store().previews().size(), 1);
    store().refreshPreviews(scheduler.now());
    EXPECT_TRUE(store().previews().isEmpty());
}

TEST_F(PreviewPermissions, A_card_without_a_preview_says_why)
{
    store().setLanguage(AppLanguage::english);
    addWindows(1);
    desktop.addAccessibleWindow(2, 101, QStringLiteral("minimised"));
    desktop.addAccessibleWindow(3, 102, QStringLiteral("on another desktop"));
    desktop.onScreen.remove(2);
    desktop.onScreen.remove(3);
    desktop.accessibilityWindows[101]->front().isMinimized = true;
    store().refresh();
    EXPECT_EQ(store().previewMessage(listed(1)), std::nullopt) << "it was not tried yet";
    desktop.captureSizes.remove(1);
    for (int i = 0; i < 3; ++i)
        tick();
    EXPECT_EQ(store().previewMessage(listed(1)),
              QStringLiteral("This window cannot be captured yet"));
    EXPECT_EQ(store().previewMessage(listed(2)),
              QStringLiteral("Window is minimized; preview will return when restored"));
    EXPECT_EQ(store().previewMessage(listed(3)),
              QStringLiteral("This window cannot be captured yet"));
    const WindowItem first = listed(1);
    desktop.captureSizes.insert(1, {640, 480});
    for (int i = 0; i < 3; ++i)
        tick();
    EXPECT_EQ(store().previewMessage(first), std::nullopt);

    desktop.isScreenCaptureGranted = false;
    store().refresh();
    tick();
    EXPECT_EQ(store().previewMessage(first),
              QStringLiteral("Allow Screen Recording to show a preview"));

    // Nobody could allow anything.
    desktop.obstacleOfScreenCapture = Obstacle::windowManager;
    store().refresh();
    EXPECT_EQ(store().previewMessage(first), std::nullopt);
}

TEST_F(PreviewPermissions, Asking_for_permissions_opens_the_settings_where_one_is_missing)
{
    desktop.isAccessibilityGranted = false;
    desktop.isScreenCaptureGranted = false;
    store().requestPermissions();
    EXPECT_EQ(desktop.calls, (QStringList{QStringLiteral("requestTrust"),
                                          QStringLiteral("requestScreenCapture")}));
    EXPECT_EQ(desktop.openedUrls.last().toString(),
              QStringLiteral("x-apple.systempreferences:com.apple.preference.security?"
                             "Privacy_ScreenCapture"));

    desktop.grantsScreenCaptureWhenAsked = true;
    store().requestPermissions();
    EXPECT_TRUE(store().isScreenCaptureTrusted());
    EXPECT_FALSE(store().isAccessibilityTrusted());
    EXPECT_EQ(desktop.openedUrls.last().toString(),
              QStringLiteral("x-apple.systempreferences:com.apple.preference.security?"
                             "Privacy_Accessibility"));
}

} // namespace
} // namespace kelpa::test
