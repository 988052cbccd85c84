#include "layout/SteadyHeights.h"

#include "layout/BoardMetrics.h"
#include "support/CaseName.h"
#include "support/Seed.h"

#include <gtest/gtest.h>

#include <random>

namespace kelpa {
namespace {

/// Three columns of 320 points.
constexpr double width = 1004;
constexpr double noRoom = 0;
constexpr double collapsed = collapsedGoalCardHeight;

/// An item that always has one height.
HeightRange fixed(double height)
{
    return {height, height, height};
}
/// A goal that is not selected, with so much content.
HeightRange goal(double content)
{
    return {collapsed, collapsed, std::max(content, collapsed)};
}
HeightRange selected(double content)
{
    return {collapsed, content, content};
}

QList<qsizetype> columns(const QList<double>& heights)
{
    QList<qsizetype> result;
    const WaterfallPlacement placement = targetLayout().place({}, width, heights);
    for (const QRectF& frame : placement.frames)
        result.append(qRound(frame.left() / 342));
    return result;
}

QList<double> restHeights(const QList<HeightRange>& items)
{
    QList<double> result;
    for (const HeightRange& item : items)
        result.append(item.atRest);
    return result;
}

QList<double> steady(const QList<HeightRange>& items, double room = noRoom)
{
    return steadyHeights(targetLayout(), width, items, room);
}

struct Case
{
    const char* name;
    QList<HeightRange> items;
    double room = noRoom;
    QList<double> heights;
};

class SteadyHeights : public testing::TestWithParam<Case>
{};

TEST_P(SteadyHeights, gives_each_item_its_height)
{
    EXPECT_EQ(steady(GetParam().items, GetParam().room), GetParam().heights);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SteadyHeights,
    testing::Values(
        Case{"nothing", {}, 900, {}},
        Case{"at_rest_without_room", {goal(500), goal(400)}, noRoom, {292, 292}},
        // The card below the left one would move below the middle one, which shows more instead.
        Case{"beside_the_selected",
             {selected(600), goal(700), goal(700), goal(100), goal(100), goal(100)},
             noRoom,
             {600, 600.25, 600.25, 292, 292, 292}},
        Case{"on_the_right_of_the_selected",
             {goal(700), goal(700), selected(600), goal(100), goal(100), goal(100)},
             noRoom,
             {292, 292, 600, 292, 292, 292}},
        // Without anything to show, a card stays as it is, and those below flow around it.
        Case{"nothing_to_show_beside",
             {selected(600), goal(100), goal(700), goal(100)},
             noRoom,
             {600, 292, 292, 292}},
        Case{"alone", {goal(500)}, 900, {500}}, Case{"as_much_as_fits", {goal(1500)}, 900, {900}},
        Case{"no_more_than_the_content", {goal(100), fixed(90)}, 900, {292, 90}},
        // 900 - 22 - 292 are left in the left column; the smaller lack is filled first.
        Case{"two_in_a_column",
             {goal(1000), fixed(900), fixed(900), goal(400)},
             900,
             {478, 900, 900, 400}},
        // The last one moves to the middle.
        Case{"what_others_rest_on",
             {goal(500), fixed(292), fixed(292), fixed(90)},
             900,
             {500, 292, 292, 90}},
        // As many as fit show everything, although the others are in other columns then.
        Case{"as_many_as_fit_without_scrolling",
             {fixed(300), goal(900), goal(292), goal(500), goal(900), fixed(400), fixed(500)},
             1200,
             {300, 292, 292, 500, 364, 400, 500}},
        // The one on the right grows first, and so makes way for the left one.
        Case{"one_makes_way_for_the_other",
             {fixed(900), goal(450), goal(500), fixed(90)},
             900,
             {900, 450, 500, 90}},
        Case{"the_column_is_full", {selected(1200), goal(500), fixed(900)}, 900, {1200, 500, 900}}),
    test::caseName);

/// How many items are in another column than `atRest` says.
qsizetype moved(const QList<qsizetype>& now, const QList<qsizetype>& atRest)
{
    qsizetype count = 0;
    for (qsizetype i = 0; i < now.size(); ++i)
        count += now.at(i) != atRest.at(i) ? 1 : 0;
    return count;
}

TEST(SteadyHeightsOf, Selecting_one_of_twelve_goals_leaves_the_others_in_their_columns)
{
    QList<HeightRange> items{fixed(606), fixed(420)};
    for (int i = 0; i < 12; ++i)
        items.append(goal(900));
    items.append(fixed(92));
    const QList<qsizetype> atRest = columns(restHeights(items));
    QList<qsizetype> least;
    QList<qsizetype> chosen;
    for (qsizetype i = 2; i < 14; ++i) {
        QList<HeightRange> withSelection = items;
        withSelection[i] = selected(900);
        QList<double> heights;
        for (const HeightRange& item : withSelection)
            heights.append(item.atLeast);
        least.append(moved(columns(heights), atRest));
        chosen.append(moved(columns(steady(withSelection)), atRest));
    }
    EXPECT_EQ(least, (QList<qsizetype>{9, 7, 8, 7, 5, 5, 4, 3, 2, 1, 0, 0}));
    // The others have too little to show to reach as far as the first, which begins lower.
    EXPECT_EQ(chosen, (QList<qsizetype>{3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(SteadyHeightsOf, Random_boards_have_what_they_need_and_move_no_more_cards_than_without)
{
    const std::uint64_t seed = test::seed();
    SCOPED_TRACE(test::seedText(seed));
    std::mt19937_64 random(seed);
    const auto upTo = [&random](double most) {
        return std::floor(std::uniform_real_distribution(0.0, most)(random));
    };
    for (int board = 0; board < 500; ++board) {
        QList<HeightRange> items;
        QList<double> least;
        const auto count = static_cast<int>(upTo(16)) + 1;
        for (int item = 0; item < count; ++item) {
            items.append(upTo(4) < 1 ? fixed(upTo(700)) : goal(upTo(1200)));
            if (upTo(6) < 1)
                items.last().atLeast = items.last().atMost;
            least.append(items.last().atLeast);
        }
        const double room = upTo(1500);
        const QList<double> heights = steady(items, room);
        ASSERT_EQ(heights.size(), items.size());
        const QList<qsizetype> atRest = columns(restHeights(items));
        EXPECT_LE(moved(columns(steady(items)), atRest), moved(columns(least), atRest));
        for (qsizetype i = 0; i < items.size(); ++i) {
            EXPECT_GE(heights.at(i), items.at(i).atLeast);
            EXPECT_LE(heights.at(i), items.at(i).atMost);
        }
        // A board without a selection is not made longer than it has to be, nor does it scroll.
        if (least != restHeights(items))
            continue;
        const double lowest = targetLayout().place({}, width, least).height;
        EXPECT_LE(targetLayout().place({}, width, heights).height, std::max(lowest, room) + 1e-6);
    }
}

} // namespace
} // namespace kelpa
