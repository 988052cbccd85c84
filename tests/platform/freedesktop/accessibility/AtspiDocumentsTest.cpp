#include "platform/freedesktop/accessibility/AtspiDocuments.h"

#include "platform/freedesktop/accessibility/DocumentsFixture.h"

#include <QElapsedTimer>

#include <unistd.h>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

TEST_F(Documents, A_document_is_known_after_its_window_was_noted_once)
{
    Application browser(bus);
    browser.behave(showing({page(QStringLiteral("https://example.org/a"))}));
    registry.applications = {browser.busName()};
    EXPECT_EQ(shown(window(browser)), QStringLiteral("(none)"));
    documents->noteWindows({window(browser)});
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return shown(window(browser)) == QStringLiteral("https://example.org/a"); }, 10'000));
}

TEST_F(Documents, Both_attributes_of_the_location_are_understood_and_DocURL_comes_first)
{
    Application browser(bus);
    QJsonObject both = page(QStringLiteral("https://example.org/first"));
    both[QLatin1String("attributes")] =
        QJsonObject{{QStringLiteral("URI"), QStringLiteral("https://example.org/second")},
                    {QStringLiteral("DocURL"), QStringLiteral("https://example.org/first")}};
    registry.applications = {browser.busName()};
    browser.behave(showing({both}));
    EXPECT_TRUE(notingShows(window(browser), QStringLiteral("https://example.org/first")));
    browser.behave(showing(
        {documentOfPeer(QStringLiteral("URI"), QStringLiteral("file:///home/someone/text.odt"), {},
                        10, 90, 700, 500)}));
    EXPECT_TRUE(notingShows(window(browser), QStringLiteral("file:///home/someone/text.odt")));
}

TEST_F(Documents, Two_windows_of_one_process_get_each_its_own)
{
    Application browser(bus);
    browser.behave(showing(
        {documentOfPeer(QStringLiteral("DocURL"), QStringLiteral("right"), {}, 810, 90, 780, 500),
         documentOfPeer(QStringLiteral("DocURL"), QStringLiteral("left"), {}, 10, 90, 780, 500)}));
    registry.applications = {browser.busName()};
    const DocumentQuery left = window(browser, "One", leftFrame);
    const DocumentQuery right = window(browser, "Two", rightFrame);
    EXPECT_TRUE(notingUntil({left, right}, [&] { return shown(left) == QStringLiteral("left"); }));
    EXPECT_EQ(shown(right), QStringLiteral("right"));
}

TEST_F(Documents, Places_on_the_bus_are_pixels_of_the_screen)
{
    const auto scale = std::make_shared<PointScale>();
    scale->setPixelsPerPoint(2);
    AtspiDocumentsOptions options = quick(bus.address());
    options.scale = scale;
    start(options);
    Application browser(bus);
    browser.behave(showing({documentOfPeer(QStringLiteral("DocURL"), QStringLiteral("right"), {},
                                           1620, 180, 1560, 1000),
                            documentOfPeer(QStringLiteral("DocURL"), QStringLiteral("left"), {}, 20,
                                           180, 1560, 1000)}));
    registry.applications = {browser.busName()};
    const DocumentQuery left = window(browser, "One", leftFrame);
    const DocumentQuery right = window(browser, "Two", rightFrame);
    EXPECT_TRUE(notingUntil({left, right}, [&] { return shown(left) == QStringLiteral("left"); }));
    EXPECT_EQ(shown(right), QStringLiteral("right"));
}

TEST_F(Documents, A_change_is_reported_on_the_constructing_thread_and_only_once)
{
    Application browser(bus);
    browser.behave(showing({page(QStringLiteral("a"))}));
    registry.applications = {browser.busName()};
    ASSERT_TRUE(notingUntil({window(browser)}, [&] { return changes == 1; }));
    EXPECT_EQ(changedOn, QThread::currentThread());
    const int before = browser.called(QStringLiteral("GetMatches"));
    ASSERT_TRUE(notingUntil({window(browser)}, [&] {
        return browser.called(QStringLiteral("GetMatches")) >= before + 3;
    }));
    EXPECT_EQ(changes, 1);
    browser.behave(showing({page(QStringLiteral("b"))}));
    ASSERT_TRUE(notingUntil({window(browser)}, [&] { return changes == 2; }));
    EXPECT_EQ(shown(window(browser)), QStringLiteral("b"));
}

TEST_F(Documents, A_new_title_makes_its_process_due_before_the_refresh)
{
    AtspiDocumentsOptions options = quick(bus.address());
    options.intervals.refresh = 1h;
    start(options);
    Application browser(bus);
    browser.behave(showing({page(QStringLiteral("a"))}));
    registry.applications = {browser.busName()};
    ASSERT_TRUE(notingShows(window(browser, "One"), QStringLiteral("a")));
    browser.behave(showing({page(QStringLiteral("b"))}));
    EXPECT_TRUE(notingShows(window(browser, "Two"), QStringLiteral("b")));
}

TEST_F(Documents, While_nothing_changes_no_application_is_called)
{
    AtspiDocumentsOptions options = quick(bus.address());
    options.intervals.refresh = 1h;
    start(options);
    Application browser(bus);
    browser.behave(showing({page(QStringLiteral("a"))}));
    Application other(bus);
    registry.applications = {browser.busName(), other.busName()};
    ASSERT_TRUE(notingShows(window(browser), QStringLiteral("a")));
    // The other's first call comes after any that these would have caused.
    for (int i = 0; i < 50; ++i) {
        documents->noteWindows({window(browser)});
    }
    ASSERT_TRUE(notingUntil({window(browser), window(other)},
                            [&] { return other.called(QStringLiteral("GetMatches")) == 1; }));
    EXPECT_EQ(browser.called(QStringLiteral("GetMatches")), 1);
    EXPECT_EQ(registry.asked, 2);
}

TEST_F(Documents, A_frozen_application_neither_delays_the_others_nor_is_called_twice)
{
    Application frozen(bus);
    Application mute(bus);
    mute.behave({{QStringLiteral("silentIn"), QStringLiteral("GetMatches")}});
    Application browser(bus);
    browser.behave(showing({page(QStringLiteral("a"))}));
    registry.applications = {frozen.busName(), mute.busName(), browser.busName()};
    frozen.freeze();
    AtspiDocumentsOptions options = quick(bus.address());
    // Longer than the test waits: only a reply that does not wait for the others comes in time.
    options.applicationLimit = 30s;
    start(options);
    documents->noteWindows({window(frozen), window(mute), window(browser)});
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return shown(window(browser)) == QStringLiteral("a"); }, 10'000));
    // With the usual limit, the silent ones cost it once.
    start(quick(bus.address()));
    ASSERT_TRUE(notingUntil({window(frozen), window(mute), window(browser)},
                            [&] { return browser.called(QStringLiteral("GetMatches")) >= 5; }));
    EXPECT_EQ(mute.called(QStringLiteral("GetMatches")), 2);
}

TEST_F(Documents, Replies_of_an_application_before_it_falls_silent_count)
{
    Application browser(bus);
    QJsonObject behaviour = showing({page(QStringLiteral("a"))});
    behaviour[QLatin1String("silentIn")] = QStringLiteral("GetExtents");
    browser.behave(behaviour);
    registry.applications = {browser.busName()};
    EXPECT_TRUE(notingShows(window(browser), QStringLiteral("a")));
}

TEST_F(Documents, An_application_that_refuses_or_replies_oddly_is_called_once_and_does_no_harm)
{
    Application refusing(bus);
    refusing.behave({{QStringLiteral("refuses"), QStringLiteral("GetMatches")}});
    Application odd(bus);
    odd.behave({{QStringLiteral("answersOddly"), QStringLiteral("GetMatches")}});
    Application browser(bus);
    browser.behave(showing({page(QStringLiteral("a"))}));
    registry.applications = {refusing.busName(), odd.busName(), browser.busName(),
                             QStringLiteral(":1.99999"), QStringLiteral("not a name")};
    ASSERT_TRUE(notingUntil({window(refusing), window(odd), window(browser)},
                            [&] { return browser.called(QStringLiteral("GetMatches")) >= 4; }));
    EXPECT_EQ(refusing.called(QStringLiteral("GetMatches")), 1);
    EXPECT_EQ(odd.called(QStringLiteral("GetMatches")), 1);
    EXPECT_EQ(shown(window(browser)), QStringLiteral("a"));
}

TEST_F(Documents, An_application_without_a_listed_window_is_never_called)
{
    Application browser(bus);
    browser.behave(showing({page(QStringLiteral("a"))}));
    Application hidden(bus);
    registry.applications = {browser.busName(), hidden.busName()};
    ASSERT_TRUE(notingShows(window(browser), QStringLiteral("a")));
    EXPECT_EQ(hidden.called(QStringLiteral("GetMatches")), 0);
}

TEST_F(Documents, This_process_is_never_called)
{
    AtspiDocumentsOptions options = quick(bus.address());
    options.intervals.refresh = 1h;
    start(options);
    Application browser(bus);
    // The registry's connection is this process's own; it would count a call.
    registry.applications = {QStringLiteral("org.a11y.atspi.Registry"), browser.busName()};
    const DocumentQuery own{static_cast<ProcessID>(getpid()), leftFrame, QStringLiteral("Own")};
    documents->noteWindows({own});
    ASSERT_TRUE(notingUntil({own, window(browser)},
                            [&] { return browser.called(QStringLiteral("GetMatches")) == 1; }));
    EXPECT_EQ(registry.asked, 1);
}

TEST_F(Documents, A_silent_registry_gives_no_documents_and_is_called_again_later)
{
    Application browser(bus);
    browser.behave(showing({page(QStringLiteral("a"))}));
    registry.applications = {browser.busName()};
    registry.isSilent = true;
    ASSERT_TRUE(notingUntil({window(browser)}, [&] { return registry.asked == 1; }));
    EXPECT_EQ(shown(window(browser)), QStringLiteral("(none)"));
    registry.isSilent = false;
    EXPECT_TRUE(notingShows(window(browser), QStringLiteral("a")));
}

TEST_F(Documents, The_destructor_does_not_wait_for_a_reply)
{
    Application mute(bus);
    mute.behave({{QStringLiteral("silentIn"), QStringLiteral("GetMatches")}});
    registry.applications = {mute.busName()};
    AtspiDocumentsOptions options = quick(bus.address());
    options.applicationLimit = 1h;
    start(options);
    ASSERT_TRUE(notingUntil({window(mute)},
                            [&] { return mute.called(QStringLiteral("GetMatches")) == 1; }));
    QElapsedTimer timer;
    timer.start();
    documents.reset();
    EXPECT_LT(timer.elapsed(), 5000);
}

} // namespace
} // namespace kelpa::test
