// What the store publishes: the values of the board as views read them.
#pragma once

#include "store/StoreState.h"

#include <QList>
#include <QString>

#include <cstdint>
#include <optional>
#include <utility>

namespace kelpa {

/// Main thread. `WindowStore` changes these values, and has a signal for each but the derived ones.
class StoreValues
{
public:
    StoreValues(const StoreValues&) = delete;
    StoreValues& operator=(const StoreValues&) = delete;

    const QList<WindowItem>& windows() const { return m_state.windows; }
    const QList<Goal>& goals() const { return m_state.goals; }
    const QList<TodoItem>& unassignedTodos() const { return m_state.unassignedTodos; }
    /// The last open todo of a goal for a moment after it was completed; absent otherwise.
    std::optional<TodoID> lingeringTodoID() const { return m_state.lingeringTodoID; }
    const Previews& previews() const { return m_state.previews; }
    const BoardNavigationState& boardNavigation() const { return m_state.boardNavigation; }
    /// The goal whose field for a new todo is open.
    std::optional<GoalID> todoEditorGoalID() const { return m_state.todoEditorGoalID; }
    /// Grows whenever that field is requested, and whenever it is closed.
    std::int64_t todoEditorRequestID() const { return m_state.todoEditorRequestID; }
    const std::optional<QString>& toastMessage() const { return m_state.toastMessage; }
    /// Whether the toast reports a deletion that `undo` would take back.
    bool toastOffersUndo() const { return m_state.toastOffersUndo; }
    /// Whether the toast offers to switch the automatic order off.
    bool toastOffersManualOrder() const { return m_state.toastOffersManualOrder; }
    /// Grows with every `undo` and `redo` that leaves something to see, and whenever a goal, todo
    /// or window is revealed: the place is selected.
    std::int64_t restorationID() const { return m_state.restorationID; }
    /// The todo that this brought back, changed, moved or revealed; absent when there is none.
    std::optional<TodoID> restoredTodoID() const { return m_state.restoredTodoID; }
    bool canUndo() const { return m_state.canUndo; }
    bool canRedo() const { return m_state.canRedo; }
    /// Whether `WindowStore::goBack` would restore something.
    bool canGoBack() const { return m_state.canGoBack; }
    const QString& searchText() const { return m_state.searchText; }
    bool isAccessibilityTrusted() const { return m_state.isAccessibilityTrusted; }
    bool isScreenCaptureTrusted() const { return m_state.isScreenCaptureTrusted; }
    /// What is in the way of the permissions that are missing.
    const Obstacles& obstacles() const { return m_state.obstacles; }
    /// What the desktop can do, as last reported.
    const DesktopAbilities& abilities() const { return m_state.abilities; }
    AppLanguage language() const { return m_state.language; }
    /// Whether a person has ever chosen it: false on a board that stores none.
    bool isLanguageChosen() const { return m_state.isLanguageChosen; }
    bool isAutoSortingGoals() const { return m_state.isAutoSortingGoals; }
    bool isHidingGoalsWithoutOpenTodos() const { return m_state.isHidingGoalsWithoutOpenTodos; }
    /// Whether a person wants to see all windows of "Unsorted", however many they are.
    UnsortedFold unsortedFold() const { return m_state.unsortedFold; }
    /// Whether the windows of goals are remembered, so that they find their goals again.
    bool isRememberingWindows() const { return m_state.isRememberingWindows; }
    /// Whether closing the window ends Kelpa, which stays otherwise.
    bool isClosingQuitting() const { return m_state.isClosingQuitting; }
    /// What a window without a goal may be, likeliest first, one for each goal that it may have
    /// been in. `windowMemoryChanged`.
    QList<RecalledWindow> recallOffers(WindowID windowID) const
    {
        return m_state.recallOffers.value(windowID);
    }
    /// The windows that the goal had and that are not there, seen last first.
    /// `windowMemoryChanged`.
    QList<RememberedWindow> absentWindows(GoalID goalID) const
    {
        return m_state.absentWindows.value(goalID);
    }
    /// Whether all of them are from an earlier run: none was there since the start.
    /// `windowMemoryChanged`.
    bool areFromLastTime(GoalID goalID) const
    {
        return !m_state.goalsWithClosedWindows.contains(goalID);
    }
    /// The number of the virtual desktop that the goal is pinned to, from 1; absent for none. Where
    /// numbers shift, that which the desktop has now. `pinsChanged`.
    std::optional<int> pinOf(GoalID goalID) const
    {
        const auto pin = m_state.pins.constFind(goalID);
        if (pin == m_state.pins.constEnd())
            return std::nullopt;
        return m_state.pinnedDesktops.numberOf(goalID, *pin);
    }
    /// Likewise, of all goals that are pinned.
    GoalPins pins() const { return m_state.pinnedDesktops.numbersOf(m_state.pins); }
    /// The names of the virtual desktops in their order, an empty one for a desktop without a name.
    /// Empty where there are none, and until a pass has found them. `pinsChanged`.
    const QStringList& virtualDesktops() const { return m_state.virtualDesktops; }
    /// The numbers of those that a list to choose from leaves out, since they are not there until a
    /// window is sent to them. `pinsChanged`.
    const QList<int>& unofferedDesktops() const { return m_state.unofferedDesktops; }
    /// Whether changes have been on their way to the disk for a second.
    bool isSavingSlowly() const { return m_state.isSavingSlowly; }
    /// What is wrong with the board's file; absent while nothing is.
    const std::optional<TroubleNotice>& trouble() const { return m_state.trouble; }

    // Derived values.
    /// The goals that the board shows: all, or those with open todos while the others are hidden.
    QList<Goal> visibleGoals() const;
    /// `windows` narrowed by `searchText`.
    const QList<WindowItem>& filteredWindows() const { return m_state.filteredWindows(); }
    /// What else `searchText` finds.
    const SearchFindings& searchFindings() const { return m_state.findings(); }
    HiddenGoals hiddenGoals() const;
    /// The filtered windows of a goal (of none: the unassigned ones), those with a preview first.
    QList<WindowItem> windows(std::optional<GoalID> id) const { return m_state.windowsOf(id); }
    QList<WindowItem> windows(const TargetSelection& of) const { return m_state.windowsOf(of); }
    /// The position of the selected window among those of its target; -1 without one.
    qsizetype selectedWindowIndex() const;
    /// How many of `windows` of none the board shows: the others are folded away.
    qsizetype shownUnsortedCount() const;
    const Assignments& assignments() const { return m_state.assignments; }

protected:
    explicit StoreValues(StoreChanges::Notify notify) : m_state(std::move(notify)) {}
    ~StoreValues() = default;

    StoreState m_state;
};

} // namespace kelpa
