// What others do to the file while a store has it open.
#include "platform/sqlite/SettingsFixture.h"

#include <QFileInfo>

#include <unistd.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace kelpa {

namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

class SqliteChanges : public SettingsFixture
{
protected:
    /// A store with a large list of goals, a language and a setting, and how much of it is in the
    /// log.
    enum class Log : std::uint8_t { full, empty };
    std::unique_ptr<SqliteSettingsStore> openFilled(Log log)
    {
        EXPECT_TRUE(openStore()->write({goals(large), {sortingKey, true}}));
        auto store = openStore();
        EXPECT_TRUE(store->write({language(QStringLiteral("de"))}));
        if (log == Log::empty) {
            EXPECT_TRUE(RawDatabase(path).run("PRAGMA wal_checkpoint(TRUNCATE)"));
            EXPECT_TRUE(store->flush());
        }
        return store;
    }

    /// Saves a language, and expects the file to have everything then, also for a later start after
    /// a kill.
    void expectWhole(SqliteSettingsStore& store)
    {
        EXPECT_TRUE(store.write({language(QStringLiteral("fr"))}));
        const QTemporaryDir elsewhere;
        const QString copy = elsewhere.filePath(QStringLiteral("kelpa.sqlite"));
        EXPECT_TRUE(QFile::copy(path, copy));
        const QString log = QStringLiteral("-wal");
        EXPECT_TRUE(QFile::copy(path + log, copy + log));
        const SqliteSettingsStore after(copy);
        EXPECT_EQ(after.value(goalsKey), SettingsValue(large));
        EXPECT_EQ(after.value(languageKey), SettingsValue(QStringLiteral("fr")));
        EXPECT_EQ(after.value(sortingKey), SettingsValue(true));
        EXPECT_THAT(rowsOf(path, QStringLiteral("PRAGMA integrity_check")), ElementsAre(u"ok"));
    }

    /// The file that was set aside; empty when there is none.
    QString fileAside() const
    {
        const QStringList files = filesNamed(QStringLiteral("kelpa.sqlite.damaged-*Z"));
        return files.isEmpty() ? QString() : folder.filePath(files.first());
    }

    /// Overwrites a part of the file, or of its log, in place.
    void overwrite(const QByteArray& bytes, qint64 from, const QString& suffix = {}) const
    {
        const QString name = path + suffix;
        const auto state = [&name] { return FileState::of(name, FileState::Time::modification); };
        const std::optional<FileState> before = state();
        // The times of files advance in steps, of milliseconds on some systems: a write within the
        // step of the store's own cannot be told from it.
        do {
            QFile file(name);
            ASSERT_TRUE(file.open(QIODevice::ReadWrite));
            ASSERT_TRUE(file.seek(from));
            ASSERT_EQ(file.write(bytes), bytes.size());
        } while (state()->changed == before->changed);
    }

    const QByteArray large = QByteArray(300'000, 'x');
};

TEST_F(SqliteChanges, A_file_that_is_emptied_is_written_whole_by_the_next_save)
{
    for (const Log log : {Log::full, Log::empty}) {
        const auto store = openFilled(log);
        ASSERT_EQ(::truncate(path.toUtf8().constData(), 0), 0);
        expectWhole(*store);
        EXPECT_EQ(QFileInfo(fileAside()).size(), 0);
        EXPECT_FALSE(fileAside().isEmpty());
        EXPECT_TRUE(messages.value(0).contains(u"It was moved to "));
        messages.clear();
    }
}

TEST_F(SqliteChanges, A_file_that_is_cut_is_written_whole_and_set_aside)
{
    const auto store = openFilled(Log::empty);
    ASSERT_EQ(::truncate(path.toUtf8().constData(), 100'000), 0);
    expectWhole(*store);
    EXPECT_EQ(QFileInfo(fileAside()).size(), 100'000);
}

TEST_F(SqliteChanges, A_file_that_is_overwritten_in_place_is_written_whole_and_set_aside)
{
    const auto store = openFilled(Log::empty);
    overwrite("Dear diary, " + QByteArray(500'000, '.'), 0);
    expectWhole(*store);
    EXPECT_TRUE(contents(fileAside()).startsWith("Dear diary, "));
}

TEST_F(SqliteChanges, A_value_that_is_overwritten_in_place_is_noticed)
{
    const auto store = openFilled(Log::empty);
    overwrite(QByteArray(1000, 'y'), 200'000);
    expectWhole(*store);
    EXPECT_TRUE(contents(fileAside()).contains(QByteArray(1000, 'y')));
}

TEST_F(SqliteChanges, A_log_that_is_removed_or_emptied_is_noticed)
{
    const QByteArray log = path.toUtf8() + "-wal";
    for (const bool isRemoved : {true, false}) {
        const auto store = openFilled(Log::full);
        ASSERT_EQ(isRemoved ? ::unlink(log.constData()) : ::truncate(log.constData(), 0), 0);
        expectWhole(*store);
    }
}

TEST_F(SqliteChanges, A_log_that_is_overwritten_in_place_is_noticed)
{
    const QString log = QStringLiteral("-wal");
    // All of it, its pages, and only what the next start knows it by.
    const QList<std::pair<int, int>> parts{{0, 1'000'000}, {5000, 100}, {0, 32}};
    for (const auto& [from, size] : parts) {
        const auto store = openFilled(Log::full);
        const auto length = static_cast<int>(QFileInfo(path + log).size());
        overwrite(QByteArray(std::min(size, length - from), 'z'), from, log);
        EXPECT_EQ(QFileInfo(path + log).size(), length);
        expectWhole(*store);
    }
}

TEST_F(SqliteChanges, The_end_of_the_program_notices_it_too)
{
    auto store = openFilled(Log::empty);
    ASSERT_EQ(::truncate(path.toUtf8().constData(), 0), 0);
    EXPECT_TRUE(store->flush());
    store.reset();
    EXPECT_EQ(openStore()->value(goalsKey), SettingsValue(large));
}

TEST_F(SqliteChanges, A_file_with_another_time_is_the_same_file)
{
    const auto store = openFilled(Log::full);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    expectWhole(*store);
    EXPECT_THAT(messages, IsEmpty());
    EXPECT_EQ(fileAside(), QString());
}

TEST_F(SqliteChanges, A_log_that_another_program_moves_to_the_file_changes_nothing)
{
    const auto store = openFilled(Log::full);
    for (const char* const mode : {"PASSIVE", "TRUNCATE"}) {
        EXPECT_TRUE(store->write({goals(large + mode)}));
        EXPECT_TRUE(RawDatabase(path).run(QByteArray("PRAGMA wal_checkpoint(") + mode + ")"));
        EXPECT_TRUE(store->write({goals(large)}));
        expectWhole(*store);
    }
    EXPECT_THAT(messages, IsEmpty());
    EXPECT_EQ(fileAside(), QString());
}

TEST_F(SqliteChanges, Values_that_another_program_writes_are_copied_aside_and_the_board_stays)
{
    for (const char* const then : {"", "PRAGMA wal_checkpoint(TRUNCATE)"}) {
        const auto store = openFilled(Log::full);
        EXPECT_TRUE(RawDatabase(path).run(
            QByteArray("UPDATE settings SET value = CAST('[theirs]' AS BLOB) WHERE key = "
                       "'kelpa.goals'; DELETE FROM settings WHERE key = 'kelpa.autoSortingGoals';"
                       "INSERT OR REPLACE INTO settings VALUES('theirs', 'kept');") +
            then));
        expectWhole(*store);
        EXPECT_THAT(copiesAside(goalsKey), testing::Contains(u"[theirs]"));
        EXPECT_EQ(store->value(QStringLiteral("theirs")), SettingsValue(QStringLiteral("kept")));
        EXPECT_THAT(messages, IsEmpty());
    }
}

} // namespace

} // namespace kelpa
