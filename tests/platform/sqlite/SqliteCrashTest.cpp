#include "platform/sqlite/ChildProcess.h"
#include "platform/sqlite/SettingsFixture.h"
#include "platform/sqlite/SlowDisk.h"
#include "platform/sqlite/WriteBehindSettings.h"
#include "platform/sqlite/backup/BackupFolder.h"
#include "platform/sqlite/backup/DailyBackup.h"
#include "support/Seed.h"

#include <poll.h>

#include <chrono>
#include <limits>
#include <random>
#include <unistd.h>

namespace kelpa {

namespace {

using namespace test;

constexpr int crashes = 120;

const std::array<QString, 3>& keys()
{
    static const std::array<QString, 3> names{QStringLiteral("kelpa.goals"),
                                              QStringLiteral("kelpa.unassignedTodos"),
                                              QStringLiteral("kelpa.windowAssignments")};
    return names;
}

/// Save number `n`: the number first, then so much that it takes several pages.
QByteArray blob(int n, std::size_t key)
{
    return QByteArray::number(n) + ' ' +
           QByteArray(static_cast<qsizetype>(200'000 / (1 + key * 7)),
                      static_cast<char>('a' + n % 26));
}

int numberOf(const std::optional<SettingsValue>& value)
{
    return value ? std::get<QByteArray>(*value).split(' ').first().toInt() : 0;
}

/// Saves without end, and reports each save that is on the disk through the pipe.
bool saveForever(SettingsStore& store, int pipe)
{
    for (int n = numberOf(store.value(keys()[0])) + 1;; ++n) {
        std::vector<SettingsEntry> entries;
        for (std::size_t key = 0; key < keys().size(); ++key)
            entries.push_back({keys().at(key), blob(n, key)});
        if (!store.write(entries)) {
            // Late saves are on the disk in their turn; anything else is an error. A save may have
            // ended in between.
            if (!store.isSaving() && !store.flush() && !store.isSaving())
                return false;
            continue;
        }
        if (::write(pipe, &n, sizeof n) != sizeof n)
            return false;
    }
}

bool saveForeverAtOnce(const QString& path, int pipe)
{
    SqliteSettingsStore store(path);
    return saveForever(store, pipe);
}

/// The disk is sometimes faster than the program waits for it, and sometimes slower.
bool saveForeverOnASlowDisk(const QString& path, int pipe)
{
    using namespace std::chrono_literals;
    SlowDisk disk;
    int sync = 0;
    disk.setDelay([&sync] { return ++sync % 3 == 0 ? 6ms : 0ms; });
    WriteBehindSettings store(std::make_unique<SqliteSettingsStore>(path), 3ms);
    return saveForever(store, pipe);
}

/// The number of the last save reported until `moment`, or `last` when none was.
int lastReported(int pipe, std::chrono::steady_clock::time_point moment, int last)
{
    using namespace std::chrono;
    for (;;) {
        const auto left = duration_cast<milliseconds>(moment - steady_clock::now()).count();
        pollfd readable{pipe, POLLIN, 0};
        if (left < 0 || ::poll(&readable, 1, static_cast<int>(left)) <= 0)
            return last;
        if (::read(pipe, &last, sizeof last) != sizeof last)
            return last;
    }
}

class SqliteCrash : public SettingsFixture
{
protected:
    /// Kills programs that `save`, and expects each time a whole save: the last reported one, or
    /// one of up to `unreported` later ones.
    void killPrograms(bool (*save)(const QString& path, int pipe), int unreported);
};

void SqliteCrash::killPrograms(bool (*save)(const QString& path, int pipe), int unreported)
{
    const std::uint64_t seed = test::seed();
    SCOPED_TRACE(seedText(seed));
    std::mt19937_64 random(seed);
    int last = 0;
    for (int crash = 0; crash < crashes && !HasFailure(); ++crash) {
        std::array<int, 2> ends{};
        ASSERT_EQ(::pipe(ends.data()), 0);
        const pid_t child = startChild([&] { return save(path, ends[1]); });
        ASSERT_GT(child, 0);
        ::close(ends[1]);

        using namespace std::chrono_literals;
        const auto now = std::chrono::steady_clock::now();
        last = lastReported(ends[0], now + std::chrono::microseconds(random() % 60'000), last);
        EXPECT_TRUE(killChild(child)) << "it ended by itself";
        // Reports between the last poll and the end count too.
        last = lastReported(ends[0], std::chrono::steady_clock::now() + 1s, last);
        ::close(ends[0]);

        const auto store = openStore();
        const int number = numberOf(store->value(keys()[0]));
        EXPECT_TRUE(number >= last && number <= last + unreported)
            << number << " after save " << last;
        for (std::size_t key = 0; key < keys().size() && number > 0; ++key)
            EXPECT_EQ(store->value(keys().at(key)), SettingsValue(blob(number, key)));
        EXPECT_EQ(rowsOf(path, QStringLiteral("PRAGMA integrity_check")),
                  QList<QString>{QStringLiteral("ok")});
        last = number;
    }
    EXPECT_TRUE(messages.isEmpty());
    // Otherwise most of them were killed before they had begun.
    EXPECT_GT(last, crashes / 2);
    RecordProperty("saves", last);
}

TEST_F(SqliteCrash, A_program_killed_at_any_moment_leaves_a_whole_save_and_never_an_older_one)
{
    killPrograms(saveForeverAtOnce, 1);
}

TEST_F(SqliteCrash, On_a_slow_disk_nothing_is_lost_that_was_reported_as_stored)
{
    killPrograms(saveForeverOnASlowDisk, std::numeric_limits<int>::max() / 2);
}

TEST_F(SqliteCrash, The_backup_of_a_day_survives_a_program_that_ends_before_the_disk_has_it)
{
    EXPECT_TRUE(openStore()->write({{keys()[0], QByteArray("before")}}));
    const auto backUpDaily = [this](SqliteSettingsStore& store) {
        auto backup = std::make_shared<DailyBackup>(path);
        store.setBeforeSave([backup] { backup->beforeSave(); });
        return backup;
    };
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    const pid_t child = startChild([&] {
        SlowDisk disk;
        disk.hang(".backups/");
        SqliteSettingsStore store(path);
        const auto backup = backUpDaily(store);
        if (!store.write({{keys()[0], QByteArray("after")}}))
            return false;
        disk.waitForSync();
        const char isWaiting = 1;
        // Never returns, as on a disk that hangs when the program ends.
        return ::write(ends[1], &isWaiting, 1) == 1 && (backup->finish(), false);
    });
    char isWaiting = 0;
    EXPECT_EQ(::read(ends[0], &isWaiting, 1), 1);
    EXPECT_TRUE(killChild(child));
    ::close(ends[0]);
    ::close(ends[1]);

    const auto store = openStore();
    EXPECT_EQ(store->value(keys()[0]), SettingsValue(QByteArray("after")));
    const auto backup = backUpDaily(*store);
    EXPECT_TRUE(store->write({{keys()[0], QByteArray("later")}}));
    backup->finish();
    const BackupFolder backups(path);
    ASSERT_EQ(backups.list().size(), 1);
    EXPECT_EQ(backups.read(backups.list().constFirst()).values.value(keys()[0]),
              SettingsValue(QByteArray("before")));
    EXPECT_EQ(QDir(backups.path()).entryList(QDir::Files).size(), 1);
}

} // namespace

} // namespace kelpa
