#include "transfer/TransferFormat.h"

#include "transfer/TransferText.h"

#include <QStringDecoder>

#include <algorithm>

namespace kelpa {

namespace {

struct FormatRow
{
    TransferFormat format;
    const char* rawValue;
    const char* displayName;
    const char* mediaType;
    /// The endings of file names, without the dot before them; the first is what Kelpa writes.
    std::array<const char*, 3> endings;
};

constexpr std::array rows{
    FormatRow{TransferFormat::json, "json", "Kelpa (JSON)", "application/json", {"json"}},
    FormatRow{TransferFormat::markdown,
              "markdown",
              "Markdown",
              "text/markdown",
              {"md", "markdown", "mkd"}},
    FormatRow{TransferFormat::todoTxt, "todo.txt", "todo.txt", "text/plain", {"txt"}},
    FormatRow{TransferFormat::iCalendar,
              "icalendar",
              "iCalendar",
              "text/calendar",
              {"ics", "ical", "ifb"}},
};

const FormatRow& rowOf(TransferFormat format)
{
    return rows.at(static_cast<std::size_t>(format));
}

/// The lines at the beginning of a file that say what it is.
constexpr int toldLines = 50;

bool isListItem(QStringView line)
{
    const QStringView text = line.trimmed();
    return text.size() > 1 && text[1].isSpace() &&
           (text[0] == u'-' || text[0] == u'*' || text[0] == u'+');
}

/// Whether headings and list items make Markdown of a text.
bool looksLikeMarkdown(QStringView text)
{
    LineReader lines(text);
    for (int i = 0; i < toldLines; ++i) {
        const std::optional<QStringView> line = lines.next();
        if (!line)
            return false;
        if (isListItem(*line) || line->startsWith(u"# ") || line->startsWith(u"## "))
            return true;
    }
    return false;
}

/// The file system's separators, and what other systems refuse.
bool isRefusedInNames(QChar c)
{
    return c.category() == QChar::Other_Control || c.category() == QChar::Other_Format ||
           QStringView(u"/\\:*?\"<>|").contains(c);
}

} // namespace

QString rawValue(TransferFormat format)
{
    return QString::fromLatin1(rowOf(format).rawValue);
}

std::optional<TransferFormat> transferFormatFromRawValue(QStringView text)
{
    for (const FormatRow& row : rows) {
        if (text.compare(QLatin1String(row.rawValue), Qt::CaseInsensitive) == 0)
            return row.format;
    }
    return std::nullopt;
}

QString displayName(TransferFormat format)
{
    return QString::fromLatin1(rowOf(format).displayName);
}

QStringList filePatterns(TransferFormat format)
{
    QStringList patterns;
    for (const char* const ending : rowOf(format).endings) {
        if (ending != nullptr)
            patterns.append(QStringLiteral("*.") + QLatin1String(ending));
    }
    return patterns;
}

QString mediaType(TransferFormat format)
{
    return QString::fromLatin1(rowOf(format).mediaType);
}

QString suggestedFileName(TransferFormat format, const QString& goalTitle)
{
    // File systems take 255 bytes, and a character has up to four.
    constexpr qsizetype longestName = 60;
    QString name = goalTitle.left(longestName);
    if (!name.isEmpty() && name.back().isHighSurrogate())
        name.chop(1);
    std::ranges::replace_if(name, isRefusedInNames, QChar(u' '));
    // A dot at the beginning would hide the file.
    while (name.startsWith(u'.') || name.startsWith(u' '))
        name.remove(0, 1);
    name = name.simplified();
    if (name.isEmpty())
        name = QStringLiteral("Kelpa");
    return name + u'.' + QLatin1String(rowOf(format).endings.front());
}

std::optional<TransferFormat> formatOfFileName(QStringView name)
{
    for (const FormatRow& row : rows) {
        for (const char* const ending : row.endings) {
            if (ending != nullptr &&
                name.endsWith(QString(u'.' + QLatin1String(ending)), Qt::CaseInsensitive))
                return row.format;
        }
    }
    return std::nullopt;
}

std::optional<TransferFormat> recognizedFormat(QStringView name, const QByteArray& bytes)
{
    // As much as the first lines need.
    constexpr qsizetype told = qsizetype{64} * 1024;
    const QByteArray beginning = bytes.first(std::min(bytes.size(), told));
    const QString text = hasUtf16Mark(bytes)
                             ? QString(QStringDecoder(QStringDecoder::Utf16)(beginning))
                             : QString::fromUtf8(beginning);
    const QStringView start = QStringView(text).trimmed();
    if (start.startsWith(u"BEGIN:VCALENDAR", Qt::CaseInsensitive))
        return TransferFormat::iCalendar;
    const std::optional<TransferFormat> named = formatOfFileName(name);
    // A text file may have lists, too.
    if (named && named != TransferFormat::todoTxt)
        return named;
    if (start.startsWith(u'{') && start.contains(u"\"kelpa-board\""))
        return TransferFormat::json;
    const bool isTodoTxt = name == u"todo.txt" || name.endsWith(u"/todo.txt") ||
                           name == u"done.txt" || name.endsWith(u"/done.txt");
    if (!isTodoTxt && looksLikeMarkdown(start))
        return TransferFormat::markdown;
    return named;
}

} // namespace kelpa
