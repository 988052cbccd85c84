#include "platform/freedesktop/accessibility/AtspiDocuments.h"

#include "platform/freedesktop/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>
#include <QLocalServer>
#include <QTest>
#include <QThread>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <unistd.h>

using namespace kelpa;
using namespace std::chrono_literals;

namespace {

const Rect leftFrame{0, 0, 800, 600};
const Rect rightFrame{800, 0, 800, 600};

QJsonObject showing(const QJsonArray& documents)
{
    return {{QStringLiteral("documents"), documents}};
}

QJsonObject page(const QString& location)
{
    return documentOfPeer(QStringLiteral("DocURL"), location, QStringLiteral("Page"), 10, 90, 700,
                          500);
}

class Documents : public testing::Test
{
protected:
    PrivateBus bus;
    Registry registry{bus};
    int changes = 0;
    QThread* changedOn = nullptr;
    std::unique_ptr<AtspiDocuments> documents;

    /// Intervals short enough for a test to wait for.
    static AtspiDocumentsOptions quick(const QString& address)
    {
        AtspiDocumentsOptions options;
        options.busAddress = address;
        options.reconnectDelay = 20ms;
        options.intervals = {.betweenChanges = 1ms, .refresh = 50ms, .backOff = 1h};
        return options;
    }

    void start(const AtspiDocumentsOptions& options)
    {
        documents = std::make_unique<AtspiDocuments>(
            [this] {
                ++changes;
                changedOn = QThread::currentThread();
            },
            options);
    }

    void SetUp() override { start(quick(bus.address())); }

    static DocumentQuery window(const Application& application, const char* title = "Page",
                                const Rect& frame = leftFrame)
    {
        return {application.process(), frame, QString::fromUtf8(title)};
    }

    QString shown(const DocumentQuery& window)
    {
        return documents->document(window).value_or(QStringLiteral("(none)"));
    }

    /// Notes the windows as often as discovery may, until the condition holds.
    bool notingUntil(const std::vector<DocumentQuery>& windows,
                     const std::function<bool()>& condition)
    {
        return QTest::qWaitFor(
            [&] {
                documents->noteWindows(windows);
                return condition();
            },
            10'000);
    }

    bool notingShows(const DocumentQuery& window, const QString& document)
    {
        return notingUntil({window}, [&] { return shown(window) == document; });
    }
};

} // namespace

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

TEST_F(Documents, Known_documents_survive_the_end_of_the_bus_and_its_successor_is_found)
{
    std::optional<PrivateBus> first(std::in_place);
    std::optional<Registry> firstRegistry(std::in_place, *first);
    std::optional<Application> browser(std::in_place, *first);
    browser->behave(showing({page(QStringLiteral("a"))}));
    firstRegistry->applications = {browser->busName()};
    start(quick(first->address()));
    const DocumentQuery known = window(*browser);
    ASSERT_TRUE(notingShows(known, QStringLiteral("a")));
    first->stop();
    firstRegistry.reset();
    EXPECT_EQ(shown(known), QStringLiteral("a"));
    first->start();
    Registry successor(*first);
    Application another(*first);
    another.behave(showing({page(QStringLiteral("b"))}));
    successor.applications = {another.busName()};
    EXPECT_TRUE(notingShows(window(another), QStringLiteral("b")));
}

TEST_F(Documents, The_session_bus_gives_the_address_of_the_accessibility_bus)
{
    const PrivateBus session;
    Launcher launcher(session);
    launcher.busAddress = bus.address();
    Application browser(bus);
    browser.behave(showing({page(QStringLiteral("a"))}));
    registry.applications = {browser.busName()};
    AtspiDocumentsOptions options = quick({});
    options.busAddress.reset();
    options.sessionAddress = session.address();
    start(options);
    EXPECT_TRUE(notingShows(window(browser), QStringLiteral("a")));
}

TEST_F(Documents, When_the_session_bus_does_not_reply_in_time_the_fallback_is_tried)
{
    const PrivateBus session;
    Launcher launcher(session);
    launcher.isSilent = true;
    Application browser(bus);
    browser.behave(showing({page(QStringLiteral("a"))}));
    registry.applications = {browser.busName()};
    AtspiDocumentsOptions options = quick({});
    options.busAddress.reset();
    options.sessionAddress = session.address();
    options.fallbackAddress = bus.address();
    options.connectLimit = 100ms;
    start(options);
    EXPECT_TRUE(notingShows(window(browser), QStringLiteral("a")));
}

TEST_F(Documents, A_session_address_without_a_bus_leads_to_the_fallback)
{
    Application browser(bus);
    browser.behave(showing({page(QStringLiteral("a"))}));
    registry.applications = {browser.busName()};
    for (const char* address : {"", "unix:path=/nowhere/at/all", "nonsense", "tcp:host=,port=x"}) {
        AtspiDocumentsOptions options = quick({});
        options.busAddress.reset();
        options.sessionAddress = QString::fromLatin1(address);
        options.fallbackAddress = bus.address();
        start(options);
        EXPECT_TRUE(notingShows(window(browser), QStringLiteral("a"))) << address;
    }
}

TEST_F(Documents, A_bus_that_accepts_and_never_replies_stalls_nothing)
{
    Application browser(bus);
    const QTemporaryDir directory;
    QLocalServer server;
    ASSERT_TRUE(server.listen(directory.filePath(QStringLiteral("socket"))));
    AtspiDocumentsOptions options = quick(QStringLiteral("unix:path=") + server.fullServerName());
    options.connectLimit = 50ms;
    QElapsedTimer timer;
    timer.start();
    start(options);
    documents->noteWindows({window(browser)});
    EXPECT_EQ(shown(window(browser)), QStringLiteral("(none)"));
    EXPECT_LT(timer.elapsed(), 1000);
    // It gives up within its limit and tries again.
    int connections = 0;
    EXPECT_TRUE(notingUntil({window(browser)}, [&] {
        while (server.hasPendingConnections()) {
            server.nextPendingConnection();
            ++connections;
        }
        return connections >= 2;
    }));
    options.connectLimit = 1h;
    start(options);
    documents->noteWindows({window(browser)});
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.hasPendingConnections(); }, 10'000));
    timer.start();
    documents.reset();
    EXPECT_LT(timer.elapsed(), 5000);
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
