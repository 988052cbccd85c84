// Backups on the command line, with real files.
#include "app/BackupCommands.h"

#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/sqlite/backup/BackupFolder.h"
#include "store/board/BoardPersistence.h"
#include "support/BoardBuilders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace kelpa::test {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class BackupCommands : public testing::Test
{
protected:
    /// Writes the board and nothing else.
    void store(const QList<Goal>& goals, const QList<TodoItem>& todos = {})
    {
        SqliteSettingsStore file(path);
        ASSERT_TRUE(file.write(boardEntries(goals, todos)));
    }
    BoardContents stored()
    {
        SqliteSettingsStore file(path);
        return loadBoard(file).contents;
    }
    QString keep(const QString& time)
    {
        const auto board = snapshotOf(path);
        const BackupName name{QDateTime::fromString(time, Qt::ISODate), BackupReason::daily};
        const auto added = BackupFolder(path).add(*std::get<0>(board), name);
        return std::get<BackupName>(added).text();
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("kelpa.sqlite"));
    const QList<Goal> taxes{goal(QStringLiteral("Taxes"), {todo(QStringLiteral("Receipts"))})};
    const QList<Goal> garden{goal(QStringLiteral("Garden"))};
};

TEST_F(BackupCommands, A_board_without_backups_says_so)
{
    const CommandOutput output = listBackups(path);
    EXPECT_EQ(output.text,
              QStringLiteral("There is no backup of the board in %1 yet.\n").arg(path));
    EXPECT_EQ(output.exitStatus, 0);
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(BackupCommands, The_list_says_what_each_backup_holds)
{
    store(taxes);
    keep(QStringLiteral("2026-11-20T09:00:00Z"));
    store(garden, {todo(QStringLiteral("Milk")), todo(QStringLiteral("Bread"))});
    keep(QStringLiteral("2026-11-21T09:00:00Z"));
    const QStringList lines = listBackups(path).text.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_TRUE(lines[0].startsWith(u"2026-11-21T090000Z  2026-11-21 ")) << qPrintable(lines[0]);
    EXPECT_TRUE(lines[0].endsWith(u"  goals: 1, open todos: 2")) << qPrintable(lines[0]);
    EXPECT_TRUE(lines[1].endsWith(u"  goals: 1, open todos: 1")) << qPrintable(lines[1]);
}

TEST_F(BackupCommands, Restoring_replaces_the_board_and_keeps_the_one_before)
{
    store(taxes);
    const QString name = keep(QStringLiteral("2026-11-20T09:00:00Z"));
    store(garden, {todo(QStringLiteral("Milk"))});
    const BoardContents before = stored();

    const CommandOutput output = restoreBackup(path, name);
    EXPECT_EQ(output.exitStatus, 0);
    EXPECT_EQ(output.error, QString());
    EXPECT_EQ(stored().goals, taxes);
    EXPECT_THAT(stored().unassignedTodos, IsEmpty());

    const QList<BackupName> backups = BackupFolder(path).list();
    ASSERT_THAT(backups, SizeIs(2));
    EXPECT_EQ(backups[0].reason, BackupReason::beforeRestore);
    EXPECT_EQ(restoreBackup(path, backups[0].text()).exitStatus, 0);
    EXPECT_EQ(stored(), before);
}

TEST_F(BackupCommands, Restoring_leaves_what_is_remembered_of_windows_and_whether)
{
    const auto value = [this](const QString& key) { return SqliteSettingsStore(path).value(key); };
    const QByteArray present("{\"version\":1,\"newestWindow\":9,\"windows\":[]}");
    store(taxes);
    ASSERT_TRUE(SqliteSettingsStore(path).write(
        {{windowMemoryKey, QByteArray("{}")}, {rememberingWindowsKey, true}}));
    const QString name = keep(QStringLiteral("2026-11-20T09:00:00Z"));
    store(garden);
    ASSERT_TRUE(SqliteSettingsStore(path).write(
        {{windowMemoryKey, present}, {rememberingWindowsKey, false}}));
    EXPECT_EQ(restoreBackup(path, name).exitStatus, 0);
    EXPECT_EQ(stored().goals, taxes);
    EXPECT_EQ(value(windowMemoryKey), SettingsValue(present));
    EXPECT_EQ(value(rememberingWindowsKey), SettingsValue(false));
}

TEST_F(BackupCommands, A_backup_whose_pins_cannot_be_read_has_none)
{
    store(taxes);
    ASSERT_TRUE(SqliteSettingsStore(path).write({{goalPinsKey, QByteArray("{}")}}));
    const QString name = keep(QStringLiteral("2026-11-20T09:00:00Z"));
    store(garden);
    EXPECT_TRUE(listBackups(path).text.contains(u"goals: 1, open todos: 1"));
    const CommandOutput output = restoreBackup(path, name);
    EXPECT_EQ(output.exitStatus, 0) << qPrintable(output.error);
    EXPECT_EQ(stored().goals, taxes);
    EXPECT_EQ(stored().pins, GoalPins());
}

TEST_F(BackupCommands, An_unknown_name_changes_nothing)
{
    store(taxes);
    const CommandOutput output = restoreBackup(path, QStringLiteral("yesterday"));
    EXPECT_EQ(output.exitStatus, 1);
    EXPECT_TRUE(output.error.contains(u"yesterday"));
    EXPECT_EQ(stored().goals, taxes);
}

TEST_F(BackupCommands, A_damaged_backup_changes_nothing)
{
    store(taxes);
    const QString name = keep(QStringLiteral("2026-11-20T09:00:00Z"));
    store(garden);
    const BackupFolder backups(path);
    QFile file(backups.pathOf(backups.list().constFirst()));
    ASSERT_TRUE(file.resize(5000));
    EXPECT_TRUE(listBackups(path).text.contains(u"cannot be read"));
    const CommandOutput output = restoreBackup(path, name);
    EXPECT_EQ(output.exitStatus, 1);
    EXPECT_TRUE(output.error.contains(u"cannot be read")) << qPrintable(output.error);
    EXPECT_EQ(stored().goals, garden);
    EXPECT_THAT(backups.list(), SizeIs(1));
}

TEST_F(BackupCommands, Nothing_is_restored_where_the_present_board_cannot_be_kept)
{
    store(taxes);
    const QString name = keep(QStringLiteral("2026-11-20T09:00:00Z"));
    store(garden);
    // A folder that is not empty, in the place of the copy that is being made.
    ASSERT_TRUE(
        QDir(BackupFolder(path).path()).mkpath(QStringLiteral("unfinished.before-restore/inside")));
    const CommandOutput output = restoreBackup(path, name);
    EXPECT_EQ(output.exitStatus, 1);
    EXPECT_TRUE(output.error.contains(u"could not be kept")) << qPrintable(output.error);
    EXPECT_EQ(stored().goals, garden);
}

TEST_F(BackupCommands, A_board_that_is_open_is_not_replaced)
{
    store(taxes);
    const QString name = keep(QStringLiteral("2026-11-20T09:00:00Z"));
    store(garden);
    // Another object stands for another process: the lock is the open file's.
    const SqliteSettingsStore running(path);
    const CommandOutput output = restoreBackup(path, name);
    EXPECT_EQ(output.exitStatus, 1);
    EXPECT_TRUE(output.error.contains(u"Kelpa runs with the board")) << qPrintable(output.error);
}

TEST_F(BackupCommands, A_store_that_backs_up_daily_keeps_the_board_before_its_first_change)
{
    store(taxes);
    {
        SqliteSettingsStore file(path);
        backUpDaily(file);
        ASSERT_TRUE(file.write(boardEntries(garden, {})));
    }
    const QList<BackupName> backups = BackupFolder(path).list();
    ASSERT_THAT(backups, SizeIs(1));
    EXPECT_EQ(restoreBackup(path, backups[0].text()).exitStatus, 0);
    EXPECT_EQ(stored().goals, taxes);
}

} // namespace
} // namespace kelpa::test
