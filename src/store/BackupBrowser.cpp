#include "store/BackupBrowser.h"

#include "store/WindowStore.h"
#include "store/board/BoardPersistence.h"

#include <utility>
#include <variant>

namespace kelpa {

namespace {

/// A board that changes each time while it is copied is not replaced.
constexpr int mostAttempts = 3;

/// A backup that can take the place of the board.
struct Restoration
{
    BoardContents backup;
    /// The board that is among the backups now, or that the backup would not change.
    BoardContents present;
};

using Prepared = std::variant<Restoration, BackupBrowser::Refusal>;

std::optional<BoardContents> contentsOf(const Backups& files, const QString& name)
{
    const auto values = files.read(name);
    return values ? boardIn(*values) : std::nullopt;
}

QList<BackupBrowser::Entry> entriesOf(const Backups& files, const std::stop_token& stop)
{
    QList<BackupBrowser::Entry> entries;
    for (const Backup& backup : files.list()) {
        if (stop.stop_requested())
            break;
        const std::optional<BoardContents> contents = contentsOf(files, backup.name);
        entries.append({backup, contents ? std::optional(summaryOf(*contents)) : std::nullopt});
    }
    return entries;
}

/// Whether the backup would change the board.
bool differs(const BoardContents& present, const BoardContents& backup)
{
    return restored(present, backup) != present;
}

/// The backup is read first: the copy made before may be one too many for it to be kept.
Prepared prepareRestoration(Backups& files, const QString& name, const BoardContents& present)
{
    std::optional<BoardContents> contents = contentsOf(files, name);
    if (!contents)
        return BackupBrowser::Refusal::unreadable;
    if (!differs(present, *contents))
        return Restoration{*std::move(contents), present};
    if (!files.keepBoard(BackupReason::beforeRestore))
        return BackupBrowser::Refusal::notKept;
    return Restoration{*std::move(contents), present};
}

} // namespace

BackupBrowser::BackupBrowser(WindowStore& store, Backups& files, Scheduler& scheduler)
    : m_store(store), m_files(files), m_scheduler(scheduler), m_saving(store)
{}

void BackupBrowser::read()
{
    m_refusal.reset();
    m_entries.clear();
    m_reading = m_scheduler.inBackground(
        [&files = m_files](const std::stop_token& stop) { return entriesOf(files, stop); },
        [this](QList<Entry> entries) {
            m_reading.reset();
            m_entries = std::move(entries);
            Q_EMIT changed();
        });
    Q_EMIT changed();
}

void BackupBrowser::restore(const QString& name)
{
    if (isRestoring())
        return;
    m_refusal.reset();
    m_attempts = 0;
    saveAndRestore(name);
}

void BackupBrowser::saveAndRestore(const QString& name)
{
    ++m_attempts;
    // The copy is made of the file, so the file must have all of the board.
    m_saving.start([this, name](bool isSaved) {
        if (isSaved)
            keepAndRestore(name);
        else
            refuse(Refusal::notKept);
    });
    if (isSaving())
        Q_EMIT changed();
}

void BackupBrowser::keepAndRestore(const QString& name)
{
    m_restoring = m_scheduler.inBackground(
        [&files = m_files, name, present = m_store.boardContents()](const std::stop_token&) {
            return prepareRestoration(files, name, present);
        },
        [this, name](const Prepared& prepared) {
            m_restoring.reset();
            const auto* const restoration = std::get_if<Restoration>(&prepared);
            if (restoration == nullptr) {
                refuse(std::get<Refusal>(prepared));
                return;
            }
            // Something has changed since, of which there is no copy.
            if (m_store.boardContents() != restoration->present) {
                if (m_attempts < mostAttempts)
                    saveAndRestore(name);
                else
                    refuse(Refusal::notKept);
                return;
            }
            m_store.restoreBackup(restoration->backup);
            Q_EMIT changed();
            Q_EMIT restored();
        });
    Q_EMIT changed();
}

void BackupBrowser::refuse(Refusal refusal)
{
    m_refusal = refusal;
    Q_EMIT changed();
}

void BackupBrowser::cancel()
{
    if (!isRestoring())
        return;
    m_saving.cancel();
    m_restoring.reset();
    Q_EMIT changed();
}

} // namespace kelpa
