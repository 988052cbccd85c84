#include "shell/KeyRouting.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using State = BoardNavigationState;
using enum NavigationDirection;

const GoalID goalG = GoalID::create();
const State idle = State::idle();
const State onGoal = State::on(TargetSelection::goal(goalG));
const State onTodos = State::on(TargetSelection::unifiedTodos());
const State onUnassigned = State::on(TargetSelection::unassigned());
const State inside = State::inside(TargetSelection::goal(goalG), 7);

struct KeyCase
{
    const char* name;
    BoardKey key;
    KeyboardFocus focus;
    State navigation;
    KeyDecision decision;
};

class KeyRouting : public testing::TestWithParam<KeyCase>
{};

TEST_P(KeyRouting, Decides)
{
    const KeyCase& param = GetParam();
    EXPECT_EQ(decideKey(param.key, {true, param.focus, param.navigation}), param.decision);
}

TEST_P(KeyRouting, Passes_everything_on_while_the_board_is_not_active)
{
    const KeyCase& param = GetParam();
    EXPECT_EQ(decideKey(param.key, {false, param.focus, param.navigation}), KeyDecision());
}

KeyDecision does(const BoardCommand& command)
{
    return {.leavesFocus = false, .command = command};
}

KeyDecision leavesAndDoes(const BoardCommand& command)
{
    return {.leavesFocus = true, .command = command};
}

const KeyDecision passedOn;
constexpr auto board = KeyboardFocus::board;
constexpr auto field = KeyboardFocus::textInput;
constexpr auto control = KeyboardFocus::control;
constexpr auto popup = KeyboardFocus::popup;

INSTANTIATE_TEST_SUITE_P(
    Board, KeyRouting,
    testing::Values(
        KeyCase{"left_on_targets", BoardKey::left, board, onGoal, does(MoveTargetSelection{left})},
        KeyCase{"right_on_targets", BoardKey::right, board, onGoal,
                does(MoveTargetSelection{right})},
        KeyCase{"up_on_targets", BoardKey::up, board, onTodos, does(MoveTargetSelection{up})},
        KeyCase{"down_from_idle", BoardKey::down, board, idle, does(MoveTargetSelection{down})},
        KeyCase{"left_inside", BoardKey::left, board, inside, does(MoveWindowSelection{left})},
        KeyCase{"right_inside", BoardKey::right, board, inside, does(MoveWindowSelection{right})},
        KeyCase{"up_inside", BoardKey::up, board, inside, does(MoveWindowSelection{up})},
        KeyCase{"down_inside", BoardKey::down, board, inside, does(MoveWindowSelection{down})},
        KeyCase{"space_from_idle", BoardKey::space, board, idle, does(ActivateSelection{})},
        KeyCase{"space_on_a_target", BoardKey::space, board, onGoal, does(ActivateSelection{})},
        KeyCase{"space_inside", BoardKey::space, board, inside, does(ActivateSelection{})},
        KeyCase{"return_on_a_goal", BoardKey::enter, board, onGoal, does(RequestAddTodo{goalG})},
        KeyCase{"return_from_idle", BoardKey::enter, board, idle, passedOn},
        KeyCase{"return_on_the_unified_column", BoardKey::enter, board, onTodos, passedOn},
        KeyCase{"return_on_the_unassigned_column", BoardKey::enter, board, onUnassigned, passedOn},
        KeyCase{"return_inside", BoardKey::enter, board, inside, passedOn},
        KeyCase{"escape_inside", BoardKey::escape, board, inside, does(ReturnToTargetSelection{})},
        KeyCase{"escape_on_a_target", BoardKey::escape, board, onGoal, passedOn},
        KeyCase{"escape_from_idle", BoardKey::escape, board, idle, passedOn},
        KeyCase{"undo_from_idle", BoardKey::undo, board, idle, does(UndoChange{})},
        KeyCase{"undo_inside", BoardKey::undo, board, inside, does(UndoChange{})},
        KeyCase{"redo_on_a_target", BoardKey::redo, board, onGoal, does(RedoChange{})},
        KeyCase{"another_key", BoardKey::other, board, inside, passedOn}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Focus, KeyRouting,
    testing::Values(
        KeyCase{"arrow_leaves_a_field", BoardKey::down, field, onGoal,
                leavesAndDoes(MoveTargetSelection{down})},
        KeyCase{"arrow_leaves_a_field_inside", BoardKey::left, field, inside,
                leavesAndDoes(MoveWindowSelection{left})},
        KeyCase{"space_belongs_to_the_field", BoardKey::space, field, onGoal, passedOn},
        KeyCase{"return_belongs_to_the_field", BoardKey::enter, field, onGoal, passedOn},
        KeyCase{"escape_belongs_to_the_field", BoardKey::escape, field, inside, passedOn},
        KeyCase{"letters_belong_to_the_field", BoardKey::other, field, inside, passedOn},
        KeyCase{"space_presses_the_button", BoardKey::space, control, onGoal, passedOn},
        KeyCase{"return_presses_the_button", BoardKey::enter, control, onGoal, passedOn},
        KeyCase{"arrow_leaves_a_button", BoardKey::up, control, onGoal,
                leavesAndDoes(MoveTargetSelection{up})},
        KeyCase{"undo_belongs_to_the_field", BoardKey::undo, field, onGoal, passedOn},
        KeyCase{"redo_belongs_to_the_field", BoardKey::redo, field, onGoal, passedOn},
        KeyCase{"undo_leaves_the_keyboard_with_the_button", BoardKey::undo, control, onGoal,
                does(UndoChange{})},
        KeyCase{"redo_leaves_the_keyboard_with_the_button", BoardKey::redo, control, inside,
                does(RedoChange{})},
        KeyCase{"undo_in_a_menu", BoardKey::undo, popup, onGoal, passedOn},
        KeyCase{"redo_in_a_sheet", BoardKey::redo, popup, onGoal, passedOn},
        KeyCase{"arrow_in_a_menu", BoardKey::down, popup, onGoal, passedOn},
        KeyCase{"space_in_a_menu", BoardKey::space, popup, onGoal, passedOn},
        KeyCase{"escape_in_a_sheet", BoardKey::escape, popup, inside, passedOn}),
    caseName);

} // namespace
} // namespace kelpa::test
