// Light, dark and reduced motion as a settings portal tells them. To be run on a message bus of its
// own.
#include "views/DesktopAppearance.h"

#include "support/ManualScheduler.h"
#include "views/ViewSettings.h"

#include <gtest/gtest.h>

#include <QDBusContext>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QHash>
#include <QTest>

#include <memory>

namespace kelpa::test {

class FakePortal : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    FakePortal()
    {
        m_connection.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                                    QDBusConnection::ExportAllSlots |
                                        QDBusConnection::ExportAllSignals);
        m_isOnBus = m_connection.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    ~FakePortal() override { QDBusConnection::disconnectFromBus(QStringLiteral("fake-portal")); }

    bool isOnBus() const { return m_isOnBus; }

    void set(const QString& key, const QVariant& value)
    {
        m_values.insert(key, value);
        const auto dot = key.lastIndexOf(u'/');
        Q_EMIT SettingChanged(key.first(dot), key.sliced(dot + 1), QDBusVariant(value));
    }

    int readCount = 0;

public Q_SLOTS:
    QDBusVariant Read(const QString& space, const QString& key)
    {
        ++readCount;
        const QString both = space + u'/' + key;
        if (!m_values.contains(both)) {
            sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"));
            return {};
        }
        // As portals do, a value within a value.
        return QDBusVariant(QVariant::fromValue(QDBusVariant(m_values.value(both))));
    }

Q_SIGNALS:
    void SettingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    QDBusConnection m_connection =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fake-portal"));
    QHash<QString, QVariant> m_values;
    bool m_isOnBus = false;
};

namespace {

const QString colorScheme = QStringLiteral("org.freedesktop.appearance/color-scheme");
const QString animations = QStringLiteral("org.gnome.desktop.interface/enable-animations");

class PortalAppearance : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(portal.isOnBus());
        settings.setAppearance(Appearance::light);
    }

    void follow(std::optional<Appearance> fixed = std::nullopt)
    {
        appearance = std::make_unique<DesktopAppearance>(settings, fixed, std::nullopt);
        appearance->follow(scheduler);
        scheduler.advance(std::chrono::milliseconds(0));
    }

    bool becomes(Appearance wanted)
    {
        return QTest::qWaitFor([&] { return settings.appearance() == wanted; });
    }

    FakePortal portal;
    ManualScheduler scheduler;
    ViewSettings settings;
    std::unique_ptr<DesktopAppearance> appearance;
};

TEST_F(PortalAppearance, A_dark_desktop_makes_the_interface_dark)
{
    portal.set(colorScheme, 1U);
    follow();
    EXPECT_TRUE(becomes(Appearance::dark));
}

TEST_F(PortalAppearance, The_interface_follows_changes)
{
    portal.set(colorScheme, 1U);
    follow();
    ASSERT_TRUE(becomes(Appearance::dark));
    portal.set(colorScheme, 2U);
    EXPECT_TRUE(becomes(Appearance::light));
    portal.set(colorScheme, 1U);
    EXPECT_TRUE(becomes(Appearance::dark));
}

TEST_F(PortalAppearance, Without_animations_motion_is_reduced)
{
    portal.set(animations, false);
    follow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return settings.isReducingMotion(); }));
    portal.set(animations, true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !settings.isReducingMotion(); }));
}

TEST_F(PortalAppearance, What_is_fixed_does_not_follow)
{
    portal.set(colorScheme, 1U);
    portal.set(animations, false);
    follow(Appearance::light);
    // The later of the two answers has come.
    ASSERT_TRUE(QTest::qWaitFor([&] { return settings.isReducingMotion(); }));
    EXPECT_EQ(settings.appearance(), Appearance::light);
}

TEST_F(PortalAppearance, A_portal_that_knows_nothing_changes_nothing)
{
    follow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal.readCount == 2; }));
    EXPECT_EQ(settings.appearance(), Appearance::light);
    EXPECT_FALSE(settings.isReducingMotion());
}

} // namespace
} // namespace kelpa::test

#include "DesktopAppearanceTest.moc"
