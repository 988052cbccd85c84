// Imports a file into the board, after a preview, and exports the board to one.
#pragma once

#include "platform/Backups.h"
#include "platform/FileAccess.h"
#include "platform/Scheduler.h"
#include "store/AfterSaving.h"
#include "store/board/BoardImport.h"
#include "store/board/ImportPreview.h"
#include "transfer/Transfer.h"

#include <QObject>

#include <memory>
#include <optional>
#include <variant>

namespace kelpa {

class WindowStore;

/// Main thread; files are read, parsed and written off it.
class BoardTransfer : public QObject
{
    Q_OBJECT

public:
    enum class Trouble : std::uint8_t {
        /// The file does not exist or cannot be read.
        fileNotRead,
        /// The present board could not be saved and kept as a backup before the import.
        notKept,
        /// The export could not be written; the file is as it was before.
        fileNotWritten,
    };
    using Refusal = std::variant<ImportRefusal, Trouble>;

    /// The arguments outlive this object, `backups` and `files` also all work that has begun.
    BoardTransfer(WindowStore& store, Backups& backups, FileAccess& files, Scheduler& scheduler);
    ~BoardTransfer() override;

    bool isReading() const { return m_reading != nullptr; }
    bool isImporting() const { return isSaving() || m_importing != nullptr; }
    /// The import waits until the disk has the board.
    bool isSaving() const { return m_saving.isWaiting(); }
    bool isExporting() const { return m_exporting != nullptr; }
    /// What the file holds that was read last; absent before, while one is read, after a refusal,
    /// and after it was imported or cancelled.
    const std::optional<ImportPreview>& preview() const { return m_preview; }
    /// Why the last operation changed nothing; absent while one is under way, and after one that
    /// did.
    const std::optional<Refusal>& refusal() const { return m_refusal; }

    /// Reads a file for `preview`, in the given format or the one that it looks like. Replaces what
    /// was read before.
    void read(const QString& path, std::optional<TransferFormat> format = std::nullopt);
    /// Adds what was read to the board, or replaces the board by it, in one step that undo takes
    /// back: saves what is not saved yet, keeps the present board as a backup, then changes it; on
    /// a slow disk after this call. A board that changes while it is copied is copied again. Does
    /// nothing without a preview or while it is under way.
    void import(ImportMode mode);
    /// Drops what was read or is being read; an import under way leaves the board as it is.
    void cancel();

    /// Writes the whole board, or one goal, to a file. Does nothing for an unknown goal or while
    /// another export is under way.
    void exportTo(const QString& path, TransferFormat format,
                  std::optional<GoalID> goalID = std::nullopt);

Q_SIGNALS:
    /// After each change of what the functions above return.
    void changed();
    /// The board has what was read.
    void imported();
    /// The file has been written.
    void exported();
    /// The file could not be written; after the `changed` for the refusal.
    void notExported();

private:
    struct ReadFile
    {
        TransferFormat format = TransferFormat::json;
        ImportedBoard board;
        ImportPreview preview;
    };
    using Reading = std::variant<std::shared_ptr<const ReadFile>, Refusal>;

    static Reading readFile(const FileAccess& files, const QString& path,
                            std::optional<TransferFormat> format, const TransferClock& clock,
                            const std::stop_token& stop);
    void saveAndImport(ImportMode mode);
    void keepAndImport(ImportMode mode);
    void refuse(Refusal refusal);

    WindowStore& m_store;
    Backups& m_backups;
    FileAccess& m_files;
    Scheduler& m_scheduler;
    std::shared_ptr<const ReadFile> m_file;
    std::optional<ImportPreview> m_preview;
    std::optional<Refusal> m_refusal;
    AfterSaving m_saving;
    TaskHandle m_reading;
    TaskHandle m_importing;
    /// How often the board has been copied for the present import.
    int m_attempts = 0;
    TaskHandle m_exporting;
};

} // namespace kelpa
