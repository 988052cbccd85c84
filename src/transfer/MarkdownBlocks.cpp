#include "transfer/MarkdownBlocks.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

constexpr int deepestHeading = 6;
constexpr int boldHeadingLevel = deepestHeading + 1;
/// Lines after which "---" at the beginning of a file is no header.
constexpr int longestHeader = 100;
constexpr qsizetype shortestFence = 3;
constexpr qsizetype mostNumberDigits = 9;

using Kind = MarkdownBlock::Kind;

/// The line that ends the header of a file that begins with "---"; 0 without one.
qsizetype endOfHeader(const QString& text)
{
    LineReader lines(text);
    if (lines.next() != QStringView(u"---"))
        return 0;
    for (int i = 0; i < longestHeader; ++i) {
        const std::optional<QStringView> line = lines.next();
        if (!line)
            return 0;
        if (*line == u"---" || *line == u"...")
            return lines.number();
    }
    return 0;
}

QStringView withoutQuotation(QStringView line)
{
    QStringView text = line;
    while (text.trimmed().startsWith(u'>'))
        text = text.trimmed().sliced(1);
    return text;
}

/// Whether the line has nothing but one of the characters, repeated, and white space.
bool isRow(QStringView line, QStringView characters, qsizetype least)
{
    if (line.isEmpty() || !characters.contains(line[0]))
        return false;
    qsizetype count = 0;
    for (const QChar c : line) {
        if (c == line[0])
            ++count;
        else if (!c.isSpace())
            return false;
    }
    return count >= least;
}

std::optional<MarkdownBlock> headingIn(QStringView line)
{
    const auto level = std::ranges::find_if(line, [](QChar c) { return c != u'#'; }) - line.begin();
    if (level == 0 || level > deepestHeading)
        return std::nullopt;
    QStringView text = line.sliced(level);
    if (!text.isEmpty() && !text[0].isSpace())
        return std::nullopt;
    text = text.trimmed();
    // Marks at the end that stand apart are no text.
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == u'#')
        --end;
    if (end == 0 || (end < text.size() && text[end - 1].isSpace()))
        text = text.first(end).trimmed();
    MarkdownBlock block;
    block.kind = Kind::heading;
    block.text = text.toString();
    block.level = static_cast<int>(level);
    return block;
}

/// A line that is bold as a whole is what some people write for a heading.
std::optional<MarkdownBlock> boldHeadingIn(QStringView line)
{
    QStringView text = line;
    if (text.endsWith(u':'))
        text.chop(1);
    constexpr qsizetype mark = 2;
    for (const QStringView bold : {QStringView(u"**"), QStringView(u"__")}) {
        if (text.size() <= 2 * mark || !text.startsWith(bold) || !text.endsWith(bold))
            continue;
        text = text.sliced(mark).chopped(mark);
        if (text.contains(bold))
            return std::nullopt;
        if (text.endsWith(u':'))
            text.chop(1);
        MarkdownBlock block;
        block.kind = Kind::heading;
        block.text = text.trimmed().toString();
        block.level = boldHeadingLevel;
        return block;
    }
    return std::nullopt;
}

/// Takes the mark of a list item off the text: "-", "*", "+", "•", "1.", "1)".
bool takeMarker(QStringView& text)
{
    if (text.isEmpty())
        return false;
    qsizetype length = 0;
    if (QStringView(u"-*+•").contains(text[0])) {
        length = 1;
    } else {
        while (length < text.size() && length < mostNumberDigits && text[length] >= u'0' &&
               text[length] <= u'9')
            ++length;
        if (length == 0 || length == text.size() || (text[length] != u'.' && text[length] != u')'))
            return false;
        ++length;
    }
    if (length < text.size() && !text[length].isSpace())
        return false;
    text = text.sliced(length).trimmed();
    return true;
}

/// Takes a box off the text; absent where there is none.
std::optional<TodoStatus> takeBox(QStringView& text)
{
    const auto take = [&text](qsizetype length, TodoStatus status) {
        text = text.sliced(length).trimmed();
        return status;
    };
    if (!text.isEmpty()) {
        if (text[0] == u'☐')
            return take(1, TodoStatus::todo);
        if (QStringView(u"☑☒✅✔").contains(text[0]))
            return take(1, TodoStatus::completed);
    }
    constexpr qsizetype box = 3;
    if (text.size() < box || text[0] != u'[' || text[2] != u']' ||
        (text.size() > box && !text[box].isSpace()))
        return std::nullopt;
    switch (text[1].unicode()) {
    case u' ':
        return take(box, TodoStatus::todo);
    case u'/':
        return take(box, TodoStatus::ing);
    case u'x':
    case u'X':
    // Given up.
    case u'-':
        return take(box, TodoStatus::completed);
    default:
        return std::nullopt;
    }
}

std::optional<MarkdownBlock> itemIn(QStringView line)
{
    QStringView text = line;
    bool isItem = false;
    std::optional<TodoStatus> status = takeBox(text);
    // A list within an item may begin in the same line.
    while (!status && takeMarker(text)) {
        isItem = true;
        status = takeBox(text);
    }
    if (!isItem && !status)
        return std::nullopt;
    MarkdownBlock block;
    block.kind = Kind::item;
    block.text = text.toString();
    block.status = status.value_or(TodoStatus::todo);
    return block;
}

} // namespace

MarkdownBlocks::MarkdownBlocks(const QString& text) : m_lines(text), m_headerEnd(endOfHeader(text))
{}

std::optional<MarkdownBlock> MarkdownBlocks::next()
{
    if (m_ready)
        return std::exchange(m_ready, std::nullopt);
    while (const std::optional<QStringView> line = m_lines.next()) {
        if (std::optional<MarkdownBlock> block = takeLine(*line))
            return block;
    }
    return finish();
}

std::optional<MarkdownBlock> MarkdownBlocks::takeLine(QStringView line)
{
    MarkdownBlock other;
    other.text = line.trimmed().toString();
    if (isLiteral(line))
        return other.text.isEmpty() ? finish() : begin(other);
    const QStringView text = withoutQuotation(line).trimmed();
    if (text.isEmpty())
        return finish();
    const bool isParagraphOpen = m_open && m_open->kind == Kind::other;
    if (isParagraphOpen && (isRow(text, u"=", 1) || isRow(text, u"-", 1))) {
        m_open->kind = Kind::heading;
        m_open->level = text[0] == u'=' ? 1 : 2;
        return finish();
    }
    if (isRow(text, u"-*_", 3))
        return finish();
    for (auto* const read : {&headingIn, &itemIn, &boldHeadingIn}) {
        if (const std::optional<MarkdownBlock> block = read(text))
            return begin(*block);
    }
    if (m_open && m_open->kind == Kind::item) {
        m_open->text.append(u' ').append(text);
        return std::nullopt;
    }
    return begin(other);
}

/// Whether the line belongs to code, or to the header.
bool MarkdownBlocks::isLiteral(QStringView line)
{
    if (m_lines.number() <= m_headerEnd)
        return true;
    const QStringView text = line.trimmed();
    if (!m_fence.isEmpty()) {
        if (text.startsWith(m_fence) && isRow(text, m_fence, shortestFence))
            m_fence.clear();
        return true;
    }
    for (const QChar mark : {QChar(u'`'), QChar(u'~')}) {
        qsizetype length = 0;
        while (length < text.size() && text[length] == mark)
            ++length;
        // What follows the mark names the language; a text in code has marks at its end, too, and
        // one that is struck has only two.
        if (length >= shortestFence && !text.sliced(length).contains(mark)) {
            m_fence = QString(length, mark);
            return true;
        }
    }
    return false;
}

/// Ends the block under way and begins another.
std::optional<MarkdownBlock> MarkdownBlocks::begin(MarkdownBlock block)
{
    block.line = m_lines.number();
    std::optional<MarkdownBlock> before = finish();
    // Nothing continues a heading, or code.
    const bool canContinue =
        block.kind == Kind::item || (block.kind == Kind::other && m_fence.isEmpty());
    if (canContinue) {
        m_open = std::move(block);
        return before;
    }
    if (!before)
        return block;
    m_ready = std::move(block);
    return before;
}

std::optional<MarkdownBlock> MarkdownBlocks::finish()
{
    return std::exchange(m_open, std::nullopt);
}

} // namespace kelpa
