// When KWin is asked for pictures again: once it draws after it did not, and of a window that may
// show something else.
#include "platform/kwin/KwinServerFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class KwinPausesTest : public KwinServerTest
{
protected:
    void pass(std::chrono::milliseconds time) { elapsed = elapsed.load() + time; }
    using KwinServerTest::pass;

    /// As a screen that is switched off, until requests pause.
    void fallAsleep(kwin::KwinWindowServer& server)
    {
        kwin->holdsPictures = true;
        for (int count = 0; count < 3; ++count)
            EXPECT_FALSE(capture(server, 1));
        const int asked = kwin->pictures;
        EXPECT_FALSE(capture(server, 1));
        EXPECT_EQ(kwin->pictures, asked) << "it is not left alone";
    }
};

TEST_F(KwinPausesTest, Once_KWin_draws_again_there_are_pictures_at_once)
{
    begin();
    givePictures();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    // The second time as the first: nothing is left of it.
    for (int night = 0; night < 2; ++night) {
        fallAsleep(*server);
        EXPECT_TRUE(server->isPausing());
        // No time passes, and nobody asks for anything.
        kwin->draw();
        EXPECT_TRUE(waitFor([&] { return !server->isPausing(); })) << night;
        EXPECT_TRUE(capture(*server, 1)) << night;
    }
}

TEST_F(KwinPausesTest, A_KWin_that_has_not_drawn_for_long_is_heard_when_it_does)
{
    begin();
    givePictures();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    fallAsleep(*server);
    // It is asked now and then, too.
    for (const std::chrono::seconds pause : {11s, 21s}) {
        const int asked = kwin->pictures;
        pass(pause);
        EXPECT_FALSE(capture(*server, 1));
        EXPECT_EQ(kwin->pictures, asked + 1);
    }
    kwin->draw();
    EXPECT_TRUE(waitFor([&] { return !server->isPausing(); }));
    EXPECT_TRUE(capture(*server, 1));
    // A server that ends meanwhile does not wait for KWin.
    fallAsleep(*server);
}

TEST_F(KwinPausesTest, Other_screens_end_the_pauses)
{
    kwin->screens = R"([{"x":0,"y":0,"width":1600,"height":1000}])";
    begin();
    givePictures();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    fallAsleep(*server);
    int reports = 1;
    const auto report = [&] {
        kwin->report(bothWindows);
        ++reports;
        EXPECT_TRUE(waitFor([&] { return kwin->reportReplies == reports; }));
        EXPECT_TRUE(pass(*server));
    };
    report();
    EXPECT_TRUE(server->isPausing()) << "the screens are the same";
    kwin->screens = R"([{"x":0,"y":0,"width":1280,"height":720}])";
    report();
    EXPECT_FALSE(server->isPausing());
    kwin->holdsPictures = false;
    EXPECT_TRUE(capture(*server, 1));
    // The request that waited is given up, and does not keep the next one from waiting.
    fallAsleep(*server);
    kwin->draw();
    EXPECT_TRUE(waitFor([&] { return !server->isPausing(); }));
}

TEST_F(KwinPausesTest, A_window_that_gave_no_picture_is_asked_again_on_other_screens)
{
    begin();
    givePictures();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    kwin->silentWindow = QStringLiteral("{22222222-2222-2222-2222-222222222222}");
    for (int count = 0; count < 3; ++count)
        EXPECT_FALSE(capture(*server, 2));
    kwin->silentWindow.clear();
    EXPECT_FALSE(capture(*server, 2));
    kwin->screens = R"([{"x":0,"y":0,"width":1600,"height":1000}])";
    kwin->report(bothWindows);
    ASSERT_TRUE(waitFor([this] { return kwin->reportReplies == 2; }));
    ASSERT_TRUE(pass(*server));
    EXPECT_TRUE(capture(*server, 2));
}

TEST_F(KwinPausesTest, A_window_that_does_not_change_is_taken_twice_a_minute)
{
    begin();
    givePictures();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    ASSERT_TRUE(capture(*server, 1));
    const int before = kwin->pictures;
    // As often as a board of one window asks.
    for (int tick = 0; tick < 200; ++tick) {
        pass(600ms);
        capture(*server, 1, CaptureNeed::ifChanged);
    }
    EXPECT_EQ(kwin->pictures - before, 4) << "in two minutes";
    // The one that a person works in is taken each time: KWin does not tell when it draws.
    kwin->report('[' + QByteArray(notes).replace("\"isHere\"", "\"isActive\":true,\"isHere\"") +
                 ',' + mail + ']');
    ASSERT_TRUE(waitFor([this] { return kwin->reportReplies == 2; }));
    ASSERT_TRUE(pass(*server));
    const int active = kwin->pictures;
    for (int tick = 0; tick < 10; ++tick) {
        pass(600ms);
        capture(*server, 1, CaptureNeed::ifChanged);
    }
    EXPECT_EQ(kwin->pictures - active, 10);
    // One of another title is taken once.
    const int titled = kwin->pictures;
    ASSERT_TRUE(capture(*server, 2));
    kwin->report('[' + notes + ',' + QByteArray(mail).replace("Mail\"", "News\",\"revision\":1") +
                 ']');
    ASSERT_TRUE(waitFor([this] { return kwin->reportReplies == 3; }));
    ASSERT_TRUE(pass(*server));
    for (int tick = 0; tick < 10; ++tick)
        capture(*server, 2, CaptureNeed::ifChanged);
    EXPECT_EQ(kwin->pictures - titled, 2);
}

} // namespace
} // namespace kelpa::test
