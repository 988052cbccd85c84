#include "store/BoardSelection.h"

namespace kelpa {

void BoardSelection::select(const BoardNavigationState& navigation)
{
    m_state.assign(m_state.boardNavigation, navigation, StoreField::boardNavigation);
}

void BoardSelection::activate(const TargetSelection& target, EnterWindowLayer enterWindowLayer)
{
    if (const auto activated = activatedTarget(target, enterWindowLayer, m_state.visibleGoalIDs(),
                                               m_state.windowIDsOf(target)))
        select(*activated);
}

void BoardSelection::moveTarget(NavigationDirection direction)
{
    select(movedTargetSelection(m_state.boardNavigation, targetSelections(m_state.visibleGoalIDs()),
                                m_targetGridColumnCount, direction));
}

void BoardSelection::moveWindow(NavigationDirection direction)
{
    const BoardNavigationState& navigation = m_state.boardNavigation;
    select(movedWindowSelection(navigation, m_state.windowIDsOf(navigation.target), direction));
}

void BoardSelection::openTodoEditor(GoalID goalID)
{
    m_state.assign(m_state.todoEditorGoalID, goalID, StoreField::todoEditorGoalID);
    m_state.assign(m_state.todoEditorRequestID, m_state.todoEditorRequestID + 1,
                   StoreField::todoEditorRequestID);
}

void BoardSelection::closeTodoEditor()
{
    m_state.assign(m_state.todoEditorGoalID, std::nullopt, StoreField::todoEditorGoalID);
    m_state.assign(m_state.todoEditorRequestID, m_state.todoEditorRequestID + 1,
                   StoreField::todoEditorRequestID);
}

void BoardSelection::reconcileWithGoals()
{
    if (m_state.todoEditorGoalID && !m_state.hasGoal(*m_state.todoEditorGoalID))
        closeTodoEditor();
    const std::optional<GoalID> selected = m_state.boardNavigation.target.goalID();
    if (selected && !m_state.hasGoal(*selected))
        select(BoardNavigationState::idle());
    reconcileWithWindows();
    reconcileSelectionWithVisibleGoals();
}

void BoardSelection::reconcileWithWindows()
{
    const BoardNavigationState& navigation = m_state.boardNavigation;
    select(reconciledWithWindows(navigation, m_state.allWindowIDsOf(navigation.target),
                                 m_state.windowIDsOf(navigation.target)));
}

void BoardSelection::reconcileSelectionWithVisibleGoals()
{
    if (!m_state.isHidingGoalsWithoutOpenTodos)
        return;
    const std::optional<GoalID> selected = m_state.boardNavigation.target.goalID();
    if (!selected || m_state.isVisible(*selected))
        return;
    if (m_state.todoEditorGoalID == selected)
        closeTodoEditor();
    select(BoardNavigationState::idle());
}

} // namespace kelpa
