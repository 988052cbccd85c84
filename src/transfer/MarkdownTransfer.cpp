#include "transfer/MarkdownTransfer.h"

#include "model/Text.h"
#include "transfer/ImportBuilder.h"
#include "transfer/MarkdownBlocks.h"
#include "transfer/MarkdownInline.h"
#include "transfer/TransferText.h"
#include "transfer/TransferValues.h"

#include <optional>
#include <utility>
#include <variant>

namespace kelpa {

namespace {

constexpr QStringView strike = u"~~";
constexpr QStringView commentStart = u"<!--";
constexpr QStringView commentEnd = u"-->";
/// " (P1)" at the end of a heading.
constexpr qsizetype priorityLength = 5;

/// The priority that ends a heading.
std::optional<GoalPriority> endingPriority(QStringView heading)
{
    if (heading.size() < priorityLength)
        return std::nullopt;
    const QStringView end = heading.last(priorityLength);
    if (!end.startsWith(u" (") || !end.endsWith(u')'))
        return std::nullopt;
    return goalPriorityFromRawValue(end.sliced(2, 2).toString().toLower());
}

/// Whether the end of a heading would be read as the heading's own mark.
bool endsWithMark(QStringView heading)
{
    qsizetype end = heading.size();
    while (end > 0 && heading[end - 1] == u'#')
        --end;
    return end < heading.size() && (end == 0 || heading[end - 1].isSpace());
}

QString heading(const Goal& goal)
{
    const QString title = trimmedText(goal.title);
    QString text = escapedMarkdown(title);
    if (goal.priority != defaultGoalPriority || endingPriority(title))
        text += QStringLiteral(" (%1)").arg(rawValue(goal.priority).toUpper());
    else if (endsWithMark(text))
        text.insert(text.size() - 1, u'\\');
    return QStringLiteral("# ") + text + u'\n';
}

QString item(const TodoItem& todo)
{
    const QString title = escapedMarkdown(trimmedText(todo.title));
    switch (todo.status) {
    case TodoStatus::todo:
        return QStringLiteral("- [ ] ") + title + u'\n';
    case TodoStatus::ing:
        return QStringLiteral("- [/] ") + title + u'\n';
    case TodoStatus::completed:
        break;
    }
    QString line = QStringLiteral("- [x] ~~%1~~").arg(title);
    if (const QString time = todo.completedAt ? isoTime(*todo.completedAt) : QString();
        !time.isEmpty())
        line += QStringLiteral(" <!-- %1 -->").arg(time);
    return line + u'\n';
}

void write(QString& text, const QList<TodoItem>& todos)
{
    for (const TodoItem& todo : inOrder(todos))
        text += item(todo);
}

/// Takes the comment with the time of completion off the end of an item.
std::optional<Date> takeTime(QStringView& text)
{
    if (!text.endsWith(commentEnd))
        return std::nullopt;
    const qsizetype start = text.lastIndexOf(commentStart);
    // The marks of "<!-->" share a character.
    const qsizetype length = text.size() - start - commentStart.size() - commentEnd.size();
    if (start < 0 || length < 0 || isEscaped(text, start))
        return std::nullopt;
    const QStringView comment = text.sliced(start + commentStart.size(), length).trimmed();
    const std::optional<Date> time = dateOfIsoTime(comment);
    if (time)
        text = text.first(start).trimmed();
    return time;
}

/// Takes off the marks of a text that is struck as a whole.
bool takeStrike(QStringView& text)
{
    if (text.size() <= 2 * strike.size() || !text.startsWith(strike) || !text.endsWith(strike))
        return false;
    const qsizetype last = text.size() - strike.size();
    qsizetype end = text.indexOf(strike, strike.size());
    while (end >= 0 && isEscaped(text, end))
        end = text.indexOf(strike, end + 1);
    if (end != last)
        return false;
    text = text.sliced(strike.size()).chopped(strike.size()).trimmed();
    return true;
}

/// Turns the blocks of the file into goals and todos.
class Reader
{
public:
    Reader(const QString& text, const std::stop_token& stop) : m_blocks(text), m_builder(stop) {}

    ImportResult read()
    {
        while (!m_builder.isDone()) {
            const std::optional<MarkdownBlock> block = m_blocks.next();
            if (!block)
                break;
            take(*block);
        }
        finishHeading(0);
        return m_builder.take();
    }

private:
    void take(const MarkdownBlock& block)
    {
        switch (block.kind) {
        case MarkdownBlock::Kind::heading:
            finishHeading(block.level);
            m_heading = block;
            m_goal.reset();
            return;
        case MarkdownBlock::Kind::item:
            takeItem(block);
            return;
        case MarkdownBlock::Kind::other:
            m_builder.skip(block.line, block.text, SkipReason::notATodo);
            return;
        }
    }

    void takeItem(const MarkdownBlock& block)
    {
        QStringView text = block.text;
        const std::optional<Date> completedAt = takeTime(text);
        const bool isStruck = takeStrike(text);
        const QString title = trimmedText(unescapedMarkdown(text));
        if (title.isEmpty()) {
            m_builder.skip(block.line, block.text, SkipReason::withoutTitle);
            return;
        }
        if (m_heading)
            addHeading();
        m_builder.addTodo(m_goal, title, isStruck ? TodoStatus::completed : block.status,
                          completedAt);
    }

    /// The heading is that of a goal.
    void addHeading()
    {
        const MarkdownBlock block = *std::exchange(m_heading, std::nullopt);
        QStringView text = block.text;
        const std::optional<GoalPriority> priority = endingPriority(text);
        if (priority)
            text = text.chopped(priorityLength);
        const QString title = trimmedText(unescapedMarkdown(text));
        // What is below it belongs to no goal.
        if (title.isEmpty())
            m_builder.skip(block.line, block.text, SkipReason::withoutTitle);
        else
            m_goal = m_builder.addGoal(title, priority.value_or(defaultGoalPriority));
    }

    /// Another heading, or the end, comes. A heading over deeper ones alone is that of a chapter.
    void finishHeading(int nextLevel)
    {
        if (!m_heading)
            return;
        if (nextLevel <= m_heading->level) {
            addHeading();
            return;
        }
        m_builder.skip(m_heading->line, m_heading->text, SkipReason::notATodo);
        m_heading.reset();
    }

    MarkdownBlocks m_blocks;
    ImportBuilder m_builder;
    /// The latest heading while nothing has come below it.
    std::optional<MarkdownBlock> m_heading;
    std::optional<ImportBuilder::GoalIndex> m_goal;
};

} // namespace

QByteArray toMarkdown(const QList<Goal>& goals, const QList<TodoItem>& todosWithoutGoal)
{
    QString text;
    write(text, todosWithoutGoal);
    for (const Goal& goal : goals) {
        if (!text.isEmpty())
            text += u'\n';
        text += heading(goal);
        if (!goal.todos.isEmpty())
            text += u'\n';
        write(text, goal.todos);
    }
    return text.toUtf8();
}

ImportResult fromMarkdown(const QByteArray& bytes, const std::stop_token& stop)
{
    const auto text = textOfFile(bytes);
    if (const auto* const refusal = std::get_if<ImportRefusal>(&text))
        return *refusal;
    return Reader(std::get<QString>(text), stop).read();
}

} // namespace kelpa
