// The keyboard selection.

#include "navigation/BoardNavigation.h"
#include "store/WindowStoreParts.h"

#include <algorithm>

namespace kelpa {

namespace {

QList<WindowID> idsOf(const QList<WindowItem>& windows)
{
    QList<WindowID> ids;
    ids.reserve(windows.size());
    for (const WindowItem& window : windows)
        ids.append(window.id);
    return ids;
}

} // namespace

void WindowStore::moveTargetSelection(NavigationDirection direction)
{
    const Update update(m_changes);
    publishNavigation(movedTargetSelection(m_boardNavigation, targetSelections(visibleGoalIDs()),
                                           m_parts->targetGridColumnCount, direction));
}

void WindowStore::moveWindowSelection(NavigationDirection direction)
{
    const Update update(m_changes);
    publishNavigation(movedWindowSelection(m_boardNavigation,
                                           idsOf(windows(m_boardNavigation.target)), direction));
}

void WindowStore::activateTarget(const TargetSelection& target, EnterWindowLayer enterWindowLayer)
{
    const Update update(m_changes);
    if (const auto state =
            activatedTarget(target, enterWindowLayer, visibleGoalIDs(), idsOf(windows(target))))
        publishNavigation(*state);
}

void WindowStore::selectWindow(WindowID windowID)
{
    const Update update(m_changes);
    const auto found = std::ranges::find(m_windows, windowID, &WindowItem::id);
    if (found == m_windows.end())
        return;
    const TargetSelection target = TargetSelection::of(found->goalID);
    const bool isShown = !found->goalID || visibleGoalIDs().contains(*found->goalID);
    if (isShown && idsOf(windows(target)).contains(windowID))
        publishNavigation(BoardNavigationState::inside(target, windowID));
}

void WindowStore::activateSelection()
{
    const Update update(m_changes);
    const BoardNavigationState state = m_boardNavigation;
    if (state.layer == BoardNavigationLayer::targets) {
        activateTarget(state.target, EnterWindowLayer::yes);
        return;
    }
    const QList<WindowItem> shown = windows(state.target);
    const auto selected =
        std::ranges::find(shown, state.selectedWindowID,
                          [](const WindowItem& each) { return std::optional(each.id); });
    if (selected != shown.end())
        focus(*selected);
}

void WindowStore::returnToTargetSelection()
{
    const Update update(m_changes);
    publishNavigation(returnedToTarget(m_boardNavigation));
}

void WindowStore::clearTargetSelection()
{
    const Update update(m_changes);
    publishNavigation(BoardNavigationState::idle());
}

void WindowStore::setTargetGridColumnCount(int count)
{
    m_parts->targetGridColumnCount = count;
}

void WindowStore::publishNavigation(const BoardNavigationState& state)
{
    publish(m_boardNavigation, BoardNavigationState(state), Field::boardNavigation);
}

void WindowStore::reconcileNavigationWithWindows()
{
    publishNavigation(
        reconciledWithWindows(m_boardNavigation, idsOf(windows(m_boardNavigation.target))));
}

void WindowStore::reconcileSelectionWithVisibleGoals()
{
    if (!m_isHidingGoalsWithoutOpenTodos)
        return;
    const std::optional<GoalID> selected = m_boardNavigation.target.goalID();
    if (!selected || visibleGoalIDs().contains(*selected))
        return;
    if (m_todoEditorGoalID == selected)
        closeTodoEditor();
    publishNavigation(BoardNavigationState::idle());
}

} // namespace kelpa
