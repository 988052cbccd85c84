// Export and import on the command line, with real files.
#include "app/TransferCommands.h"

#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/sqlite/backup/BackupFolder.h"
#include "store/board/BoardPersistence.h"
#include "support/BoardBuilders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace kelpa::test {
namespace {

using testing::SizeIs;

class TransferCommands : public testing::Test
{
protected:
    void SetUp() override
    {
        SqliteSettingsStore file(board);
        ASSERT_TRUE(file.write(boardEntries(goals, {todo(QStringLiteral("Milk"), 1)})));
    }
    BoardContents stored()
    {
        SqliteSettingsStore file(board);
        return loadBoard(file).contents;
    }
    QString fileWith(const QByteArray& bytes, const QString& name = QStringLiteral("list.md"))
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    QByteArray contentsOf(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QTemporaryDir folder;
    QString board = folder.filePath(QStringLiteral("kelpa.sqlite"));
    const QList<Goal> goals{goal(QStringLiteral("Taxes"), {todo(QStringLiteral("Receipts"))}),
                            goal(QStringLiteral("Garden"))};
};

TEST_F(TransferCommands, An_export_goes_to_standard_output_or_to_a_file)
{
    const CommandOutput output = exportBoard(board, {TransferFormat::markdown, {}, {}});
    EXPECT_EQ(output.data, "- [ ] Milk\n\n# Taxes\n\n- [ ] Receipts\n\n# Garden\n");
    EXPECT_EQ(output.exitStatus, 0);
    const QString path = folder.filePath(QStringLiteral("out.md"));
    const CommandOutput toFile =
        exportBoard(board, {TransferFormat::markdown, QStringLiteral("Taxes"), path});
    EXPECT_EQ(toFile.exitStatus, 0);
    EXPECT_EQ(toFile.data, QByteArray());
    EXPECT_EQ(contentsOf(path), "# Taxes\n\n- [ ] Receipts\n");
}

TEST_F(TransferCommands, An_export_needs_a_board_a_goal_and_a_disk)
{
    const QString nowhere = folder.filePath(QStringLiteral("none.sqlite"));
    EXPECT_TRUE(exportBoard(nowhere, {}).error.contains(u"there is no board in"));
    EXPECT_FALSE(QFile::exists(nowhere));
    const CommandOutput unknown =
        exportBoard(board, {TransferFormat::json, QStringLiteral("Nothing"), {}});
    EXPECT_EQ(unknown.exitStatus, 1);
    EXPECT_TRUE(unknown.error.contains(u"no goal 'Nothing'")) << qPrintable(unknown.error);
    const CommandOutput unwritable =
        exportBoard(board, {TransferFormat::json, {}, QStringLiteral("/nowhere/a.json")});
    EXPECT_EQ(unwritable.exitStatus, 1);
    EXPECT_TRUE(unwritable.error.contains(u"could not be written"));
}

TEST_F(TransferCommands, A_board_that_is_open_is_exported_and_not_imported_into)
{
    // Another object stands for another process: the lock is the open file's.
    const SqliteSettingsStore running(board);
    EXPECT_THAT(exportBoard(board, {}).data.toStdString(), testing::HasSubstr("Receipts"));
    const CommandOutput output = importBoard(board, {fileWith("- a\n")});
    EXPECT_EQ(output.exitStatus, 1);
    EXPECT_TRUE(output.error.contains(u"Kelpa runs with the board")) << qPrintable(output.error);
}

TEST_F(TransferCommands, An_import_says_what_came_and_what_was_skipped)
{
    const BoardContents before = stored();
    const QString path = fileWith("words\n\n# Home\n- a\n- [x] b\n");
    const CommandOutput output = importBoard(board, {path});
    EXPECT_EQ(output.exitStatus, 0);
    EXPECT_EQ(output.error, QString());
    EXPECT_EQ(output.text, QStringLiteral("%1 (Markdown): goals: 1, todos: 2, open todos: 1\n"
                                          "Lines skipped: 1\n"
                                          "  1: words (not a todo)\n"
                                          "Added to the board in %2.\n"
                                          "The board before is a backup, too.\n")
                               .arg(path, board));
    EXPECT_EQ(stored().goals.size(), 3);
    EXPECT_EQ(stored().unassignedTodos, before.unassignedTodos);
    const QList<BackupName> backups = BackupFolder(board).list();
    ASSERT_THAT(backups, SizeIs(1));
    EXPECT_EQ(backups[0].reason, BackupReason::beforeImport);
    EXPECT_TRUE(listBackups(board).text.contains(u"(before a file was imported)"));
    EXPECT_EQ(restoreBackup(board, backups[0].text()).exitStatus, 0);
    EXPECT_EQ(stored(), before);
}

TEST_F(TransferCommands, An_import_makes_a_board_where_there_was_none)
{
    const QString fresh = folder.filePath(QStringLiteral("fresh.sqlite"));
    const CommandOutput output = importBoard(fresh, {fileWith("- a\n")});
    EXPECT_EQ(output.exitStatus, 0);
    EXPECT_FALSE(output.text.contains(u"backup")) << qPrintable(output.text);
    EXPECT_EQ(exportBoard(fresh, {TransferFormat::todoTxt, {}, {}}).data, "a\n");
}

TEST_F(TransferCommands, An_import_replaces_the_board_where_it_is_asked_to)
{
    const QByteArray json = exportBoard(board, {}).data;
    const BoardContents before = stored();
    EXPECT_EQ(importBoard(board, {fileWith("# Home\n- a\n"), {}, ImportMode::replace}).exitStatus,
              0);
    EXPECT_EQ(stored().goals.size(), 1);
    EXPECT_EQ(
        importBoard(board, {fileWith(json, QStringLiteral("b.json")), {}, ImportMode::replace})
            .exitStatus,
        0);
    EXPECT_EQ(stored(), before);
}

TEST_F(TransferCommands, A_file_that_is_refused_changes_nothing)
{
    const BoardContents before = stored();
    const auto refusalOfFile = [this](const QByteArray& bytes, const QString& name,
                                      std::optional<TransferFormat> format = std::nullopt) {
        const CommandOutput output = importBoard(board, {fileWith(bytes, name), format});
        EXPECT_EQ(output.exitStatus, 1);
        return output.error.toStdString();
    };
    using testing::HasSubstr;
    EXPECT_THAT(refusalOfFile("", QStringLiteral("a")), HasSubstr("is empty"));
    EXPECT_THAT(refusalOfFile("caf\xe9", QStringLiteral("a.txt")), HasSubstr("no text in UTF-8"));
    EXPECT_THAT(refusalOfFile("PK", QStringLiteral("a.zip")), HasSubstr("--format names one"));
    EXPECT_THAT(refusalOfFile("{\"format", QStringLiteral("a.json")), HasSubstr("cut off"));
    EXPECT_THAT(refusalOfFile("- a\n", QStringLiteral("a.md"), TransferFormat::json),
                HasSubstr("another format"));
    EXPECT_THAT(refusalOfFile(QByteArray(largestImport + 1, 'a'), QStringLiteral("a.md")),
                HasSubstr("more than 64 MiB"));
    const QString hole = fileWith("- a\n", QStringLiteral("hole.md"));
    ASSERT_TRUE(QFile::resize(hole, 100'000'000));
    EXPECT_THAT(importBoard(board, {hole}).error.toStdString(), HasSubstr("more than 64 MiB"));
    EXPECT_THAT(importBoard(board, {folder.path()}).error.toStdString(),
                HasSubstr("cannot be read"));
    EXPECT_EQ(stored(), before);
    EXPECT_THAT(BackupFolder(board).list(), SizeIs(0));
}

TEST_F(TransferCommands, Nothing_is_imported_where_the_present_board_cannot_be_kept)
{
    const BoardContents before = stored();
    // A folder that is not empty, in the place of the copy that is being made.
    ASSERT_TRUE(
        QDir(BackupFolder(board).path()).mkpath(QStringLiteral("unfinished.before-import/inside")));
    const CommandOutput output = importBoard(board, {fileWith("- a\n")});
    EXPECT_EQ(output.exitStatus, 1);
    EXPECT_TRUE(output.error.contains(u"could not be kept")) << qPrintable(output.error);
    EXPECT_EQ(stored(), before);
}

} // namespace
} // namespace kelpa::test
