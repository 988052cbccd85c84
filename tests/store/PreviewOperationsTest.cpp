// Which windows are captured, and when.

#include "store/PreviewFixture.h"
#include "support/CaseName.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using PreviewOperations = PreviewFixture;

TEST_F(PreviewOperations, Windows_take_turns_one_a_tick)
{
    addWindows(3);
    for (int i = 0; i < 4; ++i)
        tick();
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2, 3, 1}));
    EXPECT_EQ(store().previews().size(), 3);
}

TEST_F(PreviewOperations, A_picture_has_as_many_pixels_as_a_card_draws_of_it)
{
    addWindows(1);
    desktop.captureSizes = {{1, QSize(1440, 900)}};
    tick();
    EXPECT_EQ(store().previews().value(1).displaySize, QSizeF(720, 450));
    EXPECT_EQ(store().previews().value(1).image.size(), QSize(128, 72));
    EXPECT_EQ(store().previews().value(1).image.sizeInBytes(), 128 * 72 * 4);
}

TEST_F(PreviewOperations, On_a_screen_with_smaller_pixels_all_windows_are_captured_anew)
{
    addWindows(2);
    desktop.captureSizes = {{1, QSize(1440, 900)}, {2, QSize(1440, 900)}};
    tick();
    tick();
    // Neither has changed since.
    store().setPreviewPixels({256, 144});
    tick();
    EXPECT_EQ(store().previews().value(1).image.size(), QSize(256, 144));
    EXPECT_EQ(store().previews().value(2).image.size(), QSize(128, 72));
    tick();
    EXPECT_EQ(store().previews().value(2).image.size(), QSize(256, 144));
}

TEST_F(PreviewOperations, A_window_that_was_blank_at_its_turn_is_captured_anew_for_the_screen)
{
    addWindows(1);
    desktop.captureSizes = {{1, QSize(1440, 900)}};
    tick();
    store().setPreviewPixels({256, 144});
    desktop.blankWindows.insert(1);
    tick();
    EXPECT_EQ(store().previews().value(1).image.size(), QSize(128, 72));
    // It has not changed since.
    desktop.blankWindows.remove(1);
    tick();
    EXPECT_EQ(store().previews().value(1).image.size(), QSize(256, 144));
    tick();
    EXPECT_EQ(desktop.captured.size(), 4);
}

TEST_F(PreviewOperations, A_picture_that_is_being_taken_for_another_screen_is_taken_anew)
{
    addWindows(1);
    desktop.captureSizes = {{1, QSize(1440, 900)}};
    tick();
    desktop.unchangedWindows.remove(1);
    store().refreshPreviews(scheduler.now());
    store().setPreviewPixels({256, 144});
    scheduler.advance(0ms);
    tick();
    EXPECT_EQ(store().previews().value(1).image.size(), QSize(256, 144));
}

TEST_F(PreviewOperations, The_same_screen_again_captures_nothing_anew)
{
    addWindows(1);
    desktop.captureSizes = {{1, QSize(1440, 900)}};
    tick();
    const qint64 picture = store().previews().value(1).image.cacheKey();
    store().setPreviewPixels({128, 72});
    tick();
    EXPECT_EQ(store().previews().value(1).image.cacheKey(), picture);
}

TEST_F(PreviewOperations, Only_listed_windows_are_announced_for_capture_in_the_order_of_their_turns)
{
    desktop.addWindow(6, FakeDesktop::ownProcess, QStringLiteral("Kelpa's own"));
    desktop.addWindow(7, 100, QStringLiteral("too small")).bounds = Rect{0, 0, 79, 200};
    desktop.addWindow(8, 200, QStringLiteral("a panel"));
    desktop.applications[200].activationPolicy = ActivationPolicy::accessory;
    addWindows(5);
    tick();
    EXPECT_EQ(desktop.announcedForCapture, (std::vector<WindowID>{2, 3, 4}));
    for (int i = 0; i < 3; ++i)
        tick();
    EXPECT_EQ(desktop.captured.last(), 4U);
    EXPECT_EQ(desktop.announcedForCapture, (std::vector<WindowID>{5, 1, 2}));
}

TEST_F(PreviewOperations, A_window_alone_is_followed_by_none)
{
    addWindows(1);
    tick();
    EXPECT_EQ(desktop.announcedForCapture, std::vector<WindowID>());
}

TEST_F(PreviewOperations, A_list_that_shrinks_reduces_the_cursor_to_its_length)
{
    addWindows(5);
    for (int i = 0; i < 4; ++i)
        tick();
    for (const WindowID id : {3U, 4U, 5U})
        desktop.removeWindow(id);
    store().refresh();
    desktop.captured.clear();

    tick();
    tick();
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2}));
}

TEST_F(PreviewOperations, An_empty_list_resets_the_cursor_and_empties_the_previews)
{
    addWindows(3);
    tick();
    tick();
    for (const WindowID id : {1U, 2U, 3U})
        desktop.removeWindow(id);
    store().refresh();
    tick();
    EXPECT_TRUE(store().previews().isEmpty());

    desktop.captured.clear();
    addWindows(3);
    tick();
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});
}

TEST_F(PreviewOperations, The_timer_ticks_every_six_tenths_of_a_second_after_a_first_capture)
{
    addWindows(2);
    store().startObserving();
    scheduler.advance(599ms);
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});
    scheduler.advance(1ms);
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2}));
    EXPECT_EQ(scheduler.timersDue(), 2);
}

TEST_F(PreviewOperations, Scrolling_pauses_captures_for_two_tenths_of_a_second)
{
    addWindows(1);
    const Scheduler::Time scrolled = scheduler.now();
    store().noteScrollActivity(scrolled);

    store().refreshPreviews(scrolled + 100ms);
    scheduler.advance(0ms);
    EXPECT_TRUE(desktop.captured.isEmpty());

    store().refreshPreviews(scrolled + 200ms);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});
}

TEST_F(PreviewOperations, Scrolling_without_a_time_is_scrolling_now)
{
    addWindows(1);
    store().noteScrollActivity();
    scheduler.advance(199ms);
    tick();
    EXPECT_TRUE(desktop.captured.isEmpty());
    scheduler.advance(1ms);
    tick();
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});
}

TEST_F(PreviewOperations, Scrolling_drops_the_capture_in_flight)
{
    addWindows(1);
    scheduler.holdBackgroundWork(true);
    store().refreshPreviews(scheduler.now());
    store().noteScrollActivity(scheduler.now());
    scheduler.runBackgroundWork();
    EXPECT_TRUE(store().previews().isEmpty());

    scheduler.holdBackgroundWork(false);
    scheduler.advance(300ms);
    tick();
    EXPECT_EQ(store().previews().size(), 1);
}

TEST_F(PreviewOperations, A_picture_that_was_taken_before_the_board_scrolled_is_shown)
{
    addWindows(2);
    tick();
    tick();
    const qint64 before = store().previews().value(1).image.cacheKey();
    desktop.unchangedWindows.remove(1);
    scheduler.holdBackgroundWork(true);
    store().refreshPreviews(scheduler.now());
    // The picture is taken and given; the board moves before it arrives.
    desktop.inTheMiddleOfACapture = [this] { store().noteScrollActivity(scheduler.now()); };
    scheduler.runBackgroundWork();
    desktop.inTheMiddleOfACapture = nullptr;
    EXPECT_TRUE(desktop.unchangedWindows.contains(1));
    const qint64 after = store().previews().value(1).image.cacheKey();
    EXPECT_NE(after, before);

    // It shows what was given last, which is not wanted once more.
    scheduler.holdBackgroundWork(false);
    scheduler.advance(200ms);
    tick();
    tick();
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2, 1, 2, 1}));
    EXPECT_EQ(store().previews().value(1).image.cacheKey(), after);
}

struct ClockCase
{
    const char* name;
    Scheduler::Duration setForward;
};

class SetClocks : public PreviewOperations, public testing::WithParamInterface<ClockCase>
{};

TEST_P(SetClocks, Leave_the_pause_as_long_as_it_is)
{
    addWindows(1);
    store().noteScrollActivity();
    scheduler.advance(100ms);
    scheduler.setCalendarForward(GetParam().setForward);
    scheduler.advance(99ms);
    tick();
    EXPECT_TRUE(desktop.captured.isEmpty());
    scheduler.advance(1ms);
    tick();
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});
}

INSTANTIATE_TEST_SUITE_P(PreviewOperations, SetClocks,
                         testing::Values(ClockCase{"set_back_by_an_hour", -1h},
                                         ClockCase{"set_back_by_a_moment", -150ms},
                                         ClockCase{"set_forward_by_a_moment", 150ms},
                                         ClockCase{"set_forward_by_an_hour", 1h}),
                         caseName);

TEST_F(PreviewOperations, A_tick_during_a_capture_starts_no_other)
{
    addWindows(2);
    scheduler.holdBackgroundWork(true);
    store().refreshPreviews(scheduler.now());
    store().refreshPreviews(scheduler.now());
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    scheduler.runBackgroundWork();
    EXPECT_EQ(desktop.captured, QList<WindowID>{1});
    EXPECT_EQ(store().previews().size(), 1);
}

TEST_F(PreviewOperations, A_window_that_cannot_be_captured_costs_nothing_but_its_turn)
{
    addWindows(2);
    desktop.captureSizes.remove(1);
    takeSignals();
    tick();
    EXPECT_TRUE(store().previews().isEmpty());
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("previews"), 1}}))
        << "the card says so from now on";
    tick();
    EXPECT_EQ(store().previews().keys(), QList<WindowID>{2});
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("previews"), 1}}));
    tick();
    EXPECT_EQ(desktop.captured, (QList<WindowID>{1, 2, 1}));
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(PreviewOperations, A_window_that_shows_the_same_keeps_its_preview_without_a_signal)
{
    addWindows(1);
    tick();
    const qint64 key = store().previews().value(1).image.cacheKey();
    takeSignals();
    tick();
    EXPECT_EQ(store().previews().value(1).image.cacheKey(), key);
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(PreviewOperations, A_window_without_a_preview_is_captured_although_it_shows_the_same)
{
    addWindows(1);
    tick();
    store().stopObserving();
    EXPECT_TRUE(store().previews().isEmpty());
    store().startObserving();
    scheduler.advance(0ms);
    EXPECT_EQ(store().previews().size(), 1);
}

TEST_F(PreviewOperations, The_preview_of_a_vanished_window_goes_with_the_next_capture)
{
    addWindows(2);
    tick();
    tick();
    desktop.removeWindow(1);
    store().refresh();
    EXPECT_TRUE(store().previews().contains(1)) << "reconciliation leaves previews alone";
    tick();
    EXPECT_EQ(store().previews().keys(), QList<WindowID>{2});
}

TEST_F(PreviewOperations, A_window_that_vanishes_during_its_capture_is_dropped_by_the_next)
{
    addWindows(2);
    scheduler.holdBackgroundWork(true);
    store().refreshPreviews(scheduler.now());
    desktop.removeWindow(1);
    scheduler.holdBackgroundWork(false);
    store().refresh();
    scheduler.advance(0ms);
    EXPECT_TRUE(store().previews().contains(1));
    tick();
    EXPECT_EQ(store().previews().keys(), QList<WindowID>{2});
}

TEST_F(PreviewOperations, Windows_with_a_preview_come_first_in_their_goal)
{
    addWindows(3);
    desktop.captureSizes = {{2, QSize(100, 100)}};
    for (int i = 0; i < 3; ++i)
        tick();
    const QList<WindowItem> shown = store().windows(std::optional<GoalID>());
    EXPECT_EQ(shown[0].id, 2U);
    EXPECT_EQ(shown[1].id, 1U);
    EXPECT_EQ(shown[2].id, 3U);
}

TEST_F(PreviewOperations, Stopping_ends_the_capture_in_flight)
{
    addWindows(1);
    store().startObserving();
    scheduler.advance(0ms);
    scheduler.holdBackgroundWork(true);
    store().refreshPreviews(scheduler.now());
    store().stopObserving();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 0);
    EXPECT_EQ(scheduler.timersDue(), 0);
    EXPECT_TRUE(store().previews().isEmpty());
}

} // namespace
} // namespace kelpa::test
