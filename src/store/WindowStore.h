// The one observable object that holds the whole board. Every view reads from it and every gesture
// calls one of its operations. Main thread only.
#pragma once

#include "model/BoardJson.h"
#include "model/Goal.h"
#include "model/Preview.h"
#include "model/WindowItem.h"
#include "navigation/BoardNavigationState.h"
#include "platform/Platform.h"
#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"
#include "store/StoreChanges.h"
#include "store/board/MovePlace.h"
#include "text/AppLanguage.h"
#include "text/CopyKey.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QSize>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace kelpa {

struct BoardContents;
struct BoardVersion;

class WindowStore : public QObject
{
    Q_OBJECT

public:
    enum class Observing : std::uint8_t { off, started };

    /// Loads the board from `settings`; while it cannot be read, the board begins empty, and what
    /// is stored comes to it as soon as it can. What it is given outlives it. `observing` tells
    /// whether `startObserving` is called at once.
    WindowStore(const Platform& platform, SettingsStore& settings, Scheduler& scheduler,
                Observing observing = Observing::off);
    ~WindowStore() override;

    // Published state. Each has a signal below, emitted when the store is consistent again after an
    // operation in which the value came to differ; a slot may call back into the store. The signal
    // of the goals also comes when none of them differs: whenever they were sorted automatically,
    // as they are after every change that can move one, also that of a todo of no goal.

    const QList<WindowItem>& windows() const { return m_windows; }
    const QList<Goal>& goals() const { return m_goals; }
    const QList<TodoItem>& unassignedTodos() const { return m_unassignedTodos; }
    const Previews& previews() const { return m_previews; }
    const BoardNavigationState& boardNavigation() const { return m_boardNavigation; }
    /// The goal whose field for a new todo is open.
    std::optional<GoalID> todoEditorGoalID() const { return m_todoEditorGoalID; }
    /// Differs after every request to open that field and every cancel that closes it.
    std::int64_t todoEditorRequestID() const { return m_todoEditorRequestID; }
    const std::optional<QString>& toastMessage() const { return m_toastMessage; }
    /// The toast tells of a deletion, and `undo` takes that very deletion back.
    bool toastOffersUndo() const { return m_toastOffersUndo; }
    /// While somebody is about to answer the toast, it stays. Let go, it has its whole time again.
    void setToastHeld(bool isHeld);
    /// Differs after every `undo` and `redo` that changed goals, todos or assignments: where that
    /// happened is selected, and a person is to see it.
    std::int64_t restorationID() const { return m_restorationID; }
    /// The todo that was given back, changed or moved by the last of these; absent when it was
    /// none.
    std::optional<TodoID> restoredTodoID() const { return m_restoredTodoID; }
    bool canUndo() const { return m_canUndo; }
    bool canRedo() const { return m_canRedo; }
    const QString& searchText() const { return m_searchText; }
    bool isAccessibilityTrusted() const { return m_isAccessibilityTrusted; }
    bool isScreenCaptureTrusted() const { return m_isScreenCaptureTrusted; }
    AppLanguage language() const { return m_language; }
    bool isAutoSortingGoals() const { return m_isAutoSortingGoals; }
    bool isHidingGoalsWithoutOpenTodos() const { return m_isHidingGoalsWithoutOpenTodos; }

    // Derived state.

    /// The goals that the board shows: all, or those with open todos while the others are hidden.
    QList<Goal> visibleGoals() const;
    /// `windows` narrowed by `searchText`.
    const QList<WindowItem>& filteredWindows() const;
    /// The filtered windows of one goal (of none: the unassigned ones), those with a preview first.
    QList<WindowItem> windows(std::optional<GoalID> goalID) const;
    QList<WindowItem> windows(const TargetSelection& target) const;
    const Assignments& assignments() const { return m_assignments; }

    // Settings of the board.

    void setLanguage(AppLanguage language);
    void setAutoSortingGoals(bool isAutoSorting);
    void setHidingGoalsWithoutOpenTodos(bool isHiding);
    void setSearchText(const QString& text);

    /// Tries once more to read and to write what could not be until now: for the program's end.
    void finishSaving();

    // Taking back. A step is one operation of a person that changed goals, todos or assignments,
    // with all that followed from it by itself. What the desktop does, settings, selection and
    // search are no steps; but where switching the automatic order on moved goals, undoing that
    // also switches it off.

    /// Takes the last step back, with the very same records; nothing when there is none.
    void undo();
    /// Does what was last undone again, unless something else was done since.
    void redo();

    // Goals. An unknown goal, and a title of which trimming leaves nothing, make them no-ops.

    void createGoal(const QString& title);
    void renameGoal(GoalID goalID, const QString& title);
    /// With its todos and its windows' assignments.
    void deleteGoal(GoalID goalID);
    /// Only while goals are not sorted automatically.
    void moveGoal(GoalID sourceID, GoalID targetID, MovePlace place = MovePlace::before);
    void setGoalPriority(GoalPriority priority, GoalID goalID);

    // Todos. A list is named by its goal, the unassigned list by none.

    void addTodo(const QString& title, std::optional<GoalID> to);
    void updateTodo(TodoID todoID, const QString& title, std::optional<GoalID> in);
    /// One step on: todo, in progress, completed, todo.
    void toggleTodo(TodoID todoID, std::optional<GoalID> in);
    void deleteTodo(TodoID todoID, std::optional<GoalID> from);
    /// To another list, keeping its place in the order of the whole board.
    void moveTodo(TodoID todoID, std::optional<GoalID> from, std::optional<GoalID> to);
    /// Within the order of the whole board, keeping its list.
    void moveTodo(TodoID todoID, TodoID targetID, MovePlace place = MovePlace::before);
    /// To the clipboard, with a toast.
    void copyTodo(const TodoItem& todo);
    void requestAddTodo(GoalID goalID);
    void cancelTodoEditor();

    // Windows.

    /// Looks at the desktop now. What the window server can answer in time shows on return; if it
    /// takes longer, as soon as it answers.
    void refresh();
    /// Looks at the desktop in the background, unless a look is under way.
    void refreshInBackground();
    /// What is known of the windows has changed: looks in the background, and once more when a look
    /// is under way, which may have missed it.
    void noteWindowsChangedOnDesktop();
    void assign(WindowID windowID, std::optional<GoalID> to);
    /// All of them or, when one is not listed any more, none: false.
    bool assign(const QSet<WindowID>& windowIDs, GoalID to);
    /// A new goal with the window in it; a window that is not listed any more is left out.
    void createGoal(const QString& title, WindowID windowID);
    /// Keeps the windows fresh from now on; calling it again does nothing.
    void startObserving();
    void stopObserving();

    // Acting on windows. What cannot be done is left undone without a word.

    /// Selects the window on the board and brings it to the front.
    void focus(const WindowItem& window);
    /// Brings all windows of the goal to the front, the last one foremost.
    void showAllWindows(GoalID goalID);
    /// Asks the application that owns the window to quit.
    void closeProcess(const WindowItem& window);
    /// Opens a new window and assigns it to the goal when it appears.
    void createTerminal(GoalID goalID);
    void createChrome(GoalID goalID);

    // Previews and permissions.

    /// Renews the preview of the window whose turn it is.
    void refreshPreviews(Date now);
    /// The board moves: previews pause, so that it moves smoothly.
    void noteScrollActivity(Date now);
    /// As above, at the scheduler's time.
    void noteScrollActivity();
    /// In how many pixels a card draws a preview on its screen; at first, in as many as points.
    /// Windows that have a preview are captured anew as their turns come.
    void setPreviewPixels(const QSize& pixels);
    /// What a card shows instead of a preview; none when there is one.
    std::optional<QString> previewMessage(const WindowItem& window) const;
    /// Asks the desktop for what is missing, and opens its settings where that is granted.
    void requestPermissions();
    /// Whether the desktop has the settings that `requestPermissions` opens.
    bool hasPermissionSettings() const;

    // The keyboard selection.

    void moveTargetSelection(NavigationDirection direction);
    void moveWindowSelection(NavigationDirection direction);
    void activateTarget(const TargetSelection& target, EnterWindowLayer enterWindowLayer);
    /// The window within its target, without raising it; nothing when it does not show.
    void selectWindow(WindowID windowID);
    /// Into the selected target, or to the selected window itself.
    void activateSelection();
    void returnToTargetSelection();
    void clearTargetSelection();
    /// The number of columns in which the board lays out its targets, at least 1.
    void setTargetGridColumnCount(int count);

Q_SIGNALS:
    void windowsChanged();
    void goalsChanged();
    void unassignedTodosChanged();
    void previewsChanged();
    void boardNavigationChanged();
    void todoEditorGoalIDChanged();
    void todoEditorRequestIDChanged();
    void toastMessageChanged();
    void toastOffersUndoChanged();
    void restorationIDChanged();
    void canUndoChanged();
    void canRedoChanged();
    void searchTextChanged();
    void isAccessibilityTrustedChanged();
    void isScreenCaptureTrustedChanged();
    void languageChanged();
    void isAutoSortingGoalsChanged();
    void isHidingGoalsWithoutOpenTodosChanged();

private:
    using Field = StoreField;
    using Update = StoreChanges::Update;
    /// What works behind the published state.
    struct Parts;

    /// Assigns `value` when it differs, and notes the change.
    template <class Value>
    bool publish(Value& member, Value value, Field field);
    void markChanged(Field field);

    void loadState();
    /// Notes what the person changed since the last save as a step, and saves.
    void saveStep(std::vector<SettingsEntry> settings = {});
    /// As `saveStep`, with a toast that offers to take it back.
    void saveDeletion(CopyKey announcement);
    /// Writes the board, and `settings` with it. A board that is not yet joined with the stored one
    /// stays in memory.
    void saveState(std::vector<SettingsEntry> settings = {});
    /// Writes now; what cannot be written is tried again by itself.
    void write(const std::vector<SettingsEntry>& entries);
    void afterWriting(bool isDone);
    void retrySavingLater();
    void publishToast();

    BoardVersion version() const;
    /// Back or forth to `board`, in one save.
    void restore(BoardVersion board);
    /// Publishes them, in automatic order where that is on, and lets what depends on them follow.
    void showContents(BoardContents contents);
    void showMovedWindows(const QList<WindowItem>& before);
    void publishHistory();

    void sortGoalsIfNeeded();
    QList<GoalID> visibleGoalIDs() const;
    bool hasGoal(GoalID goalID) const;
    /// Makes a goal and selects it, without saving; none when the title is blank.
    std::optional<GoalID> addGoal(const QString& title);
    /// The list that a goal, or none, names; null when there is no such goal.
    QList<TodoItem>* todoList(std::optional<GoalID> goalID);
    /// Notes that the list which `goalID` names has changed.
    void markTodosChanged(std::optional<GoalID> goalID);
    void reconcileWithTodoCounts();

    /// Lets windows, selection and the open field follow the goals, todos and assignments.
    void reconcileWithBoard();
    /// As `assign`, without saving; true when something changed.
    bool setAssignment(WindowID windowID, std::optional<GoalID> to);
    void updatePermissionState();
    void publishPreviews(Previews previews);
    void migrateLegacyTerminalAssignments(const QList<WindowItem>& windows);
    void finishLook(const QList<WindowItem>& windows);
    /// The window that was opened for the goal has appeared.
    void takeNewWindow(GoalID goalID, WindowID windowID);

    void publishNavigation(const BoardNavigationState& state);
    void reconcileNavigationWithWindows();
    void reconcileSelectionWithVisibleGoals();
    void closeTodoEditor();

    QList<WindowItem> m_windows;
    QList<Goal> m_goals;
    QList<TodoItem> m_unassignedTodos;
    Previews m_previews;
    BoardNavigationState m_boardNavigation;
    std::optional<GoalID> m_todoEditorGoalID;
    std::int64_t m_todoEditorRequestID = 0;
    std::optional<QString> m_toastMessage;
    bool m_toastOffersUndo = false;
    std::int64_t m_restorationID = 0;
    std::optional<TodoID> m_restoredTodoID;
    bool m_canUndo = false;
    bool m_canRedo = false;
    QString m_searchText;
    bool m_isAccessibilityTrusted = false;
    bool m_isScreenCaptureTrusted = false;
    AppLanguage m_language = AppLanguage::chinese;
    bool m_isAutoSortingGoals = true;
    bool m_isHidingGoalsWithoutOpenTodos = false;
    Assignments m_assignments;

    StoreChanges m_changes;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa
