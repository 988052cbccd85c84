// What a key press does on the board: a decision from where the keyboard is and what is selected.
#pragma once

#include "navigation/BoardNavigationState.h"

#include <cstdint>
#include <optional>
#include <variant>

namespace kelpa {

/// The keys that drive the board. Keypad Enter counts as Return.
enum class BoardKey : std::uint8_t {
    left,
    right,
    up,
    down,
    space,
    enter,
    escape,
    /// The key for a context menu, or Shift with F10.
    menu,
    undo,
    redo,
    other,
};

/// Who has the keyboard within the main window.
enum class KeyboardFocus : std::uint8_t {
    /// Nobody: the board itself.
    board,
    /// A field in which one types.
    textInput,
    /// A button that the person went to with the Tab key. Its menu is that of what it belongs to.
    button,
    /// A card or a row that the person went to with the Tab key: it has a menu, and something to do
    /// on Return, but cannot be pressed.
    item,
    /// An open menu or sheet, which has keys of its own.
    popup,
};

struct KeyContext
{
    /// Kelpa has the keyboard and its window is on the screen.
    bool isBoardActive = false;
    KeyboardFocus focus = KeyboardFocus::board;
    BoardNavigationState navigation;
    bool isShiftHeld = false;
    /// An input method has not finished what is being written: every key is about that.
    bool isComposing = false;
    /// What the field in which one types could take back, or do again, itself.
    bool canFieldUndo = false;
    bool canFieldRedo = false;
    /// The field in which one types looks for something: below it stands what it has found.
    bool isSearching = false;
};

struct MoveTargetSelection
{
    NavigationDirection direction;
    friend bool operator==(const MoveTargetSelection&, const MoveTargetSelection&) = default;
};
struct MoveWindowSelection
{
    NavigationDirection direction;
    friend bool operator==(const MoveWindowSelection&, const MoveWindowSelection&) = default;
};
struct ActivateSelection
{
    friend bool operator==(const ActivateSelection&, const ActivateSelection&) = default;
};
struct ReturnToTargetSelection
{
    friend bool operator==(const ReturnToTargetSelection&,
                           const ReturnToTargetSelection&) = default;
};
struct RequestAddTodo
{
    GoalID goalID;
    friend bool operator==(const RequestAddTodo&, const RequestAddTodo&) = default;
};
/// That of the selected window or goal; of the board while what is selected has none.
struct OpenMenu
{
    friend bool operator==(const OpenMenu&, const OpenMenu&) = default;
};
struct UndoChange
{
    friend bool operator==(const UndoChange&, const UndoChange&) = default;
};
struct RedoChange
{
    friend bool operator==(const RedoChange&, const RedoChange&) = default;
};

using BoardCommand =
    std::variant<MoveTargetSelection, MoveWindowSelection, ActivateSelection,
                 ReturnToTargetSelection, RequestAddTodo, OpenMenu, UndoChange, RedoChange>;

struct KeyDecision
{
    /// First the todo editor is cancelled.
    bool cancelsEditor = false;
    /// First whoever has the keyboard gives it back to the board.
    bool leavesFocus = false;
    /// Absent: the key is passed on to whoever has the keyboard.
    std::optional<BoardCommand> command;

    friend bool operator==(const KeyDecision&, const KeyDecision&) = default;
};

KeyDecision decideKey(BoardKey key, const KeyContext& context);

} // namespace kelpa
