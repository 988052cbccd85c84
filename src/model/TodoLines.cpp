#include "model/TodoLines.h"

#include "model/Text.h"

#include <QStringView>

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

bool isLineBreak(QChar character)
{
    return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

qsizetype lineBreakCount(const QString& text)
{
    return std::count_if(text.begin(), text.end(), isLineBreak);
}

/// The length of a number such as "1." or "12)" that begins the line; 0 for none. More digits are a
/// year or a sum.
qsizetype numberLength(QStringView line)
{
    constexpr qsizetype mostDigits = 3;
    qsizetype digits = 0;
    while (digits < line.size() && line.at(digits) >= u'0' && line.at(digits) <= u'9')
        ++digits;
    const bool isNumber = digits > 0 && digits <= mostDigits && digits < line.size() &&
                          (line.at(digits) == u'.' || line.at(digits) == u')');
    return isNumber ? digits + 1 : 0;
}

qsizetype markLength(QStringView line)
{
    const bool isBullet = !line.isEmpty() && QStringView(u"-*+•").contains(line.front());
    return isBullet ? 1 : numberLength(line);
}

/// Without `length` units and the white space behind them; unchanged where another character
/// follows, since that is a word.
QStringView without(qsizetype length, QStringView line)
{
    const QStringView rest = line.sliced(length);
    return rest.isEmpty() || rest.front().isSpace() ? rest.trimmed() : line;
}

bool isBox(QStringView box, QStringView marks)
{
    return box.size() == 3 && box.front() == u'[' && marks.contains(box.at(1)) &&
           box.back() == u']';
}

TodoLine todoIn(QStringView line)
{
    const QStringView item = without(markLength(line), line);
    const QStringView box = item.first(std::min<qsizetype>(3, item.size()));
    const bool isTicked = isBox(box, u"xX");
    const QStringView text = isTicked || isBox(box, u" ") ? without(3, item) : item;
    return {trimmedText(text.toString()), isTicked && text.size() < item.size()};
}

} // namespace

QList<TodoLine> todosInLines(const QString& text)
{
    QList<TodoLine> todos;
    const QStringView all = text;
    for (auto begin = all.begin(); begin != all.end();) {
        const auto end = std::find_if(begin, all.end(), isLineBreak);
        const QStringView line(begin, end);
        if (TodoLine todo = todoIn(line.trimmed()); !todo.title.isEmpty())
            todos.append(std::move(todo));
        begin = end == all.end() ? end : end + 1;
    }
    return todos;
}

qsizetype pastedTodoCount(const QString& before, const QString& after)
{
    if (lineBreakCount(after) <= lineBreakCount(before))
        return 0;
    const qsizetype count = todosInLines(after).size();
    return count > 1 ? count : 0;
}

} // namespace kelpa
