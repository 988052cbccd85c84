#include "windows/PinnedDesktops.h"

#include <gtest/gtest.h>

#include <vector>

namespace kelpa {
namespace {

const GoalID taxes = GoalID::create();
const GoalID garden = GoalID::create();

TEST(PinnedDesktops, A_pin_means_the_same_desktop_whatever_its_number)
{
    struct Row
    {
        const char* name;
        /// What each pass finds.
        std::vector<DesktopIDs> passes;
        /// The number that the pin to the third desktop has in the end.
        int number;
    };
    for (const Row& row : std::vector<Row>{
             {"nothing changes", {{1, 2, 3, 4}, {1, 2, 3, 4}}, 3},
             {"one before it goes", {{1, 2, 3, 4}, {1, 3, 4}}, 2},
             {"two before it go, one after the other", {{1, 2, 3, 4}, {1, 3, 4}, {3, 4}}, 1},
             {"two before it go at once", {{1, 2, 3, 4}, {3, 4}}, 1},
             {"one behind it goes", {{1, 2, 3, 4}, {1, 2, 3}}, 3},
             {"one comes before it", {{1, 2, 3, 4}, {1, 5, 2, 3, 4}}, 4},
             {"it changes its place", {{1, 2, 3, 4}, {3, 1, 2, 4}}, 1},
             {"it goes", {{1, 2, 3, 4}, {1, 2, 4}}, 3},
             {"it goes, and the one that got its number shifts",
              {{1, 2, 3, 4}, {1, 2, 4}, {1, 4}},
              2},
             {"it shifts and goes", {{1, 2, 3, 4}, {1, 3, 4}, {1, 4}}, 3},
             {"it shifts, goes, and its number is there again",
              {{1, 2, 3, 4}, {1, 3, 4}, {1, 4}, {1, 4, 5}, {1, 5}},
              2},
             {"its number comes later", {{1, 2}, {1, 2, 3}, {2, 3}}, 2},
             {"no numbers shift on this desktop", {{}, {}}, 3},
             {"it is not known for a while which is which", {{1, 2, 3, 4}, {}, {1, 3, 4}}, 2},
             {"nor at the end", {{1, 2, 3, 4}, {1, 3, 4}, {}}, 3},
             {"it goes while that is not known", {{1, 2, 3}, {}, {1, 2, 4}, {2, 4}}, 2},
             {"all have other identities each time", {{1, 2, 3}, {4, 5, 6}, {7, 8, 9, 10}}, 3},
             {"all are gone", {{1, 2, 3}, {4}}, 3},
         }) {
        PinnedDesktops desktops;
        for (const DesktopIDs& ids : row.passes)
            desktops.observe({{taxes, 3}}, ids);
        EXPECT_EQ(desktops.numberOf(taxes, 3), row.number) << row.name;
    }
}

TEST(PinnedDesktops, Goals_follow_each_for_itself)
{
    PinnedDesktops desktops;
    const GoalPins pins{{taxes, 2}, {garden, 4}};
    desktops.observe(pins, {1, 2, 3, 4});
    EXPECT_EQ(desktops.numbersOf(pins), pins);
    desktops.observe(pins, {1, 2, 4});
    EXPECT_EQ(desktops.numbersOf(pins), (GoalPins{{taxes, 2}, {garden, 3}}));
    desktops.observe(pins, {2, 4});
    EXPECT_EQ(desktops.numbersOf(pins), (GoalPins{{taxes, 1}, {garden, 2}}));
}

TEST(PinnedDesktops, A_pin_that_undo_brings_back_means_what_it_meant)
{
    PinnedDesktops desktops;
    desktops.observe({{taxes, 3}}, {1, 2, 3, 4});
    desktops.choose(taxes, 4);
    desktops.observe({{taxes, 4}}, {1, 3, 4});
    EXPECT_EQ(desktops.numberOf(taxes, 4), 3);
    EXPECT_EQ(desktops.numberOf(taxes, 3), 2);
}

TEST(PinnedDesktops, What_is_chosen_is_the_desktop_that_has_the_number_then)
{
    PinnedDesktops desktops;
    desktops.observe({{taxes, 3}}, {1, 2, 3, 4});
    desktops.observe({{taxes, 3}}, {1, 3, 4});
    EXPECT_EQ(desktops.numberOf(taxes, 3), 2);
    desktops.choose(taxes, 3);
    EXPECT_EQ(desktops.numberOf(taxes, 3), 3);
    desktops.observe({{taxes, 3}}, {3, 4});
    EXPECT_EQ(desktops.numberOf(taxes, 3), 2);
    desktops.choose(taxes, 100);
    EXPECT_EQ(desktops.numberOf(taxes, 100), 100);
}

TEST(PinnedDesktops, A_pin_between_two_passes_means_a_desktop_of_the_first)
{
    PinnedDesktops desktops;
    desktops.observe({}, {1, 2, 3});
    desktops.observe({{taxes, 3}}, {2, 3});
    EXPECT_EQ(desktops.numberOf(taxes, 3), 2);
}

TEST(PinnedDesktops, What_pins_meant_in_an_earlier_run_they_mean_while_it_is_there)
{
    const GoalPins pins{{taxes, 3}, {garden, 4}};
    PinnedDesktops desktops;
    desktops.observe({}, {1, 3, 5, 6});
    desktops.restore({{taxes, {.pin = 3, .desktop = 3}}, {garden, {.pin = 4, .desktop = 4}}}, {});
    desktops.observe(pins, {1, 3, 5, 6});
    EXPECT_EQ(desktops.numbersOf(pins), (GoalPins{{taxes, 2}, {garden, 4}}));
    EXPECT_EQ(desktops.linksOf(pins), (DesktopLinks{{taxes, {.pin = 3, .desktop = 3}},
                                                    {garden, {.pin = 4, .desktop = 6}}}));
    EXPECT_EQ(desktops.linksOf({{taxes, 4}}), DesktopLinks());
    desktops.observe(pins, {3, 5, 6});
    EXPECT_EQ(desktops.numbersOf(pins), (GoalPins{{taxes, 1}, {garden, 3}}));
}

TEST(PinnedDesktops, A_restored_pin_whose_desktop_is_gone_means_its_number_at_once)
{
    PinnedDesktops desktops;
    desktops.observe({}, {1, 3, 5});
    desktops.restore({{taxes, {.pin = 2, .desktop = 2}}}, {{taxes, 2}});
    EXPECT_EQ(desktops.linksOf({{taxes, 2}}), (DesktopLinks{{taxes, {.pin = 2, .desktop = 3}}}));
}

TEST(PinnedDesktops, Tells_which_number_each_desktop_has_got)
{
    PinnedDesktops desktops;
    EXPECT_EQ(desktops.observe({}, {1, 2, 3}), std::nullopt) << "of the first nothing is known";
    EXPECT_EQ(desktops.observe({}, {1, 2, 3}), std::nullopt);
    EXPECT_EQ(desktops.observe({}, {1, 3, 4}), (DesktopShift{{1, 1}, {3, 2}}));
    EXPECT_EQ(desktops.observe({}, {5}), DesktopShift());
    EXPECT_EQ(desktops.observe({}, {}), std::nullopt);
    EXPECT_EQ(desktops.observe({}, {6, 5}), std::nullopt);
    EXPECT_EQ(desktops.observe({}, {5, 6}), (DesktopShift{{1, 2}, {2, 1}}));
}

} // namespace
} // namespace kelpa
