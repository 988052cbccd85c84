#include "shell/KeyRouting.h"

namespace kelpa {

namespace {

std::optional<NavigationDirection> direction(BoardKey key)
{
    switch (key) {
    case BoardKey::left:
        return NavigationDirection::left;
    case BoardKey::right:
        return NavigationDirection::right;
    case BoardKey::up:
        return NavigationDirection::up;
    case BoardKey::down:
        return NavigationDirection::down;
    case BoardKey::space:
    case BoardKey::enter:
    case BoardKey::escape:
    case BoardKey::menu:
    case BoardKey::undo:
    case BoardKey::redo:
    case BoardKey::character:
    case BoardKey::other:
        return std::nullopt;
    }
    Q_UNREACHABLE();
}

std::optional<BoardCommand> boardCommand(BoardKey key, const BoardNavigationState& navigation)
{
    const bool isInside = navigation.layer == BoardNavigationLayer::windows;
    if (const std::optional<NavigationDirection> moved = direction(key)) {
        if (isInside)
            return MoveWindowSelection{*moved};
        return MoveTargetSelection{*moved};
    }
    switch (key) {
    case BoardKey::space:
        return ActivateSelection{};
    case BoardKey::enter: {
        const std::optional<GoalID> goalID = navigation.target.goalID();
        if (isInside || !goalID)
            return std::nullopt;
        return RequestAddTodo{*goalID};
    }
    case BoardKey::escape:
        return isInside ? std::optional<BoardCommand>(ReturnToTargetSelection{}) : std::nullopt;
    case BoardKey::menu:
        return OpenMenu{};
    case BoardKey::undo:
        return UndoChange{};
    case BoardKey::redo:
        return RedoChange{};
    case BoardKey::left:
    case BoardKey::right:
    case BoardKey::up:
    case BoardKey::down:
    case BoardKey::character:
    case BoardKey::other:
        return std::nullopt;
    }
    Q_UNREACHABLE();
}

/// Whether the key belongs to the text field with the focus.
bool isForTextField(BoardKey key, const KeyContext& context)
{
    if (context.isComposing)
        return true;
    // Shift with an arrow selects text.
    if (direction(key))
        return context.isShiftHeld || (key == BoardKey::down && context.isSearching);
    // A field undoes what was typed in it; one in which nothing was typed leaves undo to the board.
    // A field that has undone everything keeps the key all the same: a press too many, or a held
    // key, is not meant for the board.
    if (key == BoardKey::undo || key == BoardKey::redo)
        return context.canFieldUndo || context.canFieldRedo;
    return true;
}

/// Whether a person presses the key in the middle of a text, where it means the text.
bool isPartOfWriting(BoardKey key)
{
    return key == BoardKey::space || key == BoardKey::undo || key == BoardKey::redo;
}

/// Whether the key belongs to the item with the focus.
bool isForFocusedItem(BoardKey key, const KeyContext& context)
{
    switch (context.focus) {
    case KeyboardFocus::board:
        return false;
    case KeyboardFocus::textInput:
        return isForTextField(key, context);
    case KeyboardFocus::button:
        return key == BoardKey::space || key == BoardKey::enter || key == BoardKey::menu;
    case KeyboardFocus::item:
        return key == BoardKey::enter || key == BoardKey::menu;
    case KeyboardFocus::popup:
        return true;
    }
    Q_UNREACHABLE();
}

/// Whether the key begins a search: a character that nothing else has a use for. Whoever may be
/// going on with the text of a field does not mean the search.
bool startsSearch(BoardKey key, const KeyContext& context)
{
    return key == BoardKey::character && context.focus == KeyboardFocus::board &&
           !context.wasWriting;
}

/// Whether Escape, which goes back from a window to its target, has nothing else to do.
bool endsSearch(BoardKey key, const KeyContext& context)
{
    return key == BoardKey::escape && context.hasSearch &&
           context.navigation.layer == BoardNavigationLayer::targets;
}

} // namespace

KeyDecision decideKey(BoardKey key, const KeyContext& context)
{
    if (!context.isBoardActive || isForFocusedItem(key, context))
        return {};
    // Whoever goes on with a sentence must not raise a window by its spaces.
    const bool mayBeWriting = context.wasWriting && context.focus == KeyboardFocus::board;
    if (mayBeWriting && isPartOfWriting(key))
        return {.isIgnored = true, .command = std::nullopt};
    // Going back as well would leave the field, and so store a title that is half written.
    if (mayBeWriting && key == BoardKey::escape)
        return {.endsWriting = true, .isIgnored = true, .command = std::nullopt};
    // An arrow leaves a field or a button and moves the selection in the same stroke. Leaving a
    // field discards what was typed in it.
    const bool leavesFocus = context.focus != KeyboardFocus::board && direction(key).has_value();
    return {.cancelsEditor = leavesFocus && context.focus == KeyboardFocus::textInput,
            .leavesFocus = leavesFocus,
            .endsWriting = false,
            .isIgnored = false,
            .startsSearch = startsSearch(key, context),
            .endsSearch = endsSearch(key, context),
            .command = boardCommand(key, context.navigation)};
}

} // namespace kelpa
