// Saves on a disk that has no room for them, or refuses them.
#include "platform/sqlite/ChildProcess.h"
#include "platform/sqlite/SettingsFixture.h"
#include "platform/sqlite/SlowDisk.h"
#include "platform/sqlite/backup/BackupFolder.h"
#include "platform/sqlite/backup/DailyBackup.h"

#include <QDir>
#include <QFileInfo>

#include <sys/resource.h>

#include <csignal>

namespace kelpa {

namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

using SqliteFullDisks = SettingsFixture;

TEST_F(SqliteFullDisks, On_a_full_disk_the_last_saved_board_stays_and_the_next_one_follows_later)
{
    EXPECT_TRUE(succeedsInChild([this] {
        const QString disk = folder.filePath(QStringLiteral("disk"));
        EXPECT_TRUE(QDir().mkdir(disk));
        EXPECT_TRUE(mountSmallDisk(disk.toUtf8().constData(), "size=2m"))
            << "this test needs the right to mount a file system in a namespace of its own";
        path = disk + QStringLiteral("/kelpa.sqlite");
        const auto store = openStore();
        EXPECT_TRUE(store->write({goals("[1]"), language(QStringLiteral("de"))}));
        setContents(disk + QStringLiteral("/ballast"), QByteArray(1'200'000, 'x'));

        const QByteArray large(1'000'000, 'y');
        EXPECT_FALSE(store->write({goals(large), language(QStringLiteral("fr"))}));
        EXPECT_FALSE(store->write({goals(large + "!")}));
        EXPECT_EQ(messages.size(), 1);
        EXPECT_TRUE(messages.value(0).contains(u"no space is left on the disk"));
        EXPECT_THAT(
            rowsOf(path, QStringLiteral("SELECT CAST(value AS TEXT) FROM settings ORDER BY key")),
            ElementsAre(u"[1]", u"de"));

        EXPECT_TRUE(QFile::remove(disk + QStringLiteral("/ballast")));
        EXPECT_TRUE(store->flush());
        EXPECT_THAT(rowsOf(path, QStringLiteral("SELECT length(value) FROM settings ORDER BY key")),
                    ElementsAre(u"1000001", u"2"));
        return !HasFailure();
    }));
}

TEST_F(SqliteFullDisks, A_disk_of_a_quarter_megabyte_holds_a_small_board)
{
    EXPECT_TRUE(succeedsInChild([this] {
        EXPECT_TRUE(mountSmallDisk(folder.path().toUtf8().constData(), "size=256k"));
        const auto store = openStore();
        QByteArray board;
        for (int i = 0; i < 150 && !HasFailure(); ++i) {
            board += QByteArray(200, 'x');
            EXPECT_TRUE(store->write({goals(board)})) << "save " << i;
        }
        EXPECT_THAT(messages, IsEmpty());
        EXPECT_EQ(store->value(goalsKey), SettingsValue(board));
        return !HasFailure();
    }));
}

TEST_F(SqliteFullDisks, A_full_disk_gets_room_from_the_log_before_it_is_reported)
{
    EXPECT_TRUE(succeedsInChild([this] {
        EXPECT_TRUE(mountSmallDisk(folder.path().toUtf8().constData(), "size=8m"));
        // The ballast would fill the machine's own disk.
        if (HasFailure())
            return false;
        EXPECT_TRUE(openStore()->write({goals(QByteArray(200'000, 'x'))}));
        const auto store = openStore();
        EXPECT_TRUE(store->write({goals(QByteArray(200'000, 'y'))}));
        EXPECT_TRUE(store->write({goals(QByteArray(200'000, 'z'))}));
        EXPECT_GT(QFileInfo(path + QStringLiteral("-wal")).size(), 400'000);
        QFile ballast(folder.filePath(QStringLiteral("ballast")));
        EXPECT_TRUE(ballast.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (ballast.write(QByteArray(4096, 'x')) == 4096)
            continue;

        for (const char letter : {'a', 'b', 'c'})
            EXPECT_TRUE(store->write({goals(QByteArray(200'000, letter))}));
        EXPECT_THAT(messages, IsEmpty());
        return !HasFailure();
    }));
}

/// A board on a disk of 8 MB, of which half a megabyte in the log, and no room besides.
class SqliteFullLog : public SettingsFixture
{
protected:
    bool fillDisk()
    {
        EXPECT_TRUE(mountSmallDisk(folder.path().toUtf8().constData(), "size=8m"));
        EXPECT_TRUE(openStore()->write({goals(QByteArray(200'000, 'x'))}));
        store = openStore();
        EXPECT_TRUE(store->write({goals(QByteArray(200'000, 'y'))}));
        EXPECT_TRUE(store->write({goals(QByteArray(200'000, 'z'))}));
        return !HasFailure();
    }
    void addBallast() const
    {
        QFile ballast(folder.filePath(QStringLiteral("ballast")));
        EXPECT_TRUE(ballast.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (ballast.write(QByteArray(4096, 'x')) == 4096)
            continue;
    }

    std::unique_ptr<SqliteSettingsStore> store;
};

TEST_F(SqliteFullLog, That_a_backup_reads_is_emptied_after_the_backup_has_let_go)
{
    EXPECT_TRUE(succeedsInChild([this] {
        EXPECT_TRUE(fillDisk());
        auto held = snapshotOf(path);
        EXPECT_TRUE(std::holds_alternative<std::unique_ptr<SqliteFile>>(held));
        addBallast();
        EXPECT_FALSE(store->write({goals(QByteArray(200'000, 'a'))})) << "the log is being read";
        EXPECT_EQ(messages.size(), 1);
        messages.clear();

        store->setMakeRoom([&held] { std::get<0>(held).reset(); });
        EXPECT_TRUE(store->write({goals(QByteArray(200'000, 'b'))}));
        EXPECT_EQ(store->status(), SettingsStatus());
        EXPECT_THAT(messages, IsEmpty());
        return !HasFailure();
    }));
}

TEST_F(SqliteFullLog, Is_emptied_while_the_disk_has_not_taken_a_backup_yet)
{
    EXPECT_TRUE(succeedsInChild([this] {
        SlowDisk disk;
        EXPECT_TRUE(fillDisk());
        disk.hang(".backups/");
        const auto backup = std::make_shared<DailyBackup>(path);
        store->setBeforeSave([backup] { backup->beforeSave(); });
        EXPECT_TRUE(store->write({goals(QByteArray(200'000, 'a'))}));
        disk.waitForSync();
        addBallast();
        for (const char letter : {'b', 'c', 'd'})
            EXPECT_TRUE(store->write({goals(QByteArray(200'000, letter))}));
        EXPECT_EQ(store->status(), SettingsStatus());
        EXPECT_THAT(messages, IsEmpty());
        disk.recover();
        backup->finish();
        store.reset();
        return !HasFailure();
    }));
}

TEST_F(SqliteFullDisks, A_write_that_the_system_refuses_leaves_the_last_saved_board)
{
    EXPECT_TRUE(succeedsInChild([this] {
        const auto store = openStore();
        EXPECT_TRUE(store->write({goals("[1]")}));
        // Without the signal, a write beyond the limit is an error like that of a broken disk.
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit{};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit small{400'000, limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
        const QByteArray large(1'000'000, 'y');
        EXPECT_FALSE(store->write({goals(large)}));
        EXPECT_FALSE(store->write({goals(large)}));
        EXPECT_EQ(messages.size(), 1);
        EXPECT_THAT(rowsOf(path, QStringLiteral("SELECT CAST(value AS TEXT) FROM settings")),
                    ElementsAre(u"[1]"));

        ::setrlimit(RLIMIT_FSIZE, &limit);
        EXPECT_TRUE(store->flush());
        EXPECT_THAT(rowsOf(path, QStringLiteral("SELECT length(value) FROM settings")),
                    ElementsAre(u"1000000"));
        return !HasFailure();
    }));
}

} // namespace

} // namespace kelpa
