// Lists the backups of the board with what they hold, and restores one.
#pragma once

#include "platform/Backups.h"
#include "platform/Scheduler.h"
#include "store/AfterSaving.h"
#include "store/board/BackupSummary.h"

#include <QList>
#include <QObject>

#include <optional>

namespace kelpa {

class WindowStore;

/// Main thread; the disk is read off it.
class BackupBrowser : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        Backup backup;
        /// Absent when the backup cannot be read whole.
        std::optional<BackupSummary> summary;

        friend bool operator==(const Entry&, const Entry&) = default;
    };
    enum class Refusal : std::uint8_t {
        /// The present board could not be saved and kept first.
        notKept,
        /// The backup cannot be read whole.
        unreadable,
    };

    /// The arguments outlive this object, `files` also all work that has begun.
    BackupBrowser(WindowStore& store, Backups& files, Scheduler& scheduler);

    /// Newest first; empty until `read` ends.
    const QList<Entry>& entries() const { return m_entries; }
    bool isReading() const { return m_reading != nullptr; }
    bool isRestoring() const { return isSaving() || m_restoring != nullptr; }
    /// The restoration waits until the disk has the board.
    bool isSaving() const { return m_saving.isWaiting(); }
    /// Why the last `restore` changed nothing; absent after one that did, and after `read`.
    std::optional<Refusal> refusal() const { return m_refusal; }

    /// Reads the list anew.
    void read();
    /// Saves what is not saved yet, keeps the present board, then replaces it by the backup of that
    /// name, in one step that undo takes back; on a slow disk after this call. Where the board is
    /// that of the backup already, no copy is kept and there is no step. A board that changes while
    /// it is copied is copied again. Does nothing while another one is being restored.
    void restore(const QString& name);
    /// The backup that is being restored leaves the board as it is.
    void cancel();

Q_SIGNALS:
    /// After each change of what the functions above return.
    void changed();
    /// The board is that of the backup.
    void restored();

private:
    void saveAndRestore(const QString& name);
    void keepAndRestore(const QString& name);
    void refuse(Refusal refusal);

    WindowStore& m_store;
    Backups& m_files;
    Scheduler& m_scheduler;
    QList<Entry> m_entries;
    std::optional<Refusal> m_refusal;
    AfterSaving m_saving;
    TaskHandle m_reading;
    TaskHandle m_restoring;
    /// How often the board has been copied for the present restoration.
    int m_attempts = 0;
};

} // namespace kelpa
