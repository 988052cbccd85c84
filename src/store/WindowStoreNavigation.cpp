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

void WindowStore::reveal(const std::variant<GoalID, TodoID, WindowID>& what)
{
    const Update update(m_state.changes);
    if (const auto* const goalID = std::get_if<GoalID>(&what)) {
        if (m_state.hasGoal(*goalID))
            m_parts->reveal(BoardNavigationState::on(TargetSelection::goal(*goalID)));
    } else if (const auto* const todoID = std::get_if<TodoID>(&what)) {
        if (const auto column = m_parts->columnOf(*todoID))
            m_parts->reveal(BoardNavigationState::on(*column), *todoID);
    } else {
        const auto windowID = std::get<WindowID>(what);
        const WindowItem* const window = windowWith(windowID, m_state.windows);
        if (window == nullptr)
            return;
        const TargetSelection target = TargetSelection::of(window->goalID);
        if (windowWith(windowID, m_state.filteredWindows()) == nullptr)
            m_state.assign(m_state.searchText, QString(), Field::searchText);
        m_parts->reveal(BoardNavigationState::inside(target, windowID));
    }
}

std::optional<TargetSelection> WindowStore::Parts::columnOf(TodoID todoID) const
{
    for (const Goal& goal : state.goals) {
        if (todoWith(todoID, goal.todos) != nullptr)
            return TargetSelection::goal(goal.id);
    }
    return todoWith(todoID, state.unassignedTodos) != nullptr
               ? std::optional(TargetSelection::unassigned())
               : std::nullopt;
}

void WindowStore::Parts::reveal(const BoardNavigationState& place, std::optional<TodoID> todoID)
{
    const std::optional<GoalID> goalID = place.target.goalID();
    if (goalID && !state.isVisible(*goalID))
        state.assign(state.isHidingGoalsWithoutOpenTodos, false,
                     Field::isHidingGoalsWithoutOpenTodos);
    selection.select(place);
    state.restoredTodoID = todoID;
    state.assign(state.restorationID, state.restorationID + 1, Field::restorationID);
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
