// The pictures that KWin takes of windows, and why there are none.
#include "platform/kwin/KwinAbilities.h"
#include "platform/kwin/KwinScreenshots.h"
#include "platform/kwin/KwinServerFixture.h"

namespace kelpa::test {
namespace {

using kwin::PictureStanding;
using kwin::ScreenshotOutcome;

const QString mailWindow = QStringLiteral("{22222222-2222-2222-2222-222222222222}");

TEST_F(KwinServerTest, A_picture_is_what_KWin_writes_into_the_pipe)
{
    begin();
    givePictures();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    const int asked = kwin->pictures;
    const std::optional<WindowCapture> taken = capture(*server, 1);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->pixelSize, QSize(2, 2));
    EXPECT_EQ(taken->image.pixel(1, 1), qRgb(0x30, 0x20, 0x10));
    // Unchanged, unknown.
    EXPECT_FALSE(capture(*server, 1, CaptureNeed::ifChanged));
    EXPECT_FALSE(capture(*server, 9));
    EXPECT_EQ(kwin->pictures, asked + 1);
    EXPECT_EQ(server->pictures(), PictureStanding::given);
    // Of a window that is gone nothing is remembered.
    kwin->report('[' + mail + ']');
    ASSERT_TRUE(waitFor([this] { return kwin->reportReplies == 2; }));
    ASSERT_EQ(pass(*server).value_or(Titles()).size(), 1);
    kwin->report(bothWindows);
    ASSERT_TRUE(waitFor([this] { return kwin->reportReplies == 3; }));
    ASSERT_TRUE(pass(*server));
    EXPECT_TRUE(capture(*server, 1, CaptureNeed::ifChanged));
}

TEST_F(KwinServerTest, For_a_window_that_is_not_shown_KWin_is_made_to_draw_a_frame)
{
    begin();
    givePictures();
    kwin->hiddenWindow = mailWindow;
    // So long that a slow machine does not reach it.
    frameInterval = std::chrono::minutes(10);
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    // It is answered at once.
    EXPECT_TRUE(capture(*server, 1));
    EXPECT_EQ(kwin->frames, 0);
    const std::optional<WindowCapture> taken = capture(*server, 2);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->image.pixel(1, 1), qRgb(0x30, 0x20, 0x10));
    EXPECT_GE(kwin->frames, 1);
    // In the middle of the window that is shown.
    EXPECT_EQ(kwin->pixel, QPoint(151, 102));
    EXPECT_FALSE(capture(*server, 2, CaptureNeed::ifChanged));
}

TEST_F(KwinServerTest, A_KWin_that_does_not_draw_is_left_alone_for_a_while)
{
    begin();
    givePictures();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    kwin->holdsPictures = true;
    for (int count = 0; count < 3; ++count)
        EXPECT_FALSE(capture(*server, 1));
    const int asked = kwin->pictures;
    for (int count = 0; count < 3; ++count)
        EXPECT_FALSE(capture(*server, 1));
    EXPECT_EQ(kwin->pictures, asked);
    EXPECT_EQ(server->pictures(), PictureStanding::given);
    EXPECT_TRUE(server->isPausing());
    // Somebody is there.
    kwin->holdsPictures = false;
    kwin->report('[' + notes + ',' + QByteArray(mail).replace("true}", "true,\"isActive\":true}") +
                 ']');
    ASSERT_TRUE(waitFor([this] { return kwin->reportReplies == 2; }));
    ASSERT_TRUE(pass(*server));
    EXPECT_FALSE(server->isPausing());
    EXPECT_TRUE(capture(*server, 1));
}

TEST_F(KwinServerTest, A_window_that_gives_no_picture_is_left_alone_and_the_others_are_not)
{
    begin();
    givePictures();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    kwin->silentWindow = mailWindow;
    for (int count = 0; count < 3; ++count)
        EXPECT_FALSE(capture(*server, 2));
    EXPECT_FALSE(server->isPausing());
    const int asked = kwin->pictures;
    EXPECT_FALSE(capture(*server, 2));
    EXPECT_EQ(kwin->pictures, asked);
    EXPECT_TRUE(capture(*server, 1));
}

TEST_F(KwinServerTest, A_picture_that_is_there_waits_for_no_pixel)
{
    begin();
    givePictures();
    kwin->hiddenWindow = mailWindow;
    kwin->holdsPixels = true;
    pictureLimit = std::chrono::minutes(1);
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_TRUE(capture(*server, 2));
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(30));
}

TEST_F(KwinServerTest, A_picture_that_is_not_what_it_should_be_is_none)
{
    begin();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    const QVariantMap good{{text("type"), text("raw")},
                           {text("width"), 2U},
                           {text("height"), 2U},
                           {text("stride"), 8U},
                           {text("format"), uint(QImage::Format_RGB32)}};
    QVariantMap compressed = good;
    compressed[text("type")] = text("png");
    QVariantMap endless = good;
    endless[text("height")] = 0xFFFFFFFFU;
    QVariantMap wrongType = good;
    wrongType[text("width")] = text("2");
    QVariantMap wider = good;
    wider[text("stride")] = 4U;
    QVariantMap withoutFormat = good;
    withoutFormat[text("format")] = uint(QImage::Format_Indexed8);
    struct Row
    {
        const char* name;
        QVariantMap picture;
        qsizetype bytes;
        bool holdsPipe;
    };
    for (const Row& row :
         {Row{"too few", good, 15, false},
          Row{"lines that are shorter than told", wider, 16, false},
          Row{"of no format", withoutFormat, 16, false}, Row{"too many", good, 17, false},
          Row{"none", good, 0, false}, Row{"without an end", good, 16, true},
          Row{"compressed", compressed, 16, false}, Row{"endless", endless, 16, false},
          Row{"a text", wrongType, 16, false}, Row{"nothing said", {}, 16, false}}) {
        kwin->picture = row.picture;
        kwin->pictureBytes = QByteArray(row.bytes, 'x');
        kwin->holdsPipe = row.holdsPipe;
        EXPECT_FALSE(capture(*server, 1)) << row.name;
        EXPECT_EQ(server->pictures(), PictureStanding::given) << row.name;
    }
    kwin->isSilent = true;
    EXPECT_FALSE(capture(*server, 1));
}

TEST_F(KwinServerTest, Why_there_are_no_pictures_is_known_from_the_first_pass_on)
{
    struct Row
    {
        const char* error;
        PictureStanding standing;
        std::optional<AbilityShortfall> shortfall;
    };
    begin();
    for (const Row& row :
         {Row{"org.kde.KWin.ScreenShot2.Error.NoAuthorized", PictureStanding::denied,
              AbilityShortfall{.gap = AbilityGap::pictureEntry}},
          Row{"org.freedesktop.DBus.Error.UnknownObject", PictureStanding::withoutOpenGL,
              AbilityShortfall{.gap = AbilityGap::openGL}},
          Row{"org.kde.KWin.ScreenShot2.Error.InvalidWindow", PictureStanding::given,
              std::nullopt}}) {
        kwin->pictureError = text(row.error);
        const auto server = start();
        ASSERT_TRUE(pass(*server));
        EXPECT_EQ(server->pictures(), row.standing) << row.error;
        EXPECT_EQ(kwin::abilitiesOfKwin({.pictures = server->pictures()})
                      .shortfall(DesktopAbility::previews),
                  row.shortfall);
    }
}

TEST_F(KwinServerTest, A_KWin_that_cancels_every_picture_draws_without_OpenGL)
{
    begin();
    kwin->pictureError = text("org.kde.KWin.ScreenShot2.Error.InvalidWindow");
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    kwin->pictureError = text("org.kde.KWin.ScreenShot2.Error.Cancelled");
    for (int count = 0; count < 2; ++count)
        EXPECT_FALSE(capture(*server, 1));
    EXPECT_EQ(server->pictures(), PictureStanding::given);
    EXPECT_FALSE(capture(*server, 1));
    EXPECT_EQ(server->pictures(), PictureStanding::withoutOpenGL);
}

TEST_F(KwinServerTest, A_picture_of_one_pixel_tells_at_once_whether_KWin_draws_with_OpenGL)
{
    struct Row
    {
        const char* ofWindow;
        const char* ofPixel;
        ScreenshotOutcome outcome;
    };
    begin();
    for (const Row& row : {Row{"InvalidWindow", "Cancelled", ScreenshotOutcome::unavailable},
                           Row{"InvalidWindow", "", ScreenshotOutcome::failed},
                           // It may be another trouble.
                           Row{"InvalidWindow", "FileDescriptor", ScreenshotOutcome::failed},
                           Row{"NoAuthorized", "Cancelled", ScreenshotOutcome::denied}}) {
        const QString errors = text("org.kde.KWin.ScreenShot2.Error.");
        kwin->pictureError = errors + text(row.ofWindow);
        kwin->areaError = *row.ofPixel == 0 ? QString() : errors + text(row.ofPixel);
        EXPECT_EQ(meanwhile([this] {
                      return kwin::KwinScreenshots(bus.address().toUtf8(), limit).probeWithPixel();
                  }),
                  row.outcome)
            << row.ofWindow << ' ' << row.ofPixel;
    }
    // Nothing else of the screen is asked for, and not even that by who is denied it.
    EXPECT_EQ(kwin->area, QSize(1, 1));
    EXPECT_EQ(kwin->frames, 3);
}

} // namespace
} // namespace kelpa::test
