// Which buses answer, with real ones that are stopped and continue.
#include "platform/freedesktop/toolkit/BusWatch.h"

#include "platform/freedesktop/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <csignal>

namespace kelpa {
namespace {

using namespace std::chrono_literals;

constexpr int watchPatience = 20'000;
/// For what is to be silent; the others have answered before.
constexpr std::chrono::milliseconds shortLimit{300};
constexpr std::chrono::milliseconds longLimit{20'000};

BusWatchOptions options(const PrivateBus& session, std::chrono::milliseconds limit)
{
    return {.sessionAddress = session.address().toStdString(),
            .accessibilityAddress = {},
            .inputMethodAddress = {},
            .isAccessibilityWanted = true,
            .limit = limit};
}

/// The desktop's own accessibility bus on a session bus, without a registry.
class AccessibilityBus
{
public:
    explicit AccessibilityBus(PrivateBus& session)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), session.address());
        environment.remove(QStringLiteral("AT_SPI_BUS_ADDRESS"));
        environment.remove(QStringLiteral("DISPLAY"));
        // The socket of the bus is there, under a name that other tests' buses have, too.
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtime.path());
        m_launcher.setProcessEnvironment(environment);
        m_launcher.start(QStringLiteral("/usr/libexec/at-spi-bus-launcher"),
                         {QStringLiteral("--launch-immediately")});
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return session.hasOwner(QStringLiteral("org.a11y.Bus")); }, watchPatience));
        // It may have its name before it has started its bus.
        EXPECT_EQ(QProcess::execute(QStringLiteral("dbus-send"),
                                    {QStringLiteral("--bus=") + session.address(),
                                     QStringLiteral("--print-reply=literal"),
                                     QStringLiteral("--dest=org.a11y.Bus"),
                                     QStringLiteral("/org/a11y/bus"),
                                     QStringLiteral("org.a11y.Bus.GetAddress")}),
                  0);
    }
    AccessibilityBus(const AccessibilityBus&) = delete;
    AccessibilityBus& operator=(const AccessibilityBus&) = delete;
    ~AccessibilityBus()
    {
        ::kill(process(), SIGCONT);
        m_launcher.terminate();
        m_launcher.waitForFinished(watchPatience);
    }

    pid_t process() const { return static_cast<pid_t>(m_launcher.processId()); }

private:
    QTemporaryDir m_runtime;
    QProcess m_launcher;
};

TEST(BusWatch, Buses_that_answer_are_known_long_before_the_limit)
{
    PrivateBus session;
    const AccessibilityBus accessibility(session);
    const auto begin = std::chrono::steady_clock::now();
    BusWatch watch(options(session, longLimit));
    EXPECT_EQ(watch.await(), (BusStates{BusState::answers, BusState::answers}));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, longLimit / 2);
    EXPECT_EQ(watch.standInAddress(), QString());
}

TEST(BusWatch, Buses_that_are_not_there_are_absent)
{
    PrivateBus session;
    BusWatch withoutLauncher(options(session, longLimit));
    EXPECT_EQ(withoutLauncher.await(), (BusStates{BusState::answers, BusState::absent}));
    session.stop();
    BusWatch withoutDaemon(options(session, longLimit));
    EXPECT_EQ(withoutDaemon.await(), (BusStates{BusState::absent, BusState::absent}));
    BusWatch withoutAddress{BusWatchOptions()};
    EXPECT_EQ(withoutAddress.await(), (BusStates{BusState::absent, BusState::absent}));
}

TEST(BusWatch, A_stopped_session_bus_is_silent_until_it_continues)
{
    PrivateBus session;
    session.freeze();
    BusWatch watch(options(session, shortLimit));
    EXPECT_EQ(watch.await(), (BusStates{BusState::silent, BusState::silent}));
    EXPECT_NE(watch.standInAddress(), QString());
    int answers = 0;
    watch.whenSessionAnswers([&] { ++answers; });
    QTest::qWait(50);
    EXPECT_EQ(answers, 0);
    session.thaw();
    EXPECT_TRUE(QTest::qWaitFor([&] { return answers == 1; }, watchPatience));
    // It answers by now.
    watch.whenSessionAnswers([&] { ++answers; });
    EXPECT_EQ(answers, 2);
}

TEST(BusWatch, A_stopped_service_of_the_accessibility_bus_is_silent_until_it_continues)
{
    PrivateBus session;
    const AccessibilityBus accessibility(session);
    ::kill(accessibility.process(), SIGSTOP);
    BusWatch watch(options(session, shortLimit));
    EXPECT_EQ(watch.await(), (BusStates{BusState::answers, BusState::silent}));
    int answers = 0;
    watch.whenAccessibilityAnswers([&] { ++answers; });
    QTest::qWait(50);
    EXPECT_EQ(answers, 0);
    ::kill(accessibility.process(), SIGCONT);
    EXPECT_TRUE(QTest::qWaitFor([&] { return answers == 1; }, watchPatience));
}

void switchAccessibilityOn(const PrivateBus& session)
{
    EXPECT_EQ(
        QProcess::execute(
            QStringLiteral("dbus-send"),
            {QStringLiteral("--bus=") + session.address(), QStringLiteral("--print-reply=literal"),
             QStringLiteral("--dest=org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
             QStringLiteral("org.freedesktop.DBus.Properties.Set"),
             QStringLiteral("string:org.a11y.Status"), QStringLiteral("string:IsEnabled"),
             QStringLiteral("variant:boolean:true")}),
        0);
}

TEST(BusWatch, Accessibility_that_is_switched_on_after_a_silent_start_is_reported)
{
    PrivateBus session;
    const AccessibilityBus accessibility(session);
    ::kill(accessibility.process(), SIGSTOP);
    BusWatchOptions unwanted = options(session, shortLimit);
    unwanted.isAccessibilityWanted = false;
    BusWatch watch(unwanted);
    EXPECT_EQ(watch.await(), (BusStates{BusState::answers, BusState::silent}));
    int answers = 0;
    watch.whenAccessibilityAnswers([&] { ++answers; });
    ::kill(accessibility.process(), SIGCONT);
    QTest::qWait(50);
    EXPECT_EQ(answers, 0) << "it is off";
    switchAccessibilityOn(session);
    EXPECT_TRUE(QTest::qWaitFor([&] { return answers == 1; }, watchPatience));
}

TEST(BusWatch, An_accessibility_bus_that_comes_after_a_silent_start_is_reported)
{
    PrivateBus session;
    session.freeze();
    BusWatchOptions unwanted = options(session, shortLimit);
    unwanted.isAccessibilityWanted = false;
    BusWatch watch(unwanted);
    EXPECT_EQ(watch.await(), (BusStates{BusState::silent, BusState::silent}));
    int sessionAnswers = 0;
    int answers = 0;
    watch.whenSessionAnswers([&] { ++sessionAnswers; });
    watch.whenAccessibilityAnswers([&] { ++answers; });
    session.thaw();
    EXPECT_TRUE(QTest::qWaitFor([&] { return sessionAnswers == 1; }, watchPatience));
    const AccessibilityBus accessibility(session);
    switchAccessibilityOn(session);
    EXPECT_TRUE(QTest::qWaitFor([&] { return answers == 1; }, watchPatience));
}

TEST(BusWatch, The_stand_in_has_an_accessibility_bus_once_that_is_announced)
{
    PrivateBus session;
    const AccessibilityBus accessibility(session);
    ::kill(accessibility.process(), SIGSTOP);
    BusWatch watch(options(session, shortLimit));
    watch.await();
    const QString name = QStringLiteral("a client of the stand-in");
    QDBusConnection bus = QDBusConnection::connectToBus(watch.standInAddress(), name);
    ASSERT_TRUE(bus.isConnected());
    EXPECT_TRUE(bus.interface()->isServiceRegistered(QStringLiteral("org.a11y.Bus")));
    EXPECT_FALSE(bus.interface()->isServiceRegistered(QStringLiteral("org.example.Other")));

    const auto call = [&bus](const QString& interface, const QString& method,
                             const QVariantList& arguments) {
        QDBusMessage request = QDBusMessage::createMethodCall(
            QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"), interface, method);
        request.setArguments(arguments);
        return bus.call(request, QDBus::Block, watchPatience);
    };
    const auto isEnabled = [&call] {
        return call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                    {QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled")})
            .arguments()
            .value(0)
            .value<QDBusVariant>()
            .variant()
            .toBool();
    };
    const auto address = [&call] {
        return call(QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"), {});
    };
    EXPECT_FALSE(isEnabled());
    EXPECT_EQ(address().type(), QDBusMessage::ErrorMessage);

    watch.whenAccessibilityAnswers([&] { watch.announceAccessibility(); });
    ::kill(accessibility.process(), SIGCONT);
    EXPECT_TRUE(QTest::qWaitFor([&] { return address().type() == QDBusMessage::ReplyMessage; },
                                watchPatience));
    EXPECT_TRUE(address().arguments().value(0).toString().startsWith(QStringLiteral("unix:")));
    // Who has read that it is off reads that it is on.
    EXPECT_FALSE(isEnabled());
    EXPECT_TRUE(isEnabled());
    QDBusConnection::disconnectFromBus(name);
}

TEST(BusWatch, A_stopped_input_method_is_silent_and_the_rest_is_not)
{
    PrivateBus session;
    PrivateBus inputMethod;
    BusWatchOptions both = options(session, longLimit);
    both.inputMethodAddress = inputMethod.address().toStdString();
    BusWatch beforehand(both);
    EXPECT_EQ(beforehand.await(),
              (BusStates{BusState::answers, BusState::absent, BusState::answers}));
    inputMethod.freeze();
    both.limit = shortLimit;
    BusWatch watch(both);
    EXPECT_EQ(watch.await(), (BusStates{BusState::answers, BusState::absent, BusState::silent}));
    inputMethod.thaw();
}

TEST(BusWatch, Ends_while_a_bus_is_silent)
{
    PrivateBus session;
    session.freeze();
    {
        BusWatch watch(options(session, shortLimit));
        watch.await();
    }
    session.thaw();
}

} // namespace
} // namespace kelpa
