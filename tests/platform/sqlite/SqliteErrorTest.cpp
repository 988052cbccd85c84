#include "platform/sqlite/ChildProcess.h"
#include "platform/sqlite/SettingsFixture.h"

#include <QFileInfo>

#include <chrono>
#include <unistd.h>

namespace kelpa {

namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

class SqliteErrors : public SettingsFixture
{
protected:
    QString hidden = folder.filePath(QStringLiteral("hidden"));

    /// A stored board that cannot be reached, since a folder is in its place.
    void hideFile()
    {
        ASSERT_TRUE(openStore()->write({goals("[1]"), language(QStringLiteral("de"))}));
        ASSERT_TRUE(QFile::rename(path, hidden));
        ASSERT_TRUE(QDir().mkdir(path));
    }

    void bringFileBack()
    {
        ASSERT_TRUE(QDir().rmdir(path));
        ASSERT_TRUE(QFile::rename(hidden, path));
    }
};

TEST_F(SqliteErrors, While_the_file_cannot_be_reached_the_board_lives_in_memory)
{
    ASSERT_TRUE(QDir().mkdir(path));
    const auto store = openStore();
    EXPECT_FALSE(store->isAlreadyInUse());
    EXPECT_FALSE(store->write({goals("[1]")}));
    EXPECT_FALSE(store->write({language(QStringLiteral("de"))}));
    EXPECT_FALSE(store->flush());
    EXPECT_EQ(store->value(goalsKey), SettingsValue(QByteArray("[1]")));
    EXPECT_EQ(store->value(languageKey), SettingsValue(QStringLiteral("de")));
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains(path));
    EXPECT_TRUE(messages[0].contains(u"it cannot be opened, since it is a folder"));

    ASSERT_TRUE(QDir().rmdir(path));
    EXPECT_TRUE(store->write({{sortingKey, false}}));
    EXPECT_THAT(rowsOf(path, QStringLiteral("SELECT key FROM settings ORDER BY key")),
                ElementsAre(sortingKey, goalsKey, languageKey));
}

TEST_F(SqliteErrors, A_path_below_a_file_is_no_crash)
{
    setContents(path, "a file");
    path += QStringLiteral("/kelpa/kelpa.sqlite");
    const auto store = openStore();
    EXPECT_FALSE(store->write({goals("[1]")}));
    EXPECT_EQ(store->value(goalsKey), SettingsValue(QByteArray("[1]")));
    EXPECT_EQ(messages.size(), 1);
}

TEST_F(SqliteErrors, A_pipe_in_the_files_place_stops_nothing)
{
    ASSERT_EQ(::mkfifo(path.toUtf8().constData(), 0600), 0);
    const auto store = openStore();
    EXPECT_FALSE(store->write({goals("[1]")}));
    EXPECT_EQ(messages.size(), 1);
}

TEST_F(SqliteErrors, What_could_not_be_read_at_start_is_copied_aside_before_it_is_overwritten)
{
    hideFile();
    const auto store = openStore();
    EXPECT_EQ(store->value(goalsKey), std::nullopt);
    EXPECT_FALSE(store->write({goals("[2]")}));
    bringFileBack();
    EXPECT_TRUE(store->flush());
    EXPECT_EQ(store->value(goalsKey), SettingsValue(QByteArray("[2]")));
    EXPECT_EQ(store->value(languageKey), SettingsValue(QStringLiteral("de")));
    EXPECT_THAT(copiesAside(goalsKey), ElementsAre(u"[1]"));
    EXPECT_THAT(copiesAside(languageKey), IsEmpty());

    // Once the old value is safe, later saves add no copies.
    EXPECT_TRUE(store->write({goals("[3]")}));
    EXPECT_THAT(copiesAside(goalsKey), ElementsAre(u"[1]"));
}

TEST_F(SqliteErrors, What_is_stored_counts_as_loaded_once_it_could_be_read)
{
    hideFile();
    const auto store = openStore();
    EXPECT_FALSE(store->isLoaded());
    EXPECT_FALSE(store->flush()) << "nothing is pending, but something is still to be read";
    bringFileBack();
    EXPECT_FALSE(store->isLoaded());
    EXPECT_TRUE(store->flush());
    EXPECT_TRUE(store->isLoaded());
    EXPECT_EQ(store->value(goalsKey), SettingsValue(QByteArray("[1]")));

    EXPECT_TRUE(store->write({goals("[2]"), language(QStringLiteral("fr"))}));
    EXPECT_THAT(copiesAside(goalsKey), IsEmpty()) << "who writes had been given the value";
    EXPECT_THAT(copiesAside(languageKey), ElementsAre(u"de"));
}

TEST_F(SqliteErrors, A_file_that_another_program_has_locked_is_not_read_past_the_lock)
{
    ASSERT_TRUE(openStore()->write({goals("[1]")}));
    auto other = std::make_unique<RawDatabase>(path);
    ASSERT_TRUE(other->run("PRAGMA journal_mode = DELETE; BEGIN EXCLUSIVE"));
    const auto store = openStore();
    EXPECT_FALSE(store->isLoaded());
    EXPECT_EQ(store->value(goalsKey), std::nullopt);
    other.reset();
    EXPECT_TRUE(store->flush());
    EXPECT_TRUE(store->isLoaded());
    EXPECT_EQ(store->value(goalsKey), SettingsValue(QByteArray("[1]")));
}

TEST_F(SqliteErrors, A_key_that_is_first_written_later_is_copied_aside_then)
{
    hideFile();
    const auto store = openStore();
    EXPECT_FALSE(store->write({{sortingKey, true}}));
    bringFileBack();
    EXPECT_TRUE(store->flush());
    EXPECT_THAT(copiesAside(goalsKey), IsEmpty());
    EXPECT_TRUE(store->write({goals("[2]")}));
    EXPECT_THAT(copiesAside(goalsKey), ElementsAre(u"[1]"));
}

TEST_F(SqliteErrors, A_value_that_turns_out_to_be_the_same_is_not_copied_aside)
{
    hideFile();
    const auto store = openStore();
    EXPECT_FALSE(store->write({goals("[1]")}));
    bringFileBack();
    EXPECT_TRUE(store->flush());
    EXPECT_THAT(copiesAside(goalsKey), IsEmpty());
}

TEST_F(SqliteErrors, The_same_error_is_reported_again_after_a_recovery)
{
    auto store = openStore();
    const auto expectOneMoreMessage = [&](int count) {
        RawDatabase other(path);
        ASSERT_TRUE(other.run("BEGIN IMMEDIATE"));
        EXPECT_FALSE(store->write({goals(QByteArray::number(count))}));
        EXPECT_FALSE(store->write({language(QString::number(count))}));
        ASSERT_EQ(messages.size(), count);
        EXPECT_TRUE(messages.last().contains(u"another program has locked it"));
    };
    expectOneMoreMessage(1);
    EXPECT_TRUE(store->flush());
    expectOneMoreMessage(2);
    EXPECT_TRUE(store->flush());
    EXPECT_EQ(messages.size(), 2);
}

TEST_F(SqliteErrors, A_lock_of_another_program_delays_a_save_by_a_moment_at_most)
{
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[1]")}));
    RawDatabase other(path);
    ASSERT_TRUE(other.run("BEGIN IMMEDIATE"));
    auto shortest = std::chrono::steady_clock::duration::max();
    for (int i = 0; i < 5; ++i) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_FALSE(store->write({goals("[2]")}));
        shortest = std::min(shortest, std::chrono::steady_clock::now() - start);
    }
    // The shortest of several, since the machine may be busy otherwise.
    EXPECT_LT(shortest, std::chrono::milliseconds(50));
    ASSERT_TRUE(other.run("COMMIT"));
    EXPECT_TRUE(store->flush());
    EXPECT_THAT(rowsOf(path, QStringLiteral("SELECT CAST(value AS TEXT) FROM settings")),
                ElementsAre(u"[2]"));
}

TEST_F(SqliteErrors, A_reader_that_stays_does_not_keep_saves_from_the_disk)
{
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[1]")}));
    RawDatabase reader(path);
    ASSERT_TRUE(reader.run("BEGIN; SELECT * FROM settings"));
    for (int i = 0; i < 50; ++i)
        ASSERT_TRUE(store->write({goals(QByteArray::number(i))}));
    EXPECT_THAT(rowsOf(path, QStringLiteral("SELECT CAST(value AS TEXT) FROM settings")),
                ElementsAre(u"49"));
}

TEST_F(SqliteErrors, A_file_that_is_removed_while_it_is_open_is_written_anew)
{
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[1]"), language(QStringLiteral("de"))}));
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_TRUE(store->write({language(QStringLiteral("fr"))}));
    EXPECT_THAT(
        rowsOf(path, QStringLiteral("SELECT CAST(value AS TEXT) FROM settings ORDER BY key")),
        ElementsAre(u"[1]", u"fr"));
}

TEST_F(SqliteErrors, A_whole_folder_that_is_removed_while_it_is_open_is_made_again)
{
    path = folder.filePath(QStringLiteral("data/kelpa.sqlite"));
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[1]")}));
    ASSERT_TRUE(QDir(folder.filePath(QStringLiteral("data"))).removeRecursively());
    EXPECT_TRUE(store->write({language(QStringLiteral("fr"))}));
    EXPECT_EQ(rowsOf(path, QStringLiteral("SELECT key FROM settings")).size(), 2);
}

TEST_F(SqliteErrors, A_folder_that_another_Kelpa_made_again_is_the_others)
{
    path = folder.filePath(QStringLiteral("data/kelpa.sqlite"));
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[1]")}));
    ASSERT_TRUE(QDir(folder.filePath(QStringLiteral("data"))).removeRecursively());
    const auto other = openStore();
    EXPECT_FALSE(other->isAlreadyInUse());
    EXPECT_TRUE(other->write({goals("[2]")}));

    EXPECT_FALSE(store->write({goals("[3]")}));
    EXPECT_THAT(rowsOf(path, QStringLiteral("SELECT CAST(value AS TEXT) FROM settings")),
                ElementsAre(u"[2]"));
}

TEST_F(SqliteErrors, After_its_folder_was_made_again_the_file_is_locked_anew)
{
    path = folder.filePath(QStringLiteral("data/kelpa.sqlite"));
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[1]")}));
    ASSERT_TRUE(QDir(folder.filePath(QStringLiteral("data"))).removeRecursively());
    EXPECT_TRUE(store->write({goals("[2]")}));
    EXPECT_TRUE(openStore()->isAlreadyInUse());
}

TEST_F(SqliteErrors, A_lock_that_is_removed_is_taken_anew_by_the_next_save)
{
    const auto store = openStore();
    ASSERT_TRUE(QFile::remove(path + QStringLiteral(".lock")));
    EXPECT_TRUE(store->write({goals("[1]")}));
    EXPECT_TRUE(openStore()->isAlreadyInUse());
}

TEST_F(SqliteErrors, A_file_and_a_folder_that_may_only_be_read_are_read)
{
    ASSERT_TRUE(openStore()->write({goals("[1]"), language(QStringLiteral("de"))}));
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadOther));
    const auto readable = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
    ASSERT_TRUE(QFile::remove(path + QStringLiteral(".lock")));
    ASSERT_TRUE(QFile::setPermissions(folder.path(), readable));
    EXPECT_TRUE(succeedsInChild([this] {
        EXPECT_TRUE(giveUpRights());
        const auto store = openStore();
        EXPECT_TRUE(store->isLoaded());
        EXPECT_EQ(store->value(goalsKey), SettingsValue(QByteArray("[1]")));
        EXPECT_EQ(store->value(languageKey), SettingsValue(QStringLiteral("de")));
        EXPECT_FALSE(store->write({goals("[2]")}));
        EXPECT_FALSE(store->write({goals("[3]")}));
        EXPECT_EQ(store->value(goalsKey), SettingsValue(QByteArray("[3]")));
        EXPECT_EQ(messages.size(), 1);
        return !HasFailure();
    }));
    ASSERT_TRUE(QFile::setPermissions(folder.path(), readable | QFile::WriteOwner));
    EXPECT_EQ(openStore()->value(goalsKey), SettingsValue(QByteArray("[1]")));
}

TEST_F(SqliteErrors, A_file_that_may_not_even_be_read_is_kept_until_it_may)
{
    ASSERT_TRUE(openStore()->write({goals("[1]")}));
    ASSERT_TRUE(QFile::setPermissions(path, QFile::Permissions()));
    const auto all = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther |
                     QFile::WriteOther | QFile::ExeOther;
    ASSERT_TRUE(QFile::setPermissions(folder.path(), all));
    ASSERT_TRUE(QFile::remove(path + QStringLiteral(".lock")));
    EXPECT_TRUE(succeedsInChild([this] {
        EXPECT_TRUE(giveUpRights());
        const auto store = openStore();
        EXPECT_FALSE(store->isLoaded());
        EXPECT_EQ(store->value(goalsKey), std::nullopt);
        EXPECT_FALSE(store->write({goals("[2]")}));
        EXPECT_EQ(messages.size(), 1);
        EXPECT_THAT(filesNamed(QStringLiteral("*damaged*")), IsEmpty());
        return !HasFailure();
    }));
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    ASSERT_TRUE(QFile::remove(path + QStringLiteral(".lock")));
    EXPECT_EQ(openStore()->value(goalsKey), SettingsValue(QByteArray("[1]")));
}

TEST_F(SqliteErrors, A_message_is_one_line_on_standard_error)
{
    ASSERT_TRUE(QDir().mkdir(path));
    testing::internal::CaptureStderr();
    SqliteSettingsStore(path).write({goals("[1]")});
    const std::string printed = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(printed, '\n'), 1);
    EXPECT_TRUE(printed.starts_with("kelpa: the board in " + path.toStdString()));
}

} // namespace

} // namespace kelpa
