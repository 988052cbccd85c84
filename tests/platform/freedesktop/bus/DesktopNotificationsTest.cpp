// Notifications as a service on a message bus of its own receives them.
#include "platform/freedesktop/bus/DesktopNotifications.h"

#include "platform/freedesktop/bus/PrivateBus.h"
#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
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

    QStringList calls;

public Q_SLOTS:
    // The signature is that of the protocol.
    quint32 Notify(const QString& name, quint32 replaced, const QString& /*icon*/,
                   const QString& summary, const QString& body, const QStringList& /*actions*/,
                   const QVariantMap& hints, int /*timeout*/)
    {
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
    notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Full"));
    EXPECT_TRUE(service.calls.isEmpty()) << "nothing waits for the bus";
    ASSERT_TRUE(receives({first}));
    notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Gone"));
    ASSERT_TRUE(receives({first, second}));
    notifications.withdraw();
    ASSERT_TRUE(receives({first, second, closed}));
    notifications.withdraw();
    notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Full"));
    EXPECT_TRUE(receives({first, second, closed, first}));
}

TEST_F(NotificationsTest, What_is_taken_back_before_it_is_shown_goes_again)
{
    notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Full"));
    scheduler.advance(std::chrono::milliseconds(0));
    notifications.withdraw();
    EXPECT_TRUE(receives({first, closed}));
}

TEST_F(NotificationsTest, What_replaces_one_that_is_on_its_way_waits_for_its_number)
{
    notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Full"));
    scheduler.advance(std::chrono::milliseconds(0));
    notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Gone"));
    EXPECT_TRUE(receives({first, second}));
}

TEST_F(NotificationsTest, What_is_taken_back_before_there_is_a_bus_is_never_shown)
{
    notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Never"));
    notifications.withdraw();
    scheduler.advance(std::chrono::milliseconds(0));
    notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Full"));
    ASSERT_TRUE(receives({first})) << service.calls.join(u'\n').toStdString();
    notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Gone"));
    EXPECT_TRUE(receives({first, second})) << service.calls.join(u'\n').toStdString();
}

/// Puts the session bus elsewhere for as long as it lives.
class OtherBusAddress
{
public:
    explicit OtherBusAddress(const QByteArray& address)
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    }
    OtherBusAddress(const OtherBusAddress&) = delete;
    OtherBusAddress& operator=(const OtherBusAddress&) = delete;
    ~OtherBusAddress() { qputenv("DBUS_SESSION_BUS_ADDRESS", m_before); }

private:
    const QByteArray m_before = qgetenv("DBUS_SESSION_BUS_ADDRESS");
};

TEST_F(NotificationsTest, After_a_connection_that_failed_the_next_one_connects_again)
{
    {
        const OtherBusAddress nowhere("unix:path=/dev/null");
        notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Never"));
        scheduler.advance(std::chrono::milliseconds(0));
        notifications.withdraw();
    }
    notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Full"));
    EXPECT_TRUE(receives({first}));
}

TEST_F(NotificationsTest, After_the_bus_was_lost_the_next_one_connects_again)
{
    {
        PrivateBus other;
        const OtherBusAddress address(other.address().toUtf8());
        notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Never"));
        scheduler.advance(std::chrono::milliseconds(0));
        other.stop();
    }
    // The library notices in its own time; nobody shows that one.
    EXPECT_TRUE(QTest::qWaitFor([this] {
        notifications.show(QStringLiteral("Unsaved"), QStringLiteral("Full"));
        scheduler.advance(std::chrono::milliseconds(0));
        return !service.calls.isEmpty();
    }));
    EXPECT_EQ(service.calls.first(), first) << "the number of the other service means nothing here";
}

} // namespace

} // namespace kelpa::test

#include "DesktopNotificationsTest.moc"
