// The store's values, and which of the published ones changed in the operation under way.
#pragma once

#include "model/BoardJson.h"
#include "model/Goal.h"
#include "model/GoalPins.h"
#include "model/Preview.h"
#include "model/RememberedWindow.h"
#include "model/WindowItem.h"
#include "navigation/BoardNavigationState.h"
#include "navigation/WindowFold.h"
#include "platform/DesktopAbilities.h"
#include "store/StoreChanges.h"
#include "store/board/BoardHistory.h"
#include "store/board/BoardSearch.h"
#include "store/board/TroubleNotice.h"
#include "store/desktop/Permissions.h"
#include "text/AppLanguage.h"
#include "windows/PinnedDesktops.h"
#include "windows/WindowSearch.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>

namespace kelpa {

/// Main thread. `WindowStore` says what the published values mean. Code that changes one in place
/// marks it afterwards.
class StoreState
{
public:
    using Field = StoreField;

    /// Calls `notify` at the end of each operation.
    explicit StoreState(StoreChanges::Notify notify) : changes(std::move(notify)) {}

    QList<WindowItem> windows;
    QList<Goal> goals;
    QList<TodoItem> unassignedTodos;
    std::optional<TodoID> lingeringTodoID;
    Previews previews;
    BoardNavigationState boardNavigation;
    std::optional<GoalID> todoEditorGoalID;
    std::int64_t todoEditorRequestID = 0;
    std::optional<QString> toastMessage;
    std::int64_t restorationID = 0;
    bool toastOffersUndo = false;
    bool toastOffersManualOrder = false;
    bool canUndo = false;
    bool canRedo = false;
    bool canGoBack = false;
    QString searchText;
    bool isAccessibilityTrusted = false;
    bool isScreenCaptureTrusted = false;
    Obstacles obstacles;
    DesktopAbilities abilities;
    AppLanguage language = AppLanguage::chinese;
    /// True until it turns out that none is stored.
    bool isLanguageChosen = true;
    bool isAutoSortingGoals = true;
    bool isHidingGoalsWithoutOpenTodos = false;
    UnsortedFold unsortedFold = UnsortedFold::folded;
    bool isRememberingWindows = true;
    bool isClosingQuitting = false;
    bool isSavingSlowly = false;
    /// By listed window without a goal: what it may be, likeliest first. One for each goal.
    QHash<WindowID, QList<RecalledWindow>> recallOffers;
    /// By goal: the windows that it had and that are not there, seen last first.
    QHash<GoalID, QList<RememberedWindow>> absentWindows;
    /// The goals some of whose absent windows were there since the start.
    QSet<GoalID> goalsWithClosedWindows;
    GoalPins pins;
    /// Which desktops they mean.
    PinnedDesktops pinnedDesktops;
    /// As `DiscoverySource::virtualDesktops`.
    QStringList virtualDesktops;
    /// As `DiscoverySource::unofferedDesktops`.
    QList<int> unofferedDesktops;
    std::optional<TroubleNotice> trouble;

    // Values without a signal of their own.

    /// The person has been told that Kelpa stays when its window is closed.
    bool isClosingExplained = false;
    Assignments assignments;
    std::optional<TodoID> restoredTodoID;
    /// The windows to which a person gave a place, or none, where they were offered a goal.
    QSet<WindowID> answeredOffers;

    StoreChanges changes;

    /// Assigns `value` to `member` and marks its field when they differ; returns whether they did.
    template <class Value>
    bool assign(Value& member, std::type_identity_t<Value> value, Field field)
    {
        if (member == value)
            return false;
        member = std::move(value);
        markChanged(field);
        return true;
    }
    /// Only within an operation. Also drops what is derived from the field.
    void markChanged(Field field);

    BoardVersion version() const
    {
        return {{goals, unassignedTodos, assignments, pins},
                isAutoSortingGoals,
                isRememberingWindows,
                answeredOffers,
                desktopLinks()};
    }
    DesktopLinks desktopLinks() const { return pinnedDesktops.linksOf(pins); }

    // Goals and todos.

    bool hasGoal(GoalID goalID) const { return goalWith(goalID, goals) != nullptr; }
    /// Whether the board shows a goal: false if it has no open todo and such goals are hidden.
    bool isVisible(const Goal& goal) const;
    bool isVisible(GoalID goalID) const;
    QList<GoalID> visibleGoalIDs() const;
    EmptyGoals emptyGoals() const
    {
        return isHidingGoalsWithoutOpenTodos ? EmptyGoals::hidden : EmptyGoals::shown;
    }
    /// The list of the goal, the unassigned list for none; null when there is no such goal.
    QList<TodoItem>* todoList(std::optional<GoalID> goalID);
    void markTodosChanged(std::optional<GoalID> goalID);
    /// Marks the goals also when the order stays the same: the counts beside them have changed.
    void sortGoalsIfNeeded();

    // Windows.

    /// Publishes `discovered`, each window with the goal that it is assigned to; returns whether
    /// that differs from before.
    bool assignWindows(QList<WindowItem> discovered);
    QSet<GoalID> goalIDs() const;
    const QList<WindowItem>& filteredWindows() const;
    QList<WindowItem> windowsOf(const std::optional<GoalID>& goalID) const;
    /// As the search narrows them.
    QList<WindowItem> windowsOf(const TargetSelection& target) const;
    QList<WindowID> windowIDsOf(const TargetSelection& target) const;
    /// Whatever the search.
    QList<WindowID> allWindowIDsOf(const TargetSelection& target) const;
    const SearchFindings& findings() const;

private:
    // Computed when first asked for.
    mutable std::optional<QList<WindowItem>> m_filteredWindows;
    mutable std::optional<WindowsByGoal> m_windowsByGoal;
    mutable std::optional<SearchFindings> m_findings;
};

} // namespace kelpa
