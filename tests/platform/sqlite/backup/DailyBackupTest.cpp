// Backups of a real file: when they are made, what they hold, and what stands in their way.
#include "platform/sqlite/backup/DailyBackup.h"

#include "platform/sqlite/SettingsFixture.h"
#include "platform/sqlite/SlowDisk.h"
#include "platform/sqlite/backup/BackupFolder.h"
#include "platform/sqlite/backup/SqliteBackups.h"

#include <QFileInfo>

#include <sys/stat.h>

#include <atomic>
#include <thread>
#include <vector>

namespace kelpa {

namespace {

using namespace test;
using testing::IsEmpty;
using testing::SizeIs;

class DailyBackupTest : public SettingsFixture
{
protected:
    void SetUp() override { store = openStore(); }
    void TearDown() override { store.reset(); }

    /// From now on the store backs up, by the clock of this test.
    void backUpDaily()
    {
        backup = std::make_shared<DailyBackup>(path, [this] { return now; });
        store->setBeforeSave([backup = backup] { backup->beforeSave(); });
    }
    QList<BackupName> backups()
    {
        if (backup)
            backup->finish();
        return BackupFolder(path).list();
    }
    /// A backup of the file as it is now, as an earlier version made it: a copy of all its pages.
    BackupName backUpAsBefore(const QDateTime& time)
    {
        store.reset();
        BackupName name{time.toUTC(), BackupReason::daily};
        const QString file = BackupFolder(path).pathOf(name);
        EXPECT_TRUE(QDir().mkpath(BackupFolder(path).path()));
        EXPECT_TRUE(QFile::copy(path, file));
        EXPECT_TRUE(RawDatabase(file).run("PRAGMA journal_mode = DELETE"));
        store = openStore();
        return name;
    }
    static SettingsEntry memory(const QByteArray& json) { return {memoryKey, json}; }
    QByteArray bytesOf(const BackupName& name) const
    {
        return contents(BackupFolder(path).pathOf(name));
    }
    SettingsValue goalsIn(const BackupName& name) const
    {
        const FileContents contents = BackupFolder(path).read(name);
        EXPECT_EQ(contents.error, std::nullopt);
        return contents.values.value(goalsKey);
    }

    inline static const QString memoryKey = QStringLiteral("kelpa.windowMemory");
    std::unique_ptr<SqliteSettingsStore> store;
    std::shared_ptr<DailyBackup> backup;
    QDateTime now{QDate(2026, 11, 22), QTime(9, 0)};
};

TEST_F(DailyBackupTest, Holds_the_board_as_it_was_before_the_first_change_of_the_day)
{
    ASSERT_TRUE(store->write({goals("[1]"), language(QStringLiteral("en"))}));
    backUpDaily();
    ASSERT_TRUE(store->write({goals("[2]")}));
    ASSERT_TRUE(store->write({goals("[3]")}));
    ASSERT_THAT(backups(), SizeIs(1));
    EXPECT_EQ(goalsIn(backups().constFirst()), SettingsValue(QByteArray("[1]")));
    EXPECT_EQ(BackupFolder(path).read(backups().constFirst()).values.value(languageKey),
              SettingsValue(QStringLiteral("en")));
    EXPECT_EQ(backups().constFirst().time, now.toUTC());
}

TEST_F(DailyBackupTest, Is_made_again_on_the_next_day)
{
    ASSERT_TRUE(store->write({goals("[1]")}));
    backUpDaily();
    ASSERT_TRUE(store->write({goals("[2]")}));
    now = now.addSecs(15 * 60 * 60 - 1);
    ASSERT_TRUE(store->write({goals("[3]")}));
    EXPECT_THAT(backups(), SizeIs(1));
    now = now.addSecs(1);
    ASSERT_TRUE(store->write({goals("[4]")}));
    ASSERT_THAT(backups(), SizeIs(2));
    EXPECT_EQ(goalsIn(backups().constFirst()), SettingsValue(QByteArray("[3]")));
}

TEST_F(DailyBackupTest, Is_not_made_twice_a_day_by_two_starts)
{
    ASSERT_TRUE(store->write({goals("[1]")}));
    backUpDaily();
    ASSERT_TRUE(store->write({goals("[2]")}));
    ASSERT_THAT(backups(), SizeIs(1));
    backUpDaily();
    ASSERT_TRUE(store->write({goals("[3]")}));
    EXPECT_THAT(backups(), SizeIs(1));
}

TEST_F(DailyBackupTest, Of_a_new_board_does_not_exist)
{
    backUpDaily();
    ASSERT_TRUE(store->write({goals("[1]")}));
    EXPECT_THAT(backups(), IsEmpty());
    EXPECT_FALSE(QFileInfo::exists(BackupFolder(path).path()));
}

TEST_F(DailyBackupTest, Is_for_its_owner_alone_and_needs_no_other_file)
{
    ASSERT_TRUE(store->write({goals("[1]")}));
    backUpDaily();
    ASSERT_TRUE(store->write({goals("[2]")}));
    ASSERT_THAT(backups(), SizeIs(1));
    const BackupFolder folderOfBackups(path);
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(folderOfBackups.path()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
    ASSERT_EQ(::stat(QFile::encodeName(folderOfBackups.pathOf(backups().constFirst())).constData(),
                     &status),
              0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    EXPECT_EQ(QDir(folderOfBackups.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList(backups().constFirst().fileName()));
    // Reading it leaves nothing behind either.
    EXPECT_EQ(goalsIn(backups().constFirst()), SettingsValue(QByteArray("[1]")));
    EXPECT_THAT(QDir(folderOfBackups.path()).entryList(QDir::Files | QDir::Hidden), SizeIs(1));
}

TEST_F(DailyBackupTest, Leaves_the_board_as_it_is_to_the_next_save)
{
    ASSERT_TRUE(store->write({goals("[1]")}));
    backUpDaily();
    ASSERT_TRUE(store->write({goals("[2]")}));
    backup->finish();
    // A board that somebody else seems to have changed would be read anew, and copied aside.
    ASSERT_TRUE(store->write({goals("[3]")}));
    EXPECT_THAT(copiesAside(goalsKey), IsEmpty());
    EXPECT_THAT(filesNamed(QStringLiteral("kelpa.sqlite.damaged-*")), IsEmpty());
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(DailyBackupTest, Is_waited_for_by_no_save_however_long_the_copy_takes)
{
    ASSERT_TRUE(store->write({goals("[1]")}));
    store.reset();
    SlowDisk disk;
    store = openStore();
    backUpDaily();
    disk.hangWrites(".backups/");
    // A save that waited for the copy would never return.
    ASSERT_TRUE(store->write({goals("[2]")}));
    disk.waitForWrite();
    ASSERT_TRUE(store->write({goals("[3]")}));
    EXPECT_EQ(openStore()->value(goalsKey), SettingsValue(QByteArray("[3]")));
    EXPECT_THAT(BackupFolder(path).list(), IsEmpty());
    disk.recover();
    ASSERT_THAT(backups(), SizeIs(1));
    EXPECT_EQ(goalsIn(backups().constFirst()), SettingsValue(QByteArray("[1]")));
    backup.reset();
    store.reset();
}

TEST_F(DailyBackupTest, That_cannot_be_made_delays_no_save)
{
    ASSERT_TRUE(store->write({goals("[1]")}));
    setContents(BackupFolder(path).path(), "a file in the folder's place");
    backUpDaily();
    EXPECT_TRUE(store->write({goals("[2]")}));
    EXPECT_TRUE(store->write({goals("[3]")}));
    EXPECT_THAT(backups(), IsEmpty());
    EXPECT_EQ(store->value(goalsKey), SettingsValue(QByteArray("[3]")));
    EXPECT_EQ(store->status(), SettingsStatus());
}

TEST_F(DailyBackupTest, Removes_what_a_cut_has_left)
{
    ASSERT_TRUE(store->write({goals("[1]")}));
    ASSERT_TRUE(QDir().mkpath(BackupFolder(path).path()));
    setContents(QDir(BackupFolder(path).path()).filePath(QStringLiteral("unfinished")),
                "half a copy");
    setContents(QDir(BackupFolder(path).path()).filePath(QStringLiteral("unfinished-journal")),
                "of it");
    backUpDaily();
    ASSERT_TRUE(store->write({goals("[2]")}));
    ASSERT_THAT(backups(), SizeIs(1));
    EXPECT_THAT(QDir(BackupFolder(path).path()).entryList(QDir::Files), SizeIs(1));
}

TEST_F(DailyBackupTest, A_copy_that_a_cut_has_torn_is_made_again)
{
    ASSERT_TRUE(store->write({goals(QByteArray(100'000, '1'))}));
    {
        const auto held = snapshotOf(path);
        const auto copied = BackupFolder(path).copy(
            *std::get<0>(held), {now.toUTC().addSecs(-60), BackupReason::daily}, {});
        ASSERT_TRUE(std::holds_alternative<UnsyncedBackup>(copied));
    }
    const QDir backupFolder(BackupFolder(path).path());
    const QString torn = backupFolder.filePath(backupFolder.entryList(QDir::Files).value(0));
    // In the middle of a value, where SQLite does not notice it.
    setContents(torn, contents(torn).replace(60'000, 512, QByteArray(512, '\0')));
    ASSERT_TRUE(store->write({goals("[2]")}));
    backUpDaily();
    ASSERT_TRUE(store->write({goals("[3]")}));
    ASSERT_THAT(backups(), SizeIs(1));
    EXPECT_EQ(goalsIn(backups().constFirst()), SettingsValue(QByteArray("[2]")));
    EXPECT_THAT(backupFolder.entryList(QDir::Files), SizeIs(1));
}

TEST_F(DailyBackupTest, A_copy_that_is_given_up_leaves_nothing)
{
    ASSERT_TRUE(store->write({goals("[1]")}));
    const auto held = snapshotOf(path);
    std::stop_source stop;
    stop.request_stop();
    const auto copied = BackupFolder(path).copy(
        *std::get<0>(held), {now.toUTC(), BackupReason::daily}, stop.get_token());
    ASSERT_TRUE(std::holds_alternative<SettingsError>(copied));
    EXPECT_THAT(QDir(BackupFolder(path).path()).entryList(QDir::Files), IsEmpty());
}

TEST_F(DailyBackupTest, A_copy_that_was_damaged_since_says_so)
{
    ASSERT_TRUE(store->write({goals(QByteArray(100'000, '1'))}));
    backUpDaily();
    ASSERT_TRUE(store->write({goals("[2]")}));
    ASSERT_THAT(backups(), SizeIs(1));
    const QString file = BackupFolder(path).pathOf(backups().constFirst());
    QByteArray bytes = contents(file);
    setContents(file, bytes.replace(20'000, 30'000, QByteArray(30'000, '\xff')));
    EXPECT_EQ(BackupFolder(path).read(backups().constFirst()).error, SettingsError::damaged);
}

TEST_F(DailyBackupTest, Keeps_what_others_write_meanwhile_out)
{
    ASSERT_TRUE(store->write({goals("[1]")}));
    auto held = snapshotOf(path);
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<SqliteFile>>(held));
    ASSERT_TRUE(store->write({goals("[2]")}));
    const auto added =
        BackupFolder(path).add(*std::get<0>(held), {now.toUTC(), BackupReason::daily});
    ASSERT_TRUE(std::holds_alternative<BackupName>(added));
    EXPECT_EQ(goalsIn(std::get<BackupName>(added)), SettingsValue(QByteArray("[1]")));
}

TEST_F(DailyBackupTest, Two_of_the_same_second_for_two_reasons_have_two_names)
{
    ASSERT_TRUE(store->write({goals("[1]")}));
    for (const BackupReason reason : {BackupReason::beforeRestore, BackupReason::daily}) {
        const auto held = snapshotOf(path);
        ASSERT_TRUE(std::holds_alternative<BackupName>(
            BackupFolder(path).add(*std::get<0>(held), {now.toUTC(), reason})));
    }
    ASSERT_THAT(backups(), SizeIs(2));
    EXPECT_NE(backups()[0].text(), backups()[1].text());
}

TEST_F(DailyBackupTest, Two_of_the_same_second_have_two_names)
{
    ASSERT_TRUE(store->write({goals("[1]")}));
    const BackupName name{now.toUTC(), BackupReason::beforeRestore};
    for (int i = 0; i < 2; ++i) {
        const auto held = snapshotOf(path);
        ASSERT_TRUE(
            std::holds_alternative<BackupName>(BackupFolder(path).add(*std::get<0>(held), name)));
    }
    EXPECT_THAT(backups(), SizeIs(2));
}

TEST_F(DailyBackupTest, Copies_before_imports_at_once_wait_for_each_other)
{
    ASSERT_TRUE(store->write({goals(QByteArray(400'000, 'a'))}));
    SqliteBackups backups(path);
    constexpr int copiesOfEach = 5;
    std::atomic<int> kept = 0;
    {
        std::vector<std::jthread> threads;
        threads.reserve(4);
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&] {
                for (int n = 0; n < copiesOfEach; ++n)
                    kept += backups.keepBoard(BackupReason::beforeImport) ? 1 : 0;
            });
        }
    }
    EXPECT_EQ(kept, 4 * copiesOfEach);
}

TEST_F(DailyBackupTest, No_backup_has_a_byte_of_the_remembered_windows)
{
    const QByteArray title("Divorce papers");
    ASSERT_TRUE(store->write({goals("[1]"), memory(title.repeated(10'000))}));
    // In pages that are free from now on.
    ASSERT_TRUE(store->write({memory(title)}));
    ASSERT_TRUE(store->copyAside(memoryKey));
    ASSERT_THAT(copiesAside(memoryKey), SizeIs(1));
    backUpDaily();
    ASSERT_TRUE(store->write({goals("[2]")}));
    backup->finish();
    ASSERT_TRUE(SqliteBackups(path).keepBoard(BackupReason::beforeImport));
    ASSERT_THAT(backups(), SizeIs(2));
    for (const BackupName& name : backups()) {
        EXPECT_EQ(BackupFolder(path).read(name).values.keys(), QStringList(goalsKey));
        EXPECT_FALSE(bytesOf(name).contains(title));
    }
    EXPECT_EQ(goalsIn(backups().constLast()), SettingsValue(QByteArray("[1]")));
    EXPECT_EQ(store->value(memoryKey), SettingsValue(title));
}

TEST_F(DailyBackupTest, Those_of_an_earlier_version_stay_as_they_are)
{
    const QByteArray title("Divorce papers");
    ASSERT_TRUE(store->write({goals("[1]"), memory(title)}));
    const BackupName earlier = backUpAsBefore(now.addDays(-1));
    const QByteArray bytes = bytesOf(earlier);
    ASSERT_TRUE(bytes.contains(title));

    backUpDaily();
    ASSERT_TRUE(store->write({goals("[2]")}));
    ASSERT_THAT(backups(), SizeIs(2));
    EXPECT_EQ(bytesOf(earlier), bytes);
    EXPECT_THAT(QDir(BackupFolder(path).path()).entryList(QDir::Files), SizeIs(2));
}

} // namespace

} // namespace kelpa
