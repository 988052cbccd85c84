#include "store/board/BoardSearch.h"

#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

/// Three goals: one whose title matches "bank", one with a todo that does, and one without an open
/// todo, which can be hidden.
class BoardSearch : public testing::Test
{
protected:
    SearchFindings search(const char16_t* text, EmptyGoals emptyGoals = EmptyGoals::shown) const
    {
        return searchFindings({titled, listed, empty}, {unassigned}, windows, emptyGoals,
                              QString::fromUtf16(text), QLocale::c());
    }

    const TodoItem open = todo(QStringLiteral("Call"));
    const TodoItem found = todo(QStringLiteral("Go to the BANK"));
    const TodoItem unassigned = todo(QStringLiteral("Bank holiday"));
    const Goal titled = goal(QStringLiteral("The bank"), {open});
    const Goal listed = goal(QStringLiteral("Errands"), {found});
    const Goal empty =
        goal(QStringLiteral("Databank"), {todo(QStringLiteral("bank"), 0, TodoStatus::completed)});
    /// Those that match.
    QList<WindowItem> windows{window(1), window(2), window(3)};
};

TEST_F(BoardSearch, A_blank_text_finds_nothing_and_lets_nothing_step_back)
{
    EXPECT_EQ(search(u" \t"), SearchFindings());
    EXPECT_FALSE(search(u"").isSearching);
}

TEST_F(BoardSearch, Goals_and_todos_are_found_by_their_titles)
{
    const SearchFindings findings = search(u"bank");
    EXPECT_EQ(findings.goals, (QSet<GoalID>{titled.id, empty.id}));
    EXPECT_EQ(findings.todos, (QSet<TodoID>{found.id, unassigned.id}))
        << "a completed todo shows only beside an open one";
    EXPECT_EQ(findings.windowCount, 3);
    EXPECT_EQ(findings.hiddenCount, 0);
    EXPECT_TRUE(findings.isSearching);
}

TEST_F(BoardSearch, A_column_has_matches_if_its_title_a_todo_or_a_window_matches)
{
    windows = {window(1)};
    windows.front().goalID = empty.id;
    const SearchFindings findings = search(u"errands");
    EXPECT_EQ(findings.goalsWithMatches, (QSet<GoalID>{listed.id, empty.id}));
    EXPECT_TRUE(hasMatches(findings, listed.id));
    EXPECT_FALSE(hasMatches(findings, titled.id));
    EXPECT_FALSE(hasMatches(findings, std::nullopt));
    EXPECT_TRUE(hasMatches(search(u"holiday"), std::nullopt));
    windows = {window(1)};
    EXPECT_TRUE(hasMatches(search(u"errands"), std::nullopt)) << "the window matches";
}

TEST_F(BoardSearch, What_matches_in_hidden_goals_is_counted_apart)
{
    windows[0].goalID = empty.id;
    windows[1].goalID = titled.id;
    const SearchFindings findings = search(u"bank", EmptyGoals::hidden);
    EXPECT_EQ(findings.hiddenCount, 2) << "the goal and its window";
    EXPECT_EQ(findings.windowCount, 2);
    EXPECT_EQ(findings.goals, QSet<GoalID>{titled.id});
    EXPECT_FALSE(hasMatches(findings, empty.id));
}

TEST_F(BoardSearch, Hidden_goals_are_counted_and_those_of_them_that_hold_windows)
{
    const QList<Goal> goals{titled, empty, goal(QStringLiteral("Later"))};
    EXPECT_EQ(hiddenGoals(goals, windows, EmptyGoals::shown), HiddenGoals());
    EXPECT_EQ(hiddenGoals(goals, windows, EmptyGoals::hidden), (HiddenGoals{2, 0}));
    windows[0].goalID = empty.id;
    windows[1].goalID = empty.id;
    windows[2].goalID = titled.id;
    EXPECT_EQ(hiddenGoals(goals, windows, EmptyGoals::hidden), (HiddenGoals{2, 1}));
}

} // namespace
} // namespace kelpa::test
