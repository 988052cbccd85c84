// Choosing a backup, over backups in memory.
#include "store/BackupBrowser.h"

#include "store/board/BoardPersistence.h"
#include "support/BoardBuilders.h"
#include "support/MemoryBackups.h"
#include "support/StoreFixture.h"
#include "text/KelpaCopy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class BackupBrowsing : public StoreFixture
{
protected:
    void SetUp() override
    {
        files.add(QStringLiteral("monday"), {taxes}, {todo(QStringLiteral("Milk"), 1)});
        store().createGoal(QStringLiteral("Garden"));
    }
    void read()
    {
        browser.read();
        scheduler.runBackgroundWork();
    }
    void restore(const QString& name)
    {
        browser.restore(name);
        scheduler.runBackgroundWork();
    }
    QStringList titles()
    {
        QStringList result;
        for (const Goal& each : store().goals())
            result.append(each.title);
        return result;
    }

    const Goal taxes = test::goal(QStringLiteral("Taxes"), {todo(QStringLiteral("Receipts"))});
    MemoryBackups files;
    BackupBrowser browser{store(), files, scheduler};
};

TEST_F(BackupBrowsing, Says_what_each_backup_holds)
{
    files.backups.append({QStringLiteral("broken"), {}, BackupReason::beforeRestore});
    read();
    ASSERT_THAT(browser.entries(), SizeIs(2));
    BackupSummary expected;
    expected.goals = {{QStringLiteral("Taxes"), 1}};
    expected.goalCount = 1;
    expected.openTodoCount = 2;
    expected.openTodosWithoutGoal = 1;
    EXPECT_EQ(browser.entries()[0].summary, expected);
    EXPECT_EQ(browser.entries()[1].summary, std::nullopt);
    EXPECT_EQ(browser.entries()[1].backup.reason, BackupReason::beforeRestore);
}

TEST_F(BackupBrowsing, A_restored_board_is_the_backups_after_the_present_one_was_kept)
{
    restore(QStringLiteral("monday"));
    EXPECT_EQ(store().goals(), QList<Goal>{taxes});
    EXPECT_THAT(store().unassignedTodos(), SizeIs(1));
    EXPECT_EQ(files.keptBoards, 1);
    EXPECT_EQ(browser.refusal(), std::nullopt);
    EXPECT_TRUE(settings.document(goalsKey).contains("Taxes"));
}

TEST_F(BackupBrowsing, Restoring_is_one_step_that_undo_takes_back)
{
    restore(QStringLiteral("monday"));
    EXPECT_TRUE(store().toastOffersUndo());
    store().undo();
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Garden")});
    EXPECT_THAT(store().unassignedTodos(), IsEmpty());
    store().redo();
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Taxes")});
}

TEST_F(BackupBrowsing, Nothing_is_restored_where_the_board_cannot_be_kept)
{
    files.canKeep = false;
    restore(QStringLiteral("monday"));
    EXPECT_EQ(browser.refusal(), BackupBrowser::Refusal::notKept);
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Garden")});
    files.canKeep = true;
    restore(QStringLiteral("monday"));
    EXPECT_EQ(browser.refusal(), std::nullopt);
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Taxes")});
}

TEST_F(BackupBrowsing, A_backup_that_cannot_be_read_costs_no_copy)
{
    restore(QStringLiteral("gone"));
    EXPECT_EQ(browser.refusal(), BackupBrowser::Refusal::unreadable);
    EXPECT_EQ(files.keptBoards, 0);
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Garden")});
}

TEST_F(BackupBrowsing, A_board_that_cannot_be_saved_is_not_replaced)
{
    settings.isFailing = true;
    store().createGoal(QStringLiteral("Typed meanwhile"));
    restore(QStringLiteral("monday"));
    EXPECT_EQ(browser.refusal(), BackupBrowser::Refusal::notKept);
    EXPECT_EQ(files.keptBoards, 0);
    EXPECT_EQ(store().goals().size(), 2);
    settings.isFailing = false;
    restore(QStringLiteral("monday"));
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Taxes")});
}

TEST_F(BackupBrowsing, A_backup_that_equals_the_board_is_no_step_and_no_copy)
{
    restore(QStringLiteral("monday"));
    store().undo();
    store().redo();
    restore(QStringLiteral("monday"));
    EXPECT_EQ(files.keptBoards, 1);
    EXPECT_FALSE(store().toastOffersUndo());
    EXPECT_EQ(store().toastMessage(), KelpaCopy::text(CopyKey::BoardIsSame, store().language()));
    store().undo();
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Garden")}) << "the step before is the first";
}

TEST_F(BackupBrowsing, A_board_that_changes_while_its_backup_is_read_is_kept_first)
{
    restore(QStringLiteral("monday"));
    browser.restore(QStringLiteral("monday"));
    store().createGoal(QStringLiteral("Typed meanwhile"));
    scheduler.runBackgroundWork();
    scheduler.runBackgroundWork();
    EXPECT_EQ(files.keptBoards, 2);
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Taxes")});
    EXPECT_TRUE(store().toastOffersUndo());
}

TEST_F(BackupBrowsing, A_board_that_changes_while_it_is_copied_is_copied_again)
{
    browser.restore(QStringLiteral("monday"));
    store().createGoal(QStringLiteral("Typed meanwhile"));
    scheduler.runBackgroundWork();
    scheduler.runBackgroundWork();
    EXPECT_EQ(files.keptBoards, 2);
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Taxes")});
}

TEST_F(BackupBrowsing, A_board_that_changes_each_time_is_not_replaced)
{
    browser.restore(QStringLiteral("monday"));
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(browser.isRestoring());
        store().createGoal(QStringLiteral("Typed meanwhile"));
        scheduler.runBackgroundWork();
    }
    EXPECT_FALSE(browser.isRestoring());
    EXPECT_EQ(browser.refusal(), BackupBrowser::Refusal::notKept);
    EXPECT_EQ(store().goals().size(), 4) << "the garden and what was typed";
}

TEST_F(BackupBrowsing, On_a_slow_disk_it_waits_without_holding_anything_up)
{
    settings.isSlow = true;
    store().createGoal(QStringLiteral("Typed before"));
    restore(QStringLiteral("monday"));
    EXPECT_TRUE(browser.isSaving());
    EXPECT_EQ(settings.finishCount, 0);
    EXPECT_EQ(files.keptBoards, 0);
    settings.endSave();
    scheduler.advance(0ms);
    scheduler.runBackgroundWork();
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Taxes")});
    EXPECT_EQ(files.keptBoards, 1);
}

TEST_F(BackupBrowsing, Who_cancels_while_the_disk_is_slow_keeps_the_board)
{
    browser.restore(QStringLiteral("monday"));
    scheduler.hangBackgroundWork();
    browser.cancel();
    EXPECT_FALSE(browser.isRestoring());
    scheduler.runBackgroundWork();
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Garden")});
}

TEST_F(BackupBrowsing, A_second_request_while_one_is_under_way_does_nothing)
{
    browser.restore(QStringLiteral("monday"));
    EXPECT_TRUE(browser.isRestoring());
    browser.restore(QStringLiteral("monday"));
    scheduler.runBackgroundWork();
    EXPECT_FALSE(browser.isRestoring());
    EXPECT_EQ(files.keptBoards, 1);
}

TEST_F(BackupBrowsing, Windows_of_a_goal_that_the_backup_has_stay_in_it)
{
    restore(QStringLiteral("monday"));
    desktop.addAccessibleWindow(7, 100, QStringLiteral("Form"));
    store().refresh();
    store().assign(7, taxes.id);
    ASSERT_EQ(store().assignments().size(), 1);
    restore(QStringLiteral("monday"));
    EXPECT_EQ(store().assignments().size(), 1);
    EXPECT_EQ(store().windows(taxes.id).size(), 1);
}

} // namespace
} // namespace kelpa::test
