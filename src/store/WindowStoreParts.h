// The parts behind the published values, and what the store does when one of them reports. For the
// store's own sources.
#pragma once

#include "platform/tasks/TaskGroup.h"
#include "platform/tasks/TaskQueue.h"
#include "store/BoardSelection.h"
#include "store/Toast.h"
#include "store/UndoSteps.h"
#include "store/WindowRecall.h"
#include "store/WindowStore.h"
#include "store/board/BoardSaver.h"
#include "store/desktop/ActivationQueue.h"
#include "store/desktop/DesktopObservation.h"
#include "store/desktop/DiscoveryPasses.h"
#include "store/desktop/FolderOpener.h"
#include "store/desktop/LaunchFollower.h"
#include "store/desktop/Permissions.h"
#include "store/desktop/PreviewCaptures.h"
#include "windows/PinnedWindows.h"
#include "windows/WorkContext.h"

#include <memory>
#include <optional>
#include <vector>

namespace kelpa {

struct WindowStore::Parts
{
    /// `owner` and `values` are the store that owns this and its values.
    Parts(WindowStore& owner, StoreState& values, const Platform& desktop, SettingsStore& storage,
          Scheduler& clock);

    // Steps of several operations, each within one.

    /// Adds a goal and selects it, without saving; none when the title is blank.
    std::optional<GoalID> addGoal(const QString& title);
    /// Does the same as `WindowStore::assign`, without saving; returns whether something changed.
    bool setAssignment(WindowID windowID, std::optional<GoalID> to);
    /// The lists go on showing a todo for a moment that is completed and that they would show no
    /// more.
    void letLinger(TodoID todoID);
    /// The goal that has the todo, or "Unsorted"; absent where it is gone.
    std::optional<TargetSelection> columnOf(TodoID todoID) const;
    /// Selects the place, also in a goal that is hidden, and has the board show it.
    void reveal(const BoardNavigationState& place, std::optional<TodoID> todoID = std::nullopt);
    /// A person, or a program that they started, gave the window a place, or none.
    void answerOffer(WindowID windowID);
    /// The listed window is the remembered one of the goal.
    void place(const RecalledWindow& window);
    /// Gives `windowID` the place of the remembered window, whose assignment ends.
    void replaceRemembered(WindowID windowID, WindowID remembered);
    /// Called after the number of open todos of a goal has changed.
    void reconcileWithTodoCounts();
    /// Also what the desktop can do.
    void publish(const Permissions::Granted& granted);
    void publishPermissions();
    /// Starts a discovery pass, unless one is under way.
    void startPass(WorkPriority priority);
    /// Begins with the first pictures of windows in view, while the store observes.
    void captureFirst();
    /// The desktop acts on windows, and Kelpa may let it.
    bool canAct() const;
    /// The desktop minimises windows as well.
    bool canArrange() const;
    void publishWork();
    /// The desktop sends windows to virtual desktops, and Kelpa may let it.
    bool canPin() const;
    /// Where the goal is pinned to, if Kelpa can go there now.
    std::optional<NumberedDesktop> reachablePin(GoalID goalID) const;
    /// A pass found the desktops of `discovered`. No step: the pins mean the same ones as before.
    void takeDesktops(const WindowDiscoveryBatch& discovered);
    /// Sends the windows that are due to the desktops of their goals.
    void sendToPins();
    /// The desktop captures windows, and Kelpa may let it.
    bool canCapture() const;

    // Reports of the parts, each an operation of its own.

    /// The stored board can be read.
    void loadState();
    void publishSaving();
    void publishToast();
    void publishAbilities();
    /// What windows may be, and what goals had, may have changed.
    void publishMemory();
    void publishPreviews(Previews captured, PreviewCaptures::Messages messages);
    /// A pass found `discovered`; what may be read is not what was published when it began.
    void publishAndFinishPass(const WindowDiscoveryBatch& discovered);
    /// A discovery pass found `discovered`, or may not read windows and found none.
    void finishPass(const WindowDiscoveryBatch& discovered);
    void migrateLegacyTerminalAssignments(const QList<WindowItem>& discovered);
    /// These windows are remembered ones: they go back to their goals.
    void takeRecalledWindows(const QList<RecalledWindow>& windows);
    /// Says `failure` where there is nothing to launch.
    void launch(LaunchableApplication application, GoalID goalID, CopyKey failure);
    /// The window that was opened for the goal has appeared, or the remembered one that was opened
    /// again.
    void takeLaunchedWindow(GoalID goalID, WindowID windowID, std::optional<WindowID> remembered);
    /// Goes to the virtual desktop of the goal, if the new window is sent there.
    void followToPin(GoalID goalID, WindowID windowID);
    /// A remembered window has been opened again, or not.
    void noteReopening(const RememberedWindow& window, const Reopening& reopening);
    /// The application of a remembered window of the goal was started and has opened none.
    void noteNoNewWindow(const RememberedWindow& window, GoalID goalID);
    void showTrouble(const QString& name, ReopeningTrouble::Kind kind);

    WindowStore& store;
    StoreState& state;
    const Platform platform;
    SettingsStore& settings;
    Scheduler& scheduler;

    BoardSelection selection;
    Toast toast;
    BoardSaver saver;
    FolderOpener folder;
    WindowRecall recall;
    UndoSteps steps;

    /// Ends the moment of a todo that lingers; absent while none does.
    TaskHandle lingering;
    Permissions permissions;
    /// Absent while the store does not observe.
    std::optional<DesktopObservation> observation;
    std::unique_ptr<Subscription> abilityWatch;
    DiscoveryPasses passes;
    /// Whether the pass under way is that of `discoverAhead`.
    bool isPassAhead = false;
    PreviewCaptures previewCaptures;
    ActivationQueue activations;
    /// What `workOn` changed.
    WorkContext work;
    /// What has been sent to virtual desktops.
    PinnedWindows pinned;
    LaunchFollower launches;
    /// Requests to quit.
    TaskQueue quits;
    /// The passes that follow them.
    TaskGroup tasks;
};

} // namespace kelpa
