#include "PicturesFixture.h"

#include <QCoreApplication>

#include <ext-image-copy-capture-v1-server.h>
#include <wayland-server-protocol.h>

#include <thread>
#include <vector>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using wayland::CaptureLimits;

CaptureLimits impatientLimits()
{
    CaptureLimits limits = patientLimits;
    limits.picture = 50ms;
    return limits;
}

TEST_F(WindowPicturesTest, A_window_is_captured_in_its_colours_and_scaled_down)
{
    start();
    const auto picture = capture(CaptureNeed::always, "second");
    ASSERT_TRUE(picture.has_value());
    EXPECT_EQ(picture->pixelSize, QSize(8, 4));
    ASSERT_EQ(picture->image.size(), QSize(4, 4));
    EXPECT_EQ(picture->image.pixel(3, 3), FakeCaptures::colour);
    ASSERT_EQ(captures->sessions.size(), 1U);
    EXPECT_EQ(captures->sessions.front()->window(), 1);
}

TEST_F(WindowPicturesTest, An_unchanged_window_is_not_captured_again)
{
    start();
    ASSERT_TRUE(capture(CaptureNeed::always));
    EXPECT_FALSE(capture(CaptureNeed::ifChanged));
    EXPECT_FALSE(capture(CaptureNeed::ifChanged));
    ASSERT_EQ(captures->sessions.size(), 1U);
    EXPECT_TRUE(captures->sessions.front()->isOpen());
    // The picture, and the frame that waits for a change.
    EXPECT_TRUE(serveUntil([this] { return captures->sessions.front()->frames() == 2; }));
}

TEST_F(WindowPicturesTest, A_window_that_has_changed_is_captured_as_it_is_by_now)
{
    start();
    ASSERT_TRUE(capture(CaptureNeed::always));
    ASSERT_TRUE(serveUntil([this] { return captures->sessions.front()->frames() == 2; }));
    captures->requested = [](FakeCaptureSession& session) {
        if (session.frames() == 1)
            session.ready(0xFF112233);
    };
    captures->sessions.front()->ready(0xFFFFFFFF);
    std::optional<WindowCapture> changed;
    ASSERT_TRUE(serveUntil([&] {
        changed = capture(CaptureNeed::ifChanged);
        return changed.has_value();
    }));
    EXPECT_EQ(changed->image.pixel(0, 0), 0xFF112233U);
    EXPECT_FALSE(capture(CaptureNeed::ifChanged));
    EXPECT_TRUE(serveUntil([this] { return captures->openSessions() == 1; }));
}

TEST_F(WindowPicturesTest, A_new_size_is_a_change)
{
    start();
    ASSERT_TRUE(capture(CaptureNeed::always));
    ASSERT_TRUE(serveUntil([this] { return captures->sessions.front()->frames() == 2; }));
    captures->opened = [](FakeCaptureSession& session) {
        session.size(2, 2).format(WL_SHM_FORMAT_XRGB8888).done();
    };
    captures->sessions.front()->failed(
        EXT_IMAGE_COPY_CAPTURE_FRAME_V1_FAILURE_REASON_BUFFER_CONSTRAINTS);
    std::optional<WindowCapture> changed;
    ASSERT_TRUE(serveUntil([&] {
        changed = capture(CaptureNeed::ifChanged);
        return changed.has_value();
    }));
    EXPECT_EQ(changed->pixelSize, QSize(2, 2));
}

TEST_F(WindowPicturesTest, A_picture_that_is_wanted_in_any_case_comes_from_a_new_session)
{
    start();
    EXPECT_TRUE(capture(CaptureNeed::always));
    EXPECT_TRUE(capture(CaptureNeed::always));
    EXPECT_EQ(captures->sessions.size(), 2U);
    EXPECT_EQ(captures->openSessions(), 1);
}

TEST_F(WindowPicturesTest, A_picture_that_never_comes_is_given_up_and_tried_anew)
{
    start(impatientLimits());
    const auto picture = captures->requested;
    captures->requested = [](FakeCaptureSession&) {};
    EXPECT_FALSE(capture(CaptureNeed::always));
    EXPECT_TRUE(serveUntil([this] { return captures->openSessions() == 0; }));
    captures->requested = picture;
    EXPECT_TRUE(serveUntil([this] { return capture(CaptureNeed::ifChanged).has_value(); }));
}

TEST_F(WindowPicturesTest, A_session_that_never_says_what_it_wants_is_given_up)
{
    start(impatientLimits());
    captures->opened = [](FakeCaptureSession& session) { session.size(8, 4); };
    EXPECT_FALSE(capture(CaptureNeed::always));
    EXPECT_TRUE(serveUntil([this] { return captures->openSessions() == 0; }));
    EXPECT_EQ(captures->sessions.front()->frames(), 0);
}

TEST_F(WindowPicturesTest, A_failure_of_an_unknown_reason_closes_the_session)
{
    start();
    captures->requested = [](FakeCaptureSession& session) { session.failed(0); };
    EXPECT_FALSE(capture(CaptureNeed::always));
    EXPECT_TRUE(serveUntil([this] { return captures->openSessions() == 0; }));
    EXPECT_EQ(captures->sessions.front()->frames(), 1);
}

TEST_F(WindowPicturesTest, A_window_that_changes_its_size_is_captured_in_the_new_one)
{
    constexpr auto unfit =
        std::uint32_t{EXT_IMAGE_COPY_CAPTURE_FRAME_V1_FAILURE_REASON_BUFFER_CONSTRAINTS};
    for (const bool isToldBefore : {true, false}) {
        pictures.reset();
        endCompositor();
        startCompositor();
        start();
        captures->requested = [&](FakeCaptureSession& session) {
            const auto tell = [&] { session.size(2, 3).format(WL_SHM_FORMAT_XRGB8888).done(); };
            if (session.bufferSize() == QSize(2, 3)) {
                session.ready(FakeCaptures::colour);
                return;
            }
            if (isToldBefore)
                tell();
            session.failed(unfit);
            if (!isToldBefore)
                tell();
        };
        const auto picture = capture(CaptureNeed::always);
        ASSERT_TRUE(picture.has_value()) << isToldBefore;
        EXPECT_EQ(picture->pixelSize, QSize(2, 3));
        EXPECT_EQ(captures->sessions.size(), 1U);
    }
}

TEST_F(WindowPicturesTest, A_window_that_never_stops_changing_its_size_is_given_up)
{
    start();
    captures->requested = [](FakeCaptureSession& session) {
        session.failed(EXT_IMAGE_COPY_CAPTURE_FRAME_V1_FAILURE_REASON_BUFFER_CONSTRAINTS);
        session.size(8, 4).format(WL_SHM_FORMAT_XRGB8888).done();
    };
    EXPECT_FALSE(capture(CaptureNeed::always));
    EXPECT_LT(captures->sessions.front()->frames(), 10);
}

TEST_F(WindowPicturesTest, Of_a_burst_of_demands_the_last_one_counts)
{
    start();
    captures->opened = [](FakeCaptureSession& session) {
        for (std::uint32_t side = 1; side <= 2000; ++side)
            session.size(side, side).format(WL_SHM_FORMAT_XRGB8888).done();
        // Begun, and not ended.
        session.size(5, 5);
    };
    captures->requested = [](FakeCaptureSession& session) {
        // Those that had not arrived as the first buffer was made.
        if (session.bufferSize() == QSize(2000, 2000))
            session.ready(FakeCaptures::colour);
        else
            session.failed(EXT_IMAGE_COPY_CAPTURE_FRAME_V1_FAILURE_REASON_BUFFER_CONSTRAINTS);
    };
    // The demands of a window that is next arrive while another one is captured.
    ASSERT_TRUE(serveUntil([this] {
        const auto picture = capture(CaptureNeed::always);
        return picture && picture->pixelSize == QSize(2000, 2000);
    }));
}

TEST_F(WindowPicturesTest, Hostile_demands_get_no_buffer)
{
    start();
    for (const QSize& size : {QSize(0, 4), QSize(4, 0), QSize(-1, -1), QSize(65536, 65536),
                              QSize(16384, 16384), QSize(20000, 1)}) {
        captures->opened = [&](FakeCaptureSession& session) {
            session
                .size(static_cast<std::uint32_t>(size.width()),
                      static_cast<std::uint32_t>(size.height()))
                .format(WL_SHM_FORMAT_XRGB8888)
                .done();
        };
        EXPECT_FALSE(capture(CaptureNeed::always)) << size.width();
        EXPECT_EQ(captures->sessions.back()->frames(), 0) << size.width();
    }
    captures->opened = [](FakeCaptureSession& session) { session.size(8, 4).format(42).done(); };
    EXPECT_FALSE(capture(CaptureNeed::always));
    EXPECT_EQ(captures->sessions.back()->frames(), 0);
}

TEST_F(WindowPicturesTest, Turned_content_comes_upright)
{
    start();
    captures->opened = [](FakeCaptureSession& session) {
        session.size(4, 2).format(WL_SHM_FORMAT_XRGB8888).done();
    };
    captures->requested = [](FakeCaptureSession& session) {
        session.transform(WL_OUTPUT_TRANSFORM_270).ready(FakeCaptures::colour, 0xFFFF0000);
    };
    const auto picture = capture({.window = "first", .largest = QSize(100, 100)});
    ASSERT_TRUE(picture.has_value());
    EXPECT_EQ(picture->pixelSize, QSize(2, 4));
    ASSERT_EQ(picture->image.size(), QSize(2, 4));
    EXPECT_EQ(picture->image.pixel(0, 3), 0xFFFF0000U);
    captures->requested = [](FakeCaptureSession& session) {
        session.transform(9).ready(FakeCaptures::colour);
    };
    EXPECT_FALSE(capture(CaptureNeed::always));
}

TEST_F(WindowPicturesTest, A_window_that_goes_in_the_middle_of_its_picture_ends_the_capture)
{
    start();
    captures->requested = [](FakeCaptureSession& session) { session.stopped(); };
    EXPECT_FALSE(capture(CaptureNeed::always));
    EXPECT_TRUE(serveUntil([this] { return captures->openSessions() == 0; }));
    captures->requested = [](FakeCaptureSession& session) {
        session.failed(EXT_IMAGE_COPY_CAPTURE_FRAME_V1_FAILURE_REASON_STOPPED);
    };
    EXPECT_FALSE(capture(CaptureNeed::always));
    EXPECT_TRUE(serveUntil([this] { return captures->openSessions() == 0; }));
}

TEST_F(WindowPicturesTest, A_window_that_is_not_listed_has_no_session)
{
    start();
    FakeIdentifiedToplevel gone = windows->open("Gone", "app", "gone");
    ASSERT_TRUE(capture(CaptureNeed::always, "gone"));
    gone.closed();
    EXPECT_TRUE(serveUntil([this] { return !capture(CaptureNeed::always, "gone"); }));
    const std::size_t opened = captures->sessions.size();
    EXPECT_FALSE(capture(CaptureNeed::always, "gone"));
    EXPECT_FALSE(capture(CaptureNeed::always, "another"));
    EXPECT_FALSE(capture(CaptureNeed::always, {}));
    EXPECT_EQ(captures->sessions.size(), opened);
}

TEST_F(WindowPicturesTest, Only_few_sessions_are_kept)
{
    CaptureLimits limits = patientLimits;
    limits.sessions = 3;
    start(limits);
    const std::vector<QByteArray> all{"a", "b", "c", "d", "e", "f"};
    for (const QByteArray& each : all)
        windows->open("Window", "app", each.toStdString());
    for (int turn = 0; turn < 12; ++turn) {
        const auto at = static_cast<std::size_t>(turn);
        ASSERT_TRUE(capture({.window = all.at(at % 6),
                             .largest = largest,
                             .next = {all.at((at + 1) % 6), all.at((at + 2) % 6)}}));
        EXPECT_TRUE(serveUntil([this] { return captures->openSessions() <= 3; })) << turn;
    }
}

TEST_F(WindowPicturesTest, Without_requests_nothing_is_left_open)
{
    start(patientLimits, 200ms);
    ASSERT_TRUE(capture(CaptureNeed::always));
    EXPECT_TRUE(serveUntil([this] { return captures->openSessions() == 0; }));
    // They are still to be had; the new connection lists the windows anew.
    EXPECT_TRUE(pictures->areOffered());
}

TEST_F(WindowPicturesTest, Protocols_that_vanish_are_no_longer_offered)
{
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    start();
    int changes = 0;
    const auto watch = pictures->watchOffer([&] { ++changes; });
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 1);
    captures->remove();
    EXPECT_TRUE(serveUntil([this] { return !pictures->areOffered(); }));
    EXPECT_TRUE(serveUntil([&] {
        QCoreApplication::processEvents();
        return changes == 2;
    }));
    EXPECT_FALSE(capture(CaptureNeed::always));
    EXPECT_TRUE(captures->sessions.empty());
}

TEST_F(WindowPicturesTest, A_compositor_without_these_protocols_offers_none_and_is_left_alone)
{
    captures.reset();
    pictures.emplace(path, patientLimits);
    for (int times = 0; times < 3; ++times)
        EXPECT_FALSE(capture(CaptureNeed::always));
    EXPECT_FALSE(pictures->areOffered());
}

TEST_F(WindowPicturesTest, A_compositor_that_is_slow_at_first_is_asked_again_without_a_request)
{
    CaptureLimits limits = impatientLimits();
    limits.setup = 50ms;
    limits.askAgainDelay = 50ms;
    isServing = false;
    pictures.emplace(path, limits);
    // The first question has no answer in time.
    std::this_thread::sleep_for(4 * limits.setup);
    EXPECT_FALSE(pictures->areOffered());
    isServing = true;
    EXPECT_TRUE(serveUntil([this] { return pictures->areOffered(); }));
}

TEST_F(WindowPicturesTest, A_compositor_that_hangs_costs_no_more_than_the_time_for_a_picture)
{
    start(impatientLimits());
    ASSERT_TRUE(serveUntil([this] { return capture(CaptureNeed::always).has_value(); }));
    isServing = false;
    EXPECT_FALSE(capture(CaptureNeed::always));
    EXPECT_FALSE(capture(CaptureNeed::ifChanged));
    isServing = true;
    EXPECT_TRUE(serveUntil([this] { return capture(CaptureNeed::always).has_value(); }));
    isServing = false;
}

TEST_F(WindowPicturesTest, Who_stops_a_capture_does_not_wait_for_the_compositor)
{
    start();
    isServing = false;
    stop.request_stop();
    EXPECT_FALSE(capture(CaptureNeed::always));
}

TEST_F(WindowPicturesTest, A_compositor_that_dies_is_followed_by_the_next_one)
{
    start();
    ASSERT_TRUE(capture(CaptureNeed::always));
    endCompositor();
    EXPECT_FALSE(capture(CaptureNeed::always));
    startCompositor();
    // The window is listed once the connection is there.
    captures->opened = [](FakeCaptureSession& session) {
        session.size(6, 6).format(WL_SHM_FORMAT_XRGB8888).done();
    };
    bool isListed = false;
    EXPECT_TRUE(serveUntil([&] {
        const auto picture = capture(CaptureNeed::always);
        if (!isListed && windows->isBound()) {
            windows->open("First", "app", "first");
            isListed = true;
        }
        return picture && picture->pixelSize == QSize(6, 6);
    }));
}

} // namespace
} // namespace kelpa::test
