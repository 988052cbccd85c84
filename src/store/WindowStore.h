// The one observable object that holds the whole board: views read its values, and every gesture
// calls one of its operations. Main thread only.
#pragma once

#include "platform/Autostart.h"
#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"
#include "store/StoreValues.h"
#include "store/board/BoardImport.h"
#include "store/board/MovePlace.h"
#include "store/board/SaveProgress.h"

#include <QObject>
#include <QSet>
#include <QSize>

#include <functional>
#include <memory>
#include <variant>

namespace kelpa {

struct Platform;
struct TodoLine;

class WindowStore : public QObject, public StoreValues
{
    Q_OBJECT

public:
    enum class Observing : std::uint8_t { off, started };

    /// Loads the board from `settings`, or begins with an empty one that the stored board joins as
    /// soon as it can be read. The arguments outlive the store. `observing` says whether
    /// `startObserving` is called at once.
    WindowStore(const Platform& platform, SettingsStore& settings, Scheduler& scheduler,
                Observing observing = Observing::off);
    ~WindowStore() override;

    // Settings.
    void setLanguage(AppLanguage language);
    /// As `setLanguage`, and stores the present one, too, where none is stored.
    void chooseLanguage(AppLanguage language);
    void setAutoSortingGoals(bool isAutoSorting);
    /// Switched off, everything that is remembered is forgotten, until that is undone. Switched on,
    /// the windows that are listed are remembered. Both are steps.
    void setRememberingWindows(bool isRemembering);
    void setHidingGoalsWithoutOpenTodos(bool isHiding);
    void setClosingQuitting(bool isQuitting);
    /// Whether it is the first time that Kelpa stays when its window is closed, which the person is
    /// to be told; it is not from then on.
    bool explainClosing();
    /// Tells the person.
    void noteSessionStartFailed(AutostartOutcome outcome);
    void noteShortcutsFailed();
    /// Folding selects "Unsorted" itself where a window is selected that is folded away.
    void setUnsortedFold(UnsortedFold fold);
    void setSearchText(const QString& text);
    /// Shows the goals that are hidden, and selects the first window or goal in them that the
    /// search finds; does nothing where it finds none.
    void showHiddenFindings();
    /// Retries now what could not be read or written.
    void retrySaving();
    /// The same before the board is closed or replaced, waiting a frame at most. While changes are
    /// under way, `savingEnded` is still to come.
    SaveProgress save();
    SaveProgress saveProgress() const;
    /// The person knows of the file that was moved aside.
    void dismissTrouble();
    /// Shows the folder with the board's file.
    void showStoredFolder();
    /// At the end of the program: retries what failed until now, and waits up to 20 s for the disk.
    void finishSaving();
    /// The same where nothing may be drawn any more: without a signal.
    void finishSavingInSilence();

    // Undo. A step is one operation of a person that changed goals, todos, assignments or pins,
    // with its automatic consequences. Changes on the desktop, settings, selection and search are
    // no steps; where switching the automatic order on moved goals, undoing that also switches it
    // off, and forgetting windows, or declining what one is offered, is a step of its own.
    /// Takes the last step back, with the very same records; does nothing when there is none.
    void undo();
    /// Repeats the step undone last, unless another one followed.
    void redo();
    /// Replaces goals, todos and assignments by those of a backup, with a toast that offers to undo
    /// that step, or says that nothing differs.
    void restoreBackup(const BoardContents& backup);
    /// Adds what a file holds to goals and todos, or replaces them by it, with a toast that offers
    /// to undo that step, or says that nothing differs. Adding selects what came.
    void importBoard(const ImportedBoard& import, ImportMode mode);
    /// The same, with what was worked out ahead for `boardContents`, unless the board has changed.
    void importBoard(const ImportedBoard& import, ImportMode mode, const PreparedImport& prepared);
    /// Goals, todos and assignments as they are now. Cheap.
    BoardContents boardContents() const;
    /// While held, the toast stays; released, it starts its full time again.
    void setToastHeld(bool isHeld);

    // Goals. An unknown goal, and a title that is empty when trimmed, make them no-ops.
    void createGoal(const QString& title);
    void renameGoal(GoalID goalID, const QString& title);
    /// Deletes the goal with its todos and its windows' assignments.
    void deleteGoal(GoalID goalID);
    /// Moves a goal; only while goals are not sorted automatically.
    void moveGoal(GoalID sourceID, GoalID targetID, MovePlace place = MovePlace::before);
    /// Says in a toast, while goals are sorted automatically, that nobody can move them.
    void explainAutomaticOrder();
    void setGoalPriority(GoalPriority priority, GoalID goalID);

    // Todos. A list is named by its goal, the unassigned list by none.
    void addTodo(const QString& title, std::optional<GoalID> to);
    /// Adds all of them in one step; blank ones are left out.
    void addTodos(const QList<TodoLine>& todos, std::optional<GoalID> to);
    void updateTodo(TodoID todoID, const QString& title, std::optional<GoalID> in);
    /// Advances the status by one step: todo, in progress, completed, todo.
    void toggleTodo(TodoID todoID, std::optional<GoalID> in);
    /// Sets the status in one step, whatever it was.
    void setTodoStatus(TodoID todoID, TodoStatus status, std::optional<GoalID> in);
    void deleteTodo(TodoID todoID, std::optional<GoalID> from);
    /// Deletes what is completed in the list, in one step.
    void deleteCompletedTodos(std::optional<GoalID> from);
    /// Moves a todo to another list, keeping its place in the order of the whole board.
    void moveTodo(TodoID todoID, std::optional<GoalID> from, std::optional<GoalID> to);
    /// Moves a todo within the order of the whole board, keeping its list.
    void moveTodo(TodoID todoID, TodoID targetID, MovePlace place = MovePlace::before);
    /// Copies the todo to the clipboard, with a toast.
    void copyTodo(const TodoItem& todo);
    /// Copies the command that brings Kelpa forward, for a key of the desktop.
    void copyShowCommand();
    /// Says in a toast that a file has been written, or could not be.
    void announceExport(bool isWritten);
    void requestAddTodo(GoalID goalID);
    void cancelTodoEditor();

    // Windows.
    /// Starts a discovery pass and waits at most 12 ms for it; a slower one is published when it
    /// ends. During another pass, begins once that has ended, and does not wait.
    void refresh();
    /// Starts a discovery pass, unless one is under way.
    void refreshInBackground();
    /// Starts a discovery pass now, or after the one under way, which may have missed the change.
    void noteWindowsChangedOnDesktop();
    void assign(WindowID windowID, std::optional<GoalID> to);
    /// Assigns all of the windows or, when one is no longer listed, none, and returns false.
    bool assign(const QSet<WindowID>& windowIDs, GoalID to);
    /// Creates a goal with the window in it; without the window if it is no longer listed.
    void createGoal(const QString& title, WindowID windowID);
    /// Starts the first discovery pass, so that it runs while the views load. To be called once,
    /// before `startObserving`. Its windows are published only if they may be read, which the pass
    /// may be the first to find out.
    void discoverAhead();
    /// Waits at most `limit` for the pass under way and for what is remembered of windows, so that
    /// the first frame shows both; what is slower is published when it is there.
    void awaitWindows(Scheduler::Duration limit);
    /// Gives the window the goal of a remembered one that it was offered.
    void acceptRecall(WindowID windowID, WindowID remembered);
    /// It is none of the remembered windows that it was offered, in one step.
    void declineRecall(WindowID windowID);
    /// Forgets windows that goals had and that are not there.
    void forgetWindows(const QSet<WindowID>& remembered);
    /// Keeps windows and previews fresh from now on; a second call does nothing.
    void startObserving();
    void stopObserving();
    /// Whether `windows` follows the desktop: not before the first frame, nor while the board is
    /// closed.
    bool isObserving() const;

    // Virtual desktops.
    /// Whether the desktop sends windows to virtual desktops and lets Kelpa do that; changes with
    /// `abilities` and `isAccessibilityTrusted`.
    bool canPinGoals() const;
    /// Pins the goal to the virtual desktop with that number, from 1, or to none, in one step. Its
    /// windows are sent there, also where it was pinned to that one before, and so is each window
    /// that joins it later. Does nothing for a desktop that is not there, and where not
    /// `canPinGoals`, unless it is for none. Going back to another pin by undo sends the windows
    /// there as well; without a pin they stay.
    void pinGoal(GoalID goalID, std::optional<int> desktop);
    /// Whether `workOn` has something to do: a window of the goal, or a desktop that it is pinned
    /// to.
    bool hasWorkplace(GoalID goalID) const;

    // Acting on windows. Failures are silent.
    /// Selects the window on the board and activates it.
    void focus(const WindowItem& window);
    /// Activates all windows of the goal, the last one topmost.
    void showAllWindows(GoalID goalID);
    /// Whether the desktop minimises windows and lets Kelpa do that; changes with `abilities` and
    /// `isAccessibilityTrusted`.
    bool canArrangeWindows() const;
    /// Whether `workOn` does something for such a goal: where `canArrangeWindows`, and else for one
    /// that is pinned to a virtual desktop which Kelpa can show now.
    bool canWorkOn(GoalID goalID) const;
    /// Brings the windows of the goal forward and minimises the others, as `arrangementFor` says,
    /// on the virtual desktop that it is pinned to, if that is there. Without `canArrangeWindows`
    /// the others stay. Does nothing unless `canWorkOn`.
    void workOn(GoalID goalID);
    /// Gives the windows the state that they had before the person began to work on a goal, but
    /// those that the person has changed since. Lasts as long as the program. No step. `sent` is
    /// called from the event loop once all of it has been requested, if there is anything to do and
    /// it took 2 seconds at most: later, the person may be elsewhere.
    void goBack(std::function<void()> sent = {});
    /// Asks the application that owns the window to quit.
    void closeProcess(const WindowItem& window);
    /// Opens a new window and assigns it to the goal when it appears. A toast says where nothing
    /// can be opened, unless one is shown that offers something.
    void createTerminal(GoalID goalID);
    void createChrome(GoalID goalID);
    /// Opens windows again that the goal had and that are not there, and puts each into it when it
    /// appears. A toast says which application or document is gone.
    void reopen(GoalID goalID, const QSet<WindowID>& remembered);

    // Previews and permissions.
    /// Captures the window whose turn it is.
    void refreshPreviews(Scheduler::Time now);
    /// A card of the window came into view: without a preview it is captured before the others.
    void noteWindowInView(WindowID windowID);
    /// The board scrolls, now or at the scheduler's time: captures pause, to keep it smooth.
    void noteScrollActivity(Scheduler::Time now);
    void noteScrollActivity();
    /// The size of a preview on its card in pixels of the screen, as many as points until set.
    /// Windows that have a preview are captured again as their turns come.
    void setPreviewPixels(const QSize& pixels);
    /// The text that a card shows instead of a preview; none when there is one or one is due.
    std::optional<QString> previewMessage(const WindowItem& window) const;
    /// Asks the desktop for the missing permissions, and opens the settings that grant them.
    void requestPermissions();
    /// Whether the desktop may give what it lacks when it is asked; changes with `abilities`.
    bool canRequestAbilities() const;
    /// Asks the desktop for that.
    void requestAbilities();

    // The keyboard selection.
    void moveTargetSelection(NavigationDirection direction);
    void moveWindowSelection(NavigationDirection direction);
    void activateTarget(const TargetSelection& target, EnterWindowLayer enterWindowLayer);
    /// Selects the window within its target, without raising it; does nothing when it is not shown.
    void selectWindow(WindowID windowID);
    /// Selects the goal, the column that has the todo, or the window, and has the board scroll
    /// there and highlight the todo. What hides it ends: the hiding of goals without open todos, a
    /// search for other windows. Does nothing for what is gone.
    void reveal(const std::variant<GoalID, TodoID, WindowID>& what);
    /// Enters the selected target, or switches to the selected window.
    void activateSelection();
    void returnToTargetSelection();
    void clearTargetSelection();
    /// The number of columns in which the board lays out its targets, at least 1.
    void setTargetGridColumnCount(int count);

Q_SIGNALS:
    // Of the published values. Each is emitted at the end of an operation that changed it, when the
    // store is consistent; a slot may call back into the store. `goalsChanged` is also emitted
    // whenever goals were sorted automatically, even when their order stayed the same.
    void windowsChanged();
    void goalsChanged();
    void unassignedTodosChanged();
    void lingeringTodoIDChanged();
    void previewsChanged();
    void boardNavigationChanged();
    void todoEditorGoalIDChanged();
    void todoEditorRequestIDChanged();
    void toastMessageChanged();
    void toastOffersUndoChanged();
    void toastOffersManualOrderChanged();
    void restorationIDChanged();
    void canUndoChanged();
    void canRedoChanged();
    void canGoBackChanged();
    void searchTextChanged();
    void isAccessibilityTrustedChanged();
    void isScreenCaptureTrustedChanged();
    void obstaclesChanged();
    void abilitiesChanged();
    void languageChanged();
    void isLanguageChosenChanged();
    void isAutoSortingGoalsChanged();
    void isHidingGoalsWithoutOpenTodosChanged();
    void unsortedFoldChanged();
    void isRememberingWindowsChanged();
    void isClosingQuittingChanged();
    void windowMemoryChanged();
    void pinsChanged();
    void isSavingSlowlyChanged();
    void troubleChanged();

    /// From the event loop, after `save`: the disk has taken or refused changes that were under
    /// way.
    void savingEnded();

private:
    struct Parts;
    using Field = StoreField;
    using Update = StoreChanges::Update;
    void unfoldForSelection();

    const std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa
