// Reads files of a format and prints what they hold, so that a test reads as a file and a list.
#pragma once

#include "model/UtcTime.h"
#include "transfer/Transfer.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

namespace kelpa::test {

/// 2026-11-22 10:15:00 UTC, in Berlin.
inline const TransferClock transferClock{
    Date::fromDateTime(utcTime(QDate(2026, 11, 22), QTime(10, 15))), QTimeZone("Europe/Berlin")};

/// The file of a board, all of whose values have a form in the format.
inline QByteArray bytesOf(TransferFormat format, const QList<Goal>& goals,
                          const QList<TodoItem>& todosWithoutGoal, const TransferClock& clock)
{
    return exported(format, goals, todosWithoutGoal, clock).value();
}

/// The board of a file; a failure and an empty one where the file is refused.
inline ImportedBoard boardOf(TransferFormat format, const QByteArray& bytes)
{
    ImportResult result = readImport(bytes, format, transferClock);
    if (const auto* const refusal = std::get_if<ImportRefusal>(&result)) {
        ADD_FAILURE() << "refused: " << static_cast<int>(*refusal);
        return {};
    }
    return std::get<ImportedBoard>(std::move(result));
}

/// Why the file is refused; absent where it is not.
inline std::optional<ImportRefusal> refusalOf(TransferFormat format, const QByteArray& bytes)
{
    const ImportResult result = readImport(bytes, format, transferClock);
    const auto* const refusal = std::get_if<ImportRefusal>(&result);
    return refusal != nullptr ? std::optional(*refusal) : std::nullopt;
}

/// A todo as "todo Milk", "ing Milk", or "completed Milk @2026-11-22T10:15" in UTC.
inline QString lineOf(const TodoItem& todo)
{
    QString line = rawValue(todo.status) + u' ' + todo.title;
    line.replace(u'\n', QStringLiteral("<LF>"));
    if (todo.completedAt) {
        const double ms =
            (todo.completedAt->secondsSinceReferenceDate -
             Date::fromDateTime(QDateTime::fromMSecsSinceEpoch(0)).secondsSinceReferenceDate) *
            1000;
        const auto time = utcTime(static_cast<qint64>(ms));
        line += time.toString(QStringLiteral(" @yyyy-MM-ddTHH:mm"));
    }
    return line;
}

/// Printed as text where a test fails.
using Lines = std::vector<std::string>;

/// The board as lines: "# Taxes p2" and its todos, then those without a goal below "-".
inline Lines linesOf(const ImportedBoard& board)
{
    Lines lines;
    for (const Goal& goal : board.goals) {
        lines.push_back(QStringLiteral("# %1 %2")
                            .arg(QString(goal.title).replace(u'\n', QStringLiteral("<LF>")),
                                 rawValue(goal.priority))
                            .toStdString());
        for (const TodoItem& todo : goal.todos)
            lines.push_back(lineOf(todo).toStdString());
    }
    if (!board.todosWithoutGoal.isEmpty())
        lines.emplace_back("-");
    for (const TodoItem& todo : board.todosWithoutGoal)
        lines.push_back(lineOf(todo).toStdString());
    return lines;
}

/// What was left out, as "3: text (reason)".
inline Lines skippedLinesOf(const ImportedBoard& board)
{
    constexpr std::array reasons{"not a todo", "no title", "no place", "damaged"};
    Lines lines;
    for (const SkippedLine& each : board.skipped) {
        lines.push_back(QStringLiteral("%1: %2 (%3)")
                            .arg(each.line)
                            .arg(each.text, QString::fromLatin1(
                                                reasons.at(static_cast<std::size_t>(each.reason))))
                            .toStdString());
    }
    return lines;
}

inline Lines textLines(const char* text)
{
    Lines lines;
    for (const QString& line : QString::fromUtf8(text).split(u'\n', Qt::SkipEmptyParts))
        lines.push_back(line.toStdString());
    return lines;
}

/// A file, the lines of its board, and those that are skipped.
struct ReadRow
{
    const char* name;
    const char* file;
    const char* lines;
    const char* skipped = "";
};

inline std::string caseName(const testing::TestParamInfo<ReadRow>& row)
{
    std::string name = row.param.name;
    std::ranges::replace(name, ' ', '_');
    return name;
}

} // namespace kelpa::test
