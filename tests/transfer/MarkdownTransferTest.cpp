// Markdown: what Kelpa writes, and other people's lists.
#include "support/BoardBuilders.h"
#include "transfer/ReadingFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

ImportedBoard read(const char* text)
{
    return boardOf(TransferFormat::markdown, text);
}

QString markdownOf(const QList<Goal>& goals, const QList<TodoItem>& todos = {})
{
    return QString::fromUtf8(bytesOf(TransferFormat::markdown, goals, todos, transferClock));
}

TEST(MarkdownExport, Has_goals_as_headings_and_todos_as_task_lists)
{
    TodoItem done = todo(QStringLiteral("File the form"), 2, TodoStatus::completed);
    done.completedAt = transferClock.now;
    const Goal taxes = goal(QStringLiteral("Taxes"),
                            {todo(QStringLiteral("Receipts"), 3),
                             todo(QStringLiteral("Call the office"), 1, TodoStatus::ing), done},
                            GoalPriority::p0);
    EXPECT_EQ(markdownOf({taxes, goal(QStringLiteral("Garden"))}, {todo(QStringLiteral("Milk"))}),
              QStringLiteral("- [ ] Milk\n"
                             "\n"
                             "# Taxes (P0)\n"
                             "\n"
                             "- [/] Call the office\n"
                             "- [x] ~~File the form~~ <!-- 2026-11-22T10:15:00.000Z -->\n"
                             "- [ ] Receipts\n"
                             "\n"
                             "# Garden\n"));
}

struct EscapeRow
{
    const char* title;
    const char* written;
};

class MarkdownEscapes : public testing::TestWithParam<EscapeRow>
{};

TEST_P(MarkdownEscapes, Keep_a_title_as_it_is)
{
    const QString title = QString::fromUtf8(GetParam().title);
    const QString text = markdownOf({}, {todo(title)});
    EXPECT_EQ(text, QStringLiteral("- [ ] %1\n").arg(QString::fromUtf8(GetParam().written)));
    EXPECT_EQ(boardOf(TransferFormat::markdown, text.toUtf8()).todosWithoutGoal.value(0).title,
              title);
}

INSTANTIATE_TEST_SUITE_P(
    Titles, MarkdownEscapes,
    testing::Values(
        EscapeRow{"plain snake_case v1.2 C# - done!", "plain snake_case v1.2 C# - done!"},
        EscapeRow{"*bold* _it_", "\\*bold\\* \\_it\\_"}, EscapeRow{"[x] box", "\\[x\\] box"},
        EscapeRow{"a <b> & &amp; AT&T", "a \\<b> & \\&amp; AT\\&T"},
        EscapeRow{"~~gone~~", "\\~\\~gone\\~\\~"},
        EscapeRow{"C:\\temp `code`", "C:\\\\temp \\`code\\`"},
        EscapeRow{"two\nlines", "two<br>lines"}, EscapeRow{"# no heading", "# no heading"},
        EscapeRow{"1. no list", "1. no list"}, EscapeRow{"\u2610 box", "\u2610 box"},
        EscapeRow{"x <!-- 2026 -->", "x \\<!-- 2026 -->"}));

TEST(MarkdownExport, Keeps_headings_that_look_like_marks)
{
    for (const char* const title :
         {"C #", "###", "# Taxes", "Taxes (P1)", "(p0)", "**bold**", "a\\"}) {
        const QString text = markdownOf({goal(QString::fromUtf8(title))});
        const ImportedBoard board = boardOf(TransferFormat::markdown, text.toUtf8());
        EXPECT_EQ(linesOf(board), Lines{std::string("# ") + title + " p2"}) << qPrintable(text);
    }
}

class MarkdownReading : public testing::TestWithParam<ReadRow>
{};

TEST_P(MarkdownReading, Understands)
{
    const ImportedBoard board = read(GetParam().file);
    EXPECT_EQ(linesOf(board), textLines(GetParam().lines));
    EXPECT_EQ(skippedLinesOf(board), textLines(GetParam().skipped));
    EXPECT_EQ(board.skippedCount, board.skipped.size());
}

INSTANTIATE_TEST_SUITE_P(
    Lists, MarkdownReading,
    testing::Values(
        ReadRow{"markers", "* one\n+ two\n- three\n1. four\n2) five\n\u2022 six\n",
                "-\ntodo one\ntodo two\ntodo three\ntodo four\ntodo five\ntodo six"},
        ReadRow{"boxes",
                "- [ ] open\n* [X] big\n1. [x] numbered\n[ ] bare\n- [-] given up\n- \u2611 sign\n",
                "-\ntodo open\ncompleted big\ncompleted numbered\ntodo bare\ncompleted given "
                "up\ncompleted sign"},
        ReadRow{"no boxes", "- [link](there) now\n- [a] letter\n- [x]tight\n",
                "-\ntodo [link](there) now\ntodo [a] letter\ntodo [x]tight"},
        ReadRow{"struck without a box", "- ~~gone~~\n- ~~half~~ gone\n",
                "-\ncompleted gone\ntodo ~~half~~ gone"},
        ReadRow{"nested", "- a\n  - b\n    * [x] c\n\t- d\n- - e\n",
                "-\ntodo a\ntodo b\ncompleted c\ntodo d\ntodo e"},
        ReadRow{"continued", "- Buy milk\n  at the store\nand bread\n\n  Later text\n",
                "-\ntodo Buy milk at the store and bread", "5: Later text (not a todo)"},
        ReadRow{"setext", "Home\n====\n- a\n\nWork\n---\n- b\n",
                "# Home p2\ntodo a\n# Work p2\ntodo b"},
        ReadRow{"bold headings", "**Home:**\n- a\n\n__Work__\n- b\n",
                "# Home p2\ntodo a\n# Work p2\ntodo b"},
        ReadRow{"a chapter over goals", "# My lists\n\n## Home\n- a\n## Work ##\n- b\n### Empty\n",
                "# Home p2\ntodo a\n# Work p2\ntodo b\n# Empty p2", "1: My lists (not a todo)"},
        ReadRow{"text between",
                "Hello.\n\n# Home\nSome words\nmore\n\n- a\n\n| x | y |\n***\n> - quoted\n",
                "# Home p2\ntodo a\ntodo quoted",
                "1: Hello. (not a todo)\n4: Some words (not a todo)\n5: more (not a todo)\n9: | x "
                "| y | "
                "(not a todo)"},
        ReadRow{
            "code", "- a\n```sh\n- no todo\n# no goal\n```\n- b\n", "-\ntodo a\ntodo b",
            "2: ```sh (not a todo)\n3: - no todo (not a todo)\n4: # no goal (not a todo)\n5: ``` "
            "(not a todo)"},
        ReadRow{
            "a header", "---\ntitle: x\n- tags\n---\n- a\n", "-\ntodo a",
            "1: --- (not a todo)\n2: title: x (not a todo)\n3: - tags (not a todo)\n4: --- (not "
            "a todo)"},
        ReadRow{"nothing in an item", "- a\n- [ ]\n-\n", "-\ntodo a",
                "2:  (no title)\n3:  (no title)"},
        ReadRow{"marks of a comment that share a character", "- a <!-->\n- b <!--->\n",
                "-\ntodo a <!-->\ntodo b <!--->"},
        ReadRow{"entities and code", "- a &amp; b `x\\_y` c\\_d\n", "-\ntodo a & b `x\\_y` c_d"},
        ReadRow{"old line ends", "# Home\r- a\r\n- b\r", "# Home p2\ntodo a\ntodo b"}),
    caseName);

TEST(MarkdownReading, Makes_a_goal_of_each_heading_even_of_the_same_title)
{
    EXPECT_EQ(linesOf(read("# Home\n- a\n# Home (P1)\n- b\n")),
              textLines("# Home p2\ntodo a\n# Home p1\ntodo b"));
}

TEST(MarkdownReading, Counts_skipped_lines_beyond_those_that_it_lists)
{
    QByteArray text = "- a\n\n";
    for (int i = 0; i < 250; ++i)
        text += "words\n\n";
    const ImportedBoard board = boardOf(TransferFormat::markdown, text);
    EXPECT_EQ(board.skippedCount, 250);
    EXPECT_EQ(board.skipped.size(), mostListedSkippedLines);
    EXPECT_EQ(board.skipped.constLast().line, 201);
}

} // namespace
} // namespace kelpa::test
