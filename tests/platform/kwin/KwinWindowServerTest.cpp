#include "platform/kwin/KwinWindowServer.h"

#include "platform/kwin/KwinServerFixture.h"
#include "platform/kwin/KwinWindowActions.h"

#include <QDir>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

constexpr const char* denied = "org.freedesktop.DBus.Error.AccessDenied";

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

TEST_F(KwinServerTest, All_orders_of_a_large_goal_wait_until_the_script_asks)
{
    begin();
    const auto server = start();
    ASSERT_TRUE(pass(*server));
    kwin::KwinWindowActions actions(*server);
    constexpr int orders = 200;
    actions.elements(42)->front()->requestFocus();
    for (int order = 1; order < orders; ++order)
        actions.elements(41)->front()->requestMinimized(true);
    kwin->askForOrders();
    ASSERT_TRUE(waitFor([this] { return kwin->orders.size() == 1; }));
    EXPECT_TRUE(kwin->orders.front().startsWith(text(R"([{"action":"activate")")));
    EXPECT_EQ(kwin->orders.front().count(text(R"("action")")), orders);
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

} // namespace
} // namespace kelpa::test
