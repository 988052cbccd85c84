// Choosing a backup, over backups in memory.
#include "store/BackupBrowser.h"

#include "store/board/BoardPersistence.h"
#include "support/BoardBuilders.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MemoryBackups : public Backups
{
public:
    QList<Backup> list() const override { return backups; }
    std::optional<QMap<QString, SettingsValue>> read(const QString& name) const override
    {
        const auto found = contents.constFind(name);
        return found == contents.constEnd() ? std::nullopt : std::optional(*found);
    }
    bool keepBoard() override
    {
        ++keptBoards;
        return canKeep;
    }

    void add(const QString& name, const QList<Goal>& goals, const QList<TodoItem>& todos = {})
    {
        backups.append({name, QDateTime(QDate(2026, 11, 22), QTime(9, 0), Qt::UTC), false});
        for (const SettingsEntry& entry : boardEntries(goals, todos))
            contents[name].insert(entry.key, entry.value);
    }

    QList<Backup> backups;
    QMap<QString, QMap<QString, SettingsValue>> contents;
    bool canKeep = true;
    int keptBoards = 0;
};

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
    files.backups.append({QStringLiteral("broken"), {}, true});
    read();
    ASSERT_THAT(browser.entries(), SizeIs(2));
    BackupSummary expected;
    expected.goals = {{QStringLiteral("Taxes"), 1}};
    expected.goalCount = 1;
    expected.openTodoCount = 2;
    expected.openTodosWithoutGoal = 1;
    EXPECT_EQ(browser.entries()[0].summary, expected);
    EXPECT_EQ(browser.entries()[1].summary, std::nullopt);
    EXPECT_TRUE(browser.entries()[1].backup.isBeforeRestore);
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
