// The keys of the interface's plain texts, grouped by the screen that shows them.
#pragma once

#include <QObject>

#include <cstddef>

namespace kelpa {

/// A namespace of its own, so that QML sees the enumeration as a type: `CopyKey.NewGoal`.
namespace copykey {
Q_NAMESPACE

/// In the order of the rows in CopyRowsBoard.h, CopyRowsGoals.h, CopyRowsWindows.h,
/// CopyRowsTrouble.h and CopyRowsDesktop.h. Names begin with a capital because QML requires it; the
/// values are plain `int`s, as QML passes them.
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
    WindowManagerNeeded,
    WindowManagerText,
    CompositeNeeded,
    CompositeText,
    // Offer of a language.
    ContinueInLanguage,
    // Notice of a slow disk.
    StillSaving,
    // Board and add-goal sheet.
    Board,
    Goals,
    AddGoal,
    AddFirstGoalHint,
    FirstSteps,
    FirstStepGoal,
    FirstStepWindow,
    GoalsHiddenHint,
    Unsorted,
    UnsortedHint,
    ShowFewerWindows,
    CreateGoalTitle,
    CreateGoalText,
    CreateGoalPlaceholder,
    Cancel,
    Create,
    Undo,
    Redo,
    KeyboardShortcuts,
    Close,
    GoalsSortThemselves,
    StopSorting,
    RememberWindows,
    WindowsForgotten,
    // Menu of a text field, which begins with Undo and Redo.
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
    MoveGoalLeft,
    MoveGoalRight,
    MoveToBeginning,
    MoveToEnd,
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
    LastTodoCompleted,
    TodoCopied,
    // Window card.
    Window,
    WindowPreview,
    WindowCardHelp,
    CloseAppProcess,
    PreviewNeedsPermission,
    PreviewNotYet,
    PreviewMinimized,
    PutWindowBack,
    OtherWindow,
    OpenAgain,
    OpenAllAgain,
    ForgetWindow,
    ForgetAllWindows,
    // Window selection sheet.
    SelectWindowsText,
    NoMatchingWindows,
    AlreadyInGoal,
    WindowListChanged,
    // Trouble with the board's file: what happened.
    BoardInUse,
    FileUnreachable,
    FileIsFolder,
    FileReadOnly,
    FileLocked,
    DiskFull,
    FileDamaged,
    FileNewer,
    DiskFailed,
    FileMovedAside,
    // What is safe.
    ChangesKept,
    ChangesJoinLater,
    StoredBoardUntouched,
    BoardRestored,
    BoardRecovered,
    // What helps.
    CloseOtherKelpa,
    CheckPermissions,
    MoveTheFolder,
    CloseOtherProgram,
    FreeSpace,
    MoveTheFile,
    UpdateKelpa,
    CheckDisk,
    // Buttons of the banner.
    TryAgain,
    ShowFolder,
    GotIt,
    // Question before closing, and notification.
    ChangesUnsaved,
    ChangesStillSaving,
    DiskSlow,
    CloseLosesChanges,
    CloseMayLoseChanges,
    CloseAnyway,
    // What the desktop lacks: heading of the notice.
    WindowsNotListed,
    OnlyX11Windows,
    WindowsNotActedOn,
    // Why, and what helps.
    CompositorNotRead,
    DesktopSilent,
    StartedWithoutWindows,
    XwaylandHasX11Windows,
    // Where something is missed.
    NoWindowsHere,
    NoPreviewsHere,
    DragWindowHelp,
    CloseWindow,
    DoubleTapNotHeard,
    CopyCommand,
    CommandCopied,
    // Backups.
    RestoreBackup,
    RestoreBackupTitle,
    BackupsText,
    NoBackupsYet,
    BackupUnreadable,
    BackupBeforeRestore,
    BackupNotKept,
    Restore,
    BackupRestored,
};
Q_ENUM_NS(CopyKey)

} // namespace copykey

using copykey::CopyKey;

/// The tables do not compile when they have another number of rows.
inline constexpr std::size_t copyKeyCount = static_cast<std::size_t>(CopyKey::BackupRestored) + 1;

} // namespace kelpa
