// What a save takes of a board that was encoded ahead.
#include "store/board/BoardSaver.h"

#include "support/BoardBuilders.h"
#include "support/ManualScheduler.h"
#include "support/MemorySettingsStore.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

class BoardSaving : public testing::Test
{
protected:
    void SetUp() override { saver.start(); }

    QByteArray savedGoals(const BoardContents& board)
    {
        saver.save(board, {});
        return settings.document(goalsKey);
    }

    MemorySettingsStore settings;
    ManualScheduler scheduler;
    BoardSaver saver{settings, scheduler, {[] {}, [] {}, [] {}}};
    const BoardContents board{{goal(QStringLiteral("Taxes"))}, {}, {}};
    const BoardContents other{{goal(QStringLiteral("Garden"))}, {}, {}};
    /// Not what encoding would give, so that a test sees where it comes from.
    const QByteArray encodedAhead = "[ ]";
};

TEST_F(BoardSaving, A_board_that_was_encoded_ahead_is_not_encoded_again)
{
    saver.expect({board, {{goalsKey, encodedAhead}}});
    EXPECT_EQ(savedGoals(board), encodedAhead);
}

TEST_F(BoardSaving, Another_board_than_the_expected_one_is_encoded)
{
    saver.expect({board, {{goalsKey, encodedAhead}}});
    EXPECT_EQ(savedGoals(other), encodeGoals(other.goals));
    // What was expected counts for one save.
    EXPECT_EQ(savedGoals(board), encodeGoals(board.goals));
    saver.expect({board, {{goalsKey, encodedAhead}}});
    BoardContents withTodo = board;
    withTodo.unassignedTodos.append(todo(QStringLiteral("Milk")));
    EXPECT_EQ(savedGoals(withTodo), encodeGoals(board.goals));
}

} // namespace
} // namespace kelpa::test
