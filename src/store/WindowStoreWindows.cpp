// The windows of the desktop and their assignments.

#include "platform/Applications.h"
#include "store/WindowStoreParts.h"
#include "store/board/GoalOrder.h"
#include "windows/WindowReconciliation.h"

#include <algorithm>
#include <chrono>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// How often the desktop is looked at when nothing tells of a change.
constexpr Scheduler::Duration refreshInterval = 2s;

/// How often one window's preview is renewed.
constexpr Scheduler::Duration previewInterval = 600ms;

QSet<GoalID> idsOf(const QList<Goal>& goals)
{
    QSet<GoalID> ids;
    ids.reserve(goals.size());
    for (const Goal& goal : goals)
        ids.insert(goal.id);
    return ids;
}

} // namespace

const QList<WindowItem>& WindowStore::filteredWindows() const
{
    if (!m_parts->filteredWindows)
        m_parts->filteredWindows = kelpa::filteredWindows(m_windows, m_searchText, QLocale());
    return *m_parts->filteredWindows;
}

QList<WindowItem> WindowStore::windows(std::optional<GoalID> goalID) const
{
    if (!m_parts->windowsByGoal)
        m_parts->windowsByGoal = windowsByGoal(
            filteredWindows(), [this](WindowID id) { return m_previews.contains(id); });
    return m_parts->windowsByGoal->of(goalID);
}

QList<WindowItem> WindowStore::windows(const TargetSelection& target) const
{
    if (target.isUnassigned())
        return windows(std::optional<GoalID>());
    if (const std::optional<GoalID> goalID = target.goalID())
        return windows(goalID);
    return {};
}

void WindowStore::refresh()
{
    const Update update(m_changes);
    updatePermissionState();
    if (m_isScreenCaptureTrusted) {
        m_parts->looks.lookNow();
    } else {
        m_parts->looks.cancel();
        finishLook({});
    }
}

void WindowStore::refreshInBackground()
{
    if (m_parts->looks.isUnderWay())
        return;
    const Update update(m_changes);
    updatePermissionState();
    m_parts->looks.lookInBackground(m_isScreenCaptureTrusted ? DiscoveryPasses::MayRead::yes
                                                             : DiscoveryPasses::MayRead::no);
}

void WindowStore::finishLook(const QList<WindowItem>& windows)
{
    const Update update(m_changes);
    migrateLegacyTerminalAssignments(windows);
    publish(m_windows, withAssignedGoals(windows, m_assignments, idsOf(m_goals)), Field::windows);
    reconcileNavigationWithWindows();
    m_parts->launches.finishLooks();
    if (m_parts->looks.takeMissedChange())
        refreshInBackground();
}

void WindowStore::noteWindowsChangedOnDesktop()
{
    m_parts->looks.noteChange();
    refreshInBackground();
}

void WindowStore::reconcileWithBoard()
{
    if (m_todoEditorGoalID && !hasGoal(*m_todoEditorGoalID))
        closeTodoEditor();
    const std::optional<GoalID> selected = m_boardNavigation.target.goalID();
    if (selected && !hasGoal(*selected))
        publishNavigation(BoardNavigationState::idle());
    publish(m_windows, withAssignedGoals(m_windows, m_assignments, idsOf(m_goals)), Field::windows);
    reconcileNavigationWithWindows();
    reconcileSelectionWithVisibleGoals();
}

void WindowStore::migrateLegacyTerminalAssignments(const QList<WindowItem>& windows)
{
    std::optional<Assignments> migrated =
        migratedTerminalAssignments(m_assignments, windows, idsOf(m_goals));
    if (!migrated)
        return;
    m_assignments = *std::move(migrated);
    saveState();
}

void WindowStore::assign(WindowID windowID, std::optional<GoalID> to)
{
    const Update update(m_changes);
    if (setAssignment(windowID, to))
        saveStep();
}

bool WindowStore::setAssignment(WindowID windowID, std::optional<GoalID> to)
{
    const auto window = std::ranges::find(std::as_const(m_windows), windowID, &WindowItem::id);
    if (window == m_windows.cend() || (to && !hasGoal(*to)) || window->goalID == to)
        return false;
    m_windows[std::distance(m_windows.cbegin(), window)].goalID = to;
    markChanged(Field::windows);
    if (to)
        m_assignments.insert(assignmentKey(windowID), *to);
    else
        m_assignments.remove(assignmentKey(windowID));
    reconcileNavigationWithWindows();
    return true;
}

void WindowStore::createGoal(const QString& title, WindowID windowID)
{
    const Update update(m_changes);
    const std::optional<GoalID> goalID = addGoal(title);
    if (!goalID)
        return;
    setAssignment(windowID, goalID);
    saveStep();
}

bool WindowStore::assign(const QSet<WindowID>& windowIDs, GoalID to)
{
    const Update update(m_changes);
    if (windowIDs.isEmpty() || !hasGoal(to))
        return false;
    QList<WindowItem> windows = m_windows;
    qsizetype found = 0;
    for (WindowItem& window : windows) {
        if (!windowIDs.contains(window.id))
            continue;
        window.goalID = to;
        ++found;
    }
    if (found != windowIDs.size())
        return false;
    if (!publish(m_windows, std::move(windows), Field::windows))
        return true;
    for (const WindowID windowID : windowIDs)
        m_assignments.insert(assignmentKey(windowID), to);
    reconcileNavigationWithWindows();
    saveStep();
    return true;
}

void WindowStore::startObserving()
{
    if (m_parts->observation)
        return;
    refresh();
    m_parts->observation = Parts::Observation{
        m_parts->scheduler.repeat(refreshInterval, [this] { refreshInBackground(); }),
        m_parts->scheduler.repeat(previewInterval,
                                  [this] { refreshPreviews(m_parts->scheduler.now()); }),
        m_parts->platform.windowServer.watchWindows([this] { noteWindowsChangedOnDesktop(); })};
    refreshPreviews(m_parts->scheduler.now());
}

void WindowStore::stopObserving()
{
    const Update update(m_changes);
    m_parts->observation.reset();
    m_parts->previewCaptures.cancel();
    m_parts->looks.cancel();
    publish(m_windows, {}, Field::windows);
    publish(m_previews, {}, Field::previews);
    reconcileNavigationWithWindows();
    // The one that was under way brings nothing any more.
    m_parts->launches.finishLooks();
}

} // namespace kelpa
