// The keyboard selection.

#include "store/WindowStoreParts.h"

namespace kelpa {

void WindowStore::moveTargetSelection(NavigationDirection direction)
{
    const Update update(m_state.changes);
    m_parts->selection.moveTarget(direction);
}

void WindowStore::moveWindowSelection(NavigationDirection direction)
{
    const Update update(m_state.changes);
    m_parts->selection.moveWindow(direction);
    unfoldForSelection();
}

/// A person who goes on to a window that is folded away wants to see it, and those around it.
void WindowStore::unfoldForSelection()
{
    const bool isWithin =
        m_state.boardNavigation.target.isUnassigned() && selectedWindowIndex() >= foldedWindowCount;
    const qsizetype count = windows(std::optional<GoalID>()).size();
    if (isWithin && isFoldable(count) && !m_state.findings().isSearching)
        setUnsortedFold(UnsortedFold::unfolded);
}

void WindowStore::activateTarget(const TargetSelection& target, EnterWindowLayer enterWindowLayer)
{
    const Update update(m_state.changes);
    m_parts->selection.activate(target, enterWindowLayer);
}

void WindowStore::selectWindow(WindowID windowID)
{
    const Update update(m_state.changes);
    const WindowItem* const window = windowWith(windowID, m_state.windows);
    if (window == nullptr)
        return;
    const TargetSelection target = TargetSelection::of(window->goalID);
    const bool isShown = !window->goalID || m_state.isVisible(*window->goalID);
    if (isShown && m_state.windowIDsOf(target).contains(windowID))
        m_parts->selection.select(BoardNavigationState::inside(target, windowID));
}

void WindowStore::activateSelection()
{
    const Update update(m_state.changes);
    const TargetSelection target = m_state.boardNavigation.target;
    if (m_state.boardNavigation.layer == BoardNavigationLayer::targets) {
        activateTarget(target, EnterWindowLayer::yes);
        return;
    }
    const qsizetype index = selectedWindowIndex();
    if (index >= 0)
        focus(windows(target).at(index));
}

void WindowStore::returnToTargetSelection()
{
    const Update update(m_state.changes);
    m_parts->selection.select(returnedToTarget(m_state.boardNavigation));
}

void WindowStore::clearTargetSelection()
{
    const Update update(m_state.changes);
    m_parts->selection.select(BoardNavigationState::idle());
}

void WindowStore::setTargetGridColumnCount(int count)
{
    m_parts->selection.setTargetGridColumnCount(count);
}

} // namespace kelpa
