#include "store/BackupBrowser.h"

#include "store/WindowStore.h"
#include "store/board/BoardPersistence.h"

#include <utility>
#include <variant>

namespace kelpa {

namespace {

using Restoration = std::variant<BoardContents, BackupBrowser::Refusal>;

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

/// The backup is read first: the copy made before may be one too many for it to be kept.
Restoration prepareRestoration(Backups& files, const QString& name)
{
    std::optional<BoardContents> contents = contentsOf(files, name);
    if (!contents)
        return BackupBrowser::Refusal::unreadable;
    if (!files.keepBoard())
        return BackupBrowser::Refusal::notKept;
    return *std::move(contents);
}

} // namespace

BackupBrowser::BackupBrowser(WindowStore& store, Backups& files, Scheduler& scheduler)
    : m_store(store), m_files(files), m_scheduler(scheduler)
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
    if (m_restoring)
        return;
    m_refusal.reset();
    // The copy is made of the file, so the file must have all of the board.
    if (!m_store.saveBeforeClosing()) {
        m_refusal = Refusal::notKept;
        Q_EMIT changed();
        return;
    }
    m_restoring = m_scheduler.inBackground(
        [&files = m_files, name](const std::stop_token&) {
            return prepareRestoration(files, name);
        },
        [this](const Restoration& prepared) {
            m_restoring.reset();
            const auto* const contents = std::get_if<BoardContents>(&prepared);
            if (contents == nullptr)
                m_refusal = std::get<Refusal>(prepared);
            else
                m_store.restoreBackup(*contents);
            Q_EMIT changed();
            if (contents != nullptr)
                Q_EMIT restored();
        });
    Q_EMIT changed();
}

void BackupBrowser::cancel()
{
    if (!m_restoring)
        return;
    m_restoring.reset();
    Q_EMIT changed();
}

} // namespace kelpa
