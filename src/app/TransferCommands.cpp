#include "app/TransferCommands.h"

#include "app/SavedBoard.h"
#include "platform/qt/DiskFiles.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/sqlite/backup/SqliteBackups.h"
#include "store/board/BoardPersistence.h"
#include "store/board/ImportPreview.h"

#include <QDateTime>
#include <QFile>
#include <QStringList>

#include <utility>
#include <variant>

namespace kelpa {

namespace {

CommandOutput refused(const QString& reason)
{
    return {.error = QStringLiteral("kelpa: %1\n").arg(reason), .exitStatus = 1};
}

TransferClock clockNow()
{
    return {Date::fromDateTime(QDateTime::currentDateTimeUtc())};
}

QString reasonOf(ImportRefusal refusal)
{
    switch (refusal) {
    case ImportRefusal::empty:
        return QStringLiteral("the file is empty");
    case ImportRefusal::tooLarge:
        return QStringLiteral("the file has more than %1 MiB").arg(largestImport / 1024 / 1024);
    case ImportRefusal::tooManyRecords:
        return QStringLiteral("the file has more than %1 goals and todos").arg(mostImportedRecords);
    case ImportRefusal::wrongEncoding:
        return QStringLiteral("the file is no text in UTF-8 or UTF-16");
    case ImportRefusal::notThisFormat:
        return QStringLiteral("the file is of another format");
    case ImportRefusal::cutOff:
        return QStringLiteral("the file is cut off");
    case ImportRefusal::newerVersion:
        return QStringLiteral("the file is from a later Kelpa");
    case ImportRefusal::damaged:
        return QStringLiteral("the file is Kelpa's, but a part of it is damaged");
    case ImportRefusal::nothingToImport:
        return QStringLiteral("the file has neither a goal nor a todo");
    }
    Q_UNREACHABLE();
}

QString reasonOf(SkipReason reason)
{
    switch (reason) {
    case SkipReason::notATodo:
        return QStringLiteral("not a todo");
    case SkipReason::withoutTitle:
        return QStringLiteral("without a title");
    case SkipReason::withoutPlace:
        return QStringLiteral("the board has no place for it");
    case SkipReason::damaged:
        return QStringLiteral("damaged");
    }
    Q_UNREACHABLE();
}

struct ReadFile
{
    ImportedBoard board;
    ImportPreview preview;
};

/// The file, or why it is refused, as a message.
std::variant<ReadFile, QString> readFile(const ImportCommand& command)
{
    const auto bytes = DiskFiles().read(command.path, largestImport);
    if (const auto* const trouble = std::get_if<FileTrouble>(&bytes)) {
        return *trouble == FileTrouble::tooLarge ? reasonOf(ImportRefusal::tooLarge)
                                                 : QStringLiteral("the file cannot be read");
    }
    const QByteArray& content = std::get<QByteArray>(bytes);
    const std::optional<TransferFormat> format =
        command.format ? command.format : recognizedFormat(command.path, content);
    if (!format && !content.isEmpty())
        return QStringLiteral("the file is of no format that Kelpa knows; --format names one");
    ImportResult result = readImport(content, format.value_or(TransferFormat::json), clockNow());
    if (const auto* const refusal = std::get_if<ImportRefusal>(&result))
        return reasonOf(*refusal);
    ReadFile file{std::get<ImportedBoard>(std::move(result)), {}};
    file.preview = previewOf(file.board, *format);
    return file;
}

QString told(const ImportPreview& preview, const QString& path)
{
    QString text = QStringLiteral("%1 (%2): goals: %3, todos: %4, open todos: %5\n")
                       .arg(path, displayName(preview.format))
                       .arg(preview.summary.goalCount)
                       .arg(preview.todoCount)
                       .arg(preview.summary.openTodoCount);
    if (preview.skippedCount == 0)
        return text;
    text += QStringLiteral("Lines skipped: %1\n").arg(preview.skippedCount);
    for (const SkippedLine& line : preview.skipped)
        text += QStringLiteral("  %1: %2 (%3)\n")
                    .arg(QString::number(line.line), line.text, reasonOf(line.reason));
    if (const qsizetype more = preview.skippedCount - preview.skipped.size(); more > 0)
        text += QStringLiteral("  and %1 more\n").arg(more);
    return text;
}

} // namespace

CommandOutput exportBoard(const QString& settingsPath, const ExportCommand& command)
{
    std::optional<BoardContents> board = savedBoard(settingsPath);
    if (!board)
        return refused(
            QStringLiteral("there is no board in %1 that can be read").arg(settingsPath));
    if (!command.goalTitle.isEmpty()) {
        board->goals.removeIf(
            [&command](const Goal& goal) { return goal.title != command.goalTitle; });
        board->unassignedTodos.clear();
        if (board->goals.isEmpty())
            return refused(QStringLiteral("there is no goal '%1' on the board in %2")
                               .arg(command.goalTitle, settingsPath));
    }
    const std::optional<QByteArray> bytes =
        exported(command.format, board->goals, board->unassignedTodos, clockNow());
    if (!bytes)
        return refused(QStringLiteral("the board in %1 has a value that %2 cannot hold")
                           .arg(settingsPath, displayName(command.format)));
    if (command.path.isEmpty())
        return {.data = *bytes};
    if (!DiskFiles().write(command.path, *bytes))
        return refused(
            QStringLiteral("%1 could not be written; it is as it was").arg(command.path));
    return {};
}

CommandOutput importBoard(const QString& settingsPath, const ImportCommand& command)
{
    const auto read = readFile(command);
    if (const auto* const reason = std::get_if<QString>(&read))
        return refused(QStringLiteral("%1: %2; the board is as it was").arg(command.path, *reason));
    const auto& file = std::get<ReadFile>(read);

    SqliteSettingsStore store(settingsPath);
    if (store.isAlreadyInUse())
        return refused(QStringLiteral("Kelpa runs with the board in %1; import the file from its "
                                      "menu, or close it first")
                           .arg(settingsPath));
    // What is wrong with the file was reported on standard error.
    if (!store.isLoaded() || store.status().error)
        return {.exitStatus = 1};
    if (!SqliteBackups(settingsPath).keepBoard(BackupReason::beforeImport))
        return refused(QStringLiteral("the present board could not be kept as a backup, so nothing "
                                      "was imported"));
    const BoardContents before = loadBoard(store).contents;
    const BoardContents board = withImport(before, file.board, command.mode);
    const std::optional<std::vector<SettingsEntry>> entries = wholeBoardEntries(board);
    if (!entries)
        return refused(QStringLiteral("%1: the board would have a value that cannot be stored; it "
                                      "is as it was")
                           .arg(command.path));
    if (!store.write(*entries))
        return {.exitStatus = 1};
    QString text = told(file.preview, command.path);
    text += (command.mode == ImportMode::add ? QStringLiteral("Added to the board in %1.\n")
                                             : QStringLiteral("Now the board in %1.\n"))
                .arg(settingsPath);
    // There may have been none.
    if (before != BoardContents())
        text += QStringLiteral("The board before is a backup, too.\n");
    return {.text = text};
}

} // namespace kelpa
