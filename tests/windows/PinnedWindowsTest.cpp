#include "windows/PinnedWindows.h"

#include "windows/WindowReconciliation.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

const QStringList fourDesktops{QString(), QString(), QString(), QString()};

class PinnedWindowsTest : public testing::Test
{
protected:
    static WindowItem window(WindowID id, std::optional<GoalID> goalID,
                             std::optional<int> desktop = 1)
    {
        WindowItem item;
        item.id = id;
        item.goalID = goalID;
        item.desktopNumber = desktop;
        return item;
    }

    /// The windows that are sent, and where to.
    QList<std::pair<WindowID, int>> due(const QList<WindowItem>& windows, const GoalPins& pins,
                                        const QStringList& desktops = fourDesktops)
    {
        QList<std::pair<WindowID, int>> sent;
        for (const DesktopMove& move : pinned.due(windows, pins, desktops))
            sent.append({move.window.id, move.desktop.number});
        return sent;
    }

    using Sent = QList<std::pair<WindowID, int>>;

    const GoalID taxes = GoalID::create();
    const GoalID garden = GoalID::create();
    PinnedWindows pinned;
};

TEST_F(PinnedWindowsTest, A_pinned_goals_windows_are_sent_once_and_no_others)
{
    const QList<WindowItem> windows{window(1, taxes), window(2, garden), window(3, std::nullopt),
                                    window(4, taxes)};
    EXPECT_EQ(due(windows, {}), Sent());
    EXPECT_EQ(due(windows, {{taxes, 2}}), (Sent{{1, 2}, {4, 2}}));
    EXPECT_EQ(due(windows, {{taxes, 2}}), Sent());
}

TEST_F(PinnedWindowsTest, A_window_that_joins_the_goal_later_is_sent)
{
    EXPECT_EQ(due({window(1, std::nullopt), window(2, garden)}, {{taxes, 2}}), Sent());
    EXPECT_EQ(due({window(1, taxes), window(2, garden)}, {{taxes, 2}}), (Sent{{1, 2}}));
    EXPECT_EQ(due({window(1, taxes, 2), window(2, taxes)}, {{taxes, 2}}), (Sent{{2, 2}}));
}

TEST_F(PinnedWindowsTest, A_window_that_the_person_moves_elsewhere_stays_until_it_joins_again)
{
    due({window(1, taxes)}, {{taxes, 2}});
    EXPECT_EQ(due({window(1, taxes, 2)}, {{taxes, 2}}), Sent());
    EXPECT_EQ(due({window(1, taxes, 4)}, {{taxes, 2}}), Sent());
    EXPECT_EQ(due({window(1, std::nullopt, 4)}, {{taxes, 2}}), Sent());
    EXPECT_EQ(due({window(1, taxes, 4)}, {{taxes, 2}}), (Sent{{1, 2}}));
}

TEST_F(PinnedWindowsTest, A_window_that_moves_between_pinned_goals_follows)
{
    const GoalPins pins{{taxes, 2}, {garden, 3}};
    due({window(1, taxes)}, pins);
    EXPECT_EQ(due({window(1, garden, 2)}, pins), (Sent{{1, 3}}));
    EXPECT_EQ(due({window(1, taxes, 3)}, pins), (Sent{{1, 2}}));
}

TEST_F(PinnedWindowsTest, Windows_on_all_desktops_or_there_already_are_not_sent_then_or_later)
{
    const QList<WindowItem> windows{window(1, taxes, everyVirtualDesktop), window(2, taxes, 2)};
    EXPECT_EQ(due(windows, {{taxes, 2}}), Sent());
    EXPECT_EQ(due({window(1, taxes, 1), window(2, taxes, 1)}, {{taxes, 2}}), Sent());
}

TEST_F(PinnedWindowsTest, A_window_waits_for_its_desktop_and_for_word_of_where_it_is)
{
    const QStringList two = fourDesktops.first(2);
    EXPECT_EQ(due({window(1, taxes)}, {{taxes, 3}}, two), Sent());
    EXPECT_EQ(due({window(1, taxes)}, {{taxes, 3}}, {}), Sent());
    EXPECT_EQ(due({window(1, taxes, std::nullopt)}, {{taxes, 3}}), Sent());
    EXPECT_EQ(due({window(1, taxes)}, {{taxes, 3}}), (Sent{{1, 3}}));
    // It went, took the window along, and is back: the window had been sent.
    EXPECT_EQ(due({window(1, taxes, 2)}, {{taxes, 3}}, two), Sent());
    EXPECT_EQ(due({window(1, taxes, 2)}, {{taxes, 3}}), Sent());
}

TEST_F(PinnedWindowsTest, Windows_of_an_earlier_run_stay_and_new_ones_are_sent)
{
    const GoalPins pins{{taxes, 2}};
    pinned.settle({{assignmentKey(1), taxes}, {assignmentKey(3), garden}}, pins);
    EXPECT_EQ(due({window(1, taxes), window(2, taxes), window(3, taxes)}, pins),
              (Sent{{2, 2}, {3, 2}}));
}

TEST_F(PinnedWindowsTest, A_window_of_an_earlier_run_is_sent_once_when_its_desktop_first_appears)
{
    const GoalPins pins{{taxes, 3}};
    pinned.settle({{assignmentKey(1), taxes}, {assignmentKey(2), taxes}}, pins);
    EXPECT_EQ(due({window(1, taxes)}, pins, {}), Sent());
    EXPECT_EQ(due({window(1, taxes)}, pins, fourDesktops.first(2)), Sent());
    EXPECT_EQ(due({window(1, taxes), window(2, taxes)}, pins), (Sent{{1, 3}}));
    EXPECT_EQ(due({window(1, taxes, 4), window(2, taxes)}, pins), Sent());
    EXPECT_EQ(due({window(2, taxes, 2)}, pins, fourDesktops.first(2)), Sent());
    EXPECT_EQ(due({window(2, taxes, 2)}, pins), Sent()) << "its desktop was there at first";
}

TEST_F(PinnedWindowsTest, Another_pin_takes_the_windows_along_and_none_leaves_them)
{
    due({window(1, taxes)}, {{taxes, 2}});
    EXPECT_EQ(due({window(1, taxes, 2)}, {{taxes, 3}}), (Sent{{1, 3}}));
    EXPECT_EQ(due({window(1, taxes, 3)}, {}), Sent());
    EXPECT_EQ(due({window(1, taxes, 1)}, {{taxes, 3}}), Sent()) << "undone: it is settled";
    EXPECT_EQ(due({window(1, taxes, 1)}, {{taxes, 2}}), (Sent{{1, 2}}));
}

TEST_F(PinnedWindowsTest, A_goal_that_is_deleted_and_brought_back_leaves_its_windows_where_they_are)
{
    due({window(1, taxes)}, {{taxes, 2}, {garden, 3}});
    EXPECT_EQ(due({window(1, std::nullopt, 4)}, {{garden, 3}}), Sent());
    EXPECT_EQ(due({window(1, taxes, 4)}, {{taxes, 2}, {garden, 3}}), Sent());
}

TEST_F(PinnedWindowsTest, Pinning_anew_gathers_what_has_strayed)
{
    const GoalPins pins{{taxes, 2}, {garden, 3}};
    due({window(1, taxes), window(2, taxes), window(3, garden)}, pins);
    pinned.forget({taxes});
    EXPECT_EQ(due({window(1, taxes, 4), window(2, taxes, 2), window(3, garden, 4)}, pins),
              (Sent{{1, 2}}));
}

TEST_F(PinnedWindowsTest, A_late_desktop_counts_as_having_done_it_for_a_while)
{
    const QList<WindowItem> late{window(1, taxes)};
    due(late, {{taxes, 2}});
    const auto desktop = [&] { return pinned.asSent(late).first().desktopNumber; };
    EXPECT_EQ(desktop(), 2);
    for (int pass = 0; pass < 9; ++pass)
        pinned.observe(late, PinnedWindows::Requests::underWay);
    EXPECT_EQ(desktop(), 2);
    pinned.observe(late, PinnedWindows::Requests::sent);
    pinned.observe(late, PinnedWindows::Requests::sent);
    EXPECT_EQ(desktop(), 2);
    pinned.observe(late, PinnedWindows::Requests::sent);
    EXPECT_EQ(desktop(), 1);
}

TEST_F(PinnedWindowsTest, What_the_desktop_has_refused_is_sent_once_more_and_waits_for_its_desktop)
{
    const QList<WindowItem> here{window(1, taxes)};
    const GoalPins pins{{taxes, 2}};
    const auto isGivenUp = [&](const QList<WindowItem>& listed) {
        bool isDue = false;
        for (int pass = 0; pass < 3; ++pass)
            isDue = pinned.observe(listed, PinnedWindows::Requests::sent) || isDue;
        return isDue;
    };
    due(here, pins);
    EXPECT_FALSE(pinned.observe(here, PinnedWindows::Requests::sent));
    EXPECT_EQ(due(here, pins), Sent()) << "it is on its way";
    EXPECT_TRUE(isGivenUp(here));
    EXPECT_EQ(due(here, pins, fourDesktops.first(1)), Sent()) << "its desktop has gone";
    EXPECT_EQ(due(here, pins), (Sent{{1, 2}}));
    EXPECT_FALSE(isGivenUp(here));
    EXPECT_EQ(due(here, pins), Sent()) << "it does not want to go";
    // Whatever has the person ask anew.
    pinned.forget({taxes});
    EXPECT_EQ(due(here, pins), (Sent{{1, 2}}));
    EXPECT_TRUE(isGivenUp(here));
    EXPECT_EQ(due(here, pins), (Sent{{1, 2}}));
    due({window(1, garden)}, {{taxes, 2}, {garden, 3}});
    EXPECT_FALSE(isGivenUp({window(1, garden, 4)})) << "it has gone elsewhere";
    EXPECT_EQ(due(here, pins), (Sent{{1, 2}}));
    EXPECT_TRUE(isGivenUp(here));
}

TEST_F(PinnedWindowsTest, A_window_is_sent_back_also_before_a_late_list_shows_that_it_had_gone)
{
    const QList<WindowItem> late{window(1, taxes)};
    EXPECT_EQ(due(late, {{taxes, 2}}), (Sent{{1, 2}}));
    EXPECT_EQ(due(late, {{taxes, 1}}), (Sent{{1, 1}}));
    EXPECT_EQ(due(late, {{taxes, 2}}), (Sent{{1, 2}}));
    pinned.forget({taxes});
    EXPECT_EQ(due(late, {{taxes, 2}}), Sent()) << "it is on its way";
}

TEST_F(PinnedWindowsTest, Once_a_pass_has_shown_it_there_only_the_list_counts)
{
    due({window(1, taxes)}, {{taxes, 2}});
    pinned.observe({window(1, taxes, 2)}, PinnedWindows::Requests::underWay);
    EXPECT_EQ(pinned.asSent({window(1, taxes, 4)}).first().desktopNumber, 4);
}

TEST(VirtualDesktops, Are_numbered_from_one)
{
    EXPECT_FALSE(isDesktopThere(0, fourDesktops));
    EXPECT_TRUE(isDesktopThere(1, fourDesktops));
    EXPECT_TRUE(isDesktopThere(4, fourDesktops));
    EXPECT_FALSE(isDesktopThere(5, fourDesktops));
}

TEST_F(PinnedWindowsTest, Windows_stay_where_only_the_number_of_their_desktop_changes)
{
    const GoalPins pins{{taxes, 3}};
    PinnedDesktops numbers;
    const auto dueNow = [&](const QList<WindowItem>& windows) {
        Sent sent;
        for (const DesktopMove& move : pinned.due(windows, pins, fourDesktops, numbers))
            sent.append({move.window.id, move.desktop.number});
        return sent;
    };
    numbers.observe(pins, {11, 12, 13, 14});
    EXPECT_EQ(dueNow({window(1, taxes)}), (Sent{{1, 3}}));
    pinned.observe({window(1, taxes, 3)}, SentRequests::sent);
    numbers.observe(pins, {11, 13, 14, 15});
    EXPECT_EQ(dueNow({window(1, taxes, 2)}), Sent());
    EXPECT_EQ(dueNow({window(1, taxes, 4)}), Sent()) << "the person has moved it";
    EXPECT_EQ(dueNow({window(1, taxes, 4), window(2, taxes)}), (Sent{{2, 2}}));
    // Its desktop goes, and the pin means its number again.
    numbers.observe(pins, {11, 14, 15, 16});
    EXPECT_EQ(dueNow({window(1, taxes, 4), window(2, taxes)}), Sent());
}

TEST_F(PinnedWindowsTest, A_window_whose_desktop_goes_as_it_is_sent_has_arrived_on_the_shifted_one)
{
    due({window(1, taxes, 2)}, {{taxes, 3}});
    // It was alone on the second.
    pinned.renumber({{1, 1}, {3, 2}, {4, 3}});
    EXPECT_EQ(pinned.asSent({window(1, taxes, 2)}).first().desktopNumber, 2);
    for (int pass = 0; pass < 5; ++pass)
        EXPECT_FALSE(pinned.observe({window(1, taxes, 2)}, SentRequests::sent));
    EXPECT_EQ(pinned.asSent({window(1, taxes, 4)}).first().desktopNumber, 4) << "forgotten";
}

TEST_F(PinnedWindowsTest, What_was_refused_on_a_desktop_that_shifts_is_sent_once_more)
{
    due({window(1, taxes, 2)}, {{taxes, 4}});
    pinned.renumber({{2, 1}, {3, 2}, {4, 3}});
    bool isDueAgain = false;
    for (int pass = 0; pass < 3; ++pass)
        isDueAgain = pinned.observe({window(1, taxes, 1)}, SentRequests::sent);
    EXPECT_TRUE(isDueAgain);
}

TEST_F(PinnedWindowsTest, Nothing_is_awaited_of_a_window_whose_desktop_is_gone)
{
    due({window(1, taxes), window(2, taxes, everyVirtualDesktop)}, {{taxes, 3}});
    pinned.renumber({{1, 1}, {2, 2}});
    EXPECT_EQ(pinned.asSent({window(1, taxes)}).first().desktopNumber, 1);
    for (int pass = 0; pass < 5; ++pass)
        EXPECT_FALSE(pinned.observe({window(1, taxes)}, SentRequests::sent));
}

TEST_F(PinnedWindowsTest, A_window_that_its_desktop_did_not_live_to_see_waits_for_the_pins_next_one)
{
    const GoalPins pins{{taxes, 3}};
    const auto twoDesktops = fourDesktops.first(2);
    due({window(1, taxes), window(2, taxes)}, pins);
    // The first one arrives.
    pinned.observe({window(1, taxes, 3), window(2, taxes)}, SentRequests::sent);
    pinned.renumber({{1, 1}, {2, 2}});
    EXPECT_EQ(due({window(1, taxes), window(2, taxes)}, pins, twoDesktops), Sent());
    EXPECT_EQ(due({window(1, taxes), window(2, taxes)}, pins), (Sent{{2, 3}}));
}

TEST_F(PinnedWindowsTest, Windows_are_sent_to_the_desktop_itself_where_desktops_are_told_apart)
{
    const GoalPins pins{{taxes, 3}};
    PinnedDesktops desktops;
    EXPECT_EQ(pinned.due({window(1, taxes)}, pins, fourDesktops, desktops),
              (QList<DesktopMove>{{window(1, taxes), {.number = 3}}}));
    desktops.observe(pins, {11, 12, 13, 14});
    desktops.observe(pins, {11, 13, 14});
    EXPECT_EQ(pinned.due({window(2, taxes)}, pins, fourDesktops, desktops),
              (QList<DesktopMove>{{window(2, taxes), {.number = 2, .id = 13}}}));
}

} // namespace
} // namespace kelpa
