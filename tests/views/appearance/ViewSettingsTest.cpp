// Fonts, colours and symbols.
#include "views/appearance/ViewSettings.h"
#include "views/scene/SymbolPictures.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QRawFont>
#include <QSet>
#include <QSignalSpy>
#include <QTextLayout>

#include <array>
#include <limits>
#include <utility>

namespace kelpa::test {
namespace {

/// The families that `text` is drawn from.
QSet<QString> drawnFrom(const ViewSettings& settings, const QString& text)
{
    QTextLayout layout(text, settings.font(settings.fontFamilies(), 13, QFont::Normal));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    QSet<QString> families;
    for (const QGlyphRun& run : layout.glyphRuns())
        families.insert(run.rawFont().familyName());
    return families;
}

// In one process, one language after the other: fonts are kept from one to the next.
TEST(InterfaceFont, Ideographs_are_drawn_as_the_language_writes_them)
{
    using enum AppLanguage;
    const std::array expected =
        std::to_array<std::pair<AppLanguage, const char*>>({{chinese, "SC"},
                                                            {japanese, "JP"},
                                                            {korean, "KR"},
                                                            {french, "SC"},
                                                            {japanese, "JP"},
                                                            {german, "SC"},
                                                            {korean, "KR"},
                                                            {chinese, "SC"},
                                                            {english, "SC"}});
    ViewSettings settings;
    for (const auto& [language, region] : expected) {
        settings.setLanguage(language);
        const QString family = QStringLiteral("Noto Sans CJK ") + QLatin1String(region);
        EXPECT_EQ(drawnFrom(settings, QStringLiteral("直骨门")), QSet<QString>{family});
        EXPECT_EQ(drawnFrom(settings, QStringLiteral("ひらがな・カタカナ")), QSet<QString>{family});
        EXPECT_EQ(drawnFrom(settings, QStringLiteral("한국어")), QSet<QString>{family});
        EXPECT_EQ(drawnFrom(settings, QStringLiteral("A、b")),
                  (QSet<QString>{family, settings.fontFamilies().front()}));
    }
}

TEST(InterfaceFont, Latin_text_has_a_font_without_ideographs_in_every_language)
{
    ViewSettings settings;
    for (const AppLanguage language : allAppLanguages) {
        settings.setLanguage(language);
        const QSet<QString> families =
            drawnFrom(settings, QStringLiteral("Prêt à l’œuvre – 12 „Ziele“"));
        EXPECT_EQ(families, QSet<QString>{settings.fontFamilies().front()});
        EXPECT_FALSE(families.values().front().contains(QStringLiteral("CJK")));
    }
}

TEST(InterfaceFont, An_apostrophe_is_narrow_in_every_language)
{
    ViewSettings settings;
    for (const AppLanguage language : allAppLanguages) {
        settings.setLanguage(language);
        const QFont font = settings.font(settings.fontFamilies(), 100, QFont::Normal);
        EXPECT_LT(QFontMetricsF(font).horizontalAdvance(QChar(0x2019)), 50.0)
            << qPrintable(settings.fontFamilies().join(QLatin1String(", ")));
    }
}

TEST(InterfaceFont, An_emoji_is_drawn_in_colour)
{
    ViewSettings settings;
    QImage image(80, 80, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(settings.font(settings.fontFamilies(), 40, QFont::Normal));
    painter.setPen(Qt::black);
    painter.drawText(image.rect(), Qt::AlignCenter, QStringLiteral("\U0001F34E"));
    painter.end();
    int colored = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colored += image.pixelColor(x, y).saturation() > 100 ? 1 : 0;
    }
    EXPECT_GT(colored, 200);
}

TEST(InterfaceFont, Changes_only_with_the_families)
{
    ViewSettings settings;
    settings.setLanguage(AppLanguage::english);
    const QSignalSpy changes(&settings, &ViewSettings::fontFamiliesChanged);
    settings.setLanguage(AppLanguage::german);
    EXPECT_EQ(changes.count(), 0);
    settings.setLanguage(AppLanguage::korean);
    EXPECT_EQ(changes.count(), 1);
}

TEST(AccentColor, Follows_the_ground_and_is_absent_for_an_unknown_accent)
{
    const ViewSettings settings;
    const QColor light = settings.accentColor(QStringLiteral("blue"), false);
    EXPECT_EQ(light, color(GoalAccent::blue, Appearance::light));
    EXPECT_NE(light, settings.accentColor(QStringLiteral("blue"), true));
    EXPECT_EQ(settings.accentColor(QStringLiteral("mauve"), false).alpha(), 0);
}

TEST(Symbols, Are_drawn_in_the_colour_and_size_that_are_asked_for)
{
    SymbolPictures symbols;
    const QImage image = symbols.picture(QStringLiteral("plus"), QColor(0xff, 0x88, 0x00), 48);
    ASSERT_EQ(image.size(), QSize(48, 48));
    EXPECT_EQ(image.pixelColor(24, 24), QColor(0xff, 0x88, 0x00));
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
}

TEST(Symbols, Are_kept_once_they_are_drawn)
{
    SymbolPictures symbols;
    const QImage first = symbols.picture(QStringLiteral("plus"), Qt::black, 16);
    EXPECT_EQ(symbols.picture(QStringLiteral("plus"), Qt::black, 16).cacheKey(), first.cacheKey());
    EXPECT_NE(symbols.picture(QStringLiteral("plus"), Qt::white, 16).cacheKey(), first.cacheKey());
    EXPECT_EQ(symbols.picture(QStringLiteral("plus"), Qt::black, 32).width(), 32);
}

TEST(Symbols, Unknown_names_and_no_pixels_give_no_image)
{
    SymbolPictures symbols;
    EXPECT_TRUE(symbols.picture(QStringLiteral("nothing"), Qt::black, 16).isNull());
    EXPECT_TRUE(symbols.picture(QString(), Qt::black, 16).isNull());
    EXPECT_TRUE(symbols.picture(QStringLiteral("plus"), Qt::black, 0).isNull());
}

struct TextScaleCase
{
    double wanted;
    double used;
};

class TextScale : public testing::TestWithParam<TextScaleCase>
{};

TEST_P(TextScale, Is_within_its_limits_and_the_usual_one_instead_of_nonsense)
{
    ViewSettings settings;
    // The usual size, too, is one that replaces another.
    settings.setTextScale(1.1);
    const QSignalSpy changes(&settings, &ViewSettings::textScaleChanged);
    settings.setTextScale(GetParam().wanted);
    EXPECT_EQ(settings.textScale(), GetParam().used);
    settings.setTextScale(GetParam().wanted);
    EXPECT_EQ(changes.count(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Values, TextScale,
    testing::Values(TextScaleCase{1, 1}, TextScaleCase{1.25, 1.25}, TextScaleCase{1.5, 1.5},
                    TextScaleCase{0.75, 0.75}, TextScaleCase{0.5, 0.75}, TextScaleCase{0.001, 0.75},
                    TextScaleCase{2, 2}, TextScaleCase{3, 2}, TextScaleCase{1e300, 2},
                    TextScaleCase{0, 1}, TextScaleCase{-1.5, 1},
                    TextScaleCase{std::numeric_limits<double>::infinity(), 1},
                    TextScaleCase{-std::numeric_limits<double>::infinity(), 1},
                    TextScaleCase{std::numeric_limits<double>::quiet_NaN(), 1}));

TEST(InterfaceFont, Its_size_follows_the_scale_in_whole_points)
{
    const ViewSettings settings;
    const auto size = [&](int usual, double scale) {
        return settings.font(settings.fontFamilies(), usual, QFont::Normal, scale).pixelSize();
    };
    EXPECT_EQ(settings.font(settings.fontFamilies(), 13, QFont::Normal).pixelSize(), 13);
    EXPECT_EQ(size(13, 1), 13);
    EXPECT_EQ(size(13, 1.25), 16);
    EXPECT_EQ(size(13, 1.5), 20);
    EXPECT_EQ(size(11, 1.5), 17);
    EXPECT_EQ(size(11, 0.75), 8);
}

TEST(InterfaceTexts, They_follow_the_language)
{
    ViewSettings settings;
    const QSignalSpy changes(&settings, &ViewSettings::copyChanged);
    settings.setLanguage(AppLanguage::german);
    EXPECT_EQ(settings.copy().text(CopyKey::NewGoal), QStringLiteral("Neues Ziel"));
    EXPECT_EQ(changes.count(), 1);
    settings.setLanguage(AppLanguage::german);
    EXPECT_EQ(changes.count(), 1);
}

TEST(InterfaceTexts, They_name_the_platforms_key)
{
    ViewSettings settings;
    settings.setLanguage(AppLanguage::english, KeyNames::withSuper());
    EXPECT_EQ(settings.copy().text(CopyKey::DoubleTapHint),
              QStringLiteral("Press Super twice to bring Kelpa forward instantly"));
}

} // namespace
} // namespace kelpa::test
