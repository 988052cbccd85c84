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
    case BoardKey::undo:
    case BoardKey::redo:
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
    case BoardKey::undo:
        return UndoChange{};
    case BoardKey::redo:
        return RedoChange{};
    default:
        return std::nullopt;
    }
}

} // namespace

KeyDecision decideKey(BoardKey key, const KeyContext& context)
{
    if (!context.isBoardActive || context.focus == KeyboardFocus::popup)
        return {};
    // A field takes back what was typed in it; a button has nothing of its own to take back.
    const bool isHistory = key == BoardKey::undo || key == BoardKey::redo;
    if (isHistory && context.focus != KeyboardFocus::textInput)
        return {.leavesFocus = false, .command = boardCommand(key, context.navigation)};
    const bool isArrow = direction(key).has_value();
    // Letters, Space and Return belong to the field or the button; an arrow leaves it and moves the
    // selection in the same stroke.
    if (context.focus != KeyboardFocus::board && !isArrow)
        return {};
    return {.leavesFocus = context.focus != KeyboardFocus::board,
            .command = boardCommand(key, context.navigation)};
}

} // namespace kelpa
