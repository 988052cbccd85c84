// The keyboard selection and the field for a new todo, which follow what the board shows.
#pragma once

#include "navigation/BoardNavigation.h"
#include "store/StoreState.h"

namespace kelpa {

/// Main thread. Every function is part of an operation of the store.
class BoardSelection
{
public:
    /// `state` outlives this.
    explicit BoardSelection(StoreState& state) : m_state(state) {}

    void select(const BoardNavigationState& navigation);
    /// Does nothing for no target and for a goal that the board does not show.
    void activate(const TargetSelection& target, EnterWindowLayer enterWindowLayer);
    void moveTarget(NavigationDirection direction);
    void moveWindow(NavigationDirection direction);
    /// At least 1.
    void setTargetGridColumnCount(int count) { m_targetGridColumnCount = count; }

    void openTodoEditor(GoalID goalID);
    void closeTodoEditor();

    /// After goals or assignments have changed: leaves goals that have gone, then reconciles with
    /// windows and visible goals.
    void reconcileWithGoals();
    void reconcileWithWindows();
    /// Leaves a goal that is hidden now.
    void reconcileSelectionWithVisibleGoals();

private:
    StoreState& m_state;
    int m_targetGridColumnCount = 1;
};

} // namespace kelpa
