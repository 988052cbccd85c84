// Which windows the selection sheet offers, in which order, and what its confirmation moves.
#include "views/windows/WindowSelection.h"

#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

class WindowSelecting : public testing::Test
{
protected:
    WindowItem in(const Goal& goal, WindowItem item)
    {
        item.goalID = goal.id;
        return item;
    }

    QList<WindowID> shown(const QList<WindowItem>& windows, const QString& search = {},
                          const QLocale& locale = QLocale(QLocale::English))
    {
        return idsOf(windowsToSelect(windows, target.id, titles, search, locale));
    }

    const Goal target = goal(QStringLiteral("Proposal"));
    const Goal other = goal(QStringLiteral("Taxes"));
    const LocationTitles titles = locationTitles({target, other}, QStringLiteral("Unsorted"));
};

using Ids = QList<WindowID>;

TEST_F(WindowSelecting, A_window_of_no_goal_and_one_of_another_goal_can_be_chosen)
{
    const QList<WindowItem> windows{window(1), in(other, window(2)), in(target, window(3))};
    EXPECT_EQ(selectableWindowIDs(windows, target.id), (QSet<WindowID>{1, 2}));
}

TEST_F(WindowSelecting, A_window_is_where_its_goal_is)
{
    EXPECT_EQ(titles.of(in(other, window(1))), QStringLiteral("Taxes"));
}

TEST_F(WindowSelecting, A_window_of_no_goal_is_unsorted)
{
    EXPECT_EQ(titles.of(window(1)), QStringLiteral("Unsorted"));
}

TEST_F(WindowSelecting, A_window_of_a_goal_that_is_not_there_is_unsorted)
{
    EXPECT_EQ(titles.of(in(goal(QStringLiteral("Gone")), window(1))), QStringLiteral("Unsorted"));
}

TEST_F(WindowSelecting, A_goal_without_a_title_has_an_empty_place)
{
    const Goal untitled = goal({});
    const LocationTitles some = locationTitles({untitled}, QStringLiteral("Unsorted"));
    EXPECT_EQ(some.of(in(untitled, window(1))), QString());
}

TEST_F(WindowSelecting, Windows_in_the_goal_come_after_those_that_can_be_chosen)
{
    EXPECT_EQ(shown({in(target, window(1, {}, QStringLiteral("Editor"))),
                     window(2, {}, QStringLiteral("Terminal"))}),
              (Ids{2, 1}));
}

TEST_F(WindowSelecting, Windows_of_no_goal_come_before_those_of_other_goals)
{
    EXPECT_EQ(shown({in(other, window(1, {}, QStringLiteral("Editor"))),
                     window(2, {}, QStringLiteral("Terminal"))}),
              (Ids{2, 1}));
}

TEST_F(WindowSelecting, A_window_of_a_goal_that_is_not_there_stands_among_those_of_no_goal)
{
    EXPECT_EQ(shown({window(1, {}, QStringLiteral("B")),
                     in(goal(QStringLiteral("Gone")), window(2, {}, QStringLiteral("A")))}),
              (Ids{2, 1}));
}

TEST_F(WindowSelecting, Applications_come_in_the_order_of_the_language)
{
    EXPECT_EQ(
        shown({window(1, {}, QStringLiteral("zsh")), window(2, {}, QStringLiteral("Éditeur")),
               window(3, {}, QStringLiteral("Files")), window(4, {}, QStringLiteral("editor"))}),
        (Ids{2, 4, 3, 1}));
}

TEST_F(WindowSelecting, Numbers_in_names_are_ordered_by_their_value)
{
    const QString app = QStringLiteral("Editor");
    EXPECT_EQ(shown({window(1, QStringLiteral("Draft 10"), app),
                     window(2, QStringLiteral("Draft 9"), app),
                     window(3, QStringLiteral("Draft 100"), app)}),
              (Ids{2, 1, 3}));
}

TEST_F(WindowSelecting, The_application_comes_before_the_title)
{
    EXPECT_EQ(shown({window(1, QStringLiteral("A"), QStringLiteral("Terminal")),
                     window(2, QStringLiteral("B"), QStringLiteral("Editor"))}),
              (Ids{2, 1}));
}

TEST_F(WindowSelecting, White_space_around_a_title_does_not_count)
{
    const QString app = QStringLiteral("Editor");
    EXPECT_EQ(shown({window(1, QStringLiteral("  b"), app), window(2, QStringLiteral("a"), app),
                     window(3, QStringLiteral("\n c \n"), app)}),
              (Ids{2, 1, 3}));
}

TEST_F(WindowSelecting, A_window_whose_title_is_blank_is_ordered_by_its_application)
{
    const QString app = QStringLiteral("Mail");
    EXPECT_EQ(shown({window(1, QStringLiteral("Notes"), app), window(2, QStringLiteral(" \n"), app),
                     window(3, QStringLiteral("Inbox"), app)}),
              (Ids{3, 2, 1}));
}

TEST_F(WindowSelecting, Windows_that_are_named_alike_keep_their_order)
{
    const QString app = QStringLiteral("Terminal");
    const QString title = QStringLiteral("~");
    EXPECT_EQ(shown({window(5, title, app), window(2, title, app), window(9, title, app)}),
              (Ids{5, 2, 9}));
}

TEST_F(WindowSelecting, The_locale_decides_where_a_letter_stands)
{
    const QList<WindowItem> windows{window(1, {}, QStringLiteral("Öl")),
                                    window(2, {}, QStringLiteral("Zug"))};
    EXPECT_EQ(shown(windows, {}, QLocale(QLocale::German)), (Ids{1, 2}));
    EXPECT_EQ(shown(windows, {}, QLocale(QLocale::Swedish)), (Ids{2, 1}));
}

TEST_F(WindowSelecting, The_locale_without_a_language_orders_as_English_does)
{
    EXPECT_EQ(shown({window(1, {}, QStringLiteral("b 10")), window(2, {}, QStringLiteral("B 9")),
                     window(3, {}, QStringLiteral("a"))},
                    {}, QLocale::c()),
              (Ids{3, 2, 1}));
}

TEST_F(WindowSelecting, A_search_finds_by_application_by_title_and_by_place)
{
    const QList<WindowItem> windows{
        window(1, QStringLiteral("Letter"), QStringLiteral("Editor")),
        window(2, QStringLiteral("Edition"), QStringLiteral("Viewer")),
        in(other, window(3, QStringLiteral("Page"), QStringLiteral("Browser")))};
    EXPECT_EQ(shown(windows, QStringLiteral("EDIT")), (Ids{1, 2}));
    EXPECT_EQ(shown(windows, QStringLiteral("taxes")), (Ids{3}));
    EXPECT_EQ(shown(windows, QStringLiteral("unsorted")), (Ids{1, 2}));
}

TEST_F(WindowSelecting, A_search_finds_windows_that_are_in_the_goal_by_its_title)
{
    EXPECT_EQ(shown({window(1), in(target, window(2))}, QStringLiteral("proposal")), (Ids{2}));
}

TEST_F(WindowSelecting, White_space_around_a_search_does_not_count)
{
    const QList<WindowItem> windows{window(1, QStringLiteral("Letter")), window(2)};
    EXPECT_EQ(shown(windows, QStringLiteral(" \t letter\n")), (Ids{1}));
}

TEST_F(WindowSelecting, A_search_of_only_white_space_finds_every_window)
{
    EXPECT_EQ(shown({window(1), window(2)}, QStringLiteral(" \n ")), (Ids{1, 2}));
}

TEST_F(WindowSelecting, A_search_for_nothing_that_is_there_finds_no_window)
{
    EXPECT_EQ(shown({window(1, QStringLiteral("Letter"))}, QStringLiteral("x")), Ids{});
}

TEST_F(WindowSelecting, A_search_finds_letters_that_differ_only_in_case_also_beyond_ASCII)
{
    EXPECT_EQ(shown({window(1, QStringLiteral("ÜBERSICHT"))}, QStringLiteral("übersicht")),
              (Ids{1}));
}

TEST(WindowSelection, A_window_is_chosen_and_left_out_again)
{
    WindowSelection selection = toggledSelection({}, 7, {7, 8});
    EXPECT_EQ(selection.chosen, QSet<WindowID>{7});
    selection = toggledSelection(selection, 8, {7, 8});
    EXPECT_EQ(selection.chosen, (QSet<WindowID>{7, 8}));
    selection = toggledSelection(selection, 7, {7, 8});
    EXPECT_EQ(selection.chosen, QSet<WindowID>{8});
}

TEST(WindowSelection, A_window_that_cannot_be_moved_is_not_chosen)
{
    EXPECT_EQ(toggledSelection({}, 9, {7, 8}), WindowSelection{});
}

TEST(WindowSelection, Windows_that_vanished_or_joined_the_goal_drop_out)
{
    EXPECT_EQ(confirmedWindows({{7, 8, 9}, false}, {7, 10}), QSet<WindowID>{7});
    EXPECT_EQ(confirmedWindows({{8}, false}, {7}), QSet<WindowID>{});
}

TEST(WindowSelection, After_a_refusal_what_can_still_be_moved_stays_chosen)
{
    EXPECT_EQ(refusedSelection({{7, 8}, false}, {8, 9}), (WindowSelection{{8}, true}));
}

TEST(WindowSelection, The_refusal_is_told_until_a_window_is_chosen)
{
    EXPECT_FALSE(toggledSelection({{}, true}, 7, {7}).isRefused);
    EXPECT_TRUE(toggledSelection({{}, true}, 9, {7}).isRefused);
}

TEST_F(WindowSelecting, Windows_that_are_shown_keep_their_order_also_when_others_come_or_go)
{
    const QList<WindowItem> windows{window(1), window(2), window(3)};
    const auto ordered = [&windows](const QList<WindowItem>& shown) {
        return idsOf(inShownOrder(windows, shown));
    };
    EXPECT_EQ(ordered({window(3), window(1), window(2)}), (Ids{3, 1, 2}));
    EXPECT_EQ(ordered({window(3), window(4), window(1), window(2)}), (Ids{3, 1, 2}));
    EXPECT_EQ(ordered({window(3), window(1)}), (Ids{3, 1, 2})) << "2 comes after 1";
    EXPECT_EQ(ordered({window(3), window(2)}), (Ids{1, 3, 2})) << "1 is the first of all";
    EXPECT_EQ(ordered({window(3)}), (Ids{1, 2, 3}));
    EXPECT_EQ(ordered({window(3), in(other, window(1)), window(2)}), (Ids{1, 2, 3}))
        << "one that has gone to another goal has another place";
    EXPECT_EQ(ordered({}), (Ids{1, 2, 3}));
}

} // namespace
} // namespace kelpa::test
