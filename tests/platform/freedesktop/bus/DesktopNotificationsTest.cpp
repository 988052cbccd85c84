// Notifications as a service on a message bus of its own receives them.
#include "platform/freedesktop/bus/DesktopNotifications.h"

#include "platform/freedesktop/bus/PrivateBus.h"
#include "support/ManualScheduler.h"
#include "support/OtherBusAddress.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QTest>
#include <QVariantMap>

namespace kelpa::test {

class FakeNotificationService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    FakeNotificationService()
    {
        m_connection.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                                    QDBusConnection::ExportAllSlots);
        m_isOnBus = m_connection.registerService(QStringLiteral("org.freedesktop.Notifications"));
    }
    ~FakeNotificationService() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("fake-notifications"));
    }

    bool isOnBus() const { return m_isOnBus; }

    /// The person presses a button of a notification.
    void press(quint32 number, const QString& action)
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            QStringLiteral("/org/freedesktop/Notifications"),
            QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("ActionInvoked"));
        signal << number << action;
        m_connection.send(signal);
    }

    QStringList calls;
    /// The buttons of the last notification: name and text of each.
    QStringList offered;

public Q_SLOTS:
    // The signature is that of the protocol.
    quint32 Notify(const QString& name, quint32 replaced, const QString& /*icon*/,
                   const QString& summary, const QString& body, const QStringList& actions,
                   const QVariantMap& hints, int /*timeout*/)
    {
        offered = actions;
        calls.append(QStringLiteral("%1, %2: %3, %4, %5")
                         .arg(name, QString::number(replaced), summary, body,
                              hints.value(QStringLiteral("desktop-entry")).toString()));
        return 7;
    }
    void CloseNotification(quint32 number) { calls.append(QStringLiteral("close %1").arg(number)); }

private:
    QDBusConnection m_connection = QDBusConnection::connectToBus(
        QDBusConnection::SessionBus, QStringLiteral("fake-notifications"));
    bool m_isOnBus = false;
};

namespace {

class NotificationsTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(service.isOnBus()); }

    bool receives(const QStringList& expected)
    {
        scheduler.advance(std::chrono::milliseconds(0));
        return QTest::qWaitFor([&] { return service.calls == expected; });
    }

    const QString first = QStringLiteral("Kelpa, 0: Unsaved, Full, org.kelpa.Kelpa");
    const QString second = QStringLiteral("Kelpa, 7: Unsaved, Gone, org.kelpa.Kelpa");
    const QString closed = QStringLiteral("close 7");
    FakeNotificationService service;
    ManualScheduler scheduler;
    DesktopNotifications notifications{scheduler};
};

TEST_F(NotificationsTest, One_takes_the_place_of_the_last_and_is_taken_back)
{
    notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Full")});
    EXPECT_TRUE(service.calls.isEmpty()) << "nothing waits for the bus";
    ASSERT_TRUE(receives({first}));
    notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Gone")});
    ASSERT_TRUE(receives({first, second}));
    notifications.withdraw();
    ASSERT_TRUE(receives({first, second, closed}));
    notifications.withdraw();
    notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Full")});
    EXPECT_TRUE(receives({first, second, closed, first}));
}

TEST_F(NotificationsTest, The_button_of_what_is_shown_acts)
{
    int pressed = 0;
    notifications.show({.summary = QStringLiteral("Unsaved"),
                        .body = QStringLiteral("Full"),
                        .actionText = QStringLiteral("Quit"),
                        .act = [&] { ++pressed; }});
    ASSERT_TRUE(receives({first}));
    ASSERT_EQ(service.offered.size(), 2);
    EXPECT_EQ(service.offered.at(1), QStringLiteral("Quit"));
    const QString action = service.offered.constFirst();

    // The notifications of other programs, and buttons that were not offered.
    service.press(8, action);
    service.press(7, QStringLiteral("default"));
    {
        QDBusConnection stranger =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("stranger"));
        QDBusMessage forged = QDBusMessage::createSignal(
            QStringLiteral("/org/freedesktop/Notifications"),
            QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("ActionInvoked"));
        forged << quint32(7) << action;
        stranger.send(forged);
        QDBusConnection::disconnectFromBus(QStringLiteral("stranger"));
    }
    service.press(7, action);
    ASSERT_TRUE(QTest::qWaitFor([&] { return pressed > 0; }));
    QTest::qWait(50);
    EXPECT_EQ(pressed, 1);
}

TEST_F(NotificationsTest, What_has_no_button_offers_none)
{
    notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Full")});
    ASSERT_TRUE(receives({first}));
    EXPECT_TRUE(service.offered.isEmpty());
}

TEST_F(NotificationsTest, What_is_taken_back_before_it_is_shown_goes_again)
{
    notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Full")});
    scheduler.advance(std::chrono::milliseconds(0));
    notifications.withdraw();
    EXPECT_TRUE(receives({first, closed}));
}

TEST_F(NotificationsTest, What_replaces_one_that_is_on_its_way_waits_for_its_number)
{
    notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Full")});
    scheduler.advance(std::chrono::milliseconds(0));
    notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Gone")});
    EXPECT_TRUE(receives({first, second}));
}

TEST_F(NotificationsTest, What_is_taken_back_before_there_is_a_bus_is_never_shown)
{
    notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Never")});
    notifications.withdraw();
    scheduler.advance(std::chrono::milliseconds(0));
    notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Full")});
    ASSERT_TRUE(receives({first})) << service.calls.join(u'\n').toStdString();
    notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Gone")});
    EXPECT_TRUE(receives({first, second})) << service.calls.join(u'\n').toStdString();
}

TEST_F(NotificationsTest, After_a_connection_that_failed_the_next_one_connects_again)
{
    {
        const OtherBusAddress nowhere("unix:path=/dev/null");
        notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Never")});
        scheduler.advance(std::chrono::milliseconds(0));
        notifications.withdraw();
    }
    notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Full")});
    EXPECT_TRUE(receives({first}));
}

TEST_F(NotificationsTest, After_the_bus_was_lost_the_next_one_connects_again)
{
    {
        PrivateBus other;
        const OtherBusAddress address(other.address().toUtf8());
        notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Never")});
        scheduler.advance(std::chrono::milliseconds(0));
        other.stop();
    }
    // The library notices in its own time; nobody shows that one.
    EXPECT_TRUE(QTest::qWaitFor([this] {
        notifications.show({.summary = QStringLiteral("Unsaved"), .body = QStringLiteral("Full")});
        scheduler.advance(std::chrono::milliseconds(0));
        return !service.calls.isEmpty();
    }));
    EXPECT_EQ(service.calls.first(), first) << "the number of the other service means nothing here";
}

} // namespace

} // namespace kelpa::test

#include "DesktopNotificationsTest.moc"
