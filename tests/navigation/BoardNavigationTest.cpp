#include "navigation/BoardNavigation.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using State = BoardNavigationState;
using enum NavigationDirection;

const GoalID goalA = GoalID::create();
const GoalID goalB = GoalID::create();
const GoalID goalC = GoalID::create();

/// Indices 0 … 4: the unified column, the unassigned column, three goals.
const QList<TargetSelection> fiveTargets = targetSelections({goalA, goalB, goalC});

TEST(TargetSelections, Are_the_two_columns_and_then_the_visible_goals_in_order)
{
    EXPECT_EQ(
        targetSelections({goalB, goalA}),
        (QList<TargetSelection>{TargetSelection::unifiedTodos(), TargetSelection::unassigned(),
                                TargetSelection::goal(goalB), TargetSelection::goal(goalA)}));
    EXPECT_EQ(targetSelections({}).size(), 2);
}

struct GridCase
{
    const char* name;
    int columns;
    int from;
    NavigationDirection direction;
    int to;
};

class TargetGrid : public testing::TestWithParam<GridCase>
{};

TEST_P(TargetGrid, Moves_to_the_neighbour_without_wrapping)
{
    const GridCase& param = GetParam();
    const State moved = movedTargetSelection(State::on(fiveTargets[param.from]), fiveTargets,
                                             param.columns, param.direction);
    EXPECT_EQ(moved, State::on(fiveTargets[param.to]));
}

INSTANTIATE_TEST_SUITE_P(
    BoardNavigation, TargetGrid,
    testing::Values(
        GridCase{"down_into_the_last_row", 3, 1, down, 4},
        GridCase{"down_past_the_short_last_row", 3, 2, down, 2},
        GridCase{"right_at_the_last_column", 3, 2, right, 2},
        GridCase{"left_at_the_first_column", 3, 3, left, 3},
        GridCase{"right_at_the_end_of_the_short_row", 3, 4, right, 4},
        GridCase{"right_within_a_row", 3, 0, right, 1},
        GridCase{"left_within_a_row", 3, 4, left, 3}, GridCase{"up_at_the_top", 3, 2, up, 2},
        GridCase{"up_a_row", 3, 4, up, 1}, GridCase{"down_a_row", 3, 0, down, 3},
        GridCase{"one_column_left", 1, 2, left, 2}, GridCase{"one_column_right", 1, 2, right, 2},
        GridCase{"one_column_up", 1, 2, up, 1}, GridCase{"one_column_down", 1, 2, down, 3},
        GridCase{"one_column_down_at_the_end", 1, 4, down, 4},
        GridCase{"more_columns_than_targets_down", 9, 3, down, 3},
        GridCase{"more_columns_than_targets_right", 9, 4, right, 4}),
    caseName);

TEST(TargetNavigation, From_idle_any_arrow_selects_the_unified_column)
{
    for (const NavigationDirection direction : {left, right, up, down}) {
        EXPECT_EQ(movedTargetSelection(State::idle(), fiveTargets, 3, direction),
                  State::on(TargetSelection::unifiedTodos()));
    }
}

TEST(TargetNavigation, From_a_goal_that_is_not_visible_it_starts_again_at_the_first_target)
{
    const State hidden = State::on(TargetSelection::goal(GoalID::create()));
    EXPECT_EQ(movedTargetSelection(hidden, fiveTargets, 3, down),
              State::on(TargetSelection::unifiedTodos()));
}

TEST(TargetNavigation, From_inside_a_target_it_moves_to_the_targets)
{
    EXPECT_EQ(movedTargetSelection(State::inside(fiveTargets[2], 7), fiveTargets, 1, down),
              State::on(fiveTargets[3]));
}

TEST(TargetNavigationDeath, A_column_count_below_one_halts_and_is_named)
{
    EXPECT_DEATH(movedTargetSelection(State::idle(), fiveTargets, 0, down),
                 "targetGridColumnCount is 0");
}

class WindowGrid : public testing::TestWithParam<GridCase>
{};

TEST_P(WindowGrid, Moves_in_two_columns_without_wrapping)
{
    const QList<WindowID> windows{10, 11, 12};
    const GridCase& param = GetParam();
    const TargetSelection target = TargetSelection::goal(goalA);
    EXPECT_EQ(
        movedWindowSelection(State::inside(target, windows[param.from]), windows, param.direction),
        State::inside(target, windows[param.to]));
}

INSTANTIATE_TEST_SUITE_P(BoardNavigation, WindowGrid,
                         testing::Values(GridCase{"right_where_none_is", 2, 2, right, 2},
                                         GridCase{"down_where_none_is", 2, 1, down, 1},
                                         GridCase{"down", 2, 0, down, 2},
                                         GridCase{"right", 2, 0, right, 1},
                                         GridCase{"right_in_the_right_column", 2, 1, right, 1},
                                         GridCase{"left", 2, 1, left, 0},
                                         GridCase{"left_in_the_left_column", 2, 2, left, 2},
                                         GridCase{"up", 2, 2, up, 0},
                                         GridCase{"up_at_the_top", 2, 1, up, 1}),
                         caseName);

TEST(WindowNavigation, From_a_window_that_is_gone_any_arrow_selects_the_first)
{
    const TargetSelection target = TargetSelection::unassigned();
    for (const NavigationDirection direction : {left, right, up, down}) {
        EXPECT_EQ(movedWindowSelection(State::inside(target, 99), {10, 11, 12}, direction),
                  State::inside(target, 10));
    }
}

TEST(WindowNavigation, Without_windows_it_goes_back_to_the_target)
{
    const TargetSelection target = TargetSelection::goal(goalA);
    EXPECT_EQ(movedWindowSelection(State::inside(target, 10), {}, down), State::on(target));
}

TEST(WindowNavigationDeath, Without_a_target_it_halts)
{
    EXPECT_DEATH(movedWindowSelection(State::idle(), {10}, down), "moved to no target");
}

TEST(ActivatedTarget, Nothing_and_goals_that_are_not_visible_give_no_state)
{
    EXPECT_EQ(activatedTarget(TargetSelection::none(), EnterWindowLayer::yes, {goalA}, {10}),
              std::nullopt);
    EXPECT_EQ(activatedTarget(TargetSelection::goal(goalB), EnterWindowLayer::yes, {goalA}, {10}),
              std::nullopt);
}

TEST(ActivatedTarget, Enters_at_the_first_window_only_when_asked_and_when_there_is_one)
{
    const TargetSelection target = TargetSelection::goal(goalA);
    EXPECT_EQ(activatedTarget(target, EnterWindowLayer::yes, {goalA}, {10, 11}),
              State::inside(target, 10));
    EXPECT_EQ(activatedTarget(target, EnterWindowLayer::yes, {goalA}, {}), State::on(target));
    EXPECT_EQ(activatedTarget(target, EnterWindowLayer::no, {goalA}, {10}), State::on(target));
}

TEST(ActivatedTarget, The_two_columns_need_no_visible_goal)
{
    EXPECT_EQ(activatedTarget(TargetSelection::unassigned(), EnterWindowLayer::yes, {}, {10}),
              State::inside(TargetSelection::unassigned(), 10));
    EXPECT_EQ(activatedTarget(TargetSelection::unifiedTodos(), EnterWindowLayer::yes, {}, {}),
              State::on(TargetSelection::unifiedTodos()));
}

TEST(ReturnedToTarget, Leaves_a_window_and_nothing_else)
{
    const TargetSelection target = TargetSelection::goal(goalA);
    EXPECT_EQ(returnedToTarget(State::inside(target, 10)), State::on(target));
    EXPECT_EQ(returnedToTarget(State::on(target)), State::on(target));
    EXPECT_EQ(returnedToTarget(State::idle()), State::idle());
}

struct ReconciliationCase
{
    const char* name;
    State before;
    QList<WindowID> windows;
    QList<WindowID> shown;
    State after;
};

class ReconciledWithWindows : public testing::TestWithParam<ReconciliationCase>
{};

TEST_P(ReconciledWithWindows, Keeps_or_replaces_the_selected_window)
{
    const auto& [name, before, windows, shown, after] = GetParam();
    EXPECT_EQ(reconciledWithWindows(before, windows, shown), after);
}

const TargetSelection targetA = TargetSelection::goal(goalA);

INSTANTIATE_TEST_SUITE_P(
    BoardNavigation, ReconciledWithWindows,
    testing::Values(
        ReconciliationCase{
            "there", State::inside(targetA, 10), {9, 10}, {9, 10}, State::inside(targetA, 10)},
        ReconciliationCase{
            "gone", State::inside(targetA, 10), {9, 11}, {9, 11}, State::inside(targetA, 9)},
        ReconciliationCase{"all_gone", State::inside(targetA, 10), {}, {}, State::on(targetA)},
        ReconciliationCase{
            "hidden", State::inside(targetA, 10), {9, 10}, {9}, State::inside(targetA, 10)},
        ReconciliationCase{
            "all_hidden", State::inside(targetA, 10), {9, 10}, {}, State::inside(targetA, 10)},
        ReconciliationCase{"gone_and_the_first_hidden",
                           State::inside(targetA, 10),
                           {9, 11},
                           {11},
                           State::inside(targetA, 11)},
        ReconciliationCase{"gone_and_the_others_hidden",
                           State::inside(targetA, 10),
                           {9, 11},
                           {},
                           State::on(targetA)},
        ReconciliationCase{"on_the_target", State::on(targetA), {9}, {9}, State::on(targetA)},
        ReconciliationCase{"idle", State::idle(), {9}, {9}, State::idle()}),
    caseName);

} // namespace
} // namespace kelpa::test
