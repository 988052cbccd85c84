// What a store says is wrong with its file, from when to when.
#include "platform/sqlite/ChildProcess.h"
#include "platform/sqlite/SettingsFixture.h"

#include <QFileInfo>

#include <unistd.h>

namespace kelpa {

namespace {

using namespace test;
using testing::ElementsAre;

class SqliteStatus : public SettingsFixture
{
protected:
    QString asideName() const
    {
        return filesNamed(QStringLiteral("kelpa.sqlite.damaged-*Z")).value(0);
    }

    /// To the account that `giveUpRights` leaves, which may then change its permissions.
    void giveFolderAway()
    {
        constexpr uid_t nobody = 65534;
        if (::geteuid() != 0)
            return;
        ASSERT_EQ(::chown(folder.path().toUtf8().constData(), nobody, nobody), 0);
        for (const QString& name : filesNamed(QStringLiteral("*")))
            ASSERT_EQ(::chown(folder.filePath(name).toUtf8().constData(), nobody, nobody), 0);
    }
    void setFolderWritable(bool isWritable)
    {
        const auto readable = QFile::ReadOwner | QFile::ExeOwner;
        ASSERT_TRUE(QFile::setPermissions(folder.path(),
                                          isWritable ? readable | QFile::WriteOwner : readable));
    }
};

TEST_F(SqliteStatus, Nothing_is_wrong_with_a_file_that_takes_everything)
{
    const auto store = openStore();
    EXPECT_EQ(store->status(), SettingsStatus());
    EXPECT_TRUE(store->write({goals("[1]")}));
    EXPECT_EQ(store->status(), SettingsStatus());
}

TEST_F(SqliteStatus, A_folder_in_the_files_place_is_a_folder_until_it_is_moved)
{
    ASSERT_TRUE(QDir().mkdir(path));
    const auto store = openStore();
    EXPECT_EQ(store->status(),
              (SettingsStatus{SettingsError::isFolder, false, false, std::nullopt, false}));
    EXPECT_FALSE(store->write({goals("[1]")}));
    EXPECT_TRUE(store->status().hasUnsavedValues);
    EXPECT_TRUE(messages.value(0).contains(u"it is a folder"));
    ASSERT_TRUE(QDir().rmdir(path));
    EXPECT_TRUE(store->flush());
    EXPECT_EQ(store->status(), SettingsStatus());
}

TEST_F(SqliteStatus, A_file_in_the_folders_place_is_told_until_it_is_moved)
{
    const QString place = folder.filePath(QStringLiteral("data"));
    for (const char* const below : {"/kelpa.sqlite", "/kelpa/kelpa.sqlite"}) {
        setContents(place, "notes");
        path = place + QLatin1String(below);
        const auto store = openStore();
        EXPECT_EQ(store->status(),
                  (SettingsStatus{SettingsError::folderIsFile, false, false, std::nullopt, false}));
        EXPECT_FALSE(store->write({goals("[1]")}));
        EXPECT_TRUE(messages.value(0).contains(u"a file is in the place of its folder"));
        EXPECT_EQ(contents(place), "notes");
        ASSERT_TRUE(QFile::remove(place));
        EXPECT_TRUE(store->flush());
        EXPECT_EQ(store->status(), SettingsStatus());
        ASSERT_TRUE(QDir(place).removeRecursively());
        messages.clear();
    }
}

TEST_F(SqliteStatus, A_folder_that_takes_the_place_of_the_open_file_is_noticed)
{
    const auto store = openStore();
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QDir().mkdir(path));
    EXPECT_FALSE(store->write({goals("[1]")}));
    EXPECT_EQ(store->status(),
              (SettingsStatus{SettingsError::isFolder, true, true, std::nullopt, false}));
}

TEST_F(SqliteStatus, A_folder_in_the_place_of_the_lock_is_not_taken_for_the_file)
{
    ASSERT_TRUE(QDir().mkdir(path + QStringLiteral(".lock")));
    EXPECT_EQ(openStore()->status().error, SettingsError::unreachable);
}

TEST_F(SqliteStatus, The_file_of_a_later_release_is_newer)
{
    ASSERT_TRUE(openStore()->write({goals("[1]")}));
    ASSERT_TRUE(RawDatabase(path).run("PRAGMA user_version = 2"));
    const auto store = openStore();
    EXPECT_EQ(store->status(), (SettingsStatus{SettingsError::newer, false, false, std::nullopt}));
}

TEST_F(SqliteStatus, A_lock_of_another_program_is_over_when_it_is_released)
{
    const auto store = openStore();
    {
        RawDatabase other(path);
        ASSERT_TRUE(other.run("BEGIN IMMEDIATE"));
        EXPECT_FALSE(store->write({goals("[1]")}));
        EXPECT_EQ(store->status(), (SettingsStatus{SettingsError::busy, true, true, std::nullopt}));
    }
    EXPECT_TRUE(store->flush());
    EXPECT_EQ(store->status(), SettingsStatus());
}

TEST_F(SqliteStatus, A_full_disk_is_full_until_there_is_room)
{
    EXPECT_TRUE(succeedsInChild([this] {
        EXPECT_TRUE(mountSmallDisk(folder.path().toUtf8().constData(), "size=1m"));
        const auto store = openStore();
        EXPECT_FALSE(store->write({goals(QByteArray(2'000'000, 'x'))}));
        EXPECT_EQ(store->status(), (SettingsStatus{SettingsError::full, true, true, std::nullopt}));
        EXPECT_TRUE(store->write({goals("[1]")}));
        EXPECT_EQ(store->status(), SettingsStatus());
        return !HasFailure();
    }));
}

TEST_F(SqliteStatus,
       A_read_only_folder_is_noticed_and_so_is_its_end_though_nothing_is_to_be_written)
{
    ASSERT_TRUE(openStore()->write({goals("[1]")}));
    ASSERT_TRUE(QFile::remove(path + QStringLiteral(".lock")));
    giveFolderAway();
    EXPECT_TRUE(succeedsInChild([this] {
        EXPECT_TRUE(giveUpRights());
        setFolderWritable(false);
        const auto store = openStore();
        EXPECT_EQ(store->status(),
                  (SettingsStatus{SettingsError::readOnly, true, false, std::nullopt}));
        store->flush();
        EXPECT_EQ(store->status().error, SettingsError::readOnly);
        setFolderWritable(true);
        EXPECT_TRUE(store->flush());
        EXPECT_EQ(store->status(), SettingsStatus());
        return !HasFailure();
    }));
}

TEST_F(SqliteStatus, A_new_board_in_a_read_only_folder_cannot_be_written_and_there_is_no_stored_one)
{
    giveFolderAway();
    for (const char* const name : {"kelpa.sqlite", "new/folder/kelpa.sqlite"}) {
        path = folder.filePath(QLatin1String(name));
        EXPECT_TRUE(succeedsInChild([this] {
            EXPECT_TRUE(giveUpRights());
            setFolderWritable(false);
            const auto store = openStore();
            EXPECT_EQ(store->status(),
                      (SettingsStatus{SettingsError::readOnly, false, false, std::nullopt, false}));
            setFolderWritable(true);
            EXPECT_TRUE(store->write({goals("[1]")}));
            EXPECT_EQ(store->status(), SettingsStatus());
            return !HasFailure();
        }));
    }
}

TEST_F(SqliteStatus, A_file_or_folder_that_cannot_be_read_cannot_be_opened)
{
    ASSERT_TRUE(openStore()->write({goals("[1]")}));
    giveFolderAway();
    EXPECT_TRUE(succeedsInChild([this] {
        EXPECT_TRUE(giveUpRights());
        const SettingsStatus expected{SettingsError::unreachable, false, false, std::nullopt};
        EXPECT_TRUE(QFile::setPermissions(path, QFile::Permissions()));
        EXPECT_EQ(openStore()->status(), expected);
        setFolderWritable(false);
        EXPECT_EQ(openStore()->status(), expected);
        EXPECT_TRUE(QFile::setPermissions(folder.path(), QFile::Permissions()));
        EXPECT_EQ(openStore()->status(), expected) << "nobody can tell whether it is there";
        return !HasFailure();
    }));
}

TEST_F(SqliteStatus, A_log_in_a_read_only_folder_keeps_the_board_from_being_opened)
{
    {
        const auto store = openStore();
        ASSERT_TRUE(store->write({goals("[1]")}));
        ASSERT_TRUE(QFile::copy(path, path + QStringLiteral(".copy")));
        ASSERT_TRUE(QFile::copy(path + QStringLiteral("-wal"), path + QStringLiteral(".copy-wal")));
    }
    path += QStringLiteral(".copy");
    giveFolderAway();
    EXPECT_TRUE(succeedsInChild([this] {
        EXPECT_TRUE(giveUpRights());
        setFolderWritable(false);
        const auto store = openStore();
        EXPECT_EQ(store->status(),
                  (SettingsStatus{SettingsError::unreachable, false, false, std::nullopt}));
        setFolderWritable(true);
        EXPECT_TRUE(store->flush());
        EXPECT_EQ(store->value(goalsKey), SettingsValue(QByteArray("[1]")));
        return !HasFailure();
    }));
}

TEST_F(SqliteStatus, A_damaged_file_that_could_not_be_renamed_is_renamed_later)
{
    setContents(path, QByteArray(5000, 'x'));
    setContents(path + QStringLiteral(".lock"), {});
    giveFolderAway();
    EXPECT_TRUE(succeedsInChild([this] {
        EXPECT_TRUE(giveUpRights());
        setFolderWritable(false);
        const auto store = openStore();
        EXPECT_EQ(store->status().error, SettingsError::damaged);
        EXPECT_EQ(contents(path), QByteArray(5000, 'x'));
        setFolderWritable(true);
        EXPECT_TRUE(store->flush()) << "nothing is to be written";
        EXPECT_EQ(store->status(),
                  (SettingsStatus{std::nullopt, true, false, {{asideName(), false}}}));
        EXPECT_EQ(contents(folder.filePath(asideName())), QByteArray(5000, 'x'));
        return !HasFailure();
    }));
}

TEST_F(SqliteStatus, Of_a_file_that_was_damaged_at_the_start_the_rest_is_lost)
{
    for (const char* const content : {"Dear diary, ", "SQLite format 3"}) {
        setContents(path, content + QByteArray(5000, '.'));
        const auto store = openStore();
        EXPECT_EQ(store->status(),
                  (SettingsStatus{std::nullopt, true, false, {{asideName(), false}}}));
        EXPECT_TRUE(QFile::remove(folder.filePath(asideName())));
    }
}

TEST_F(SqliteStatus, Of_a_file_that_was_cut_while_it_was_open_nothing_is_lost)
{
    const auto store = openStore();
    EXPECT_TRUE(store->write({goals("[1]")}));
    ASSERT_EQ(::truncate(path.toUtf8().constData(), 0), 0);
    EXPECT_TRUE(store->flush());
    EXPECT_EQ(store->status(), (SettingsStatus{std::nullopt, true, false, {{asideName(), true}}}));
}

TEST_F(SqliteStatus, A_foreign_file_is_named)
{
    EXPECT_TRUE(RawDatabase(path).run("PRAGMA application_id = 7; CREATE TABLE theirs(a)"));
    const auto store = openStore();
    EXPECT_EQ(store->status(), (SettingsStatus{std::nullopt, true, false, {{asideName(), false}}}));
}

} // namespace

} // namespace kelpa
