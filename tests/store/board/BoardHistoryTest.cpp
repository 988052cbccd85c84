#include "store/board/BoardHistory.h"

#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

const Goal a = goal(QStringLiteral("A"));
const Goal b = goal(QStringLiteral("B"));
const TodoItem loose = todo(QStringLiteral("loose"));
const QString first = QStringLiteral("1");
const QString second = QStringLiteral("2");

const BoardVersion empty;
const BoardVersion withA{{{a}, {}, {}}, true};
const BoardVersion withBoth{{{a, b}, {loose}, {{first, b.id}}}, true};

TEST(BoardHistory, A_new_history_leads_nowhere)
{
    BoardHistory history;
    EXPECT_FALSE(history.canUndo());
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.undo(withA), withA);
    EXPECT_EQ(history.redo(withA), withA);
}

TEST(BoardHistory, Steps_are_undone_from_the_last_to_the_first_and_redone_the_other_way)
{
    BoardHistory history;
    EXPECT_TRUE(history.record(empty, withA));
    EXPECT_TRUE(history.record(withA, withBoth));
    EXPECT_EQ(history.undo(withBoth), withA);
    EXPECT_TRUE(history.canUndo());
    EXPECT_TRUE(history.canRedo());
    EXPECT_EQ(history.undo(withA), empty);
    EXPECT_FALSE(history.canUndo());
    EXPECT_EQ(history.redo(empty), withA);
    EXPECT_EQ(history.redo(withA), withBoth);
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.undo(withBoth), withA);
}

/// An empty board on which the offers of those windows are answered.
BoardVersion answered(const QSet<WindowID>& windows)
{
    BoardVersion version;
    version.answeredOffers = windows;
    return version;
}

TEST(BoardHistory, A_step_answers_only_the_offers_that_it_answered)
{
    BoardHistory history;
    EXPECT_FALSE(history.record(answered({1}), answered({1})));
    EXPECT_TRUE(history.record(answered({1}), answered({1, 2})));
    // A program that a person started has shown the window 3 meanwhile.
    EXPECT_EQ(history.undo(answered({1, 2, 3})), answered({1, 3}));
    EXPECT_EQ(history.redo(answered({1, 3})), answered({1, 2, 3}));
    EXPECT_EQ(history.undo(answered({1, 2})), answered({1}));
}

/// A board with the goal `a`, pinned to the third desktop, which is the one with that identity.
BoardVersion linkedTo(DesktopID id)
{
    BoardVersion version = withA;
    version.contents.pins.insert(a.id, 3);
    version.desktopLinks.insert(a.id, {.pin = 3, .desktop = id});
    return version;
}

TEST(BoardHistory, A_pin_that_means_another_desktop_is_a_step)
{
    BoardHistory history;
    EXPECT_FALSE(history.record(linkedTo(13), linkedTo(13)));
    EXPECT_TRUE(history.record(linkedTo(13), linkedTo(14)));
    EXPECT_EQ(history.undo(linkedTo(14)), linkedTo(13));
    EXPECT_EQ(history.redo(linkedTo(13)), linkedTo(14));
}

TEST(BoardHistory, A_step_leaves_what_pins_have_come_to_mean_since)
{
    BoardHistory history;
    BoardVersion renamed = linkedTo(13);
    renamed.contents.goals.first().title = QStringLiteral("Other");
    EXPECT_TRUE(history.record(linkedTo(13), renamed));
    BoardVersion later = renamed;
    later.desktopLinks.insert(a.id, {.pin = 3, .desktop = 15});
    EXPECT_EQ(history.undo(later), linkedTo(15));
    EXPECT_EQ(history.redo(linkedTo(15)), later);
}

TEST(BoardHistory, A_new_step_takes_the_place_of_those_that_were_undone)
{
    BoardHistory history;
    history.record(empty, withA);
    history.undo(withA);
    const BoardVersion withB{{{b}, {}, {}}, true};
    EXPECT_TRUE(history.record(empty, withB));
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.undo(withB), empty);
}

TEST(BoardHistory, The_same_board_is_no_step_and_leaves_what_can_be_redone)
{
    BoardHistory history;
    history.record(empty, withA);
    history.undo(withA);
    EXPECT_FALSE(history.record(empty, empty));
    BoardVersion otherOrder = empty;
    otherOrder.isAutoSortingGoals = false;
    EXPECT_FALSE(history.record(empty, otherOrder));
    EXPECT_TRUE(history.canRedo());
}

TEST(BoardHistory, Assignments_that_came_otherwise_stay_when_a_step_is_undone)
{
    BoardHistory history;
    history.record({{{a}, {}, {}}, true}, {{{a}, {}, {{first, a.id}}}, true});
    const BoardVersion now{{{a}, {}, {{first, a.id}, {second, a.id}}}, true};
    const BoardVersion undone{{{a}, {}, {{second, a.id}}}, true};
    EXPECT_EQ(history.undo(now), undone);
    EXPECT_EQ(history.redo(undone), now);
}

TEST(BoardHistory, A_window_that_went_elsewhere_in_between_is_where_it_was_after_undo_and_redo)
{
    BoardHistory history;
    history.record({{{a, b}, {}, {}}, true}, {{{a, b}, {}, {{first, a.id}}}, true});
    const BoardVersion now{{{a, b}, {}, {{first, b.id}}}, true};
    const BoardVersion before = history.undo(now);
    EXPECT_EQ(before.contents.assignments, Assignments());
    EXPECT_EQ(history.redo(before), now);
}

TEST(BoardHistory, The_automatic_order_goes_with_the_step_in_which_it_moved_goals)
{
    BoardHistory history;
    const BoardVersion manual{{{a, b}, {}, {}}, false};
    const BoardVersion sorted{{{b, a}, {}, {}}, true};
    EXPECT_TRUE(history.record(manual, sorted));
    EXPECT_EQ(history.undo(sorted), manual);
    EXPECT_EQ(history.redo(manual), sorted);
}

TEST(BoardHistory, A_step_made_in_one_order_leaves_the_switch_as_it_is_now)
{
    BoardHistory history;
    history.record({{{}, {}, {}}, false}, {{{a}, {}, {}}, false});
    EXPECT_EQ(history.undo({{{a}, {}, {}}, true}), (BoardVersion{{{}, {}, {}}, true}));
}

TEST(BoardHistory, Of_a_hundred_and_one_steps_the_first_is_forgotten)
{
    BoardHistory history;
    const auto version = [](int number) {
        BoardVersion board;
        board.contents.unassignedTodos = {todo(QStringLiteral("t"), number)};
        board.contents.unassignedTodos[0].id = loose.id;
        return board;
    };
    for (int i = 0; i < 101; ++i)
        history.record(version(i), version(i + 1));
    BoardVersion board = version(101);
    int count = 0;
    for (; history.canUndo(); ++count)
        board = history.undo(board);
    EXPECT_EQ(count, 100);
    EXPECT_EQ(board, version(1));
}

TEST(BoardHistory, A_cleared_history_leads_nowhere)
{
    BoardHistory history;
    history.record(empty, withA);
    history.record(withA, withBoth);
    history.undo(withBoth);
    history.clear();
    EXPECT_FALSE(history.canUndo());
    EXPECT_FALSE(history.canRedo());
}

} // namespace
} // namespace kelpa::test
