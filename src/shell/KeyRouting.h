// Decides what a key press does on the board, from where the keyboard focus is and what is
// selected.
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
    /// The context-menu key, or Shift+F10.
    menu,
    undo,
    redo,
    /// Types a character, and is not Space.
    character,
    other,
};

/// What has the keyboard focus within the main window.
enum class KeyboardFocus : std::uint8_t {
    /// Nothing: the board itself.
    board,
    /// A text field.
    textInput,
    /// A button that the person reached with Tab. Its menu is that of the item it belongs to.
    button,
    /// A card or a row that the person reached with Tab: it has a menu and reacts to Return, but
    /// cannot be pressed.
    item,
    /// An open menu or sheet, which handles keys itself.
    popup,
};

struct KeyContext
{
    /// Kelpa's window is active and on the screen.
    bool isBoardActive = false;
    KeyboardFocus focus = KeyboardFocus::board;
    BoardNavigationState navigation;
    bool isShiftHeld = false;
    /// An input method is composing: every key belongs to it.
    bool isComposing = false;
    /// Whether the text field could undo or redo by itself.
    bool canFieldUndo = false;
    bool canFieldRedo = false;
    /// The text field is the search field, whose matches are shown below it.
    bool isSearching = false;
    /// The person was writing in a field that gave the keyboard up to another program, and may
    /// believe to be writing in it still: nothing was done on the board since.
    bool wasWriting = false;
    /// A search narrows the windows that the board shows.
    bool hasSearch = false;
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
/// The menu of the selected window or goal; of the board when the selection has none.
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
    /// First cancel the todo editor.
    bool cancelsEditor = false;
    /// First return the keyboard focus to the board.
    bool leavesFocus = false;
    /// Forget that the person was writing.
    bool endsWriting = false;
    /// The key does nothing and reaches no item. There is no command.
    bool isIgnored = false;
    /// First move the keyboard focus to the search field, which gets the key.
    bool startsSearch = false;
    /// Also end the search; the key is passed on.
    bool endsSearch = false;
    /// Absent: pass the key on to the item with the focus.
    std::optional<BoardCommand> command;

    friend bool operator==(const KeyDecision&, const KeyDecision&) = default;
};

/// What a key press does on the board; nothing while the board is not active or when the key
/// belongs to the item with the focus. Of the keys that belong to the board, an arrow also takes
/// the focus from that item and cancels what is typed in a field.
KeyDecision decideKey(BoardKey key, const KeyContext& context);

} // namespace kelpa
