#include "transfer/TodoTxtLine.h"

#include "model/Text.h"

#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <vector>

namespace kelpa {

namespace {

constexpr QStringView inProgress = u"status:ing";
constexpr QStringView notStarted = u"status:todo";
constexpr QStringView priorityKey = u"pri:";
constexpr qsizetype dateLength = 10;

bool isPriority(QChar c)
{
    return c >= u'A' && c <= u'Z';
}

/// The words at the end that say something about the todo: +project, @context, key:value.
bool isMetadata(QStringView word)
{
    if (word.startsWith(u'+') || word.startsWith(u'@'))
        return true;
    const qsizetype colon = word.indexOf(u':');
    return colon > 0 && colon + 1 < word.size();
}

/// The title of a goal as a word: spaces become underscores, and what a word cannot have, or what
/// would be read as a space, is escaped as in a URL.
QString projectWord(const QString& title)
{
    QString word;
    for (const QChar c : title) {
        if (c == u' ')
            word += u'_';
        else if (c == QChar::Null)
            word += QChar(QChar::ReplacementCharacter);
        else if (c == u'_' || c == u'%' || c.isSpace())
            word += QString::fromLatin1(QUrl::toPercentEncoding(QString(c), {}, "_"));
        else
            word += c;
    }
    return word;
}

/// Whether each "%" begins a byte in two hexadecimal digits, and none is a null, which no file may
/// have.
bool isPercentEncoded(const QString& text)
{
    static const QRegularExpression other(QStringLiteral("%(?![0-9A-Fa-f]{2})|%00"));
    return !other.match(text).hasMatch();
}

QString titleOfProject(QStringView word)
{
    const QString spaced = word.toString().replace(u'_', u' ');
    if (!isPercentEncoded(spaced))
        return trimmedText(spaced);
    const QString title = QUrl::fromPercentEncoding(spaced.toUtf8());
    // Bytes that are no UTF-8 become such characters.
    const QChar replacement(QChar::ReplacementCharacter);
    return trimmedText(title.count(replacement) > spaced.count(replacement) ? spaced : title);
}

/// Takes "(A) " off the beginning.
std::optional<char> takePriority(QStringView& text)
{
    constexpr qsizetype length = 4;
    if (text.size() < length || text[0] != u'(' || !isPriority(text[1]) || text[2] != u')' ||
        text[3] != u' ')
        return std::nullopt;
    const char priority = text[1].toLatin1();
    text = text.sliced(length);
    return priority;
}

/// Takes "2026-11-22 " off the beginning.
std::optional<QDate> takeDate(QStringView& text)
{
    if (text.size() <= dateLength || text[dateLength] != u' ' || text[4] != u'-')
        return std::nullopt;
    const QDate date = QDate::fromString(text.first(dateLength).toString(), Qt::ISODate);
    if (!date.isValid())
        return std::nullopt;
    text = text.sliced(dateLength + 1);
    return date;
}

/// The words of a text from its last to its first.
class Words
{
public:
    explicit Words(QStringView text) : m_text(text), m_end(text.size()) {}

    /// Steps to the word before; false at the beginning.
    bool next()
    {
        qsizetype end = m_start < 0 ? m_end : m_start;
        while (end > 0 && m_text[end - 1].isSpace())
            --end;
        if (end == 0)
            return false;
        qsizetype start = end;
        while (start > 0 && !m_text[start - 1].isSpace())
            --start;
        m_start = start;
        m_end = end;
        return true;
    }
    QStringView word() const { return m_text.sliced(m_start, m_end - m_start); }
    qsizetype start() const { return m_start; }
    qsizetype end() const { return m_end; }

private:
    QStringView m_text;
    qsizetype m_start = -1;
    qsizetype m_end;
};

/// A word that is taken out of the text, with the space before it.
struct Cut
{
    qsizetype start;
    qsizetype end;
    bool isPriority;
};

} // namespace

std::optional<TodoTxtLine> readTodoTxtLine(QStringView line)
{
    TodoTxtLine read;
    QStringView text = line;
    const bool isCompleted = text.startsWith(u"x ");
    if (isCompleted) {
        text = text.sliced(2);
        read.status = TodoStatus::completed;
        read.priority = takePriority(text);
        read.completedOn = takeDate(text);
    } else {
        read.priority = takePriority(text);
    }

    // From the last word on, each kind counts once.
    std::vector<Cut> cuts;
    bool isAtEnd = true;
    bool hasProject = false;
    bool hasStatus = false;
    bool hasPriority = false;
    for (Words words(text); words.next();) {
        const QStringView word = words.word();
        isAtEnd = isAtEnd && isMetadata(word);
        if (!isAtEnd && hasProject)
            break;
        bool isTaken = false;
        if (word.startsWith(u'+') && !hasProject) {
            read.project = titleOfProject(word.sliced(1));
            hasProject = isTaken = isAtEnd || !read.project.isEmpty();
        } else if (!isAtEnd) {
            continue;
        } else if (!isCompleted && !hasStatus && (word == inProgress || word == notStarted)) {
            read.status = word == inProgress ? TodoStatus::ing : TodoStatus::todo;
            hasStatus = isTaken = true;
        } else if (isCompleted && !hasPriority && word.startsWith(priorityKey) &&
                   word.size() == priorityKey.size() + 1 && isPriority(word.back())) {
            read.priority = word.back().toLatin1();
            hasPriority = isTaken = true;
        }
        // A project within a sentence is a word of it.
        if (isTaken && isAtEnd)
            cuts.push_back(
                {words.start(), words.end(), hasPriority && word.startsWith(priorityKey)});
    }
    // Only a goal takes priorities.
    if (read.project.isEmpty())
        std::erase_if(cuts, [](const Cut& cut) { return cut.isPriority; });
    QString title;
    title.reserve(text.size());
    qsizetype from = 0;
    for (auto cut = cuts.rbegin(); cut != cuts.rend(); ++cut) {
        qsizetype end = cut->start;
        while (end > from && text[end - 1].isSpace())
            --end;
        title.append(text.sliced(from, end - from));
        from = cut->end;
    }
    title.append(text.sliced(from));
    read.title = trimmedText(title);
    if (read.project.isEmpty()) {
        if (!hasPriority)
            read.title = withPriorityInTitle(read);
        read.priority.reset();
    }
    return read.title.isEmpty() ? std::nullopt : std::optional(std::move(read));
}

QString writtenTodoTxtLine(const TodoTxtLine& line, TodoTxtForm form)
{
    const bool isFull = form == TodoTxtForm::full;
    const bool isCompleted = line.status == TodoStatus::completed;
    QString text;
    if (isCompleted) {
        text = QStringLiteral("x ");
        if (line.completedOn)
            text += line.completedOn->toString(Qt::ISODate) + u' ';
        else if (isFull)
            // What follows is no date.
            text += u' ';
    } else if (line.priority) {
        text = QStringLiteral("(%1) ").arg(QLatin1Char(*line.priority));
    } else if (isFull) {
        // An "x" that follows is a word.
        text = u' ';
    }
    QString title = trimmedText(line.title);
    std::ranges::replace_if(
        title, [](QChar c) { return c == u'\n' || c == u'\r'; }, QChar(u' '));
    title.replace(QChar(QChar::Null), QChar(QChar::ReplacementCharacter));
    text += title;
    if (!line.project.isEmpty() || isFull)
        text += QStringLiteral(" +") + projectWord(trimmedText(line.project));
    if (line.status == TodoStatus::ing)
        text.append(u' ').append(inProgress);
    else if (isFull && !isCompleted)
        text.append(u' ').append(notStarted);
    if (isCompleted && line.priority)
        text.append(u' ').append(priorityKey).append(QLatin1Char(*line.priority));
    return text;
}

QString withPriorityInTitle(const TodoTxtLine& line)
{
    if (!line.priority)
        return line.title;
    if (line.status == TodoStatus::completed)
        return QStringLiteral("%1 pri:").arg(line.title) + QLatin1Char(*line.priority);
    return QStringLiteral("(%1) ").arg(QLatin1Char(*line.priority)) + line.title;
}

} // namespace kelpa
