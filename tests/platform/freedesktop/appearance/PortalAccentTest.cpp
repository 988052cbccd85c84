// The accent colour as a settings portal reports it. Runs on a message bus of its own.
#include "platform/freedesktop/appearance/FakePortal.h"
#include "platform/freedesktop/appearance/PortalSettings.h"
#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QTest>

#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace kelpa::test {

/// As the portal sends it.
struct PortalColor
{
    double red = 0;
    double green = 0;
    double blue = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PortalColor& color)
{
    argument.beginStructure();
    argument << color.red << color.green << color.blue;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalColor& color)
{
    argument.beginStructure();
    argument >> color.red >> color.green >> color.blue;
    argument.endStructure();
    return argument;
}

namespace {

QVariant accentOf(double red, double green, double blue)
{
    qDBusRegisterMetaType<PortalColor>();
    return QVariant::fromValue(PortalColor{red, green, blue});
}

using Accents = std::vector<std::optional<QColor>>;

class PortalAccent : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(portal->isOnBus()); }

    void watchAccent()
    {
        watch = settings.watchAccent([this](std::optional<QColor> each) { heard.push_back(each); });
        scheduler.advance(std::chrono::milliseconds(0));
    }
    bool hears(const Accents& expected)
    {
        return QTest::qWaitFor([&] { return heard == expected; });
    }
    bool isAsked()
    {
        return QTest::qWaitFor([&] { return portal->readCount == 1; });
    }

    const QString accent = QStringLiteral("org.freedesktop.appearance/accent-color");
    const QColor orange{0xed, 0x5b, 0};
    const QVariant orangeOfPortal = accentOf(0.929412, 0.356863, 0);
    std::unique_ptr<FakePortal> portal = std::make_unique<FakePortal>();
    ManualScheduler scheduler;
    PortalSettings settings{scheduler};
    Accents heard;
    std::unique_ptr<Subscription> watch;
};

TEST_F(PortalAccent, Is_reported_and_so_are_its_changes)
{
    portal->set(accent, orangeOfPortal);
    watchAccent();
    EXPECT_TRUE(hears({orange}));
    portal->set(accent, orangeOfPortal);
    portal->set(QStringLiteral("org.gnome.desktop.interface/accent-color"), accentOf(0, 1, 0));
    portal->set(accent, accentOf(0, 0.5, 1));
    EXPECT_TRUE(hears({orange, QColor(0, 128, 255)}));
    portal->set(accent, accentOf(0, 0, 0));
    EXPECT_TRUE(hears({orange, QColor(0, 128, 255), QColor(0, 0, 0)}));
}

TEST_F(PortalAccent, Is_not_reported_where_the_portal_does_not_know_it)
{
    watchAccent();
    ASSERT_TRUE(isAsked());
    portal->set(accent, orangeOfPortal);
    EXPECT_TRUE(hears({orange}));
}

TEST_F(PortalAccent, Is_none_for_a_number_out_of_range_or_a_value_of_another_type)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    constexpr double endless = std::numeric_limits<double>::infinity();
    watchAccent();
    ASSERT_TRUE(isAsked());
    Accents expected;
    for (const QVariant& value :
         {accentOf(-1, -1, -1), accentOf(0, 0, 1.01), accentOf(-0.01, 0, 0), accentOf(0, none, 0),
          accentOf(endless, 0, 0), QVariant(7U), QVariant(QStringLiteral("orange")),
          QVariant::fromValue(QList<double>{1, 0, 0}), QVariant(0.5)}) {
        portal->set(accent, orangeOfPortal);
        portal->set(accent, value);
        expected.insert(expected.end(), {orange, std::nullopt});
    }
    EXPECT_TRUE(hears(expected));
}

TEST_F(PortalAccent, Stays_when_the_portal_vanishes_until_another_one_reports_it)
{
    portal->set(accent, orangeOfPortal);
    watchAccent();
    ASSERT_TRUE(hears({orange}));
    portal.reset();
    portal = std::make_unique<FakePortal>();
    ASSERT_TRUE(portal->isOnBus());
    portal->set(QStringLiteral("org.freedesktop.appearance/color-scheme"), 1U);
    portal->set(accent, accentOf(0, 1, 0));
    EXPECT_TRUE(hears({orange, QColor(0, 255, 0)}));
}

} // namespace
} // namespace kelpa::test
