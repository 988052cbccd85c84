// Importing files into the board and exporting it, over files and backups in memory.
#include "store/BoardTransfer.h"

#include "store/board/BoardPersistence.h"
#include "support/BoardBuilders.h"
#include "support/MemoryBackups.h"
#include "support/StoreFixture.h"
#include "support/TransferFakes.h"
#include "text/KelpaCopy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;
using Trouble = BoardTransfer::Trouble;
using Refusal = BoardTransfer::Refusal;

class BoardTransferring : public StoreFixture
{
protected:
    void SetUp() override
    {
        files.files.insert(list, "- Milk\n\n# Home (P0)\n\n- Paint\n- [x] Sweep\n\nwords\n");
        garden = makeGoal(QStringLiteral("Garden"));
        makeTodo(garden, QStringLiteral("Dig"));
    }
    void read(const QString& path)
    {
        transfer.read(path);
        scheduler.runBackgroundWork();
    }
    void import(ImportMode mode)
    {
        transfer.import(mode);
        scheduler.runBackgroundWork();
    }
    BoardContents board() { return {store().goals(), store().unassignedTodos(), {}}; }

    const QString list = QStringLiteral("/lists/home.md");
    MemoryFiles files;
    MemoryBackups backups;
    GoalID garden;
    BoardTransfer transfer{store(), backups, files, scheduler};
};

TEST_F(BoardTransferring, Reading_says_what_would_come_and_changes_nothing)
{
    const BoardContents before = board();
    transfer.read(list);
    EXPECT_TRUE(transfer.isReading());
    scheduler.runBackgroundWork();
    ASSERT_TRUE(transfer.preview());
    EXPECT_EQ(transfer.preview()->format, TransferFormat::markdown);
    EXPECT_EQ(transfer.preview()->todoCount, 3);
    EXPECT_EQ(transfer.preview()->summary.openTodoCount, 2);
    EXPECT_EQ(transfer.preview()->firstTodos.constFirst(), u"Milk");
    EXPECT_EQ(transfer.preview()->skippedCount, 1);
    EXPECT_EQ(board(), before);
    EXPECT_EQ(backups.keptBoards, 0);
}

TEST_F(BoardTransferring, Adding_is_one_step_that_undo_and_redo_take_exactly)
{
    const BoardContents before = board();
    read(list);
    import(ImportMode::add);
    const BoardContents after = board();
    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("Home"), QStringLiteral("Garden")}));
    EXPECT_THAT(after.unassignedTodos, SizeIs(1));
    EXPECT_EQ(backups.keptBoards, 1);
    EXPECT_EQ(backups.lastReason, BackupReason::beforeImport);
    EXPECT_TRUE(store().toastOffersUndo());
    EXPECT_FALSE(transfer.preview());
    EXPECT_FALSE(transfer.refusal());
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(after.goals[0].id));
    EXPECT_TRUE(settings.document(goalsKey).contains("Sweep"));
    store().undo();
    EXPECT_EQ(board(), before);
    EXPECT_FALSE(settings.document(goalsKey).contains("Sweep"));
    store().redo();
    EXPECT_EQ(board(), after);
}

TEST_F(BoardTransferring, Replacing_is_one_step_that_undo_takes_back_exactly)
{
    const BoardContents before = board();
    read(list);
    import(ImportMode::replace);
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Home")});
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(store().goals()[0].id));
    store().undo();
    EXPECT_EQ(board(), before);
}

TEST_F(BoardTransferring, Goals_that_came_are_shown_although_nothing_in_them_is_open)
{
    store().setHidingGoalsWithoutOpenTodos(true);
    files.files.insert(list, "# Home\n- [x] Sweep\n");
    read(list);
    import(ImportMode::add);
    EXPECT_FALSE(store().isHidingGoalsWithoutOpenTodos());
}

TEST_F(BoardTransferring, Its_own_export_in_its_own_place_changes_nothing_and_offers_no_undo)
{
    const BoardContents before = board();
    transfer.exportTo(QStringLiteral("/a.json"), TransferFormat::json);
    scheduler.runBackgroundWork();
    read(QStringLiteral("/a.json"));
    import(ImportMode::replace);
    EXPECT_EQ(board(), before);
    EXPECT_FALSE(store().toastOffersUndo());
    EXPECT_EQ(store().toastMessage(), KelpaCopy::text(CopyKey::BoardIsSame, store().language()));
}

struct RefusedRow
{
    const char* name;
    QByteArray bytes;
    Refusal refusal;
};

TEST_F(BoardTransferring, Files_that_are_refused_change_nothing)
{
    const BoardContents before = board();
    for (const RefusedRow& row :
         {RefusedRow{"/a.md", "", ImportRefusal::empty},
          RefusedRow{"/a.md", "caf\xe9", ImportRefusal::wrongEncoding},
          RefusedRow{"/a.md", QByteArray("\xff\xfe-\0 \0a\0\x3e\xd8", 10), ImportRefusal::cutOff},
          RefusedRow{"/a.txt", QByteArray("\xff\xfe-\0\x3e\xd8 \0", 8),
                     ImportRefusal::wrongEncoding},
          RefusedRow{"/a.txt", QByteArray("\xff\xfe\0\0-\0\0\0", 8), ImportRefusal::wrongEncoding},
          RefusedRow{"/a.json", "{\"format\":\"kelpa-board\"", ImportRefusal::cutOff},
          RefusedRow{"/a.png", "\x89PNG", ImportRefusal::notThisFormat},
          RefusedRow{"/a.md", QByteArray(largestImport + 1, ' '), ImportRefusal::tooLarge}}) {
        files.files.insert(QString::fromUtf8(row.name), row.bytes);
        read(QString::fromUtf8(row.name));
        EXPECT_EQ(transfer.refusal(), row.refusal) << row.name;
        EXPECT_FALSE(transfer.preview());
        import(ImportMode::replace);
    }
    read(QStringLiteral("/gone.md"));
    EXPECT_EQ(transfer.refusal(), Refusal(Trouble::fileNotRead));
    EXPECT_EQ(board(), before);
    EXPECT_EQ(backups.keptBoards, 0);
}

TEST_F(BoardTransferring, Nothing_is_imported_where_the_board_cannot_be_kept)
{
    read(list);
    const BoardContents before = board();
    backups.canKeep = false;
    import(ImportMode::add);
    EXPECT_EQ(transfer.refusal(), Refusal(Trouble::notKept));
    EXPECT_EQ(board(), before);
    // The file is still there for another attempt.
    backups.canKeep = true;
    import(ImportMode::add);
    EXPECT_EQ(store().goals().size(), 2);
}

TEST_F(BoardTransferring, Nothing_is_imported_where_the_board_cannot_be_saved)
{
    read(list);
    settings.isFailing = true;
    store().createGoal(QStringLiteral("Typed meanwhile"));
    import(ImportMode::replace);
    EXPECT_EQ(transfer.refusal(), Refusal(Trouble::notKept));
    EXPECT_EQ(store().goals().size(), 2);
    EXPECT_EQ(backups.keptBoards, 0);
}

TEST_F(BoardTransferring, An_import_on_a_slow_disk_waits_without_holding_anything_up)
{
    read(list);
    settings.isSlow = true;
    settings.isHanging = true;
    makeGoal(QStringLiteral("Typed before"));
    import(ImportMode::add);
    EXPECT_TRUE(transfer.isSaving());
    EXPECT_TRUE(transfer.isImporting());
    EXPECT_EQ(settings.finishCount, 0) << "nothing waits for the disk";
    EXPECT_EQ(backups.keptBoards, 0) << "the file has not all of the board yet";
    store().addTodo(QStringLiteral("Typed meanwhile"), garden);
    settings.isSlow = false;
    settings.endSave();
    scheduler.advance(0ms);
    EXPECT_FALSE(transfer.isSaving());
    scheduler.runBackgroundWork();
    EXPECT_EQ(store().goals().size(), 3);
    EXPECT_THAT(todos(garden), SizeIs(2));
    EXPECT_EQ(backups.keptBoards, 1);
}

TEST_F(BoardTransferring, An_import_that_waits_for_the_disk_can_be_cancelled)
{
    read(list);
    settings.isSlow = true;
    makeGoal(QStringLiteral("Typed before"));
    import(ImportMode::replace);
    transfer.cancel();
    EXPECT_FALSE(transfer.isImporting());
    settings.endSave();
    scheduler.advance(1s);
    scheduler.runBackgroundWork();
    EXPECT_EQ(store().goals().size(), 2);
    EXPECT_EQ(backups.keptBoards, 0);
}

TEST_F(BoardTransferring, A_slow_disk_that_refuses_in_the_end_lets_nothing_be_imported)
{
    read(list);
    settings.isSlow = true;
    makeGoal(QStringLiteral("Typed before"));
    import(ImportMode::replace);
    settings.isFailing = true;
    settings.endSave();
    scheduler.advance(0ms);
    EXPECT_EQ(transfer.refusal(), Refusal(Trouble::notKept));
    EXPECT_FALSE(transfer.isImporting());
    EXPECT_EQ(backups.keptBoards, 0);
}

TEST_F(BoardTransferring, What_is_cancelled_leaves_the_board_as_it_is)
{
    const BoardContents before = board();
    read(list);
    transfer.import(ImportMode::replace);
    EXPECT_TRUE(transfer.isImporting());
    transfer.cancel();
    scheduler.runBackgroundWork();
    EXPECT_EQ(board(), before);
    EXPECT_FALSE(transfer.preview());
    transfer.read(list);
    transfer.cancel();
    scheduler.runBackgroundWork();
    EXPECT_FALSE(transfer.preview());
    EXPECT_FALSE(transfer.refusal());
}

TEST_F(BoardTransferring, A_board_that_changes_before_the_import_keeps_its_changes)
{
    read(list);
    transfer.import(ImportMode::add);
    store().addTodo(QStringLiteral("Meanwhile"), garden);
    scheduler.runBackgroundWork();
    scheduler.runBackgroundWork();
    EXPECT_EQ(backups.keptBoards, 2) << "the copy has them too";
    EXPECT_THAT(todos(garden), SizeIs(2));
    store().undo();
    EXPECT_THAT(todos(garden), SizeIs(2));
    EXPECT_EQ(store().goals().size(), 1);
}

TEST_F(BoardTransferring, What_an_import_adds_is_stored_in_the_order_that_the_board_shows)
{
    for (const bool isSortedMeanwhile : {true, false}) {
        store().setAutoSortingGoals(!isSortedMeanwhile);
        read(list);
        transfer.import(ImportMode::add);
        store().setAutoSortingGoals(isSortedMeanwhile);
        scheduler.runBackgroundWork();
        ASSERT_THAT(store().goals(), SizeIs(2));
        EXPECT_EQ(store().goals().front().title,
                  isSortedMeanwhile ? QStringLiteral("Home") : QStringLiteral("Garden"));
        EXPECT_EQ(decodeGoals(settings.document(goalsKey)), store().goals());
        EXPECT_EQ(decodeTodos(settings.document(unassignedTodosKey)), store().unassignedTodos());
        store().undo();
        ASSERT_THAT(store().goals(), SizeIs(1));
    }
}

TEST_F(BoardTransferring, The_whole_board_or_one_goal_is_exported)
{
    store().addTodo(QStringLiteral("Milk"), std::nullopt);
    const QString path = QStringLiteral("/out.md");
    transfer.exportTo(path, TransferFormat::markdown);
    EXPECT_TRUE(transfer.isExporting());
    scheduler.runBackgroundWork();
    EXPECT_EQ(files.files[path], "- [ ] Milk\n\n# Garden\n\n- [ ] Dig\n");
    transfer.exportTo(path, TransferFormat::markdown, garden);
    scheduler.runBackgroundWork();
    EXPECT_EQ(files.files[path], "# Garden\n\n- [ ] Dig\n");
    transfer.exportTo(path, TransferFormat::markdown, GoalID::create());
    EXPECT_FALSE(transfer.isExporting());
}

TEST_F(BoardTransferring, An_export_that_cannot_be_written_says_so)
{
    files.isFull = true;
    transfer.exportTo(QStringLiteral("/out.md"), TransferFormat::markdown);
    scheduler.runBackgroundWork();
    EXPECT_EQ(transfer.refusal(), Refusal(Trouble::fileNotWritten));
    files.isFull = false;
    transfer.exportTo(QStringLiteral("/out.md"), TransferFormat::markdown);
    EXPECT_FALSE(transfer.refusal());
}

} // namespace
} // namespace kelpa::test
