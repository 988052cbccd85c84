#include "platform/sqlite/SettingsFiles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace kelpa {

namespace {

/// Sets a variable of the environment for the length of a test.
class Variable
{
public:
    Variable(const char* name, const QByteArray& value) : m_name(name), m_former(qgetenv(name))
    {
        m_wasSet = qEnvironmentVariableIsSet(name);
        qputenv(name, value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { m_wasSet ? qputenv(m_name, m_former) : qunsetenv(m_name); }

private:
    const char* m_name;
    QByteArray m_former;
    bool m_wasSet = false;
};

TEST(SettingsFiles, The_settings_lie_in_the_data_folder_of_the_environment)
{
    const Variable data("XDG_DATA_HOME", "/srv/data/");
    EXPECT_EQ(defaultSettingsPath(), u"/srv/data/kelpa/kelpa.sqlite");
}

TEST(SettingsFiles, Without_a_data_folder_they_lie_below_the_home_folder)
{
    const Variable home("HOME", "/home/someone");
    const Variable empty("XDG_DATA_HOME", "");
    EXPECT_EQ(defaultSettingsPath(), u"/home/someone/.local/share/kelpa/kelpa.sqlite");
}

TEST(SettingsFiles, A_relative_data_folder_counts_as_none)
{
    const Variable home("HOME", "/home/someone");
    const Variable relative("XDG_DATA_HOME", "data");
    EXPECT_EQ(defaultSettingsPath(), u"/home/someone/.local/share/kelpa/kelpa.sqlite");
}

TEST(SettingsFiles, Every_folder_that_is_made_is_for_the_person_alone)
{
    const QTemporaryDir root;
    const QString path = root.filePath(QStringLiteral("a/b/kelpa.sqlite"));
    EXPECT_EQ(makeSettingsFile(path), std::nullopt);
    const auto mine = QFile::ReadOwner | QFile::WriteOwner;
    const auto isMine = [](const QString& file, QFile::Permissions permissions) {
        // Qt adds what the present user may do.
        constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
        return (QFile::permissions(file) & others) == QFile::Permissions() &&
               (QFile::permissions(file) & permissions) == permissions;
    };
    EXPECT_TRUE(isMine(root.filePath(QStringLiteral("a")), mine | QFile::ExeOwner));
    EXPECT_TRUE(isMine(root.filePath(QStringLiteral("a/b")), mine | QFile::ExeOwner));
    EXPECT_TRUE(isMine(path, mine));
}

TEST(SettingsFiles, A_path_by_a_link_is_the_same_before_and_after_its_folder_is_made)
{
    const QTemporaryDir root;
    const QString real = QFileInfo(root.path()).canonicalFilePath() + QStringLiteral("/real");
    ASSERT_TRUE(QDir().mkdir(real));
    ASSERT_TRUE(QFile::link(real, root.filePath(QStringLiteral("link"))));
    const QString path = root.filePath(QStringLiteral("link/new/newer/kelpa.sqlite"));
    const QString resolved = real + QStringLiteral("/new/newer/kelpa.sqlite");
    EXPECT_EQ(resolvedPath(path), resolved);
    ASSERT_EQ(makeSettingsFile(path), std::nullopt);
    EXPECT_EQ(resolvedPath(path), resolved);
}

TEST(SettingsFiles, A_file_that_cannot_be_renamed_keeps_its_log)
{
    const QTemporaryDir root;
    const QString path = root.filePath(QStringLiteral("kelpa.sqlite"));
    QFile log(path + QStringLiteral("-wal"));
    ASSERT_TRUE(log.open(QIODevice::NewOnly));
    // There is no file to rename.
    EXPECT_EQ(moveSettingsFileAside(path), std::nullopt);
    EXPECT_EQ(QDir(root.path()).entryList(QDir::Files),
              QStringList{QStringLiteral("kelpa.sqlite-wal")});
}

TEST(SettingsFiles, A_lock_is_held_by_one_and_free_again_after_it)
{
    const QTemporaryDir root;
    const QString path = root.filePath(QStringLiteral("lock"));
    {
        FileLock first;
        EXPECT_EQ(first.acquire(path), std::nullopt);
        EXPECT_EQ(first.acquire(path), std::nullopt);
        FileLock second;
        EXPECT_EQ(second.acquire(path), SettingsError::inUse);
    }
    FileLock third;
    EXPECT_EQ(third.acquire(path), std::nullopt);
}

} // namespace

} // namespace kelpa
