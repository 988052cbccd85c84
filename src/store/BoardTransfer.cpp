#include "store/BoardTransfer.h"

#include "store/WindowStore.h"

#include <QDateTime>
#include <QFileInfo>

#include <utility>

namespace kelpa {

namespace {

/// A board that changes each time while it is copied stays as it is.
constexpr int mostCopies = 3;

} // namespace

BoardTransfer::BoardTransfer(WindowStore& store, Backups& backups, FileAccess& files,
                             Scheduler& scheduler)
    : m_store(store), m_backups(backups), m_files(files), m_scheduler(scheduler), m_saving(store)
{}

BoardTransfer::~BoardTransfer() = default;

BoardTransfer::Reading BoardTransfer::readFile(const FileAccess& files, const QString& path,
                                               std::optional<TransferFormat> format,
                                               const TransferClock& clock,
                                               const std::stop_token& stop)
{
    const auto bytes = files.read(path, largestImport);
    if (const auto* const trouble = std::get_if<FileTrouble>(&bytes)) {
        return *trouble == FileTrouble::tooLarge ? Refusal(ImportRefusal::tooLarge)
                                                 : Refusal(Trouble::fileNotRead);
    }
    const QByteArray& content = std::get<QByteArray>(bytes);
    if (!format)
        format = recognizedFormat(path, content);
    if (content.isEmpty())
        return Refusal(ImportRefusal::empty);
    if (!format)
        return Refusal(ImportRefusal::notThisFormat);
    ImportResult result = readImport(content, *format, clock, stop);
    if (const auto* const refusal = std::get_if<ImportRefusal>(&result))
        return Refusal(*refusal);
    auto file = std::make_shared<ReadFile>();
    file->format = *format;
    file->board = std::get<ImportedBoard>(std::move(result));
    file->preview = previewOf(file->board, *format);
    return file;
}

void BoardTransfer::read(const QString& path, std::optional<TransferFormat> format)
{
    m_saving.cancel();
    m_importing.reset();
    m_file.reset();
    m_preview.reset();
    m_refusal.reset();
    m_reading = m_scheduler.inBackground(
        [&files = m_files, path, format, clock = TransferClock{m_scheduler.calendarTime()}](
            const std::stop_token& stop) { return readFile(files, path, format, clock, stop); },
        [this](Reading reading) {
            m_reading.reset();
            if (auto* const refusal = std::get_if<Refusal>(&reading)) {
                m_refusal = *refusal;
            } else {
                m_file = std::get<0>(std::move(reading));
                m_preview = m_file->preview;
            }
            Q_EMIT changed();
        });
    Q_EMIT changed();
}

void BoardTransfer::import(ImportMode mode)
{
    if (!m_file || isImporting())
        return;
    m_refusal.reset();
    m_attempts = 0;
    saveAndImport(mode);
}

void BoardTransfer::saveAndImport(ImportMode mode)
{
    ++m_attempts;
    // The copy is made of the file, so the file must have all of the board.
    m_saving.start([this, mode](bool isSaved) {
        if (isSaved)
            keepAndImport(mode);
        else
            refuse(Trouble::notKept);
    });
    if (isSaving())
        Q_EMIT changed();
}

void BoardTransfer::keepAndImport(ImportMode mode)
{
    m_importing = m_scheduler.inBackground(
        [&backups = m_backups, file = m_file, mode, present = m_store.boardContents(),
         isAutoSortingGoals = m_store.isAutoSortingGoals()](const std::stop_token&) {
            return backups.keepBoard(BackupReason::beforeImport)
                       ? std::optional(
                             preparedImport(present, file->board, mode, isAutoSortingGoals))
                       : std::nullopt;
        },
        [this, mode](const std::optional<PreparedImport>& prepared) {
            m_importing.reset();
            if (!prepared) {
                refuse(Trouble::notKept);
                return;
            }
            // Something has changed since, of which there is no copy, and the result is outdated.
            if (m_store.boardContents() != prepared->before) {
                if (m_attempts < mostCopies)
                    saveAndImport(mode);
                else
                    refuse(Trouble::notKept);
                return;
            }
            m_store.importBoard(m_file->board, mode, *prepared);
            m_file.reset();
            m_preview.reset();
            Q_EMIT changed();
            Q_EMIT imported();
        });
    Q_EMIT changed();
}

void BoardTransfer::cancel()
{
    if (!m_reading && !isImporting() && !m_file && !m_refusal)
        return;
    m_saving.cancel();
    m_reading.reset();
    m_importing.reset();
    m_file.reset();
    m_preview.reset();
    m_refusal.reset();
    Q_EMIT changed();
}

void BoardTransfer::exportTo(const QString& path, TransferFormat format,
                             std::optional<GoalID> goalID)
{
    const Goal* const goal = goalID ? goalWith(*goalID, m_store.goals()) : nullptr;
    if (m_exporting || (goalID && goal == nullptr))
        return;
    m_refusal.reset();
    m_exporting = m_scheduler.inBackground(
        [&files = m_files, path, format, clock = TransferClock{m_scheduler.calendarTime()},
         goals = goal != nullptr ? QList<Goal>{*goal} : m_store.goals(),
         todos = goal != nullptr ? QList<TodoItem>()
                                 : m_store.unassignedTodos()](const std::stop_token&) {
            const auto bytes = kelpa::exported(format, goals, todos, clock);
            return bytes && files.write(path, *bytes);
        },
        [this](bool isWritten) {
            m_exporting.reset();
            if (!isWritten) {
                refuse(Trouble::fileNotWritten);
                Q_EMIT notExported();
                return;
            }
            Q_EMIT changed();
            Q_EMIT exported();
        });
    Q_EMIT changed();
}

void BoardTransfer::refuse(Refusal refusal)
{
    m_refusal = refusal;
    Q_EMIT changed();
}

} // namespace kelpa
