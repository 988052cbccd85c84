#include "platform/kwin/KwinWindowServer.h"

#include "platform/freedesktop/bus/PrivateBus.h"
#include "platform/kwin/FakeKwin.h"
#include "platform/kwin/KwinAbilities.h"
#include "platform/kwin/KwinGlobalKeys.h"
#include "platform/kwin/KwinWindowActions.h"
#include "shell/GlobalDoubleTap.h"
#include "support/ManualScheduler.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <future>
#include <thread>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using kwin::KwinWindowServer;
using kwin::PictureStanding;

constexpr const char* denied = "org.freedesktop.DBus.Error.AccessDenied";
const QByteArray notes = R"({"id":"{11111111-1111-1111-1111-111111111111}","title":"Notes",)"
                         R"("process":41,"x":1,"y":2,"width":300,"height":200,"isOrdinary":true,)"
                         R"("isHere":true,"activation":2})";
const QByteArray mail = R"({"id":"{22222222-2222-2222-2222-222222222222}","title":"Mail",)"
                        R"("process":42,"x":1,"y":2,"width":300,"height":200,"isOrdinary":true,)"
                        R"("isMinimized":true})";
const QByteArray panel = R"({"id":"{33333333-3333-3333-3333-333333333333}","title":"Panel",)"
                         R"("process":42,"x":0,"y":0,"width":1600,"height":40,"isHere":true})";
const QByteArray bothWindows = '[' + notes + ',' + mail + ',' + panel + ']';

class NoResolver final : public ApplicationResolver
{
public:
    ResolvedApplication resolve(const ApplicationClues&) override { return {}; }
};

class AnyNumber final : public NumberReservation
{
public:
    bool reserve(WindowID upTo) override
    {
        mark = upTo;
        return true;
    }

    WindowID mark = 0;
};

class OneTable final : public NameTableStorage
{
public:
    std::optional<NameTable> read() override { return table; }
    bool write(const NameTable& written) override
    {
        table = written;
        return true;
    }

    std::optional<NameTable> table;
};

using Titles = std::vector<std::pair<QString, WindowID>>;

class KwinServerTest : public testing::Test
{
protected:
    std::unique_ptr<KwinWindowServer> start()
    {
        return std::make_unique<KwinWindowServer>(
            kwin::KwinWindowServerNeeds{.link = {.busAddress = bus.address().toUtf8(),
                                                 .plugin = "org.kelpa.Kelpa-test",
                                                 .folder = folder.path(),
                                                 .replyLimit = 300ms,
                                                 .reportLimit = reportLimit},
                                        .resolver = resolver,
                                        .reservation = reservation,
                                        .names = names,
                                        .highWaterMark = reservation.mark,
                                        .scheduler = scheduler,
                                        .pictureLimit = 300ms});
    }

    /// What `work` returns on a thread of its own, while KWin and the main thread go on.
    template <class Work>
    auto meanwhile(Work work) -> decltype(work())
    {
        std::promise<decltype(work())> promise;
        std::future<decltype(work())> result = promise.get_future();
        const std::jthread thread([&] { promise.set_value(work()); });
        while (result.wait_for(0s) != std::future_status::ready)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        return result.get();
    }

    /// Absent when there is no list.
    std::optional<Titles> pass(KwinWindowServer& server)
    {
        return meanwhile([&server]() -> std::optional<Titles> {
            const auto entries = server.openDiscoverySource()->windowList(WindowListScope::all);
            if (!entries)
                return std::nullopt;
            Titles titles;
            for (const WindowListEntry& each : *entries)
                titles.emplace_back(each.name.value_or(QString()), each.number.value_or(0));
            return titles;
        });
    }

    std::optional<WindowCapture> capture(KwinWindowServer& server, WindowID window,
                                         CaptureNeed need = CaptureNeed::always)
    {
        return meanwhile([&] {
            return server.captureWindow({.window = window, .largest = QSize(128, 72), .need = need},
                                        {});
        });
    }

    static bool waitFor(const std::function<bool()>& isReached)
    {
        const auto end = std::chrono::steady_clock::now() + 20s;
        while (!isReached()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
        return true;
    }

    /// KWin with that report.
    void begin(const QByteArray& report = bothWindows)
    {
        kwin->firstReport = report;
        kwin->appear();
    }

    /// So long that a slow machine does not reach it.
    std::chrono::milliseconds reportLimit = 10min;
    PrivateBus bus;
    QTemporaryDir folder;
    NoResolver resolver;
    AnyNumber reservation;
    OneTable names;
    ManualScheduler scheduler;
    std::unique_ptr<FakeKwin> kwin = std::make_unique<FakeKwin>(bus.address());
};

const QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

TEST_F(KwinServerTest, Windows_are_those_of_the_script_s_report)
{
    begin();
    const auto server = start();
    EXPECT_EQ(pass(*server), (Titles{{text("Notes"), 1}, {text("Mail"), 2}}));
    EXPECT_TRUE(server->isScreenCaptureTrusted());
    // KWin has read it.
    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files).isEmpty());
    EXPECT_EQ(kwin->everLoaded, QStringList{text("org.kelpa.Kelpa-test")});
    EXPECT_EQ(pass(*server), (Titles{{text("Notes"), 1}, {text("Mail"), 2}}));
    EXPECT_EQ(kwin->everLoaded.size(), 1);
}

TEST_F(KwinServerTest, The_script_runs_in_older_and_newer_KWin_and_beside_others)
{
    struct Row
    {
        bool isOld;
        bool mixesNumbers;
    };
    begin();
    for (const Row row : {Row{false, false}, Row{true, false}, Row{true, true}}) {
        kwin->isOld = row.isOld;
        kwin->mixesNumbers = row.mixesNumbers;
        const auto server = start();
        EXPECT_EQ(pass(*server).value_or(Titles()).size(), 2) << row.isOld << row.mixesNumbers;
    }
}

TEST_F(KwinServerTest, A_start_unloads_what_an_earlier_one_left_and_an_end_leaves_nothing)
{
    begin();
    kwin->loaded = {text("org.kelpa.Kelpa-test"), text("another")};
    auto server = start();
    EXPECT_TRUE(pass(*server));
    EXPECT_EQ(kwin->loaded, (QStringList{text("another"), text("org.kelpa.Kelpa-test")}));
    server.reset();
    EXPECT_TRUE(waitFor([this] { return kwin->loaded == QStringList{text("another")}; }));
}

TEST_F(KwinServerTest, Only_KWin_s_own_script_is_believed)
{
    begin();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    EXPECT_EQ(
        meanwhile([this] { return errorForStranger(bus.address(), kwin->kelpa(), kwin->token()); }),
        text(denied));
    // Another script within KWin.
    const int replies = kwin->reportReplies;
    kwin->report("[]", text("another-token"));
    ASSERT_TRUE(waitFor([&] { return kwin->reportReplies > replies; }));
    EXPECT_EQ(kwin->reportError, text(denied));
    EXPECT_EQ(pass(*server).value_or(Titles()).size(), 2);
    kwin->report('[' + mail + ']');
    ASSERT_TRUE(waitFor([&] { return kwin->reportReplies > replies + 1; }));
    EXPECT_EQ(kwin->reportError, QString());
    EXPECT_EQ(pass(*server), (Titles{{text("Mail"), 2}}));
}

TEST_F(KwinServerTest, A_script_that_was_unloaded_is_loaded_again)
{
    begin();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    kwin->loaded.clear();
    kwin->firstReport = '[' + mail + ']';
    EXPECT_EQ(pass(*server), (Titles{{text("Mail"), 2}}));
    EXPECT_EQ(kwin->everLoaded.size(), 2);
}

TEST_F(KwinServerTest, While_a_script_is_slow_the_windows_stay_and_it_is_waited_for)
{
    begin();
    const auto server = start();
    const auto before = pass(*server);
    ASSERT_TRUE(before);
    kwin->loaded.clear();
    kwin->firstReport.reset();
    // Longer than a pass waits.
    EXPECT_EQ(pass(*server), before);
    EXPECT_TRUE(server->isListing());
    EXPECT_EQ(pass(*server), before);
    EXPECT_EQ(kwin->everLoaded.size(), 2);
    int changes = 0;
    const auto watching = server->watchWindows([&changes] { ++changes; });
    scheduler.advance(100ms);
    const int told = changes;
    kwin->report('[' + mail + ']');
    ASSERT_TRUE(waitFor([&] {
        scheduler.advance(100ms);
        return changes > told;
    }));
    EXPECT_EQ(pass(*server), (Titles{{text("Mail"), 2}}));
    EXPECT_EQ(kwin->everLoaded.size(), 2);
}

TEST_F(KwinServerTest, The_windows_stay_until_the_script_in_the_next_KWin_reports)
{
    begin();
    const auto server = start();
    const auto before = pass(*server);
    ASSERT_TRUE(before);
    // No pass sees the bus without a KWin.
    kwin.reset();
    kwin = std::make_unique<FakeKwin>(bus.address());
    kwin->firstReport.reset();
    kwin->appear();
    EXPECT_EQ(pass(*server), before);
    EXPECT_TRUE(server->isScreenCaptureTrusted());
    const int replies = kwin->reportReplies;
    kwin->report('[' + mail + ']');
    ASSERT_TRUE(waitFor([&] { return kwin->reportReplies > replies; }));
    EXPECT_EQ(pass(*server).value_or(Titles()).size(), 1);
}

TEST_F(KwinServerTest, A_script_that_never_reports_ends_the_list_and_is_loaded_again)
{
    reportLimit = 0ms;
    begin();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    kwin.reset();
    kwin = std::make_unique<FakeKwin>(bus.address());
    kwin->firstReport.reset();
    kwin->appear();
    EXPECT_EQ(pass(*server), std::nullopt);
    EXPECT_FALSE(server->isListing());
    EXPECT_TRUE(server->isScreenCaptureTrusted());
    EXPECT_EQ(kwin->everLoaded.size(), 1);
    kwin->firstReport = '[' + mail + ']';
    EXPECT_EQ(pass(*server).value_or(Titles()).size(), 1);
    EXPECT_EQ(kwin->everLoaded.size(), 2);
    EXPECT_TRUE(server->isListing());
    EXPECT_TRUE(pass(*server));
    EXPECT_EQ(kwin->everLoaded.size(), 2);
}

TEST_F(KwinServerTest, While_KWin_hangs_its_windows_stay)
{
    begin();
    const auto server = start();
    const auto before = pass(*server);
    kwin->isSilent = true;
    EXPECT_EQ(pass(*server), before);
    EXPECT_TRUE(server->isScreenCaptureTrusted());
    kwin->isSilent = false;
    EXPECT_EQ(pass(*server), before);
    EXPECT_EQ(kwin->everLoaded.size(), 1);
}

TEST_F(KwinServerTest, When_KWin_is_gone_there_are_no_windows_until_the_next_one)
{
    begin();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    kwin.reset();
    EXPECT_EQ(pass(*server), std::nullopt);
    EXPECT_FALSE(server->isScreenCaptureTrusted());
    EXPECT_FALSE(server->isListing());
    kwin = std::make_unique<FakeKwin>(bus.address());
    begin('[' + mail + ']');
    EXPECT_EQ(pass(*server).value_or(Titles()).size(), 1);
    EXPECT_TRUE(server->isListing());
}

TEST_F(KwinServerTest, While_the_process_of_KWin_cannot_be_asked_no_window_gets_another_number)
{
    begin();
    ASSERT_EQ(pass(*start()), (Titles{{text("Notes"), 1}, {text("Mail"), 2}}));
    bus.refuse("GetConnectionUnixProcessID");
    const auto server = start();
    EXPECT_EQ(pass(*server), std::nullopt);
    bus.refuse({});
    EXPECT_EQ(pass(*server), (Titles{{text("Notes"), 1}, {text("Mail"), 2}}));
}

TEST_F(KwinServerTest, Without_a_bus_or_with_a_KWin_that_refuses_scripts_there_is_no_list)
{
    const auto server = start();
    EXPECT_EQ(pass(*server), std::nullopt);
    begin();
    kwin->refusesScripts = true;
    EXPECT_EQ(pass(*server), std::nullopt);
    EXPECT_TRUE(server->isScreenCaptureTrusted());
    kwin->refusesScripts = false;
    EXPECT_TRUE(pass(*server));
    bus.stop();
    EXPECT_FALSE(pass(*server) && server->isScreenCaptureTrusted());
}

TEST_F(KwinServerTest, What_is_no_report_is_no_list)
{
    begin(R"({"windows":7})");
    const auto server = start();
    EXPECT_EQ(pass(*server), std::nullopt);
    kwin->report(bothWindows);
    ASSERT_TRUE(waitFor([this] { return kwin->reportReplies == 2; }));
    EXPECT_EQ(pass(*server).value_or(Titles()).size(), 2);
}

TEST_F(KwinServerTest, Orders_go_to_the_script_when_it_asks)
{
    begin();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    kwin::KwinWindowActions actions(*server);
    // Before it asks.
    actions.elements(42)->front()->requestMinimized(false);
    actions.elements(42)->front()->requestFocus();
    kwin->askForOrders();
    ASSERT_TRUE(waitFor([this] { return kwin->orders.size() == 1; }));
    const QString window = text(R"("window":"{22222222-2222-2222-2222-222222222222}")");
    EXPECT_EQ(kwin->orders.front(), text(R"([{"action":"restore",)") + window +
                                        text(R"(},{"action":"activate",)") + window + text("}]"));
    // While it waits; it gives up waiting once it asks again.
    kwin->askForOrders();
    kwin->askForOrders();
    ASSERT_TRUE(waitFor([this] { return kwin->orders.size() == 2; }));
    EXPECT_EQ(kwin->orders.back(), text("[]"));
    actions.elements(41)->front()->requestClose();
    ASSERT_TRUE(waitFor([this] { return kwin->orders.size() == 3; }));
    EXPECT_TRUE(kwin->orders.back().startsWith(text(R"([{"action":"close")")));
}

TEST_F(KwinServerTest, The_shortcut_of_the_script_counts_as_a_double_tap)
{
    begin();
    const auto server = start();
    kwin::KwinGlobalKeys keys(*server, scheduler);
    GlobalDoubleTap doubleTap(keys);
    int taps = 0;
    QObject::connect(&doubleTap, &GlobalDoubleTap::doubleTapped, &doubleTap, [&taps] { ++taps; });
    ASSERT_TRUE(pass(*server));
    kwin->bringForward(text("another-token"));
    kwin->bringForward();
    ASSERT_TRUE(waitFor([&] { return taps > 0; }));
    kwin->bringForward();
    ASSERT_TRUE(waitFor([&] { return taps > 1; }));
    EXPECT_EQ(taps, 2);
    EXPECT_FALSE(doubleTap.isAvailable());
}

TEST_F(KwinServerTest, A_report_of_KWin_is_told_once_it_is_there)
{
    begin();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    int changes = 0;
    const auto watching = server->watchWindows([&changes] { ++changes; });
    scheduler.advance(100ms);
    const int before = changes;
    kwin->report('[' + mail + ']');
    ASSERT_TRUE(waitFor([&] {
        scheduler.advance(100ms);
        return changes > before;
    }));
}

TEST_F(KwinServerTest, A_picture_is_what_KWin_writes_into_the_pipe)
{
    begin();
    kwin->picture = {{text("type"), text("raw")},
                     {text("width"), 2U},
                     {text("height"), 2U},
                     {text("stride"), 8U},
                     {text("format"), uint(QImage::Format_RGB32)}};
    kwin->pictureBytes = QByteArray("\x10\x20\x30\xff", 4).repeated(4);
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    const int asked = kwin->pictures;
    const std::optional<WindowCapture> taken = capture(*server, 1);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->pixelSize, QSize(2, 2));
    EXPECT_EQ(taken->image.pixel(1, 1), qRgb(0x30, 0x20, 0x10));
    // Unchanged, minimised, unknown.
    EXPECT_FALSE(capture(*server, 1, CaptureNeed::ifChanged));
    EXPECT_FALSE(capture(*server, 2));
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
    struct Row
    {
        const char* name;
        QVariantMap picture;
        qsizetype bytes;
        bool holdsPipe;
    };
    for (const Row& row :
         {Row{"too few", good, 15, false}, Row{"too many", good, 17, false},
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

} // namespace
} // namespace kelpa::test
