#include "store/StoreValues.h"

#include "store/board/GoalOrder.h"

namespace kelpa {

QList<Goal> StoreValues::visibleGoals() const
{
    return m_state.isHidingGoalsWithoutOpenTodos ? withOpenTodos(m_state.goals) : m_state.goals;
}

HiddenGoals StoreValues::hiddenGoals() const
{
    return kelpa::hiddenGoals(m_state.goals, m_state.windows, m_state.emptyGoals());
}

qsizetype StoreValues::selectedWindowIndex() const
{
    const BoardNavigationState& navigation = m_state.boardNavigation;
    return navigation.selectedWindowID
               ? m_state.windowIDsOf(navigation.target).indexOf(*navigation.selectedWindowID)
               : -1;
}

qsizetype StoreValues::shownUnsortedCount() const
{
    return shownWindowCount(windows(std::optional<GoalID>()).size(), m_state.unsortedFold,
                            m_state.findings().isSearching,
                            m_state.boardNavigation.target.isUnassigned() ? selectedWindowIndex()
                                                                          : -1);
}

} // namespace kelpa
