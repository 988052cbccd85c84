// Light, dark, motion, contrast and text scale as a settings portal reports them. Runs on a message
// bus of its own.
#include "platform/freedesktop/appearance/PortalSettings.h"

#include "platform/freedesktop/appearance/FakePortal.h"
#include "support/CaseName.h"
#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <QTest>

#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace kelpa::test {

namespace {

const QString colorScheme = QStringLiteral("org.freedesktop.appearance/color-scheme");
const QString reducedMotion = QStringLiteral("org.freedesktop.appearance/reduced-motion");
const QString animations = QStringLiteral("org.gnome.desktop.interface/enable-animations");
/// How often the portal is called for each, however many settings it has.
constexpr int appearanceReads = 1;
constexpr int motionReads = 1;

class PortalTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(portal.isOnBus()); }

    void watchAppearance()
    {
        appearanceWatch = settings.watchAppearance(
            [this](std::optional<Appearance> preferred) { appearances.push_back(preferred); });
        scheduler.advance(std::chrono::milliseconds(0));
    }
    void watchAnimations()
    {
        animationsWatch = settings.watchAnimations(
            [this](std::optional<bool> areWanted) { wishes.push_back(areWanted); });
        scheduler.advance(std::chrono::milliseconds(0));
    }
    bool hears(const std::vector<std::optional<Appearance>>& expected)
    {
        return QTest::qWaitFor([&] { return appearances == expected; });
    }
    bool hears(const std::vector<std::optional<bool>>& expected)
    {
        return QTest::qWaitFor([&] { return wishes == expected; });
    }
    bool isAsked(int times)
    {
        return QTest::qWaitFor([&] { return portal.readCount == times; });
    }

    FakePortal portal;
    ManualScheduler scheduler;
    PortalSettings settings{scheduler};
    std::vector<std::optional<Appearance>> appearances;
    std::vector<std::optional<bool>> wishes;
    std::unique_ptr<Subscription> appearanceWatch;
    std::unique_ptr<Subscription> animationsWatch;
};

using PortalAppearance = PortalTest;
using Heard = std::vector<std::optional<Appearance>>;
using Wishes = std::vector<std::optional<bool>>;

TEST_F(PortalAppearance, Is_reported_and_so_are_its_changes)
{
    portal.set(colorScheme, 1U);
    watchAppearance();
    EXPECT_TRUE(hears(Heard{Appearance::dark}));
    portal.set(colorScheme, 2U);
    EXPECT_TRUE(hears(Heard{Appearance::dark, Appearance::light}));
    portal.set(colorScheme, 0U);
    EXPECT_TRUE(hears(Heard{Appearance::dark, Appearance::light, std::nullopt}));
}

TEST_F(PortalAppearance, Is_reported_once_while_it_does_not_change)
{
    watchAppearance();
    ASSERT_TRUE(isAsked(appearanceReads));
    portal.set(colorScheme, 1U);
    portal.set(colorScheme, 1U);
    portal.set(animations, false);
    portal.set(colorScheme, 2U);
    EXPECT_TRUE(hears(Heard{Appearance::dark, Appearance::light}));
}

TEST_F(PortalAppearance, Is_not_reported_when_the_portal_has_no_settings)
{
    watchAppearance();
    watchAnimations();
    ASSERT_TRUE(isAsked(appearanceReads + motionReads));
    // A change after the replies is the first value reported.
    portal.set(colorScheme, 2U);
    EXPECT_TRUE(hears(Heard{Appearance::light}));
    EXPECT_EQ(wishes, Wishes());
}

TEST_F(PortalAppearance, Is_not_read_before_it_is_watched)
{
    portal.set(colorScheme, 1U);
    scheduler.advance(std::chrono::milliseconds(0));
    watchAppearance();
    ASSERT_TRUE(hears(Heard{Appearance::dark}));
    EXPECT_EQ(portal.readCount, appearanceReads);
}

TEST_F(PortalAppearance, Is_reported_to_each_subscription_independently)
{
    portal.set(colorScheme, 1U);
    portal.set(animations, false);
    watchAnimations();
    ASSERT_TRUE(hears(Wishes{false}));
    // The connection is open by now.
    watchAppearance();
    EXPECT_TRUE(hears(Heard{Appearance::dark}));
    animationsWatch.reset();
    portal.set(animations, true);
    portal.set(colorScheme, 2U);
    EXPECT_TRUE(hears(Heard{Appearance::dark, Appearance::light}));
    EXPECT_EQ(wishes, Wishes{false});
}

TEST_F(PortalAppearance, Can_be_watched_again_after_the_last_subscription_ended)
{
    portal.set(colorScheme, 1U);
    watchAppearance();
    ASSERT_TRUE(hears(Heard{Appearance::dark}));
    appearanceWatch.reset();
    portal.set(colorScheme, 2U);
    watchAppearance();
    EXPECT_TRUE(hears(Heard{Appearance::dark, Appearance::light}));
}

TEST_F(PortalAppearance, Is_not_reported_to_a_subscription_dropped_before_the_connection)
{
    portal.set(colorScheme, 1U);
    appearanceWatch = settings.watchAppearance(
        [this](std::optional<Appearance> preferred) { appearances.push_back(preferred); });
    appearanceWatch.reset();
    scheduler.advance(std::chrono::milliseconds(0));
    watchAnimations();
    ASSERT_TRUE(isAsked(motionReads));
    EXPECT_EQ(appearances, Heard());
}

struct MotionCase
{
    const char* name;
    /// Of the portal, with its namespace.
    const char* key;
    QVariant reduced;
    QVariant full;
    /// A value that means neither.
    QVariant strange;
};

class PortalMotion : public PortalTest, public testing::WithParamInterface<MotionCase>
{};

TEST_P(PortalMotion, Is_not_wanted_when_the_desktop_reduces_it_and_follows_changes)
{
    const QString key = QString::fromLatin1(GetParam().key);
    portal.set(key, GetParam().reduced);
    watchAnimations();
    EXPECT_TRUE(hears(Wishes{false}));
    portal.set(key, GetParam().full);
    EXPECT_TRUE(hears(Wishes{false, true}));
    portal.set(key, GetParam().reduced);
    EXPECT_TRUE(hears(Wishes{false, true, false}));
}

TEST_P(PortalMotion, Is_not_wanted_while_one_setting_of_several_asks_to_reduce_it)
{
    const QString key = QString::fromLatin1(GetParam().key);
    const QString other = key == animations ? reducedMotion : animations;
    portal.set(key, GetParam().reduced);
    watchAnimations();
    watchAppearance();
    EXPECT_TRUE(hears(Wishes{false}));
    portal.set(other, key == animations ? QVariant(0U) : QVariant(true));
    portal.set(colorScheme, 1U);
    // The later of the two has arrived.
    ASSERT_TRUE(hears(Heard{Appearance::dark}));
    EXPECT_EQ(wishes, Wishes{false});
}

TEST_P(PortalMotion, A_strange_value_and_other_settings_change_nothing)
{
    watchAnimations();
    watchAppearance();
    ASSERT_TRUE(isAsked(motionReads + appearanceReads));
    const MotionCase& motion = GetParam();
    const QString key = QString::fromLatin1(motion.key);
    for (const QVariant& value : {motion.strange, motion.full, motion.strange, motion.full,
                                  motion.reduced, motion.strange, motion.reduced, motion.full})
        portal.set(key, value);
    portal.set(QStringLiteral("org.gnome.desktop.interface/reduced-motion"), 1U);
    portal.set(colorScheme, 1U);
    // The last of them has arrived.
    ASSERT_TRUE(hears(Heard{Appearance::dark}));
    EXPECT_EQ(wishes, (Wishes{true, false, true}));
}

INSTANTIATE_TEST_SUITE_P(
    Settings, PortalMotion,
    testing::Values(
        MotionCase{"of_all_desktops", "org.freedesktop.appearance/reduced-motion", 1U, 0U,
                   QStringLiteral("none")},
        MotionCase{"of_all_desktops_by_an_unknown_number",
                   "org.freedesktop.appearance/reduced-motion", 1U, 2U, QStringLiteral("none")},
        MotionCase{"of_GNOME", "org.gnome.desktop.interface/enable-animations", false, true, 0U},
        MotionCase{"of_KDE", "org.kde.kdeglobals.KDE/AnimationDurationFactor", QStringLiteral("0"),
                   QStringLiteral("0.5"), QStringLiteral("none")},
        MotionCase{"of_KDE_as_a_number", "org.kde.kdeglobals.KDE/AnimationDurationFactor", 0.0, 1.0,
                   QStringLiteral("none")}),
    caseName);

TEST_F(PortalTest, Contrast_is_high_while_one_setting_of_several_asks_for_it)
{
    const QString common = QStringLiteral("org.freedesktop.appearance/contrast");
    const QString ofGnome = QStringLiteral("org.gnome.desktop.a11y.interface/high-contrast");
    Wishes heard;
    const auto hears = [&](const Wishes& expected) {
        return QTest::qWaitFor([&] { return heard == expected; });
    };
    portal.set(ofGnome, true);
    const auto watch =
        settings.watchContrast([&](std::optional<bool> isHigh) { heard.push_back(isHigh); });
    scheduler.advance(std::chrono::milliseconds(0));
    EXPECT_TRUE(hears(Wishes{true}));
    portal.set(common, 0U);
    portal.set(ofGnome, QStringLiteral("no"));
    portal.set(ofGnome, false);
    EXPECT_TRUE(hears(Wishes{true, false}));
    portal.set(common, 2U);
    portal.set(animations, false);
    portal.set(common, 1U);
    EXPECT_TRUE(hears(Wishes{true, false, true}));
    portal.set(common, 0U);
    EXPECT_TRUE(hears(Wishes{true, false, true, false}));
}

TEST_F(PortalTest, Text_scale_is_reported_with_its_changes_until_it_means_nothing)
{
    using Scales = std::vector<std::optional<double>>;
    const QString factor = QStringLiteral("org.gnome.desktop.interface/text-scaling-factor");
    Scales heard;
    const auto hears = [&](const Scales& expected) {
        return QTest::qWaitFor([&] { return heard == expected; });
    };
    portal.set(factor, 1.25);
    auto watch =
        settings.watchTextScale([&](std::optional<double> scale) { heard.push_back(scale); });
    scheduler.advance(std::chrono::milliseconds(0));
    EXPECT_TRUE(hears(Scales{1.25}));
    EXPECT_EQ(portal.readCount, 1);
    portal.set(QStringLiteral("org.gnome.desktop.interface/cursor-size"), 2.0);
    portal.set(QStringLiteral("org.gnome.desktop.wm/text-scaling-factor"), 2.0);
    portal.set(factor, 1.25);
    portal.set(factor, 1.5);
    EXPECT_TRUE(hears(Scales{1.25, 1.5}));
    portal.set(factor, 0.0);
    EXPECT_TRUE(hears(Scales{1.25, 1.5, std::nullopt}));
    portal.set(factor, 1.0);
    EXPECT_TRUE(hears(Scales{1.25, 1.5, std::nullopt, 1.0}));
    watch.reset();
    portal.set(factor, 2.0);
    portal.set(colorScheme, 1U);
    watchAppearance();
    ASSERT_TRUE(this->hears(Heard{Appearance::dark}));
    EXPECT_EQ(heard.size(), 4U);
}

TEST_F(PortalTest, Text_scale_is_not_reported_by_a_portal_that_has_none)
{
    std::vector<std::optional<double>> heard;
    const auto watch =
        settings.watchTextScale([&](std::optional<double> scale) { heard.push_back(scale); });
    scheduler.advance(std::chrono::milliseconds(0));
    ASSERT_TRUE(isAsked(1));
    // A later reply has arrived.
    portal.set(colorScheme, 1U);
    watchAppearance();
    ASSERT_TRUE(hears(Heard{Appearance::dark}));
    EXPECT_TRUE(heard.empty());
}

TEST(TextScale, Only_a_number_within_the_limits_of_the_desktop_is_one)
{
    using Limits = std::numeric_limits<double>;
    EXPECT_EQ(textScaleFromFactor(1.0), 1.0);
    EXPECT_EQ(textScaleFromFactor(1.25), 1.25);
    EXPECT_EQ(textScaleFromFactor(0.5), 0.5);
    EXPECT_EQ(textScaleFromFactor(3.0), 3.0);
    for (const QVariant& nonsense : {QVariant(), QVariant(0.0), QVariant(-1.5), QVariant(0.49),
                                     QVariant(3.01), QVariant(1e300), QVariant(Limits::quiet_NaN()),
                                     QVariant(Limits::infinity()), QVariant(-Limits::infinity()),
                                     QVariant(QStringLiteral("1.5")), QVariant(true), QVariant(2)})
        EXPECT_EQ(textScaleFromFactor(nonsense), std::nullopt) << nonsense.toString().toStdString();
}

TEST(ColorScheme, One_is_dark_two_is_light_and_the_rest_has_no_preference)
{
    EXPECT_EQ(appearanceFromColorScheme(0U), std::nullopt);
    EXPECT_EQ(appearanceFromColorScheme(1U), Appearance::dark);
    EXPECT_EQ(appearanceFromColorScheme(2U), Appearance::light);
    EXPECT_EQ(appearanceFromColorScheme(3U), std::nullopt);
    EXPECT_EQ(appearanceFromColorScheme(QStringLiteral("dark")), std::nullopt);
    EXPECT_EQ(appearanceFromColorScheme(QVariant()), std::nullopt);
}

} // namespace
} // namespace kelpa::test
