// The names of the interface's plain texts, by the screen that shows them.
#pragma once

#include <QObject>

#include <cstddef>

namespace kelpa {

/// A namespace of its own, so that QML can know the enumeration as a type: `CopyKey.NewGoal`.
namespace copykey {
Q_NAMESPACE

/// The order is the order of the rows in the files CopyRows….h. Names begin with a capital, which
/// QML demands; the values are plain `int`s, as QML passes them.
enum class CopyKey {
    // Header of the board.
    ProductName,
    Subtitle,
    KeyboardHint,
    DoubleTapHint,
    SearchWindowsOrApps,
    ClearSearch,
    RefreshWindows,
    AutoSortGoals,
    HideEmpty,
    HideEmptyHelp,
    ShowAll,
    ShowAllHelp,
    Language,
    NewGoal,
    // Permission banner.
    ScreenRecordingNeeded,
    ScreenRecordingText,
    AccessibilityNeeded,
    AccessibilityText,
    OpenSystemSettings,
    // Board and add-goal sheet.
    Board,
    Goals,
    AddGoal,
    AddFirstGoalHint,
    GoalsHiddenHint,
    Unsorted,
    UnsortedHint,
    CreateGoalTitle,
    CreateGoalText,
    CreateGoalPlaceholder,
    Cancel,
    Create,
    Undo,
    Redo,
    // Menu of a field in which one types; it begins with the two before.
    Cut,
    CopyText,
    Paste,
    SelectAll,
    // Goal card.
    MoreGoalActions,
    AddWindowsToGoal,
    OpenChrome,
    OpenTerminal,
    ShowAllWindows,
    RenameGoal,
    DeleteGoal,
    MoveGoalEarlier,
    MoveGoalLater,
    MoveToTop,
    MoveToBottom,
    GoalDeleted,
    GoalName,
    EnterGoalName,
    Save,
    Priority,
    PriorityP0,
    PriorityP1,
    PriorityP2,
    PriorityP3,
    DragWindowHere,
    // Todos.
    AllTodos,
    AllTodosSubtitle,
    NoTodosYet,
    AddTodo,
    EnterTodo,
    EditTodo,
    CopyAndDragTodo,
    CopyAndDragTodoHelp,
    GoToTodoInGoal,
    MoveToGoal,
    DeleteTodo,
    MoreTodoActions,
    MoveTodoUp,
    MoveTodoDown,
    TodoDeleted,
    TodoCopied,
    // Window card.
    Window,
    WindowPreview,
    WindowCardHelp,
    CloseAppProcess,
    PreviewNeedsPermission,
    PreviewNotYet,
    PreviewMinimized,
    // Window selection sheet.
    SelectWindowsText,
    NoMatchingWindows,
    AlreadyInGoal,
    WindowListChanged,
};
Q_ENUM_NS(CopyKey)

} // namespace copykey

using copykey::CopyKey;

/// Ends with the last key; the tables do not compile when they hold another number of rows.
inline constexpr std::size_t copyKeyCount =
    static_cast<std::size_t>(CopyKey::WindowListChanged) + 1;

} // namespace kelpa
