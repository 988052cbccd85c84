#include "views/transfer/ExportController.h"

#include "model/Text.h"
#include "store/BoardTransfer.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"
#include "views/models/ColumnID.h"
#include "views/transfer/FileFilters.h"

#include <QDir>

#include <array>
#include <utility>
#include <variant>

namespace kelpa {

namespace {

/// What each format of `allTransferFormats` is for.
constexpr std::array formatTexts{CopyKey::JsonFormatText, CopyKey::MarkdownFormatText,
                                 CopyKey::TodoTxtFormatText, CopyKey::CalendarFormatText};
static_assert(formatTexts.size() == allTransferFormats.size());

TransferFormat formatOf(int row)
{
    return allTransferFormats.at(static_cast<std::size_t>(row));
}

} // namespace

ExportController::ExportController(WindowStore& store, QObject* parent)
    : QObject(parent), m_store(store)
{
    connect(&store, &WindowStore::languageChanged, this, &ExportController::changed);
}

void ExportController::setParts(const TransferParts& parts)
{
    m_parts.emplace(parts);
    connect(&parts.transfer, &BoardTransfer::changed, this, &ExportController::changed);
    connect(&parts.transfer, &BoardTransfer::exported, this, [this] { finish(true); });
    connect(&parts.transfer, &BoardTransfer::notExported, this, [this] { finish(false); });
}

QStringList ExportController::contentNames() const
{
    QStringList names{KelpaCopy::text(CopyKey::WholeBoard, m_store.language())};
    for (const QString& title : m_goalTitles)
        names.append(singleLine(title));
    return names;
}

QStringList ExportController::formatNames() const
{
    QStringList names;
    for (const TransferFormat each : allTransferFormats)
        names.append(displayName(each));
    return names;
}

QStringList ExportController::formatNotes() const
{
    QStringList notes;
    for (const CopyKey each : formatTexts)
        notes.append(KelpaCopy::text(each, m_store.language()));
    return notes;
}

void ExportController::setContent(int row)
{
    if (row == m_content || row < 0 || row > m_goals.size())
        return;
    m_content = row;
    forgetProblem();
}

void ExportController::setFormat(int row)
{
    if (row == m_format || row < 0 || static_cast<std::size_t>(row) >= allTransferFormats.size())
        return;
    m_format = row;
    forgetProblem();
}

bool ExportController::isWriting() const
{
    return m_checking != nullptr || (m_parts && m_parts->transfer.isExporting());
}

QString ExportController::goalTitle() const
{
    return m_content > 0 ? m_goalTitles.at(m_content - 1) : QString();
}

QString ExportController::suggestedPath() const
{
    return QStringLiteral("~/") + suggestedFileName(formatOf(m_format), goalTitle());
}

int ExportController::problem() const
{
    return m_problem ? static_cast<int>(*m_problem) : -1;
}

void ExportController::open(const QString& columnID)
{
    if (!m_parts || m_isOpen)
        return;
    m_parts->transfer.cancel();
    m_asking.forget();
    m_goals.clear();
    m_goalTitles.clear();
    m_content = 0;
    m_problem.reset();
    m_existingPath.clear();
    for (const Goal& goal : m_store.goals()) {
        m_goals.append(goal.id);
        m_goalTitles.append(goal.title);
        if (columnText(goal.id) == columnID)
            m_content = static_cast<int>(m_goals.size());
    }
    m_isOpen = true;
    m_isEnding = false;
    m_isOwnExport = false;
    Q_EMIT changed();
}

void ExportController::close()
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    m_isOwnExport = false;
    m_asking.stop();
    m_checking.reset();
    m_parts->transfer.cancel();
    Q_EMIT changed();
}

void ExportController::start(const QString& path)
{
    if (!m_isOpen || isAsking() || isWriting())
        return;
    m_problem.reset();
    if (needsPath()) {
        startTyped(path);
        return;
    }
    const AppLanguage language = m_store.language();
    m_asking.ask(m_parts->dialogs,
                 {.purpose = FileQuestion::Purpose::save,
                  .title = KelpaCopy::text(CopyKey::ExportTitle, language),
                  .confirmation = KelpaCopy::text(CopyKey::ExportTitle, language),
                  .suggestedName = suggestedFileName(formatOf(m_format), goalTitle()),
                  .filters = filtersForWriting(formatOf(m_format), language)},
                 [this](const FileAnswer& answer) { takeAnswer(answer); });
    Q_EMIT changed();
}

void ExportController::finish(bool isWritten)
{
    const bool isOwn = std::exchange(m_isOwnExport, false);
    if (isOwn && isWritten)
        m_isEnding = true;
    else if (isOwn)
        m_problem = CopyKey::FileNotWritten;
    // A failure is told where the person looks: in the sheet, or where that is gone, in a toast.
    if (isWritten || !isOwn)
        m_store.announceExport(isWritten);
    Q_EMIT changed();
}

void ExportController::takeAnswer(const FileAnswer& answer)
{
    if (answer.outcome == FileAnswer::Outcome::chosen) {
        write(answer.path);
        return;
    }
    if (answer.outcome == FileAnswer::Outcome::elsewhere)
        m_problem = CopyKey::FileElsewhere;
    Q_EMIT changed();
}

/// The desktop's dialog asks before it replaces a file; so does a typed path.
void ExportController::startTyped(const QString& text)
{
    const QString path = typedPath(text, m_parts->home);
    if (path.isEmpty() || path == std::exchange(m_existingPath, QString())) {
        write(path);
        return;
    }
    m_checking = m_parts->scheduler.inBackground(
        [&files = m_parts->files, path](const std::stop_token&) {
            const auto beginning = files.read(path, 0);
            const auto* const trouble = std::get_if<FileTrouble>(&beginning);
            return trouble == nullptr || *trouble == FileTrouble::tooLarge;
        },
        [this, path](bool isThere) {
            m_checking.reset();
            if (!isThere) {
                write(path);
                return;
            }
            m_existingPath = path;
            m_problem = CopyKey::FileExists;
            Q_EMIT changed();
        });
    Q_EMIT changed();
}

void ExportController::write(const QString& path)
{
    if (!path.isEmpty() && !isWriting()) {
        m_parts->transfer.exportTo(path, formatOf(m_format),
                                   m_content > 0 ? std::optional(m_goals.at(m_content - 1))
                                                 : std::nullopt);
        m_isOwnExport = m_parts->transfer.isExporting();
    }
    Q_EMIT changed();
}

void ExportController::forgetProblem()
{
    m_existingPath.clear();
    m_problem.reset();
    if (m_parts && !isWriting())
        m_parts->transfer.cancel();
    Q_EMIT changed();
}

} // namespace kelpa
