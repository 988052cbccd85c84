// The size of Plasma's font, and its accent, as KDE's settings portal reports them. Runs on a
// message bus of its own.
#include "platform/freedesktop/appearance/FakePortal.h"
#include "platform/freedesktop/appearance/KdeValues.h"
#include "platform/freedesktop/appearance/PortalSettings.h"
#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QTest>

#include <memory>
#include <optional>
#include <vector>

namespace kelpa::test {
namespace {

QString fontOf(const char* size)
{
    return QStringLiteral("Noto Sans,%1,-1,5,50,0,0,0,0,0").arg(QString::fromLatin1(size));
}

using Scales = std::vector<std::optional<double>>;
using Accents = std::vector<std::optional<QColor>>;

class PortalOfKde : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(portal.isOnBus()); }

    std::unique_ptr<Subscription> watchScale(PortalSettings& watched)
    {
        auto watch = watched.watchTextScale(
            [this](std::optional<double> scale) { scales.push_back(scale); });
        scheduler.advance(std::chrono::milliseconds(0));
        return watch;
    }
    std::unique_ptr<Subscription> watchAccent(PortalSettings& watched)
    {
        auto watch =
            watched.watchAccent([this](std::optional<QColor> color) { accents.push_back(color); });
        scheduler.advance(std::chrono::milliseconds(0));
        return watch;
    }
    bool hears(const Scales& expected)
    {
        return QTest::qWaitFor([&] { return scales == expected; });
    }
    bool hears(const Accents& expected)
    {
        return QTest::qWaitFor([&] { return accents == expected; });
    }
    bool isAsked(int times)
    {
        return QTest::qWaitFor([&] { return portal.readCount == times; });
    }

    const QString font = QStringLiteral("org.kde.kdeglobals.General/font");
    const QString factor = QStringLiteral("org.gnome.desktop.interface/text-scaling-factor");
    const QString accent = QStringLiteral("org.kde.kdeglobals.General/AccentColor");
    const QString colorScheme = QStringLiteral("org.freedesktop.appearance/color-scheme");
    FakePortal portal;
    ManualScheduler scheduler;
    PortalSettings settings{scheduler, KdeSettings::followed};
    Scales scales;
    Accents accents;
};

TEST_F(PortalOfKde, The_size_of_the_font_is_reported_with_its_changes)
{
    portal.set(font, fontOf("13"));
    const auto watch = watchScale(settings);
    EXPECT_TRUE(hears(Scales{1.3}));
    portal.set(font, QStringLiteral("Noto Serif,13,-1,5,50,0,0,0,0,0"));
    portal.set(QStringLiteral("org.kde.kdeglobals.General/fixed"), fontOf("20"));
    portal.set(font, fontOf("8"));
    EXPECT_TRUE(hears(Scales{1.3, 0.8}));
    portal.set(font, QString());
    EXPECT_TRUE(hears(Scales{1.3, 0.8, std::nullopt}));
}

TEST_F(PortalOfKde, The_font_counts_before_the_scale_of_other_desktops_which_counts_without_it)
{
    portal.set(factor, 1.0);
    portal.set(font, fontOf("12"));
    const auto watch = watchScale(settings);
    EXPECT_TRUE(hears(Scales{1.2}));
    ASSERT_TRUE(isAsked(1));
    portal.set(factor, 1.5);
    portal.set(font, fontOf("15"));
    portal.set(font, fontOf("14"));
    EXPECT_TRUE(hears(Scales{1.2, 1.5, 1.4}));
    portal.set(font, QStringLiteral("nonsense"));
    EXPECT_TRUE(hears(Scales{1.2, 1.5, 1.4, 1.5}));
}

TEST_F(PortalOfKde, Without_a_font_the_scale_of_other_desktops_counts_at_the_start)
{
    portal.set(factor, 1.25);
    const auto watch = watchScale(settings);
    EXPECT_TRUE(hears(Scales{1.25}));
}

TEST_F(PortalOfKde, Its_settings_count_for_nothing_on_other_desktops)
{
    PortalSettings elsewhere{scheduler};
    portal.set(font, fontOf("15"));
    portal.set(factor, 1.0);
    portal.set(accent, QStringLiteral("61,174,233"));
    const auto scale = watchScale(elsewhere);
    const auto color = watchAccent(elsewhere);
    EXPECT_TRUE(hears(Scales{1.0}));
    ASSERT_TRUE(isAsked(2));
    portal.set(font, fontOf("14"));
    portal.set(colorScheme, 1U);
    portal.set(factor, 1.1);
    EXPECT_TRUE(hears(Scales{1.0, 1.1}));
    EXPECT_EQ(portal.readCount, 2);
    EXPECT_EQ(accents, Accents());
}

TEST_F(PortalOfKde, The_accent_is_read_again_with_the_colour_scheme_since_no_change_is_reported)
{
    portal.put(accent, QStringLiteral("61,174,233"));
    const auto watch = watchAccent(settings);
    EXPECT_TRUE(hears(Accents{QColor(61, 174, 233)}));
    portal.put(accent, QStringLiteral("233,58,154"));
    portal.set(colorScheme, 2U);
    EXPECT_TRUE(hears(Accents{QColor(61, 174, 233), QColor(233, 58, 154)}));
    // The person has given it up.
    portal.drop(accent);
    portal.set(colorScheme, 2U);
    EXPECT_TRUE(hears(Accents{QColor(61, 174, 233), QColor(233, 58, 154), std::nullopt}));
}

TEST(KdeFont, Its_size_is_relative_to_ten_points)
{
    EXPECT_EQ(textScaleFromKdeFont(fontOf("10")), 1);
    EXPECT_EQ(textScaleFromKdeFont(fontOf("10.5")), 1.05);
    EXPECT_EQ(textScaleFromKdeFont(fontOf(" 12 ")), 1.2);
    // As Qt 6 writes it, and as short as it can be read.
    EXPECT_EQ(
        textScaleFromKdeFont(QStringLiteral("Noto Sans,11,-1,5,400,0,0,0,0,0,0,0,0,0,0,1,Regular")),
        1.1);
    EXPECT_EQ(textScaleFromKdeFont(QStringLiteral("Noto Sans,11")), 1.1);
    EXPECT_EQ(textScaleFromKdeFont(fontOf("1")), 0.1);
    EXPECT_EQ(textScaleFromKdeFont(fontOf("100")), 10);
}

TEST(KdeFont, Any_other_value_is_none)
{
    for (const char* const size : {"", "-1", "0", "0.99", "100.1", "1e300", "nan", "inf", "-inf",
                                   "ten", "10pt", "0x10", "99999999999999999999"})
        EXPECT_EQ(textScaleFromKdeFont(fontOf(size)), std::nullopt) << size;
    const QString endless = QStringLiteral("Noto Sans,12,") + QString(100'000, u',');
    for (const QVariant& value :
         {QVariant(), QVariant(12), QVariant(12.0), QVariant(QString()),
          QVariant(QStringLiteral("Noto Sans")), QVariant(QStringList{QString(), fontOf("12")}),
          QVariant(QByteArray("Noto Sans,12")), QVariant(endless)})
        EXPECT_EQ(textScaleFromKdeFont(value), std::nullopt) << value.typeName();
}

TEST(KdeAccent, Is_three_numbers_whatever_follows_of_how_opaque_it_is)
{
    EXPECT_EQ(accentFromKde(QStringLiteral("61,174,233")), QColor(61, 174, 233));
    EXPECT_EQ(accentFromKde(QStringLiteral("0, 0, 255")), QColor(0, 0, 255));
    EXPECT_EQ(accentFromKde(QStringLiteral("61,174,233,7")), QColor(61, 174, 233));
    for (const char* const text :
         {"", "61,174", "61,174,256", "-1,174,233", "61,174,233,256", "1,2,3,4,5", "a,b,c",
          "61.5,174,233", "#3daee9", "99999999999,1,1", "61,,233"})
        EXPECT_EQ(accentFromKde(QString::fromLatin1(text)), std::nullopt) << text;
    for (const QVariant& value :
         {QVariant(), QVariant(61), QVariant(QString(100'000, u',')), QVariant(QColor(1, 2, 3))})
        EXPECT_EQ(accentFromKde(value), std::nullopt) << value.typeName();
}

} // namespace
} // namespace kelpa::test
