// Light, dark and reduced motion as a settings portal tells them. To be run on a message bus of its
// own.
#include "views/DesktopAppearance.h"

#include "support/CaseName.h"
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
const QString reducedMotion = QStringLiteral("org.freedesktop.appearance/reduced-motion");
/// How much the portal is asked.
constexpr int readCount = 4;
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

struct MotionCase
{
    const char* name;
    /// Of the portal, with its namespace.
    const char* key;
    QVariant reduced;
    QVariant full;
};

class PortalMotion : public PortalAppearance, public testing::WithParamInterface<MotionCase>
{
protected:
    bool becomesReduced(bool wanted)
    {
        return QTest::qWaitFor([&] { return settings.isReducingMotion() == wanted; });
    }
};

TEST_P(PortalMotion, Is_reduced_where_the_desktop_reduces_it_and_follows_changes)
{
    const QString key = QString::fromLatin1(GetParam().key);
    portal.set(key, GetParam().reduced);
    follow();
    EXPECT_TRUE(becomesReduced(true));
    portal.set(key, GetParam().full);
    EXPECT_TRUE(becomesReduced(false));
    portal.set(key, GetParam().reduced);
    EXPECT_TRUE(becomesReduced(true));
}

TEST_P(PortalMotion, Is_reduced_while_one_setting_of_several_asks_for_it)
{
    const QString key = QString::fromLatin1(GetParam().key);
    const QString other = key == animations ? reducedMotion : animations;
    portal.set(key, GetParam().reduced);
    follow();
    EXPECT_TRUE(becomesReduced(true));
    portal.set(other, key == animations ? QVariant(0U) : QVariant(true));
    portal.set(colorScheme, 1U);
    // The later of the two has come.
    ASSERT_TRUE(becomes(Appearance::dark));
    EXPECT_TRUE(settings.isReducingMotion());
}

INSTANTIATE_TEST_SUITE_P(
    Settings, PortalMotion,
    testing::Values(
        MotionCase{"of_all_desktops", "org.freedesktop.appearance/reduced-motion", 1U, 0U},
        MotionCase{"of_GNOME", "org.gnome.desktop.interface/enable-animations", false, true},
        MotionCase{"of_KDE", "org.kde.kdeglobals.KDE/AnimationDurationFactor", QStringLiteral("0"),
                   QStringLiteral("0.5")},
        MotionCase{"of_KDE_as_a_number", "org.kde.kdeglobals.KDE/AnimationDurationFactor", 0.0,
                   1.0}),
    caseName);

TEST_F(PortalAppearance, Motion_is_reduced_by_a_setting_elsewhere_than_in_the_portal_too)
{
    follow();
    appearance->setAnimationsWanted(false);
    EXPECT_TRUE(settings.isReducingMotion());
    appearance->setAnimationsWanted(std::nullopt);
    EXPECT_FALSE(settings.isReducingMotion());
    appearance->setAnimationsWanted(false);
    appearance->setAnimationsWanted(true);
    EXPECT_FALSE(settings.isReducingMotion());
    appearance = std::make_unique<DesktopAppearance>(settings, std::nullopt, false);
    appearance->setAnimationsWanted(false);
    EXPECT_FALSE(settings.isReducingMotion());
}

TEST_F(PortalAppearance, Motion_that_is_fixed_does_not_follow)
{
    portal.set(animations, false);
    portal.set(colorScheme, 1U);
    appearance = std::make_unique<DesktopAppearance>(settings, std::nullopt, false);
    appearance->follow(scheduler);
    scheduler.advance(std::chrono::milliseconds(0));
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal.readCount == readCount; }));
    ASSERT_TRUE(becomes(Appearance::dark));
    portal.set(animations, false);
    portal.set(colorScheme, 2U);
    ASSERT_TRUE(becomes(Appearance::light));
    EXPECT_FALSE(settings.isReducingMotion());
}

TEST(ReducedMotion, Is_read_from_settings_of_their_own_kind_only)
{
    const auto read = [](const char* space, const char* key, const QVariant& value) {
        return reducedMotionFromSetting(QString::fromLatin1(space), QString::fromLatin1(key),
                                        value);
    };
    EXPECT_EQ(read("org.gnome.desktop.interface", "enable-animations", 0U), std::nullopt);
    EXPECT_EQ(read("org.gnome.desktop.interface", "reduced-motion", 1U), std::nullopt);
    EXPECT_EQ(read("org.kde.kdeglobals.KDE", "AnimationDurationFactor", QStringLiteral("none")),
              std::nullopt);
    EXPECT_EQ(read("org.freedesktop.appearance", "color-scheme", 1U), std::nullopt);
    EXPECT_EQ(read("org.freedesktop.appearance", "reduced-motion", 2U), false);
}

TEST(ReducedMotion, Can_be_set_for_the_program_alone)
{
    EXPECT_EQ(reducedMotionFromText("1"), true);
    EXPECT_EQ(reducedMotionFromText("0"), false);
    EXPECT_EQ(reducedMotionFromText(""), std::nullopt);
    EXPECT_EQ(reducedMotionFromText("yes"), std::nullopt);
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
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal.readCount == readCount; }));
    EXPECT_EQ(settings.appearance(), Appearance::light);
    EXPECT_FALSE(settings.isReducingMotion());
}

} // namespace
} // namespace kelpa::test

#include "DesktopAppearanceTest.moc"
