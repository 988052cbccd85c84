// What a start gets of a settings portal before its first frame, and what follows when another
// portal takes the name. Runs on a message bus of its own.
#include "platform/freedesktop/appearance/FakePortal.h"
#include "platform/freedesktop/appearance/PortalSettings.h"
#include "platform/qt/QtScheduler.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class PortalStart : public testing::Test
{
protected:
    void watch()
    {
        watches.push_back(
            settings.watchAppearance([this](std::optional<Appearance> each) { scheme = each; }));
        watches.push_back(
            settings.watchTextScale([this](std::optional<double> each) { scale = each; }));
        watches.push_back(
            settings.watchContrast([this](std::optional<bool> each) { isHigh = each; }));
        watches.push_back(
            settings.watchAnimations([this](std::optional<bool> each) { areWanted = each; }));
    }
    std::chrono::milliseconds await(std::chrono::milliseconds limit)
    {
        QElapsedTimer timer;
        timer.start();
        settings.awaitSettings(limit);
        return std::chrono::milliseconds(timer.elapsed());
    }

    const QString colorScheme = QStringLiteral("org.freedesktop.appearance/color-scheme");
    const QString contrast = QStringLiteral("org.freedesktop.appearance/contrast");
    const QString textScale = QStringLiteral("org.gnome.desktop.interface/text-scaling-factor");
    const QString animations = QStringLiteral("org.gnome.desktop.interface/enable-animations");
    QtScheduler scheduler;
    PortalSettings settings{scheduler};
    std::optional<Appearance> scheme;
    std::optional<double> scale;
    std::optional<bool> isHigh;
    std::optional<bool> areWanted;
    std::vector<std::unique_ptr<Subscription>> watches;
};

TEST_F(PortalStart, Has_all_settings_by_one_call_once_they_are_awaited)
{
    FakePortal portal({{colorScheme, 1U}, {textScale, 1.5}, {contrast, 1U}, {animations, false}});
    ASSERT_TRUE(portal.isOnBus());
    watch();
    EXPECT_EQ(scale, std::nullopt);
    EXPECT_LT(await(20s), 20s);
    EXPECT_EQ(scheme, Appearance::dark);
    EXPECT_EQ(scale, 1.5);
    EXPECT_EQ(isHigh, true);
    EXPECT_EQ(areWanted, false);
    EXPECT_EQ(portal.readCount, 1);
    // It is known by now.
    EXPECT_LT(await(20s), 20s);
    EXPECT_EQ(portal.readCount, 1);
}

TEST_F(PortalStart, Waits_for_a_portal_that_hangs_no_longer_than_the_limit_and_follows_it_later)
{
    FakePortal portal({{colorScheme, 1U}});
    ASSERT_TRUE(portal.isOnBus());
    portal.isHanging = true;
    watch();
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal.readCount == 1; }));
    const std::chrono::milliseconds waited = await(100ms);
    // Timers of the event loop are a twentieth less exact.
    EXPECT_GE(waited, 90ms);
    EXPECT_LT(waited, 2s);
    EXPECT_EQ(scheme, std::nullopt);
    portal.set(colorScheme, 2U);
    EXPECT_TRUE(QTest::qWaitFor([&] { return scheme == Appearance::light; }));
}

TEST_F(PortalStart, Waits_for_nothing_where_there_is_no_portal)
{
    watch();
    EXPECT_LT(await(20s), 20s);
    EXPECT_EQ(scheme, std::nullopt);
    EXPECT_EQ(scale, std::nullopt);
}

TEST_F(PortalStart, Waits_for_nothing_that_nobody_watches)
{
    FakePortal portal({{colorScheme, 1U}});
    ASSERT_TRUE(portal.isOnBus());
    EXPECT_LT(await(20s), 20s);
    EXPECT_EQ(portal.readCount, 0);
}

TEST_F(PortalStart, A_portal_that_comes_back_with_other_settings_is_followed)
{
    auto portal = std::make_unique<FakePortal>(
        QHash<QString, QVariant>{{colorScheme, 1U}, {textScale, 1.5}, {contrast, 1U}});
    ASSERT_TRUE(portal->isOnBus());
    watch();
    await(20s);
    ASSERT_EQ(scheme, Appearance::dark);
    portal.reset();
    portal = std::make_unique<FakePortal>(
        QHash<QString, QVariant>{{colorScheme, 2U}, {textScale, 1.25}, {animations, true}});
    ASSERT_TRUE(portal->isOnBus());
    EXPECT_TRUE(QTest::qWaitFor([&] { return scale == 1.25; }));
    EXPECT_EQ(scheme, Appearance::light);
    EXPECT_EQ(areWanted, true);
    // What it does not know stays.
    EXPECT_EQ(isHigh, true);
}

TEST_F(PortalStart, A_portal_that_comes_after_the_start_is_followed)
{
    watch();
    await(20s);
    const FakePortal portal({{colorScheme, 1U}, {textScale, 2.0}});
    ASSERT_TRUE(portal.isOnBus());
    EXPECT_TRUE(QTest::qWaitFor([&] { return scale == 2.0; }));
    EXPECT_EQ(scheme, Appearance::dark);
}

} // namespace
} // namespace kelpa::test
