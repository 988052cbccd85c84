// Commands while no Kelpa runs, with real files.
#include "app/ClosedBoard.h"
#include "app/AutomationCommands.h"
#include "app/SavedBoard.h"
#include "automation/Commands.h"
#include "model/RememberedWindow.h"
#include "model/WindowMemoryJson.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/sqlite/backup/BackupFolder.h"
#include "store/board/BoardPersistence.h"
#include "support/BoardBuilders.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <thread>

namespace kelpa::test {
namespace {

class ClosedBoard : public testing::Test
{
protected:
    void SetUp() override
    {
        SqliteSettingsStore file(path);
        std::vector<SettingsEntry> entries =
            boardEntries({taxes}, {todo(QStringLiteral("Milk"), 1)});
        entries.push_back(assignmentsEntry({{QStringLiteral("7"), taxes.id}}));
        ASSERT_TRUE(file.write(entries));
    }
    CommandOutput run(const char* line)
    {
        const auto read = automation::readCommand(
            QStringList{QStringLiteral("kelpa"), QStringLiteral("--settings"), path} +
            QString::fromUtf8(line).split(u' '));
        return runAutomation(*read, {});
    }
    BoardContents saved() { return savedBoard(path).value_or(BoardContents()); }
    /// Writes a window of the goal into the memory of windows.
    RememberedWindows remembered()
    {
        RememberedWindows windows;
        windows.windows = {{.windowID = 7,
                            .traits = {.application = QStringLiteral("editor"),
                                       .applicationName = QStringLiteral("Editor"),
                                       .role = {},
                                       .sessionID = {},
                                       .document = {},
                                       .title = QStringLiteral("Letter")},
                            .shared = {},
                            .seenAt = Date::fromDateTime(QDateTime::currentDateTimeUtc())}};
        windows.newestWindow = 7;
        SqliteSettingsStore file(path);
        EXPECT_TRUE(file.write({windowMemoryEntry(windows)}));
        return windows;
    }
    std::optional<RememberedWindows> savedMemory()
    {
        SqliteSettingsStore file(path);
        return decodeRememberedWindows(loadBoard(file).windowMemoryDocument.value_or(QByteArray()));
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("kelpa.sqlite"));
    const Goal taxes = goal(QStringLiteral("Taxes"), {todo(QStringLiteral("Receipts"))});
};

TEST_F(ClosedBoard, Is_changed_by_the_boards_own_rules_and_saved)
{
    const CommandOutput added = run("add --goal Taxes  Find it ");
    EXPECT_EQ(added.exitStatus, 0) << qPrintable(added.error);
    const Goal after = saved().goals.at(0);
    ASSERT_EQ(after.todos.size(), 2);
    EXPECT_EQ(after.todos.at(1).title, QStringLiteral("Find it"));
    EXPECT_EQ(after.todos.at(1).order, 2);
    EXPECT_EQ(added.text, after.todos.at(1).id.text() + u'\n');
    EXPECT_EQ(run("done Milk").exitStatus, 0);
    EXPECT_EQ(saved().unassignedTodos.at(0).status, TodoStatus::completed);
    EXPECT_TRUE(saved().unassignedTodos.at(0).completedAt.has_value());
}

TEST_F(ClosedBoard, Keeps_the_windows_of_its_goals)
{
    EXPECT_EQ(run("add Bread").exitStatus, 0);
    EXPECT_EQ(saved().assignments, (Assignments{{QStringLiteral("7"), taxes.id}}));
    EXPECT_EQ(run("delete-goal Taxes").exitStatus, 0);
    EXPECT_EQ(saved().goals, QList<Goal>());
    EXPECT_EQ(saved().assignments, Assignments());
}

TEST_F(ClosedBoard, Keeps_what_it_remembers_of_windows)
{
    const RememberedWindows before = remembered();
    EXPECT_EQ(run("add Bread").exitStatus, 0);
    const std::optional<RememberedWindows> after = savedMemory();
    ASSERT_TRUE(after);
    ASSERT_EQ(after->windows.size(), 1);
    EXPECT_EQ(after->windows.at(0).windowID, 7U);
    EXPECT_EQ(after->windows.at(0).traits, before.windows.at(0).traits);
    EXPECT_EQ(after->newestWindow, before.newestWindow);
}

TEST_F(ClosedBoard, Forgets_the_windows_of_a_goal_that_is_deleted)
{
    remembered();
    EXPECT_EQ(run("delete-goal Taxes").exitStatus, 0);
    const std::optional<RememberedWindows> after = savedMemory();
    ASSERT_TRUE(after);
    EXPECT_EQ(after->windows, QList<RememberedWindow>());
}

TEST_F(ClosedBoard, Is_backed_up_before_the_first_change_of_the_day)
{
    EXPECT_EQ(run("add Bread").exitStatus, 0);
    const QList<BackupName> backups = BackupFolder(path).list();
    ASSERT_EQ(backups.size(), 1);
    EXPECT_EQ(backups.at(0).reason, BackupReason::daily);
}

TEST_F(ClosedBoard, Is_read_without_a_change)
{
    EXPECT_TRUE(run("goals").text.endsWith(QStringLiteral("  p2     1  Taxes\n")));
    EXPECT_TRUE(run("todos").text.contains(QStringLiteral("[ ]  Receipts  (Taxes)\n")));
    EXPECT_EQ(BackupFolder(path).list().size(), 0);
    path = folder.filePath(QStringLiteral("none.sqlite"));
    const CommandOutput none = run("todos --json");
    EXPECT_EQ(none.text, QStringLiteral("[\n]\n"));
    EXPECT_EQ(none.exitStatus, 0);
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(ClosedBoard, Begins_with_what_is_added)
{
    path = folder.filePath(QStringLiteral("new/kelpa.sqlite"));
    EXPECT_EQ(run("add Bread").exitStatus, 0);
    ASSERT_EQ(saved().unassignedTodos.size(), 1);
    EXPECT_EQ(saved().unassignedTodos.at(0).title, QStringLiteral("Bread"));
}

TEST_F(ClosedBoard, Has_neither_windows_nor_steps)
{
    for (const char* const line :
         {"windows", "assign 7 --unsorted", "show Taxes", "raise Taxes", "undo", "redo"}) {
        const CommandOutput output = run(line);
        EXPECT_EQ(output.exitStatus, 1) << line;
        EXPECT_TRUE(output.error.startsWith(QStringLiteral("kelpa: Kelpa does not run")))
            << line << qPrintable(output.error);
        EXPECT_EQ(output.text, QString());
    }
}

TEST_F(ClosedBoard, Takes_pins_off_and_pins_nothing)
{
    const GoalPins pins{{taxes.id, 3}};
    ASSERT_TRUE(SqliteSettingsStore(path).write({goalPinsEntry(pins)}));
    const CommandOutput refused = run("pin Taxes 2");
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_TRUE(refused.error.startsWith(QStringLiteral("kelpa: Kelpa does not run")))
        << qPrintable(refused.error);
    const CommandOutput empty = run("pin Taxes ");
    EXPECT_EQ(empty.exitStatus, 1);
    EXPECT_TRUE(empty.error.contains(QStringLiteral("'none'"))) << qPrintable(empty.error);
    EXPECT_EQ(saved().pins, pins);
    const CommandOutput taken = run("pin Taxes none");
    EXPECT_EQ(taken.exitStatus, 0) << qPrintable(taken.error);
    EXPECT_EQ(saved().pins, GoalPins());
    EXPECT_EQ(saved().goals, QList<Goal>{taxes});
}

TEST_F(ClosedBoard, Is_read_and_changed_where_its_pins_cannot_be_read)
{
    const QByteArray unreadable(R"({"version":2,"pins":[]})");
    ASSERT_TRUE(SqliteSettingsStore(path).write({{goalPinsKey, unreadable}}));
    EXPECT_TRUE(run("goals").text.endsWith(QStringLiteral("  Taxes\n")));
    EXPECT_EQ(run("add Bread").exitStatus, 0);
    EXPECT_EQ(saved().goals, QList<Goal>{taxes});
    EXPECT_EQ(saved().unassignedTodos.size(), 2);
    const SqliteSettingsStore file(path);
    EXPECT_EQ(file.value(goalPinsKey), goalPinsEntry({}).value);
    const QStringList copies = file.copiesAside(goalPinsKey);
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(file.value(copies.at(0)), SettingsValue(unreadable));
}

TEST_F(ClosedBoard, Says_what_is_wrong_by_its_exit_status)
{
    EXPECT_EQ(run("done Nothing").exitStatus, 1);
    EXPECT_EQ(run("prioritize Taxes p9").exitStatus, 2);
    EXPECT_EQ(run("done").exitStatus, 2);
    EXPECT_EQ(run("done --help").exitStatus, 0);
    EXPECT_EQ(run("goals").exitStatus, 0);
}

TEST_F(ClosedBoard, Of_another_program_is_read_and_not_changed)
{
    // Another object stands for another process: the lock is the open file's.
    const SqliteSettingsStore running(path);
    const BoardContents before = saved();
    EXPECT_TRUE(run("todos").text.contains(QStringLiteral("Receipts")));
    const CommandOutput output = run("add Bread");
    EXPECT_EQ(output.exitStatus, 1);
    EXPECT_EQ(output.error,
              QStringLiteral("kelpa: another program has the board in %1 open\n").arg(path));
    EXPECT_EQ(saved(), before);
}

TEST_F(ClosedBoard, Is_changed_by_each_command_in_turn)
{
    auto other = std::make_unique<SqliteSettingsStore>(path);
    const QStringList board{QStringLiteral("--settings"), path};
    QProcess first;
    first.start(QStringLiteral(KELPA_PROGRAM),
                board + QStringList{QStringLiteral("add"), QStringLiteral("Bread")});
    QProcess second;
    second.start(QStringLiteral(KELPA_PROGRAM),
                 board + QStringList{QStringLiteral("add"), QStringLiteral("Butter")});
    const auto ending = std::async(std::launch::async, [&other] {
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        other.reset();
    });
    for (QProcess* const command : {&first, &second}) {
        ASSERT_TRUE(command->waitForFinished());
        EXPECT_EQ(command->exitCode(), 0) << command->readAllStandardError().constData();
    }
    QStringList titles;
    for (const TodoItem& each : saved().unassignedTodos)
        titles.append(each.title);
    titles.sort();
    EXPECT_EQ(titles, (QStringList{QStringLiteral("Bread"), QStringLiteral("Butter"),
                                   QStringLiteral("Milk")}));
}

} // namespace
} // namespace kelpa::test
