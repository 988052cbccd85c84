#include "app/SingleInstance.h"

#include "platform/sqlite/SettingsFiles.h"
#include "platform/sqlite/SqliteSettingsStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>
#include <thread>

namespace kelpa::test {
namespace {

TEST(BusNameOfBoard, The_board_where_boards_are_kept_has_the_programs_own_name)
{
    EXPECT_EQ(busNameOfBoard(defaultSettingsPath()), QStringLiteral("org.kelpa.Kelpa"));
}

TEST(BusNameOfBoard, Each_other_file_has_a_name_of_its_own_that_a_bus_accepts)
{
    const QString one = busNameOfBoard(QStringLiteral("/tmp/one.sqlite"));
    EXPECT_NE(one, busNameOfBoard(QStringLiteral("/tmp/two.sqlite")));
    EXPECT_EQ(one, busNameOfBoard(QStringLiteral("/tmp/../tmp/one.sqlite")));
    EXPECT_TRUE(one.startsWith(QStringLiteral("org.kelpa.Kelpa.board")));
    EXPECT_EQ(one.size(), QStringLiteral("org.kelpa.Kelpa.board").size() + 16);
}

TEST(BusNameOfBoard, A_link_to_a_board_is_that_board)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("board.sqlite"));
    const QString link = folder.filePath(QStringLiteral("link.sqlite"));
    ASSERT_TRUE(QFile::link(file, link));
    EXPECT_EQ(busNameOfBoard(link), busNameOfBoard(file));
}

TEST(BusNameOfBoard, A_board_has_its_name_before_its_folder_is_made)
{
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("link"));
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("real")));
    ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("real")), link));
    const QString path = link + QStringLiteral("/new/board.sqlite");
    const QString before = busNameOfBoard(path);
    ASSERT_TRUE(QDir(link).mkdir(QStringLiteral("new")));
    EXPECT_EQ(busNameOfBoard(path), before);
}

TEST(OpenBoard, Waits_for_a_command_that_has_the_board_open)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("board.sqlite"));
    // Another object stands for another process: the lock is the open file's.
    auto command = std::make_unique<SqliteSettingsStore>(path);
    EXPECT_TRUE(openBoard(path, {}, false)->isAlreadyInUse());
    const auto ending = std::async(std::launch::async, [&command] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        command.reset();
    });
    EXPECT_FALSE(openBoard(path, {}, true)->isAlreadyInUse());
}

class StartupID : public testing::Test
{
protected:
    void SetUp() override
    {
        qunsetenv("DESKTOP_STARTUP_ID");
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }
    void TearDown() override { SetUp(); }
};

TEST_F(StartupID, Is_what_the_launcher_gave)
{
    EXPECT_EQ(takeStartupID(), QByteArray());
    qputenv("DESKTOP_STARTUP_ID", "menu_TIME12");
    EXPECT_EQ(takeStartupID(), "menu_TIME12");
    EXPECT_EQ(qgetenv("DESKTOP_STARTUP_ID"), "menu_TIME12");
}

TEST_F(StartupID, A_token_in_the_newer_form_serves_as_well_and_is_handed_to_nobody)
{
    qputenv("XDG_ACTIVATION_TOKEN", "token");
    EXPECT_EQ(takeStartupID(), "token");
    EXPECT_EQ(qgetenv("DESKTOP_STARTUP_ID"), "token");
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

} // namespace
} // namespace kelpa::test
