// What a format can hold comes back exactly, for random boards of awkward texts.
#include "model/Text.h"
#include "support/Seed.h"
#include "transfer/ReadingFixture.h"

#include <gtest/gtest.h>

#include <random>

namespace kelpa::test {
namespace {

/// Draws boards as the store may have them, with titles that look like the formats' own marks.
class Draw
{
public:
    explicit Draw(std::uint64_t seed) : m_random(seed) {}

    std::int64_t below(std::int64_t count)
    {
        return static_cast<std::int64_t>(m_random() % static_cast<std::uint64_t>(count));
    }

    /// Trimmed and not empty.
    QString title(bool isInLine)
    {
        static const QStringList pieces{QStringLiteral("Milk"),
                                        QStringLiteral("x"),
                                        QStringLiteral("(A)"),
                                        QStringLiteral("(P1)"),
                                        QStringLiteral("2026-11-22"),
                                        QStringLiteral("+Home"),
                                        QStringLiteral("+"),
                                        QStringLiteral("@phone"),
                                        QStringLiteral("pri:B"),
                                        QStringLiteral("#"),
                                        QStringLiteral("status:ing"),
                                        QStringLiteral("status:todo"),
                                        QStringLiteral("- "),
                                        QStringLiteral("*"),
                                        QStringLiteral("**"),
                                        QStringLiteral("_"),
                                        QStringLiteral("~~"),
                                        QStringLiteral("`"),
                                        QStringLiteral("\\"),
                                        QStringLiteral("[ ]"),
                                        QStringLiteral("[x]"),
                                        QStringLiteral("<br>"),
                                        QStringLiteral("<!--"),
                                        QStringLiteral("-->"),
                                        QStringLiteral("&amp;"),
                                        QStringLiteral("1."),
                                        QStringLiteral("|"),
                                        QStringLiteral("\""),
                                        QStringLiteral(","),
                                        QStringLiteral(";"),
                                        QStringLiteral(":"),
                                        QStringLiteral("\\n"),
                                        QStringLiteral("%41"),
                                        QStringLiteral("中文"),
                                        QStringLiteral("👩‍🚀"),
                                        QStringLiteral("\u202e"),
                                        QStringLiteral("\u00a0"),
                                        QStringLiteral("\t"),
                                        QStringLiteral("> "),
                                        QStringLiteral("---"),
                                        QStringLiteral("BEGIN:VTODO"),
                                        QStringLiteral("{"),
                                        QStringLiteral("http://a.b/c_d"),
                                        QStringLiteral("☐")};
        QString text;
        const std::int64_t count = 1 + below(below(30) == 0 ? 200 : 6);
        for (std::int64_t i = 0; i < count; ++i) {
            text += pieces.at(below(pieces.size()));
            if (below(2) == 0)
                text += u' ';
            if (!isInLine && below(12) == 0)
                text += u'\n';
        }
        text = trimmedText(text);
        return text.isEmpty() ? QStringLiteral("Todo") : text;
    }

    std::optional<Date> time(std::int64_t unit)
    {
        if (below(3) == 0)
            return std::nullopt;
        return Date::fromDateTime(QDateTime::fromMSecsSinceEpoch(
            1'700'000'000'000 + below(100'000'000'000) / unit * unit));
    }

    TodoItem todo(bool isInLine, std::int64_t unit)
    {
        TodoItem todo{TodoID::create(), title(isInLine), static_cast<TodoStatus>(below(3)), {}, 0};
        if (todo.status == TodoStatus::completed)
            todo.completedAt = time(unit);
        return todo;
    }

    /// Lists in the order of the board, goal after goal; `order` 0 … n−1.
    ImportedBoard board(bool isInLine, std::int64_t unit)
    {
        ImportedBoard drawn;
        std::int64_t order = 0;
        const auto fill = [&](QList<TodoItem>& todos, std::int64_t count) {
            for (std::int64_t i = 0; i < count; ++i) {
                todos.append(todo(isInLine, unit));
                todos.back().order = order++;
            }
        };
        QStringList titles;
        fill(drawn.todosWithoutGoal, below(4));
        for (std::int64_t i = below(4); i >= 0; --i) {
            Goal goal;
            goal.id = GoalID::create();
            goal.title = title(isInLine);
            goal.accent = allGoalAccents.at(static_cast<std::size_t>(below(5)));
            goal.priority = allGoalPriorities.at(static_cast<std::size_t>(below(4)));
            if (titles.contains(goal.title))
                continue;
            titles.append(goal.title);
            fill(goal.todos, 1 + below(4));
            drawn.goals.append(goal);
        }
        return drawn;
    }

private:
    std::mt19937_64 m_random;
};

class RoundTrip : public testing::Test
{
protected:
    /// A board comes back as the same lines.
    void expectSameLines(TransferFormat format, bool isInLine, std::int64_t unit)
    {
        for (int round = 0; round < 2000; ++round) {
            const ImportedBoard board = draw.board(isInLine, unit);
            const QByteArray bytes =
                bytesOf(format, board.goals, board.todosWithoutGoal, transferClock);
            const ImportedBoard read = boardOf(format, bytes);
            ASSERT_EQ(linesOf(read), linesOf(board)) << bytes.toStdString();
            ASSERT_EQ(read.skippedCount, 0);
            // And what was read is written the same.
            if (format != TransferFormat::iCalendar) {
                ASSERT_EQ(bytesOf(format, read.goals, read.todosWithoutGoal, transferClock), bytes);
            }
        }
    }

    static constexpr std::int64_t millisecond = 1;
    static constexpr std::int64_t second = 1000;
    const std::uint64_t number = seed();
    const testing::ScopedTrace trace{__FILE__, __LINE__, seedText(number)};
    Draw draw{number};
};

TEST_F(RoundTrip, Json_is_exact_in_every_field)
{
    for (int round = 0; round < 2000; ++round) {
        ImportedBoard board = draw.board(false, millisecond);
        board.hasAllFields = true;
        for (Goal& goal : board.goals) {
            for (TodoItem& todo : goal.todos)
                todo.order = draw.below(1'000'000'000'000) - 500'000'000'000;
        }
        const QByteArray bytes =
            bytesOf(TransferFormat::json, board.goals, board.todosWithoutGoal, transferClock);
        ASSERT_EQ(boardOf(TransferFormat::json, bytes), board) << bytes.toStdString();
    }
}

TEST_F(RoundTrip, Markdown_keeps_titles_states_times_and_priorities)
{
    expectSameLines(TransferFormat::markdown, false, millisecond);
}

TEST_F(RoundTrip, Calendars_keep_titles_states_times_and_priorities)
{
    expectSameLines(TransferFormat::iCalendar, false, second);
}

TEST_F(RoundTrip, Todo_txt_keeps_titles_states_days_and_priorities)
{
    for (int round = 0; round < 2000; ++round) {
        ImportedBoard board = draw.board(true, millisecond);
        const auto toNoon = [](QList<TodoItem>& todos) {
            for (TodoItem& todo : todos) {
                if (todo.completedAt)
                    todo.completedAt = Date::fromDateTime(
                        QDateTime(QDate(2026, 11, 22), QTime(12, 0), transferClock.zone));
            }
        };
        for (Goal& goal : board.goals) {
            toNoon(goal.todos);
        }
        toNoon(board.todosWithoutGoal);
        const QByteArray bytes =
            bytesOf(TransferFormat::todoTxt, board.goals, board.todosWithoutGoal, transferClock);
        const ImportedBoard read = boardOf(TransferFormat::todoTxt, bytes);
        ASSERT_EQ(linesOf(read), linesOf(board)) << bytes.toStdString();
        ASSERT_EQ(
            bytesOf(TransferFormat::todoTxt, read.goals, read.todosWithoutGoal, transferClock),
            bytes);
    }
}

} // namespace
} // namespace kelpa::test
