// The colours that are made from the desktop's accent.
#include "views/appearance/AccentShades.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace kelpa::test {
namespace {

/// As the theme has them.
const AccentSurroundings inLight{
    .grounds = {"#f4f5f7", "#eaecef", "#ffffff", "#e6eaf2", "#eff0f3"},
    .overlays = {"#0d14181f", "#1a14181f"},
    .textOnAccent = "#ffffff",
    .ownAccepting = "#1f2563eb",
    .isDark = false,
    .isHighContrast = false,
};
const AccentSurroundings inDark{
    .grounds = {"#1b1c1f", "#242529", "#303237", "#2a2b30", "#2a2c32", "#202125"},
    .overlays = {"#14ffffff", "#22ffffff"},
    .textOnAccent = "#ffffff",
    .ownAccepting = "#2e5b93ff",
    .isDark = true,
    .isHighContrast = false,
};
const AccentSurroundings inHighLight{
    .grounds = {"#ffffff", "#f0f1f4", "#f7f8fa"},
    .overlays = {"#0d14181f", "#1a14181f"},
    .textOnAccent = "#ffffff",
    .ownAccepting = "#1f2563eb",
    .isDark = false,
    .isHighContrast = true,
};
const AccentSurroundings inHighDark{
    .grounds = {"#000000", "#121315", "#1b1c1f", "#0c0d0e"},
    .overlays = {"#14ffffff", "#22ffffff"},
    .textOnAccent = "#000000",
    .ownAccepting = "#2e5b93ff",
    .isDark = true,
    .isHighContrast = true,
};

std::string shadeNames(const AccentShades& shades)
{
    QStringList names;
    for (const QColor& each : {shades.accent, shades.accentHover, shades.accentPress,
                               shades.accentText, shades.focus, shades.accepting})
        names.append(each.name(each.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb));
    return names.join(u' ').toStdString();
}

TEST(Contrast, Is_1_to_21)
{
    EXPECT_DOUBLE_EQ(contrast(Qt::white, Qt::white), 1);
    EXPECT_DOUBLE_EQ(contrast(Qt::white, Qt::black), 21);
    EXPECT_DOUBLE_EQ(contrast(Qt::black, Qt::white), 21);
    // The lightest grey that is readable on white, as is often said, and the next.
    EXPECT_GE(contrast("#767676", Qt::white), 4.5);
    EXPECT_LT(contrast("#777777", Qt::white), 4.5);
}

TEST(AccentShades, There_are_none_without_an_accent)
{
    EXPECT_EQ(accentShades({}, inLight), AccentShades());
    EXPECT_FALSE(AccentShades().accent.isValid());
    EXPECT_FALSE(AccentShades().accepting.isValid());
}

struct ShadesCase
{
    const char* name;
    const char* accent;
    /// At rest, under the pointer, pressed; of texts; of outlines; of what takes a drag.
    const char* onLight;
    const char* onDark;
};

class AccentShadesOf : public testing::TestWithParam<ShadesCase>
{};

TEST_P(AccentShadesOf, Have_its_hue_and_the_nearest_lightness_that_stands_out)
{
    EXPECT_EQ(shadeNames(accentShades(GetParam().accent, inLight)), GetParam().onLight);
    EXPECT_EQ(shadeNames(accentShades(GetParam().accent, inDark)), GetParam().onDark);
}

INSTANTIATE_TEST_SUITE_P(
    Accents, AccentShadesOf,
    testing::Values(
        ShadesCase{"blue", "#3584e4", "#2575d4 #1569c7 #005cb9 #005ab4 #2677d5 #1f3584e4",
                   "#2575d4 #1569c7 #005cb9 #94c2ff #4e9dff #2e3584e4"},
        ShadesCase{"orange", "#ed5b00", "#ca4c00 #b84400 #a63c00 #a03a00 #cc4d00 #1fed5b00",
                   "#ca4c00 #b84400 #a63c00 #ffaa89 #ff6f2b #2eed5b00"},
        ShadesCase{"purple_which_fits_on_light", "#9141ac",
                   "#9141ac #85349f #782792 #8737a2 #9141ac #1f9a4ab5",
                   "#9a4ab5 #8e3da8 #81319b #e7a7ff #cd7bea #2e9141ac"},
        ShadesCase{"slate", "#6f8396", "#64778a #596b7e #4e6072 #4b5e70 #65798b #1f3686c8",
                   "#64778a #596b7e #4e6072 #acc2d6 #8a9eb2 #2e5a85ac"},
        ShadesCase{"pure_yellow_which_is_a_text_on_dark", "#ffff00",
                   "#7a7a00 #6e6e00 #626200 #5e5e00 #7b7b00 #1f8f8f00",
                   "#7a7a00 #6e6e00 #626200 #ffff00 #ffff00 #2e989800"},
        ShadesCase{"white", "#ffffff", "#757575 #696969 #5e5e5e #5b5b5b #777777 #1f2563eb",
                   "#757575 #696969 #5e5e5e #ffffff #ffffff #2e5b93ff"},
        ShadesCase{"black_which_gets_lighter_under_the_pointer", "#000000",
                   "#000000 #1f1f1f #292929 #000000 #000000 #1f2563eb",
                   "#6b6b6b #606060 #555555 #bfbfbf #9c9c9c #2e5c5c5c"},
        ShadesCase{"grey", "#808080", "#757575 #696969 #5e5e5e #5b5b5b #777777 #1f2563eb",
                   "#757575 #696969 #5e5e5e #c0c0c0 #9b9b9b #2e5b93ff"}),
    caseName);

TEST_P(AccentShadesOf, Are_opaque_except_for_what_takes_a_drag_whatever_the_accents_opacity)
{
    QColor faint = GetParam().accent;
    faint.setAlpha(9);
    EXPECT_EQ(accentShades(faint, inLight), accentShades(GetParam().accent, inLight));
}

struct HighCase
{
    const char* name;
    const char* accent;
    const char* onLight;
    const char* onDark;
};

class AccentShadesInHighContrast : public testing::TestWithParam<HighCase>
{};

TEST_P(AccentShadesInHighContrast, Stand_out_more)
{
    EXPECT_EQ(shadeNames(accentShades(GetParam().accent, inHighLight)), GetParam().onLight);
    EXPECT_EQ(shadeNames(accentShades(GetParam().accent, inHighDark)), GetParam().onDark);
}

INSTANTIATE_TEST_SUITE_P(
    Accents, AccentShadesInHighContrast,
    testing::Values(HighCase{"blue", "#3584e4", "#0057ae #004c9b #004287 #004288 #005ebb #1f3584e4",
                             "#4897f8 #5ca4ff #75b2ff #aacfff #61a6ff #2e3584e4"},
                    HighCase{"yellow", "#c88800",
                             "#785000 #6a4600 #5c3c00 #5e3d00 #825700 #1fc88800",
                             "#c98904 #d69522 #e4a235 #ffc164 #d99826 #2ec88800"},
                    HighCase{"white_which_gets_darker_under_the_pointer", "#ffffff",
                             "#585858 #4d4d4d #424242 #434343 #5f5f5f #1f2563eb",
                             "#ffffff #f2f2f2 #e4e4e4 #ffffff #ffffff #2e5b93ff"},
                    HighCase{"black", "#000000",
                             "#000000 #1f1f1f #292929 #000000 #000000 #1f2563eb",
                             "#969696 #a2a2a2 #afafaf #cccccc #a4a4a4 #2e5b93ff"}),
    caseName);

/// Eight of each part of a colour, on each theme.
TEST(AccentShades, Texts_and_outlines_of_any_accent_stand_out)
{
    for (const AccentSurroundings& around : {inLight, inDark, inHighLight, inHighDark}) {
        const double text = around.isHighContrast ? 7 : 4.5;
        const double outline = around.isHighContrast ? 4.5 : 3;
        for (int number = 0; number < 8 * 8 * 8; ++number) {
            const QColor accent(number % 8 * 36, number / 8 % 8 * 36, number / 64 * 36);
            const AccentShades made = accentShades(accent, around);
            SCOPED_TRACE(accent.name().toStdString());
            for (const QColor& ground : {made.accent, made.accentHover, made.accentPress})
                ASSERT_GE(contrast(around.textOnAccent, ground), text);
            ASSERT_NE(made.accent, made.accentHover);
            ASSERT_NE(made.accentHover, made.accentPress);
            for (const QColor& ground : around.grounds) {
                ASSERT_GE(contrast(made.accentText, ground), text);
                ASSERT_GE(contrast(made.focus, ground), outline);
                ASSERT_GE(contrast(made.accent, ground), around.isHighContrast ? outline : 2.4);
            }
        }
    }
}

int mixedPart(int below, int above, int opacity)
{
    return below + (above - below) * opacity / 255;
}

/// The largest difference of a part of the colour, of 255, under one and the other overlay.
int seenDifference(const QColor& ground, const QColor& one, const QColor& other)
{
    const auto difference = [&](auto part) {
        const int below = (ground.*part)();
        return std::abs(mixedPart(below, (one.*part)(), one.alpha()) -
                        mixedPart(below, (other.*part)(), other.alpha()));
    };
    return std::max(
        {difference(&QColor::red), difference(&QColor::green), difference(&QColor::blue)});
}

/// A nearly grey ground would look as it does under the pointer. Eight of each part of a colour,
/// and one that GNOME offers.
TEST(AccentShades, What_is_chosen_looks_unlike_what_is_under_the_pointer_with_any_accent)
{
    for (const AccentSurroundings& around : {inLight, inDark, inHighLight, inHighDark}) {
        for (int number = 0; number <= 8 * 8 * 8; ++number) {
            const QColor accent = number == 8 * 8 * 8 ? QColor("#6f8396")
                                                      : QColor(number % 8 * 36, number / 8 % 8 * 36,
                                                               number / 64 * 36);
            const QColor made = accentShades(accent, around).accepting;
            for (const QColor& ground : around.grounds) {
                for (const QColor& overlay : around.overlays)
                    ASSERT_GE(seenDifference(ground, made, overlay), 4)
                        << accent.name().toStdString() << " on " << ground.name().toStdString();
            }
        }
    }
}

TEST(AccentShades, Keep_the_hue_of_the_accents_of_GNOME)
{
    for (const char* name : {"#3584e4", "#2190a4", "#3a944a", "#c88800", "#ed5b00", "#e62d42",
                             "#d56199", "#9141ac", "#6f8396"}) {
        const QColor accent = name;
        for (const AccentSurroundings& around : {inLight, inDark, inHighLight, inHighDark}) {
            const AccentShades made = accentShades(accent, around);
            for (const QColor& shade : {made.accent, made.accentText, made.focus}) {
                // Degrees.
                const int apart = std::abs(shade.hsvHue() - accent.hsvHue());
                EXPECT_LE(std::min(apart, 360 - apart), 12) << name << shade.name().toStdString();
            }
        }
    }
}

} // namespace
} // namespace kelpa::test
