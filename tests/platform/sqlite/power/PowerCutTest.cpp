// Cuts during a save, a checkpoint, the creation of the table, a backup, a restore, and the
// replacement of a damaged file. Another operation that writes the board gets a test of its own
// here, between `beginCuts` and `tryCuts`.
#include "platform/sqlite/backup/DailyBackup.h"
#include "platform/sqlite/backup/SqliteBackups.h"
#include "platform/sqlite/power/PowerCuts.h"

#include <QFileInfo>

namespace kelpa {

namespace {

using namespace test;

/// Board number `n`: a value of several pages, and one of some bytes.
SettingsValues board(int n, qsizetype size = 60'000)
{
    return {{goalsKey, QByteArray::number(n) + QByteArray(size, static_cast<char>('a' + n % 26))},
            {languageKey, QString::number(n)}};
}

std::vector<SettingsEntry> entriesOf(const SettingsValues& values)
{
    std::vector<SettingsEntry> entries;
    for (const auto& [key, value] : values.asKeyValueRange())
        entries.push_back({key, value});
    return entries;
}

class PowerCutTest : public PowerCuts
{
protected:
    void save(SqliteSettingsStore& store, const SettingsValues& values)
    {
        change(values, [&] { EXPECT_TRUE(store.write(entriesOf(values))); });
    }
};

TEST_F(PowerCutTest, Of_a_new_board_and_its_first_saves)
{
    path = folder.filePath(QStringLiteral("data/kelpa/kelpa.sqlite"));
    {
        const auto store = openStore();
        for (int n = 1; n <= 4; ++n)
            save(*store, board(n, qsizetype{20'000} * n));
    }
    tryCuts();
}

TEST_F(PowerCutTest, Of_later_starts_with_saves_that_shrink_and_grow)
{
    for (int start = 0; start < 3; ++start) {
        const auto store = openStore();
        if (start == 0) {
            save(*store, board(1));
            beginCuts();
        }
        for (const int n : {2, 3, 4})
            save(*store, board(n + 10 * start, n == 3 ? 10 : 90'000));
    }
    tryCuts();
}

TEST_F(PowerCutTest, Of_a_log_that_is_moved_to_the_file_and_begins_anew)
{
    {
        const auto store = openStore();
        int n = 0;
        // Until just before the log is as long as it may become.
        while (QFileInfo(path + QStringLiteral("-wal")).size() < 7'800'000)
            save(*store, board(++n, 400'000));
        beginCuts();
        for (int i = 0; i < 3; ++i)
            save(*store, board(++n, 400'000));
    }
    tryCuts(Reports::none, Share::quarter);
}

TEST_F(PowerCutTest, Of_a_day_s_first_save_and_its_backup)
{
    QDateTime now(QDate(2026, 11, 22), QTime(9, 0));
    {
        const auto store = openStore();
        save(*store, board(1));
        beginCuts();
        const auto backup = std::make_shared<DailyBackup>(path, [&now] { return now; });
        store->setBeforeSave([backup] { backup->beforeSave(); });
        for (int day = 0; day < 3; ++day) {
            save(*store, board(10 * day + 2));
            save(*store, board(10 * day + 3));
            backup->finish();
            expectBackup(board(day == 0 ? 1 : 10 * day - 7));
            now = now.addDays(1);
        }
    }
    tryCuts();
}

TEST_F(PowerCutTest, Of_a_restored_backup)
{
    {
        const auto store = openStore();
        save(*store, board(1));
        SqliteBackups backups(path);
        ASSERT_TRUE(backups.keepBoard(BackupReason::beforeRestore));
        expectBackup(board(1));
        save(*store, board(2));
        beginCuts();
        const auto kept = backups.read(backups.list().constFirst().name);
        ASSERT_EQ(kept, board(1));
        ASSERT_TRUE(backups.keepBoard(BackupReason::beforeRestore));
        expectBackup(board(2));
        save(*store, *kept);
    }
    tryCuts();
}

TEST_F(PowerCutTest, Of_a_start_after_a_cut)
{
    const QString log = path + QStringLiteral("-wal");
    {
        const auto store = openStore();
        save(*store, board(1));
        save(*store, board(2));
        // As a cut during the second save may leave it.
        ASSERT_TRUE(QFile::copy(path, path + QStringLiteral(".cut")));
        setContents(path + QStringLiteral(".cut-wal"), contents(log).chopped(10'000));
    }
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::rename(path + QStringLiteral(".cut"), path));
    ASSERT_TRUE(QFile::rename(path + QStringLiteral(".cut-wal"), log));
    beginAnew(board(1));
    {
        const auto store = openStore();
        EXPECT_EQ(store->values(), board(1));
        save(*store, board(3));
    }
    tryCuts();
}

class PowerCutOfDamagedFileTest : public PowerCutTest
{
protected:
    void SetUp() override { save(*openStore(), board(1)); }

    /// From now on only the language can be read.
    void damageFile()
    {
        constexpr qsizetype pagesBefore = 49'152;
        const QByteArray damage(contents(path).size() - pagesBefore, '\xff');
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(pagesBefore));
        ASSERT_EQ(file.write(damage), damage.size());
        file.close();
        disk->noteWrite(*disk->inodeOf(path), pagesBefore, damage);
        disk->noteSync(path, false);
    }

    const SettingsValues restOfFile{{languageKey, QStringLiteral("1")}};
};

TEST_F(PowerCutOfDamagedFileTest, At_the_start_keeps_what_could_be_read)
{
    damageFile();
    beginAnew(restOfFile);
    EXPECT_EQ(openStore()->values(), restOfFile);
    tryCuts(Reports::expected);
}

TEST_F(PowerCutOfDamagedFileTest, With_a_log_keeps_what_the_log_has)
{
    const QString log = path + QStringLiteral("-wal");
    SettingsValues later = board(1);
    later.insert(languageKey, QStringLiteral("2"));
    {
        const auto store = openStore();
        save(*store, later);
        ASSERT_TRUE(QFile::copy(log, path + QStringLiteral(".log")));
    }
    damageFile();
    ASSERT_TRUE(QFile::rename(path + QStringLiteral(".log"), log));
    const SettingsValues rest{{languageKey, QStringLiteral("2")}};
    beginAnew(rest);
    EXPECT_EQ(openStore()->values(), rest);
    tryCuts(Reports::expected);
}

TEST_F(PowerCutOfDamagedFileTest, While_it_is_open_keeps_that_or_has_the_whole_board)
{
    beginAnew(board(1));
    {
        const auto store = openStore();
        damageFile();
        beginCuts();
        changeUnconfirmed(restOfFile, [] {});
        save(*store, board(2));
    }
    tryCuts(Reports::expected);
}

} // namespace

} // namespace kelpa
