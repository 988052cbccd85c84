// Which background work yields to the interface.
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using enum WorkPriority;

class BackgroundPriority : public StoreFixture
{
protected:
    BackgroundPriority()
    {
        desktop.addAccessibleWindow(1, 101, QStringLiteral("one"));
        desktop.captureSizes.insert(1, {640, 480});
        store().createGoal(QStringLiteral("Taxes"));
        store().refresh();
    }

    /// Of the work that `cause` starts.
    template <class Cause>
    std::vector<WorkPriority> prioritiesOf(Cause cause)
    {
        const auto before = scheduler.backgroundWorkStarted();
        cause();
        scheduler.advance(0ms);
        const std::vector<WorkPriority>& all = scheduler.startedPriorities();
        return {all.begin() + before, all.end()};
    }
};

using Priorities = std::vector<WorkPriority>;

TEST_F(BackgroundPriority, Captures_and_passes_that_nobody_asked_for_are_utility_work)
{
    EXPECT_EQ(prioritiesOf([&] { store().refreshPreviews(scheduler.now()); }), Priorities{utility});
    EXPECT_EQ(prioritiesOf([&] { store().refreshInBackground(); }), Priorities{utility});
    EXPECT_EQ(prioritiesOf([&] { store().noteWindowsChangedOnDesktop(); }), Priorities{utility});
}

TEST_F(BackgroundPriority,
       A_pass_that_a_person_asks_for_during_another_one_follows_at_normal_priority)
{
    scheduler.holdBackgroundWork(true);
    store().refreshInBackground();
    scheduler.hangBackgroundWork();
    scheduler.holdBackgroundWork(false);
    EXPECT_EQ(prioritiesOf([&] { store().refresh(); }), Priorities{});
    EXPECT_EQ(prioritiesOf([&] { scheduler.runBackgroundWork(); }), Priorities{normal});
    EXPECT_EQ(prioritiesOf([&] { store().refreshInBackground(); }), Priorities{utility});
}

TEST_F(BackgroundPriority, What_a_person_asks_for_is_not)
{
    const WindowItem window = store().windows().first();
    const GoalID goal = store().goals().first().id;
    EXPECT_EQ(prioritiesOf([&] { store().refresh(); }), Priorities{normal});
    EXPECT_EQ(prioritiesOf([&] { store().focus(window); }), Priorities{normal});
    EXPECT_EQ(prioritiesOf([&] { store().showAllWindows(goal); }), Priorities{normal});
    EXPECT_EQ(prioritiesOf([&] { store().closeProcess(window); }), Priorities{normal});
    EXPECT_EQ(prioritiesOf([&] { store().createTerminal(goal); }).front(), normal);
}

} // namespace
} // namespace kelpa::test
