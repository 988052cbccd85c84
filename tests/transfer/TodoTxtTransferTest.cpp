// todo.txt: what Kelpa writes, and lines as other people have them.
#include "model/UtcTime.h"
#include "support/BoardBuilders.h"
#include "transfer/ReadingFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

QString todoTxtOf(const QList<Goal>& goals, const QList<TodoItem>& todos = {})
{
    return QString::fromUtf8(bytesOf(TransferFormat::todoTxt, goals, todos, transferClock));
}

TEST(TodoTxtExport, Has_a_todo_a_line_with_its_goal_as_project)
{
    TodoItem done = todo(QStringLiteral("File the form"), 2, TodoStatus::completed);
    // Already the next day in Berlin.
    done.completedAt = Date::fromDateTime(utcTime(QDate(2026, 11, 21), QTime(23, 30)));
    const Goal taxes = goal(QStringLiteral("Taxes 2026"),
                            {todo(QStringLiteral("Receipts"), 3),
                             todo(QStringLiteral("Call @phone"), 1, TodoStatus::ing), done},
                            GoalPriority::p0);
    EXPECT_EQ(todoTxtOf({taxes, goal(QStringLiteral("snake_case"), {todo(QStringLiteral("a"))})},
                        {todo(QStringLiteral("Milk"))}),
              QStringLiteral("(A) Call @phone +Taxes_2026 status:ing\n"
                             "x 2026-11-22 File the form +Taxes_2026 pri:A\n"
                             "(A) Receipts +Taxes_2026\n"
                             "a +snake%5Fcase\n"
                             "Milk\n"));
}

TEST(TodoTxtExport, Says_everything_where_a_title_looks_like_something_else)
{
    const Goal home = goal(QStringLiteral("Home"), {todo(QStringLiteral("x marks the spot"), 0),
                                                    todo(QStringLiteral("b"), 1)});
    const QString text = todoTxtOf({home}, {todo(QStringLiteral("meet +Bob"), 2)});
    EXPECT_EQ(text, QStringLiteral("(C) x marks the spot +Home status:todo\n"
                                   "(C) b +Home status:todo\n"
                                   " meet +Bob + status:todo\n"));
    EXPECT_EQ(linesOf(boardOf(TransferFormat::todoTxt, text.toUtf8())),
              textLines("# Home p2\ntodo x marks the spot\ntodo b\n-\ntodo meet +Bob"));
}

TEST(TodoTxtExport, Keeps_a_byte_order_mark_with_which_the_first_title_begins)
{
    const QByteArray text =
        bytesOf(TransferFormat::todoTxt, {}, {todo(QStringLiteral("\ufeffMilk"))}, transferClock);
    EXPECT_EQ(linesOf(boardOf(TransferFormat::todoTxt, text)), textLines("-\ntodo \ufeffMilk"));
}

TEST(TodoTxtExport, Keeps_characters_in_the_title_of_a_goal_that_a_word_or_a_file_cannot_have)
{
    const Goal replaced = goal(QStringLiteral("50% \ufffd"), {todo(QStringLiteral("a"), 0)});
    const Goal null =
        goal(QStringLiteral("b%1_c").arg(QChar(QChar::Null)), {todo(QStringLiteral("b"), 1)});
    const QByteArray text = bytesOf(TransferFormat::todoTxt, {replaced, null}, {}, transferClock);
    EXPECT_EQ(linesOf(boardOf(TransferFormat::todoTxt, text)),
              textLines("# 50% \ufffd p2\ntodo a\n# b\ufffd_c p2\ntodo b"));
}

class TodoTxtReading : public testing::TestWithParam<ReadRow>
{};

TEST_P(TodoTxtReading, Understands)
{
    EXPECT_EQ(linesOf(boardOf(TransferFormat::todoTxt, GetParam().file)),
              textLines(GetParam().lines));
}

INSTANTIATE_TEST_SUITE_P(
    Lines, TodoTxtReading,
    testing::Values(
        ReadRow{"plain", "Call Mom\n\nBuy milk\n", "-\ntodo Call Mom\ntodo Buy milk"},
        ReadRow{"one priority for the project", "(A) Call Mom +Family @phone\n(A) Visit +Family\n",
                "# Family p0\ntodo Call Mom @phone\ntodo Visit"},
        ReadRow{"different priorities stay",
                "(A) Call Mom +Family\n(B) Visit +Family\nWait +Family\n",
                "# Family p2\ntodo (A) Call Mom\ntodo (B) Visit\ntodo Wait"},
        ReadRow{"a priority that goals have not", "(E) Call +Family\n",
                "# Family p2\ntodo (E) Call"},
        ReadRow{"a priority without project", "(A) Call Mom @phone\n",
                "-\ntodo (A) Call Mom @phone"},
        ReadRow{
            "completed today and created",
            "x 2026-11-22 2026-11-01 Pay +Bills due:2026-12-01\nx Pay\nxylophone lesson\n",
            "# Bills p2\ncompleted 2026-11-01 Pay due:2026-12-01 @2026-11-22T11:00\n-\ncompleted "
            "Pay\ntodo xylophone lesson"},
        ReadRow{"created", "(B) 2026-11-01 Pay +Bills\n", "# Bills p1\ntodo 2026-11-01 Pay"},
        ReadRow{"two projects", "Call +Family +Peace\n", "# Peace p2\ntodo Call +Family"},
        ReadRow{"a project in a sentence", "Email +Work about +Bills now\n",
                "# Bills p2\ntodo Email +Work about +Bills now"},
        ReadRow{"underscores and escapes", "a +foo_bar\nb +50%\n",
                "# foo bar p2\ntodo a\n# 50% p2\ntodo b"},
        ReadRow{"percents that are no escapes", "a +50%_0\nb +x%00y\nc +100%25\nd +%ff%25\n",
                "# 50% 0 p2\ntodo a\n# x%00y p2\ntodo b\n# 100% p2\ntodo c\n# %ff%25 p2\ntodo d"},
        ReadRow{"no project", "1 + 1\na +\nb+c\n", "-\ntodo 1 + 1\ntodo a\ntodo b+c"},
        ReadRow{"priority of a completed one", "x Pay pri:A\nx Pay +Bills pri:B\n",
                "# Bills p1\ncompleted Pay\n-\ncompleted Pay pri:A"},
        ReadRow{"an impossible date", "x 2026-02-31 Pay\n", "-\ncompleted 2026-02-31 Pay"}),
    caseName);

TEST(TodoTxtReading, Skips_lines_without_a_title)
{
    const ImportedBoard board = boardOf(TransferFormat::todoTxt, "a\nx \n+Home\n");
    EXPECT_EQ(linesOf(board), textLines("-\ntodo a"));
    EXPECT_EQ(skippedLinesOf(board), textLines("2: x (no title)\n3: +Home (no title)"));
}

/// Whatever a line says is in the file again after it went through the board.
TEST(TodoTxtReading, Loses_no_word_of_real_files)
{
    const QByteArray file =
        "(A) 2026-11-01 Thank Mom for the meatballs @phone +Family due:2026-12-01\n"
        "(B) Schedule Goodwill pickup +Garage @phone\n"
        "Post signs around the neighborhood +Garage rec:1w t:2026-11-23\n"
        "@GroceryStore Eskimo pies\n"
        "x 2026-11-20 2026-11-01 Review Tim's pull request +TodoTxt @github\n"
        "see https://example.org/a+b?c=d:e now\n";
    const ImportedBoard board = boardOf(TransferFormat::todoTxt, file);
    const QByteArray again =
        bytesOf(TransferFormat::todoTxt, board.goals, board.todosWithoutGoal, transferClock);
    const auto words = [](const QByteArray& text) {
        QByteArrayList list = text.simplified().split(' ');
        std::ranges::sort(list);
        return list.join('\n').toStdString();
    };
    EXPECT_EQ(words(again), words(file));
}

} // namespace
} // namespace kelpa::test
