#include "transfer/CalendarFile.h"

#include "transfer/CalendarTodo.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kelpa {

namespace {

/// A calendar, a todo in it, an alarm in that, and a little more.
constexpr qsizetype deepestNesting = 8;
/// What the library gets at most of one component, in bytes.
constexpr qsizetype largestComponent = qsizetype{1024} * 1024;
/// The component and the calendar around it.
constexpr qsizetype depthOfTodo = 2;

/// What a person may miss on the board, where there is no place for it.
bool isOfInterest(const QByteArray& name)
{
    static constexpr std::array names{"DESCRIPTION", "DUE",      "DTSTART",   "RRULE",
                                      "LOCATION",    "URL",      "ATTACH",    "COMMENT",
                                      "CONTACT",     "ATTENDEE", "RESOURCES", "DURATION"};
    return std::ranges::any_of(names, [&name](const char* each) { return name == each; });
}

/// What a goal has no place for, or a todo that is part of one.
std::optional<ConditionalLine::Kind> conditionalKind(const QByteArray& name)
{
    using enum ConditionalLine::Kind;
    if (name == "STATUS" || name == "COMPLETED" || name == "PERCENT-COMPLETE")
        return state;
    if (name == "PRIORITY")
        return priority;
    if (name == "CATEGORIES")
        return categories;
    return std::nullopt;
}

bool isNameCharacter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') ||
           c == u'-' || c == u'.';
}

/// In upper case; empty where the line is none.
QByteArray nameOf(QStringView line)
{
    qsizetype length = 0;
    while (length < line.size() && isNameCharacter(line[length]))
        ++length;
    if (length == 0 || length == line.size() || (line[length] != u':' && line[length] != u';'))
        return {};
    return line.first(length).toLatin1().toUpper();
}

/// Of the line end and the blank at `i` that fold a line there, in bytes; 0 for none.
qsizetype foldLength(QByteArrayView bytes, qsizetype i)
{
    const QByteArrayView rest = bytes.sliced(i);
    qsizetype lineEnd = 0;
    if (rest.startsWith("\r\n"))
        lineEnd = 2;
    else if (rest.startsWith('\n') || rest.startsWith('\r'))
        lineEnd = 1;
    const bool isFold =
        lineEnd > 0 && lineEnd < rest.size() && (rest[lineEnd] == ' ' || rest[lineEnd] == '\t');
    return isFold ? lineEnd + 1 : 0;
}

/// Whether the byte is one of a character of UTF-8, but not its first.
bool continuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

} // namespace

QByteArray foldedBetweenCharacters(const QByteArray& bytes)
{
    const QByteArrayView view(bytes);
    if (hasUtf16Mark(bytes) || view.isValidUtf8())
        return bytes;
    QByteArray moved;
    moved.reserve(bytes.size());
    QByteArray folds;
    for (qsizetype i = 0; i < view.size();) {
        if (const qsizetype length = foldLength(view, i); length > 0) {
            folds.append(view.sliced(i, length));
            i += length;
            continue;
        }
        if (!continuesCharacter(view[i])) {
            moved.append(folds);
            folds.clear();
        }
        moved.append(view[i]);
        ++i;
    }
    return moved.append(folds);
}

QStringView ContentLine::value() const
{
    const QStringView view(text);
    return view.sliced(view.indexOf(u':') + 1).trimmed();
}

std::optional<ContentLine> ContentLines::next()
{
    std::optional<QStringView> line = std::exchange(m_ahead, std::nullopt);
    while (!line || line->trimmed().isEmpty()) {
        line = m_lines.next();
        if (!line)
            return std::nullopt;
    }
    ContentLine content;
    content.name = nameOf(*line);
    content.line = m_lines.number();
    while (line) {
        content.text.append(*line).append(u"\r\n");
        line = m_lines.next();
        if (line && !line->startsWith(u' ') && !line->startsWith(u'\t')) {
            m_ahead = line;
            break;
        }
    }
    return content;
}

std::optional<CalendarPiece> CalendarFile::next()
{
    while (const std::optional<ContentLine> line = m_lines.next()) {
        if (!m_hasCalendar && (line->name != "BEGIN" ||
                               line->value().compare(u"VCALENDAR", Qt::CaseInsensitive) != 0)) {
            m_isOther = true;
            return std::nullopt;
        }
        m_hasCalendar = true;
        if (std::optional<CalendarPiece> piece = take(*line))
            return piece;
    }
    return std::nullopt;
}

std::optional<ImportRefusal> CalendarFile::refusal() const
{
    if (m_isOther || !m_hasCalendar)
        return ImportRefusal::notThisFormat;
    return m_open.isEmpty() ? std::nullopt : std::optional(ImportRefusal::cutOff);
}

std::optional<CalendarPiece> CalendarFile::take(const ContentLine& line)
{
    if (line.name == "BEGIN")
        return begin(line);
    if (line.name == "END")
        return end(line);
    return takeProperty(line);
}

std::optional<CalendarPiece> CalendarFile::begin(const ContentLine& line)
{
    if (m_open.size() == deepestNesting) {
        ++m_tooDeep;
        return std::nullopt;
    }
    m_open.append(line.value().toLatin1().toUpper());
    const bool isInTodo = m_open.size() == depthOfTodo + 1 && !m_piece.skipped;
    if (isInTodo && m_open.back() == "VALARM")
        return CalendarPiece{{}, line.line, line.text, SkipReason::withoutPlace};
    if (m_open.size() != depthOfTodo)
        return std::nullopt;
    m_piece = {};
    m_hasState = false;
    m_piece.line = line.line;
    m_piece.text = line.text;
    if (m_open.back() != "VTODO")
        m_piece.skipped = SkipReason::notATodo;
    return std::nullopt;
}

std::optional<CalendarPiece> CalendarFile::end(const ContentLine& line)
{
    if (m_tooDeep > 0) {
        --m_tooDeep;
        return std::nullopt;
    }
    if (m_open.isEmpty() || m_open.back() != line.value().toLatin1().toUpper())
        return CalendarPiece{{}, line.line, line.text, SkipReason::damaged};
    const QByteArray name = m_open.takeLast();
    // Zones are no part of what a person would miss.
    if (m_open.size() + 1 != depthOfTodo || name == "VTIMEZONE")
        return std::nullopt;
    return std::exchange(m_piece, {});
}

std::optional<CalendarPiece> CalendarFile::takeProperty(const ContentLine& line)
{
    if (line.name.isEmpty())
        return CalendarPiece{{}, line.line, line.text, SkipReason::damaged};
    if (m_open.size() == 1 && (line.name == "X-WR-CALNAME" || line.name == "NAME") &&
        line.text.size() <= largestComponent)
        m_name = textOfContentLine(line.text.toUtf8());
    if (m_open.size() != depthOfTodo || m_piece.skipped == SkipReason::damaged)
        return std::nullopt;
    if (line.name == "SUMMARY")
        m_piece.text = line.text;
    if (m_piece.skipped)
        return std::nullopt;
    if (isOfInterest(line.name))
        return CalendarPiece{{}, line.line, line.text, SkipReason::withoutPlace};
    if (!isCalendarTodoProperty(line.name))
        return std::nullopt;
    m_piece.contentLines += line.text.toUtf8();
    if (m_piece.contentLines.size() > largestComponent) {
        m_piece.contentLines.clear();
        m_piece.conditional.clear();
        m_piece.skipped = SkipReason::damaged;
    } else if (const auto kind = conditionalKind(line.name);
               kind && !(kind == ConditionalLine::Kind::state && m_hasState)) {
        m_hasState = m_hasState || kind == ConditionalLine::Kind::state;
        m_piece.conditional.append({*kind, line.line, line.text});
    }
    return std::nullopt;
}

} // namespace kelpa
