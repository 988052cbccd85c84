// Cuts during an import and a restore, as the command line does them on a real file.
#include "app/BackupCommands.h"
#include "app/TransferCommands.h"
#include "platform/sqlite/backup/BackupFolder.h"
#include "platform/sqlite/power/PowerCuts.h"
#include "store/board/BoardPersistence.h"
#include "support/BoardBuilders.h"

namespace kelpa::test {
namespace {

/// A board whose list of goals has several pages, with the todo of that title.
BoardContents boardWith(const QString& title)
{
    QList<TodoItem> todos;
    for (int i = 0; i < 400; ++i)
        todos.append(todo(title + QString::number(i), i));
    return {{goal(title, todos)}, {todo(title, 400)}, {}};
}

SettingsValues valuesOf(const BoardContents& board)
{
    SettingsValues values;
    const std::vector<SettingsEntry> entries = wholeBoardEntries(board).value();
    for (const SettingsEntry& entry : entries)
        values.insert(entry.key, entry.value);
    return values;
}

class CommandPowerCutTest : public PowerCuts
{
protected:
    void SetUp() override
    {
        const auto store = openStore();
        change(valuesOf(before),
               [&] { ASSERT_TRUE(store->write(wholeBoardEntries(before).value())); });
    }
    /// The file of `board`, outside of what is cut.
    QString fileOf(const BoardContents& board) const
    {
        QString file = elsewhere.filePath(QStringLiteral("board.json"));
        setContents(file,
                    exported(TransferFormat::json, board.goals, board.unassignedTodos, {}).value());
        return file;
    }
    /// Replaces the board by `board`.
    void import(const BoardContents& board)
    {
        const QString file = fileOf(board);
        change(valuesOf(board), [&] {
            const CommandOutput output =
                importBoard(path, {file, std::nullopt, ImportMode::replace});
            EXPECT_EQ(output.exitStatus, 0) << qPrintable(output.error);
        });
    }

    QTemporaryDir elsewhere;
    const BoardContents before = boardWith(QStringLiteral("Before"));
    const BoardContents after = boardWith(QStringLiteral("After"));
};

TEST_F(CommandPowerCutTest, Of_an_import)
{
    beginCuts();
    import(after);
    expectBackup(valuesOf(before));
    tryCuts();
}

TEST_F(CommandPowerCutTest, Of_a_restored_backup)
{
    import(after);
    expectBackup(valuesOf(before));
    const QString name = BackupFolder(path).list().constFirst().text();
    beginCuts();
    change(valuesOf(before), [&] {
        const CommandOutput output = restoreBackup(path, name);
        EXPECT_EQ(output.exitStatus, 0) << qPrintable(output.error);
    });
    expectBackup(valuesOf(after));
    tryCuts();
}

} // namespace
} // namespace kelpa::test
