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

/// A field with the focus has been typed in.
KeyContext contextOf(const KeyCase& param, bool isBoardActive)
{
    const bool isField = param.focus == KeyboardFocus::textInput;
    return {.isBoardActive = isBoardActive,
            .focus = param.focus,
            .navigation = param.navigation,
            .isShiftHeld = false,
            .isComposing = false,
            .canFieldUndo = isField,
            .canFieldRedo = isField,
            .isSearching = false};
}

class KeyRouting : public testing::TestWithParam<KeyCase>
{};

TEST_P(KeyRouting, Decides)
{
    const KeyCase& param = GetParam();
    EXPECT_EQ(decideKey(param.key, contextOf(param, true)), param.decision);
}

TEST_P(KeyRouting, Passes_everything_on_while_the_board_is_not_active)
{
    const KeyCase& param = GetParam();
    EXPECT_EQ(decideKey(param.key, contextOf(param, false)), KeyDecision());
}

KeyDecision does(const BoardCommand& command)
{
    return {.cancelsEditor = false, .leavesFocus = false, .command = command};
}

KeyDecision leavesAndDoes(const BoardCommand& command)
{
    return {.cancelsEditor = false, .leavesFocus = true, .command = command};
}

KeyDecision cancelsAndDoes(const BoardCommand& command)
{
    return {.cancelsEditor = true, .leavesFocus = true, .command = command};
}

const KeyDecision passedOn;
constexpr auto board = KeyboardFocus::board;
constexpr auto field = KeyboardFocus::textInput;
constexpr auto button = KeyboardFocus::button;
constexpr auto item = KeyboardFocus::item;
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
        KeyCase{"menu_on_a_goal", BoardKey::menu, board, onGoal, does(OpenMenu{})},
        KeyCase{"menu_inside", BoardKey::menu, board, inside, does(OpenMenu{})},
        KeyCase{"menu_from_idle", BoardKey::menu, board, idle, does(OpenMenu{})},
        KeyCase{"menu_on_the_unified_column", BoardKey::menu, board, onTodos, does(OpenMenu{})},
        KeyCase{"menu_on_the_unassigned_column", BoardKey::menu, board, onUnassigned,
                does(OpenMenu{})},
        KeyCase{"undo_from_idle", BoardKey::undo, board, idle, does(UndoChange{})},
        KeyCase{"undo_inside", BoardKey::undo, board, inside, does(UndoChange{})},
        KeyCase{"redo_on_a_target", BoardKey::redo, board, onGoal, does(RedoChange{})},
        KeyCase{"another_key", BoardKey::other, board, inside, passedOn}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Focus, KeyRouting,
    testing::Values(
        KeyCase{"arrow_leaves_a_field", BoardKey::down, field, onGoal,
                cancelsAndDoes(MoveTargetSelection{down})},
        KeyCase{"arrow_leaves_a_field_inside", BoardKey::left, field, inside,
                cancelsAndDoes(MoveWindowSelection{left})},
        KeyCase{"space_belongs_to_the_field", BoardKey::space, field, onGoal, passedOn},
        KeyCase{"return_belongs_to_the_field", BoardKey::enter, field, onGoal, passedOn},
        KeyCase{"escape_belongs_to_the_field", BoardKey::escape, field, inside, passedOn},
        KeyCase{"menu_belongs_to_the_field", BoardKey::menu, field, inside, passedOn},
        KeyCase{"letters_belong_to_the_field", BoardKey::other, field, inside, passedOn},
        KeyCase{"space_presses_the_button", BoardKey::space, button, onGoal, passedOn},
        KeyCase{"return_presses_the_button", BoardKey::enter, button, onGoal, passedOn},
        KeyCase{"arrow_leaves_a_button", BoardKey::up, button, onGoal,
                leavesAndDoes(MoveTargetSelection{up})},
        KeyCase{"escape_at_a_button_goes_back", BoardKey::escape, button, inside,
                does(ReturnToTargetSelection{})},
        KeyCase{"escape_at_a_button_on_a_target", BoardKey::escape, button, onGoal, passedOn},
        KeyCase{"menu_belongs_to_what_the_button_is_part_of", BoardKey::menu, button, onGoal,
                passedOn},
        KeyCase{"letters_at_a_button", BoardKey::other, button, onGoal, passedOn},
        KeyCase{"space_at_a_card", BoardKey::space, item, inside, does(ActivateSelection{})},
        KeyCase{"return_belongs_to_the_card", BoardKey::enter, item, inside, passedOn},
        KeyCase{"return_belongs_to_the_row", BoardKey::enter, item, onGoal, passedOn},
        KeyCase{"menu_belongs_to_the_card", BoardKey::menu, item, inside, passedOn},
        KeyCase{"escape_at_a_card_goes_back", BoardKey::escape, item, inside,
                does(ReturnToTargetSelection{})},
        KeyCase{"arrow_leaves_a_card", BoardKey::right, item, inside,
                leavesAndDoes(MoveWindowSelection{right})},
        KeyCase{"undo_belongs_to_the_field", BoardKey::undo, field, onGoal, passedOn},
        KeyCase{"redo_belongs_to_the_field", BoardKey::redo, field, onGoal, passedOn},
        KeyCase{"undo_leaves_the_keyboard_with_the_button", BoardKey::undo, button, onGoal,
                does(UndoChange{})},
        KeyCase{"redo_leaves_the_keyboard_with_the_button", BoardKey::redo, button, inside,
                does(RedoChange{})},
        KeyCase{"undo_in_a_menu", BoardKey::undo, popup, onGoal, passedOn},
        KeyCase{"redo_in_a_sheet", BoardKey::redo, popup, onGoal, passedOn},
        KeyCase{"menu_in_a_sheet", BoardKey::menu, popup, onGoal, passedOn},
        KeyCase{"arrow_in_a_menu", BoardKey::down, popup, onGoal, passedOn},
        KeyCase{"space_in_a_menu", BoardKey::space, popup, onGoal, passedOn},
        KeyCase{"escape_in_a_sheet", BoardKey::escape, popup, inside, passedOn}),
    caseName);

TEST(KeyRoutingInAField, Shift_with_an_arrow_selects_text_there_and_nowhere_else)
{
    KeyContext context{.isBoardActive = true,
                       .focus = field,
                       .navigation = onGoal,
                       .isShiftHeld = true,
                       .isComposing = false,
                       .canFieldUndo = false,
                       .canFieldRedo = false,
                       .isSearching = false};
    EXPECT_EQ(decideKey(BoardKey::left, context), passedOn);
    context.focus = board;
    EXPECT_EQ(decideKey(BoardKey::left, context), does(MoveTargetSelection{left}));
    context.focus = button;
    EXPECT_EQ(decideKey(BoardKey::left, context), leavesAndDoes(MoveTargetSelection{left}));
}

TEST(KeyRoutingInAField, While_an_input_method_composes_every_key_belongs_to_the_field)
{
    KeyContext context{.isBoardActive = true,
                       .focus = field,
                       .navigation = inside,
                       .isShiftHeld = false,
                       .isComposing = true,
                       .canFieldUndo = false,
                       .canFieldRedo = false,
                       .isSearching = false};
    for (const BoardKey key : {BoardKey::left, BoardKey::down, BoardKey::escape, BoardKey::undo,
                               BoardKey::redo, BoardKey::enter})
        EXPECT_EQ(decideKey(key, context), passedOn);
    context.isComposing = false;
    EXPECT_EQ(decideKey(BoardKey::left, context), cancelsAndDoes(MoveWindowSelection{left}));
}

TEST(KeyRoutingInAField, Down_leads_from_a_search_to_what_it_has_found)
{
    KeyContext context{.isBoardActive = true,
                       .focus = field,
                       .navigation = onGoal,
                       .isShiftHeld = false,
                       .isComposing = false,
                       .canFieldUndo = true,
                       .canFieldRedo = false,
                       .isSearching = true};
    EXPECT_EQ(decideKey(BoardKey::down, context), passedOn);
    EXPECT_EQ(decideKey(BoardKey::up, context), cancelsAndDoes(MoveTargetSelection{up}));
    context.isSearching = false;
    EXPECT_EQ(decideKey(BoardKey::down, context), cancelsAndDoes(MoveTargetSelection{down}));
}

TEST(KeyRoutingInAField, A_field_in_which_nothing_was_typed_leaves_undo_and_redo_to_the_board)
{
    KeyContext context{.isBoardActive = true,
                       .focus = field,
                       .navigation = onGoal,
                       .isShiftHeld = false,
                       .isComposing = false,
                       .canFieldUndo = false,
                       .canFieldRedo = false,
                       .isSearching = false};
    EXPECT_EQ(decideKey(BoardKey::undo, context), does(UndoChange{}));
    EXPECT_EQ(decideKey(BoardKey::redo, context), does(RedoChange{}));
    context.canFieldUndo = true;
    EXPECT_EQ(decideKey(BoardKey::undo, context), passedOn);
    EXPECT_EQ(decideKey(BoardKey::redo, context), passedOn) << "it has been typed in";
    context.canFieldUndo = false;
    context.canFieldRedo = true;
    EXPECT_EQ(decideKey(BoardKey::undo, context), passedOn) << "one press too many";
    EXPECT_EQ(decideKey(BoardKey::redo, context), passedOn);
}

struct SearchCase
{
    const char* name;
    BoardKey key;
    KeyboardFocus focus;
    State navigation;
    /// Whether the person was writing in a field.
    bool wasWriting;
    KeyDecision decision;
};

const KeyDecision startsSearch{.startsSearch = true, .command = std::nullopt};
const KeyDecision endsSearch{.endsSearch = true, .command = std::nullopt};
const KeyDecision endsWriting{.endsWriting = true, .isIgnored = true, .command = std::nullopt};

class KeyRoutingWithASearch : public testing::TestWithParam<SearchCase>
{};

TEST_P(KeyRoutingWithASearch, Decides)
{
    const SearchCase& param = GetParam();
    KeyContext context{.isBoardActive = true, .focus = param.focus, .navigation = param.navigation};
    context.wasWriting = param.wasWriting;
    context.hasSearch = true;
    EXPECT_EQ(decideKey(param.key, context), param.decision);
}

INSTANTIATE_TEST_SUITE_P(
    KeyRouting, KeyRoutingWithASearch,
    testing::Values(
        SearchCase{"character_from_idle", BoardKey::character, board, idle, false, startsSearch},
        SearchCase{"character_inside", BoardKey::character, board, inside, false, startsSearch},
        SearchCase{"character_in_a_field", BoardKey::character, field, idle, false, passedOn},
        SearchCase{"character_at_a_button", BoardKey::character, button, idle, false, passedOn},
        SearchCase{"character_at_a_card", BoardKey::character, item, inside, false, passedOn},
        SearchCase{"character_in_a_menu", BoardKey::character, popup, idle, false, passedOn},
        SearchCase{"character_after_writing", BoardKey::character, board, idle, true, passedOn},
        SearchCase{"escape_from_idle", BoardKey::escape, board, idle, false, endsSearch},
        SearchCase{"escape_on_a_goal", BoardKey::escape, board, onGoal, false, endsSearch},
        SearchCase{"escape_at_a_button", BoardKey::escape, button, idle, false, endsSearch},
        SearchCase{"escape_inside", BoardKey::escape, board, inside, false,
                   does(ReturnToTargetSelection{})},
        SearchCase{"escape_in_a_field", BoardKey::escape, field, idle, false, passedOn},
        SearchCase{"escape_in_a_sheet", BoardKey::escape, popup, idle, false, passedOn},
        SearchCase{"escape_after_writing", BoardKey::escape, board, idle, true, endsWriting}),
    caseName);

TEST(KeyRoutingWithoutASearch, Escape_has_none_to_end)
{
    const KeyContext context{.isBoardActive = true, .focus = board, .navigation = idle};
    EXPECT_EQ(decideKey(BoardKey::escape, context), passedOn);
}

struct FormerWritingCase
{
    const char* name;
    BoardKey key;
    KeyboardFocus focus;
    State navigation;
    KeyDecision decision;
};

const KeyDecision ignored{.isIgnored = true, .command = std::nullopt};

class KeyRoutingAfterWriting : public testing::TestWithParam<FormerWritingCase>
{};

TEST_P(KeyRoutingAfterWriting, Decides)
{
    const FormerWritingCase& param = GetParam();
    KeyContext context{.isBoardActive = true, .focus = param.focus, .navigation = param.navigation};
    context.wasWriting = true;
    EXPECT_EQ(decideKey(param.key, context), param.decision);
}

INSTANTIATE_TEST_SUITE_P(
    KeyRouting, KeyRoutingAfterWriting,
    testing::Values(
        FormerWritingCase{"space_inside", BoardKey::space, board, inside, ignored},
        FormerWritingCase{"space_on_a_target", BoardKey::space, board, onGoal, ignored},
        FormerWritingCase{"undo", BoardKey::undo, board, onGoal, ignored},
        FormerWritingCase{"redo", BoardKey::redo, board, inside, ignored},
        FormerWritingCase{"a_letter", BoardKey::other, board, inside, passedOn},
        FormerWritingCase{"a_typed_character", BoardKey::character, board, inside, passedOn},
        FormerWritingCase{"escape", BoardKey::escape, board, onGoal, endsWriting},
        FormerWritingCase{"escape_inside", BoardKey::escape, board, inside, endsWriting},
        FormerWritingCase{"escape_at_a_card_that_Tab_reached", BoardKey::escape, item, inside,
                          does(ReturnToTargetSelection{})},
        FormerWritingCase{"arrow", BoardKey::left, board, inside, does(MoveWindowSelection{left})},
        FormerWritingCase{"return", BoardKey::enter, board, onGoal, does(RequestAddTodo{goalG})},
        FormerWritingCase{"menu", BoardKey::menu, board, onGoal, does(OpenMenu{})},
        FormerWritingCase{"space_at_a_button", BoardKey::space, button, onGoal, passedOn},
        FormerWritingCase{"space_in_a_field", BoardKey::space, field, onGoal, passedOn},
        FormerWritingCase{"space_at_a_card_that_Tab_reached", BoardKey::space, item, inside,
                          does(ActivateSelection{})}),
    caseName);

} // namespace
} // namespace kelpa::test
