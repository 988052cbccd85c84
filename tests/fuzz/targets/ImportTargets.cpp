// Files of other programs, in each format of an import.
#include "fuzz/FuzzTarget.h"
#include "model/Text.h"
#include "transfer/Transfer.h"

#include <QSet>
#include <QStringList>
#include <QTimeZone>

#include <algorithm>

namespace kelpa::fuzz {

namespace {

const TransferClock& transferClock()
{
    static const TransferClock value{Date{816'000'000}, QTimeZone(3600)};
    return value;
}

/// With spaces in place of control characters, for which only Kelpa's own format has a form.
QString plain(QString title)
{
    std::ranges::replace_if(
        title, [](QChar c) { return c.category() == QChar::Other_Control; }, QChar(u' '));
    return trimmedText(title);
}

QStringList titlesOf(const ImportedBoard& board)
{
    const auto titleOf = [&board](const QString& title) {
        return board.hasAllFields ? title : plain(title);
    };
    QStringList titles;
    for (const Goal& goal : board.goals) {
        titles.append(titleOf(goal.title));
        for (const TodoItem& todo : goal.todos)
            titles.append(QStringLiteral("  ") + titleOf(todo.title));
    }
    for (const TodoItem& todo : board.todosWithoutGoal)
        titles.append(titleOf(todo.title));
    return titles;
}

void requireOrder(const ImportedBoard& board)
{
    QSet<TodoID> todos;
    QSet<GoalID> goals;
    qsizetype count = 0;
    const auto add = [&](const QList<TodoItem>& list) {
        for (const TodoItem& todo : list) {
            ++count;
            todos.insert(todo.id);
            if (!board.hasAllFields)
                require(!todo.title.isEmpty() && trimmedText(todo.title) == todo.title,
                        "todos come with trimmed titles");
        }
    };
    for (const Goal& goal : board.goals) {
        goals.insert(goal.id);
        add(goal.todos);
    }
    add(board.todosWithoutGoal);
    require(goals.size() == board.goals.size(), "no two goals are the same one");
    require(todos.size() == count, "no two todos are the same one");
    require(board.skipped.size() <= mostListedSkippedLines, "the list of skipped lines is bounded");
    require(board.skippedCount >= board.skipped.size(), "skipped lines are counted");
}

void decodeImport(TransferFormat format, const QByteArray& bytes)
{
    recognizedFormat(u"file", bytes);
    const ImportResult result = readImport(bytes, format, transferClock());
    const auto* const board = std::get_if<ImportedBoard>(&result);
    if (board == nullptr)
        return;
    requireOrder(*board);
    for (const TransferFormat each : allTransferFormats)
        require(exported(each, board->goals, board->todosWithoutGoal, transferClock()).has_value(),
                "what was imported can be exported");
    const QByteArray file =
        exported(format, board->goals, board->todosWithoutGoal, transferClock()).value();
    const ImportResult again = readImport(file, format, transferClock());
    const auto* const same = std::get_if<ImportedBoard>(&again);
    require(same != nullptr, "what was exported can be imported");
    require(titlesOf(*same) == titlesOf(*board), "an export has the same titles");
}

} // namespace

void decodeJsonImport(const QByteArray& bytes)
{
    decodeImport(TransferFormat::json, bytes);
}

void decodeMarkdownImport(const QByteArray& bytes)
{
    decodeImport(TransferFormat::markdown, bytes);
}

void decodeTodoTxtImport(const QByteArray& bytes)
{
    decodeImport(TransferFormat::todoTxt, bytes);
}

void decodeCalendarImport(const QByteArray& bytes)
{
    decodeImport(TransferFormat::iCalendar, bytes);
}

} // namespace kelpa::fuzz
