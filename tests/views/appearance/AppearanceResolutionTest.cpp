#include "views/appearance/AppearanceResolution.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using enum Appearance;

struct AppearanceCase
{
    const char* name;
    std::optional<Appearance> own;
    std::optional<Appearance> desktop;
    Appearance palette;
    Appearance expected;
};

class AppearanceOf : public testing::TestWithParam<AppearanceCase>
{};

TEST_P(AppearanceOf, Is_the_persons_own_then_the_desktops_then_the_palettes)
{
    const AppearanceResolution sources{.ownAppearance = GetParam().own,
                                       .isReducingOwnMotion = std::nullopt,
                                       .desktopAppearance = GetParam().desktop,
                                       .desktopAnimations = {},
                                       .paletteAppearance = GetParam().palette};
    EXPECT_EQ(sources.appearance(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, AppearanceOf,
    testing::Values(AppearanceCase{"a_light_palette_alone", {}, {}, light, light},
                    AppearanceCase{"a_dark_palette_alone", {}, {}, dark, dark},
                    AppearanceCase{"a_dark_desktop_with_a_light_palette", {}, dark, light, dark},
                    AppearanceCase{"a_light_desktop_with_a_dark_palette", {}, light, dark, light},
                    AppearanceCase{"an_own_choice_against_both", light, dark, dark, light},
                    AppearanceCase{"an_own_choice_against_the_palette", dark, {}, light, dark}),
    caseName);

struct MotionCase
{
    const char* name;
    std::optional<bool> own;
    std::vector<std::optional<bool>> wanted;
    bool isReducing;
};

class MotionOf : public testing::TestWithParam<MotionCase>
{};

TEST_P(MotionOf, Is_the_persons_own_then_reduced_by_any_setting_of_the_desktop)
{
    const AppearanceResolution sources{.ownAppearance = std::nullopt,
                                       .isReducingOwnMotion = GetParam().own,
                                       .desktopAppearance = std::nullopt,
                                       .desktopAnimations = GetParam().wanted,
                                       .paletteAppearance = light};
    EXPECT_EQ(sources.isReducingMotion(), GetParam().isReducing);
}

constexpr std::optional<bool> unsaid;

INSTANTIATE_TEST_SUITE_P(
    Sources, MotionOf,
    testing::Values(MotionCase{"nobody_says", {}, {}, false},
                    MotionCase{"two_settings_that_do_not_say", {}, {unsaid, unsaid}, false},
                    MotionCase{"two_that_want_animations", {}, {true, true}, false},
                    MotionCase{"the_first_of_two_does_not_want_them", {}, {false, true}, true},
                    MotionCase{"the_second_of_two_does_not_want_them", {}, {true, false}, true},
                    MotionCase{"one_says_and_the_other_does_not", {}, {unsaid, false}, true},
                    MotionCase{"an_own_choice_of_less", true, {true, unsaid}, true},
                    MotionCase{"an_own_choice_of_all", false, {false, false}, false}),
    caseName);

} // namespace
} // namespace kelpa::test
