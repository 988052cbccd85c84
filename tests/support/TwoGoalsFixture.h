// A board of one unassigned window and two goals, which keep their own order.
#pragma once

#include "support/StoreFixture.h"

namespace kelpa::test {

class TwoGoalsFixture : public StoreFixture
{
protected:
    TwoGoalsFixture()
    {
        desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
        store().setLanguage(AppLanguage::english);
        store().setAutoSortingGoals(false);
        store().refresh();
        first = makeGoal(QStringLiteral("First"));
        second = makeGoal(QStringLiteral("Second"));
    }

    std::optional<GoalID> goalOfWindow() { return store().windows().front().goalID; }
    /// The titles of the goals in their order, as "First Second".
    QString titles() { return goalTitles().join(u' '); }

    GoalID first;
    GoalID second;
};

} // namespace kelpa::test
