#include "views/backups/BackupController.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"
#include "text/TransferCopy.h"

namespace kelpa {

namespace {

enum Role {
    titleRole = Qt::UserRole + 1,
    countsRole,
    noteRole,
    goalTitlesRole,
    goalCountsRole,
    isReadableRole,
};

BackupRow rowOf(const BackupBrowser::Entry& entry, AppLanguage language)
{
    BackupRow row;
    row.name = entry.backup.name;
    row.title = KelpaCopy::dayAndTime(entry.backup.time.toLocalTime(), language);
    if (entry.backup.reason == BackupReason::beforeRestore)
        row.note = KelpaCopy::text(CopyKey::BackupBeforeRestore, language);
    else if (entry.backup.reason == BackupReason::beforeImport)
        row.note = KelpaCopy::text(CopyKey::BackupBeforeImport, language);
    row.isReadable = entry.summary.has_value();
    if (!entry.summary) {
        row.counts = KelpaCopy::text(CopyKey::BackupUnreadable, language);
        return row;
    }
    const BackupSummary& summary = *entry.summary;
    row.counts = KelpaCopy::backupCounts(summary.goalCount, summary.openTodoCount, language);
    const auto append = [&row](const QString& title, qsizetype openTodos) {
        row.goalTitles.append(singleLine(title));
        row.goalCounts.append(QString::number(openTodos));
    };
    for (const BackupSummary::Line& goal : summary.goals)
        append(goal.title, goal.openTodoCount);
    if (summary.openTodosWithoutGoal > 0)
        append(KelpaCopy::text(CopyKey::Unsorted, language), summary.openTodosWithoutGoal);
    return row;
}

} // namespace

BackupController::BackupController(const WindowStore& store, QObject* parent)
    : RowListModel(parent), m_store(store)
{
    connect(&store, &WindowStore::languageChanged, this, &BackupController::update);
}

void BackupController::setBrowser(BackupBrowser& browser)
{
    m_browser = &browser;
    connect(&browser, &BackupBrowser::changed, this, &BackupController::update);
    connect(&browser, &BackupBrowser::restored, this, [this] {
        ++m_restorationCount;
        Q_EMIT changed();
    });
    update();
}

bool BackupController::isRead() const
{
    return m_browser != nullptr && !m_browser->isReading();
}

bool BackupController::isRestoring() const
{
    return m_browser != nullptr && m_browser->isRestoring();
}

bool BackupController::isSaving() const
{
    return m_browser != nullptr && m_browser->isSaving();
}

int BackupController::refusal() const
{
    if (m_browser == nullptr || !m_browser->refusal())
        return -1;
    return static_cast<int>(*m_browser->refusal() == BackupBrowser::Refusal::notKept
                                ? CopyKey::BackupNotKept
                                : CopyKey::BackupUnreadable);
}

void BackupController::open()
{
    if (m_browser == nullptr || m_isOpen)
        return;
    m_isOpen = true;
    m_browser->read();
}

void BackupController::close()
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    m_browser->cancel();
    Q_EMIT changed();
}

void BackupController::cancel()
{
    if (m_browser != nullptr)
        m_browser->cancel();
}

void BackupController::restore(int row)
{
    if (row >= 0 && row < rowCount() && rows().at(row).isReadable)
        m_browser->restore(rows().at(row).name);
}

QVariant BackupController::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const BackupRow& row = rows().at(index.row());
    switch (role) {
    case titleRole:
        return row.title;
    case countsRole:
        return row.counts;
    case noteRole:
        return row.note;
    case goalTitlesRole:
        return row.goalTitles;
    case goalCountsRole:
        return row.goalCounts;
    case isReadableRole:
        return row.isReadable;
    default:
        return {};
    }
}

QHash<int, QByteArray> BackupController::roleNames() const
{
    return {{titleRole, "title"},
            {countsRole, "counts"},
            {noteRole, "note"},
            {goalTitlesRole, "goalTitles"},
            {goalCountsRole, "goalCounts"},
            {isReadableRole, "isReadable"}};
}

void BackupController::update()
{
    QList<BackupRow> list;
    if (m_browser != nullptr) {
        list.reserve(m_browser->entries().size());
        for (const BackupBrowser::Entry& entry : m_browser->entries())
            list.append(rowOf(entry, m_store.language()));
    }
    setRows(list);
    Q_EMIT changed();
}

} // namespace kelpa
