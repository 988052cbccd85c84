#include "windows/WindowReconciliation.h"

#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

const GoalID goalA = GoalID::create();
const GoalID goalB = GoalID::create();

WindowItem terminal(WindowID id, ProcessID process)
{
    WindowItem item = window(id);
    item.bundleIdentifier = QStringLiteral("com.apple.Terminal");
    item.processIdentifier = process;
    return item;
}

TEST(AssignmentKey, Is_the_window_number_in_plain_decimal)
{
    EXPECT_EQ(assignmentKey(4127), QStringLiteral("4127"));
    EXPECT_EQ(assignmentKey(0), QStringLiteral("0"));
    EXPECT_EQ(assignmentKey(4'294'967'295), QStringLiteral("4294967295"));
}

TEST(AssignedWindows, Are_found_among_keys_of_any_kind)
{
    EXPECT_EQ(assignedWindows(Assignments()), std::set<WindowID>());
    EXPECT_EQ(assignedWindows({{QStringLiteral("9"), goalA},
                               {QStringLiteral("4127"), goalB},
                               {QStringLiteral("4294967295"), goalB},
                               {QStringLiteral("4294967296"), goalB},
                               {QStringLiteral("terminal:99999"), goalA}}),
              (std::set<WindowID>{9, 4127, 4294967295}));
}

TEST(WindowReconciliation, A_window_gets_the_goal_that_its_key_names)
{
    const Assignments assignments{{QStringLiteral("4127"), goalA}};

    const QList<WindowItem> windows =
        withAssignedGoals({window(4127), window(4128)}, assignments, {goalA});

    EXPECT_EQ(windows[0].goalID, goalA);
    EXPECT_EQ(windows[1].goalID, std::nullopt);
}

TEST(WindowReconciliation, An_assignment_to_a_goal_that_is_gone_counts_as_none)
{
    const Assignments assignments{{QStringLiteral("1"), goalA}};
    WindowItem stale = window(1);
    stale.goalID = goalA;

    EXPECT_EQ(withAssignedGoals({stale}, assignments, {goalB}).first().goalID, std::nullopt);
}

TEST(LegacyTerminalKeys, All_windows_of_the_process_inherit_the_goal_and_the_key_goes)
{
    const Assignments assignments{{QStringLiteral("terminal:812"), goalA},
                                  {QStringLiteral("77"), goalB}};

    const auto migrated = migratedTerminalAssignments(
        assignments, {terminal(10, 812), terminal(11, 812), terminal(12, 813)}, {goalA, goalB});

    EXPECT_EQ(migrated, (Assignments{{QStringLiteral("10"), goalA},
                                     {QStringLiteral("11"), goalA},
                                     {QStringLiteral("77"), goalB}}));
}

TEST(LegacyTerminalKeys, A_key_whose_goal_is_gone_stays)
{
    const Assignments assignments{{QStringLiteral("terminal:812"), goalA}};

    EXPECT_EQ(migratedTerminalAssignments(assignments, {terminal(10, 812)}, {goalB}), std::nullopt);
}

TEST(LegacyTerminalKeys, A_window_of_another_application_does_not_inherit)
{
    const Assignments assignments{{QStringLiteral("terminal:812"), goalA}};
    WindowItem other = terminal(10, 812);
    other.bundleIdentifier = QStringLiteral("com.apple.terminal");
    WindowItem unknown = terminal(11, 812);
    unknown.bundleIdentifier.reset();

    EXPECT_EQ(migratedTerminalAssignments(assignments, {other, unknown}, {goalA}), std::nullopt);
}

TEST(LegacyTerminalKeys, A_window_with_a_key_of_its_own_keeps_it_and_the_legacy_key_stays)
{
    const Assignments assignments{{QStringLiteral("terminal:812"), goalA},
                                  {QStringLiteral("10"), goalB}};

    EXPECT_EQ(migratedTerminalAssignments(assignments, {terminal(10, 812)}, {goalA, goalB}),
              std::nullopt);
}

TEST(LegacyTerminalKeys, One_window_with_a_key_does_not_keep_the_others_from_inheriting)
{
    const Assignments assignments{{QStringLiteral("terminal:812"), goalA},
                                  {QStringLiteral("10"), goalB}};

    EXPECT_EQ(migratedTerminalAssignments(assignments, {terminal(10, 812), terminal(11, 812)},
                                          {goalA, goalB}),
              (Assignments{{QStringLiteral("10"), goalB}, {QStringLiteral("11"), goalA}}));
}

TEST(WithoutGoal, Keeps_the_assignments_of_all_other_goals)
{
    const Assignments assignments{
        {QStringLiteral("1"), goalA}, {QStringLiteral("2"), goalB}, {QStringLiteral("3"), goalA}};

    EXPECT_EQ(withoutGoal(assignments, goalA), (Assignments{{QStringLiteral("2"), goalB}}));
}

} // namespace
} // namespace kelpa::test
