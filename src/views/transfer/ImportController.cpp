#include "views/transfer/ImportController.h"

#include "model/Text.h"
#include "store/BoardTransfer.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"
#include "text/TransferCopy.h"
#include "views/transfer/FileFilters.h"

#include <variant>

namespace kelpa {

namespace {

CopyKey textOf(ImportRefusal refusal)
{
    switch (refusal) {
    case ImportRefusal::empty:
        return CopyKey::ImportEmpty;
    case ImportRefusal::tooLarge:
        return CopyKey::ImportTooLarge;
    case ImportRefusal::tooManyRecords:
        return CopyKey::ImportTooMany;
    case ImportRefusal::wrongEncoding:
        return CopyKey::ImportWrongEncoding;
    case ImportRefusal::notThisFormat:
        return CopyKey::ImportUnknown;
    case ImportRefusal::cutOff:
        return CopyKey::ImportCutOff;
    case ImportRefusal::newerVersion:
        return CopyKey::ImportNewer;
    case ImportRefusal::damaged:
        return CopyKey::ImportDamaged;
    case ImportRefusal::nothingToImport:
        return CopyKey::ImportNothing;
    }
    Q_UNREACHABLE();
}

CopyKey textOf(BoardTransfer::Trouble trouble)
{
    switch (trouble) {
    case BoardTransfer::Trouble::fileNotRead:
        return CopyKey::FileNotRead;
    case BoardTransfer::Trouble::notKept:
        return CopyKey::ImportNotKept;
    case BoardTransfer::Trouble::fileNotWritten:
        return CopyKey::FileNotWritten;
    }
    Q_UNREACHABLE();
}

CopyKey textOf(SkipReason reason)
{
    switch (reason) {
    case SkipReason::notATodo:
        return CopyKey::SkippedNoTodo;
    case SkipReason::withoutTitle:
        return CopyKey::SkippedNoTitle;
    case SkipReason::withoutPlace:
        return CopyKey::SkippedNoPlace;
    case SkipReason::damaged:
        return CopyKey::SkippedDamaged;
    }
    Q_UNREACHABLE();
}

} // namespace

ImportController::ImportController(const WindowStore& store, QObject* parent)
    : QObject(parent), m_store(store)
{
    connect(&store, &WindowStore::languageChanged, this, &ImportController::changed);
}

void ImportController::setParts(const TransferParts& parts)
{
    m_parts.emplace(parts);
    connect(&parts.transfer, &BoardTransfer::changed, this, &ImportController::changed);
    connect(&parts.transfer, &BoardTransfer::imported, this, &ImportController::end);
}

bool ImportController::isReading() const
{
    return m_parts && m_parts->transfer.isReading();
}

bool ImportController::isImporting() const
{
    return m_parts && m_parts->transfer.isImporting();
}

bool ImportController::isSaving() const
{
    return m_parts && m_parts->transfer.isSaving();
}

bool ImportController::isRead() const
{
    return m_parts && m_parts->transfer.preview();
}

QString ImportController::fileText() const
{
    if (!isRead())
        return {};
    return singleLine(m_path.sliced(m_path.lastIndexOf(u'/') + 1)) + QStringLiteral(" · ") +
           displayName(m_parts->transfer.preview()->format);
}

QString ImportController::counts() const
{
    if (!isRead())
        return {};
    const ImportPreview& preview = *m_parts->transfer.preview();
    return KelpaCopy::importCounts(preview.summary.goalCount, preview.todoCount,
                                   preview.summary.openTodoCount, m_store.language());
}

QStringList ImportController::goalTitles() const
{
    QStringList titles;
    if (!isRead())
        return titles;
    const BackupSummary& summary = m_parts->transfer.preview()->summary;
    for (const BackupSummary::Line& goal : summary.goals)
        titles.append(singleLine(goal.title));
    if (summary.openTodosWithoutGoal > 0)
        titles.append(KelpaCopy::text(CopyKey::Unsorted, m_store.language()));
    return titles;
}

QStringList ImportController::goalCounts() const
{
    QStringList counts;
    if (!isRead())
        return counts;
    const BackupSummary& summary = m_parts->transfer.preview()->summary;
    for (const BackupSummary::Line& goal : summary.goals)
        counts.append(QString::number(goal.openTodoCount));
    if (summary.openTodosWithoutGoal > 0)
        counts.append(QString::number(summary.openTodosWithoutGoal));
    return counts;
}

QStringList ImportController::firstTodos() const
{
    return isRead() ? m_parts->transfer.preview()->firstTodos : QStringList();
}

QString ImportController::leftOutText() const
{
    const qsizetype count = isRead() ? m_parts->transfer.preview()->skippedCount : 0;
    return count == 0 ? QString() : KelpaCopy::linesLeftOut(count, m_store.language());
}

QStringList ImportController::leftOut() const
{
    QStringList lines;
    if (!isRead())
        return lines;
    for (const SkippedLine& each : m_parts->transfer.preview()->skipped)
        lines.append(KelpaCopy::lineLeftOut(each.line, textOf(each.reason), singleLine(each.text),
                                            m_store.language()));
    return lines;
}

int ImportController::problem() const
{
    if (m_problem)
        return static_cast<int>(*m_problem);
    if (!m_isOpen || !m_parts)
        return -1;
    const std::optional<BoardTransfer::Refusal>& refusal = m_parts->transfer.refusal();
    // That of an export from a sheet that was closed is told in a toast.
    if (!refusal || *refusal == BoardTransfer::Refusal(BoardTransfer::Trouble::fileNotWritten))
        return -1;
    return static_cast<int>(std::visit([](auto each) { return textOf(each); }, *refusal));
}

void ImportController::open()
{
    if (!m_parts || m_isOpen)
        return;
    m_isOpen = true;
    m_isEnding = false;
    m_asking.forget();
    choose();
}

void ImportController::close()
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    m_problem.reset();
    m_asking.stop();
    m_parts->transfer.cancel();
    Q_EMIT changed();
}

void ImportController::choose()
{
    if (!m_isOpen || isAsking() || isImporting())
        return;
    m_problem.reset();
    m_parts->transfer.cancel();
    if (!needsPath()) {
        const AppLanguage language = m_store.language();
        m_asking.ask(m_parts->dialogs,
                     {.purpose = FileQuestion::Purpose::open,
                      .title = KelpaCopy::text(CopyKey::ImportTitle, language),
                      .confirmation = KelpaCopy::text(CopyKey::ReadFile, language),
                      .suggestedName = {},
                      .filters = filtersForReading(language)},
                     [this](const FileAnswer& answer) { takeAnswer(answer); });
    }
    Q_EMIT changed();
}

void ImportController::end()
{
    m_isEnding = m_isOpen;
    Q_EMIT changed();
}

void ImportController::takeAnswer(const FileAnswer& answer)
{
    switch (answer.outcome) {
    case FileAnswer::Outcome::chosen:
        read(answer.path);
        return;
    case FileAnswer::Outcome::cancelled:
        end();
        return;
    case FileAnswer::Outcome::elsewhere:
        m_problem = CopyKey::FileElsewhere;
        break;
    case FileAnswer::Outcome::unavailable:
        break;
    }
    Q_EMIT changed();
}

void ImportController::readPath(const QString& text)
{
    const QString path = m_parts ? typedPath(text, m_parts->home) : QString();
    if (m_isOpen && !path.isEmpty())
        read(path);
}

void ImportController::read(const QString& path)
{
    m_problem.reset();
    m_path = path;
    m_parts->transfer.read(path);
}

void ImportController::addToBoard()
{
    if (m_isOpen && isRead())
        m_parts->transfer.import(ImportMode::add);
}

void ImportController::replaceBoard()
{
    if (m_isOpen && isRead())
        m_parts->transfer.import(ImportMode::replace);
}

} // namespace kelpa
