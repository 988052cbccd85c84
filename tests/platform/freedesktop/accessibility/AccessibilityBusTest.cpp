// The bus of documents itself: where its address comes from, and what happens when it ends or never
// replies.
#include "platform/freedesktop/accessibility/DocumentsFixture.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QTemporaryDir>

#include <optional>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

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

} // namespace
} // namespace kelpa::test
