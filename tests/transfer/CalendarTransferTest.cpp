// iCalendar: what Kelpa writes, and files of other programs.
#include "support/BoardBuilders.h"
#include "transfer/ReadingFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using testing::HasSubstr;

std::string calendarTextOf(const QList<Goal>& goals, const QList<TodoItem>& todos = {})
{
    return bytesOf(TransferFormat::iCalendar, goals, todos, transferClock).toStdString();
}

QByteArray calendarOf(const char* components)
{
    return QByteArray("BEGIN:VCALENDAR\r\nVERSION:2.0\r\n") +
           QByteArray(components).replace("\n", "\r\n") + "END:VCALENDAR\r\n";
}

TEST(CalendarExport, Relates_each_todo_to_its_goal)
{
    TodoItem done = todo(QStringLiteral("File; sign, send"), 2, TodoStatus::completed);
    done.completedAt = transferClock.now;
    const Goal taxes =
        goal(QStringLiteral("Taxes"), {done, todo(QStringLiteral("Call"), 1, TodoStatus::ing)},
             GoalPriority::p0);
    const std::string text = calendarTextOf({taxes});
    const std::string uid = taxes.id.text().toStdString();
    EXPECT_THAT(text, HasSubstr("UID:" + uid +
                                "\r\nDTSTAMP:20261122T101500Z\r\nSUMMARY:Taxes\r\n"
                                "X-KELPA-GOAL:TRUE\r\nPRIORITY:1\r\n"));
    EXPECT_THAT(text, HasSubstr("SUMMARY:File\\; sign\\, send\r\nSTATUS:COMPLETED\r\n"
                                "COMPLETED:20261122T101500Z\r\nPERCENT-COMPLETE:100\r\n"
                                "CATEGORIES:Taxes\r\n"));
    EXPECT_LT(text.find("SUMMARY:Call"), text.find("SUMMARY:File"));
    QByteArray unfolded = QByteArray::fromStdString(text);
    unfolded.replace("\r\n ", "");
    EXPECT_THAT(unfolded.toStdString(), HasSubstr("RELATED-TO;RELTYPE=PARENT:" + uid + "\r\n"));
}

TEST(CalendarExport, Folds_long_lines)
{
    const QString title = QString(200, QChar(u'\u4e2d'));
    const std::string text = calendarTextOf({}, {todo(title)});
    for (const QByteArray& line : QByteArray::fromStdString(text).split('\n'))
        EXPECT_LE(line.size(), 76) << line.toStdString();
    EXPECT_EQ(boardOf(TransferFormat::iCalendar, QByteArray::fromStdString(text))
                  .todosWithoutGoal.value(0)
                  .title,
              title);
}

TEST(CalendarExport, Keeps_a_goal_whose_title_the_format_cannot_have)
{
    const std::string text =
        calendarTextOf({goal(QStringLiteral("\u0001"), {todo(QStringLiteral("a"))})});
    EXPECT_EQ(linesOf(boardOf(TransferFormat::iCalendar, QByteArray::fromStdString(text))),
              textLines("# \ufffd p2\ntodo a"));
}

class CalendarReading : public testing::TestWithParam<ReadRow>
{};

TEST_P(CalendarReading, Understands)
{
    const ImportedBoard board = boardOf(TransferFormat::iCalendar, calendarOf(GetParam().file));
    EXPECT_EQ(linesOf(board), textLines(GetParam().lines));
    EXPECT_EQ(skippedLinesOf(board), textLines(GetParam().skipped));
}

INSTANTIATE_TEST_SUITE_P(
    Files, CalendarReading,
    testing::Values(
        ReadRow{"text", "BEGIN:VTODO\nSUMMARY:a\\, b\\; c\\nd \\\\ e\n  f\n\tg\nEND:VTODO\n",
                "-\ntodo a, b; c<LF>d \\ e fg"},
        ReadRow{"characters without a form",
                "BEGIN:VTODO\nSUMMARY:a\001b\nCATEGORIES:\001\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:\001\nEND:VTODO\n",
                "-\ntodo a b", "7: SUMMARY:  (no title)"},
        ReadRow{"status",
                "BEGIN:VTODO\nSUMMARY:a\nSTATUS:NEEDS-ACTION\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:b\nSTATUS:IN-PROCESS\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:c\nSTATUS:CANCELLED\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:d\nPERCENT-COMPLETE:40\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:e\nPERCENT-COMPLETE:100\nEND:VTODO\n",
                "-\ntodo a\ning b\ncompleted c\ning d\ncompleted e"},
        ReadRow{
            "times",
            "BEGIN:VTODO\nSUMMARY:a\nCOMPLETED:20261122T101500Z\nEND:VTODO\n"
            "BEGIN:VTODO\nSUMMARY:b\nCOMPLETED;TZID=America/New_York:20261122T051500\nEND:VTODO\n"
            "BEGIN:VTODO\nSUMMARY:c\nCOMPLETED:20261122T111500\nEND:VTODO\n"
            "BEGIN:VTODO\nSUMMARY:d\nCOMPLETED;TZID=\"/mozilla.org/2005/Asia/Tokyo\":"
            "20261122T191500\nEND:VTODO\n"
            "BEGIN:VTODO\nSUMMARY:e\nCOMPLETED;TZID=W. Europe Standard Time:20261122T111500\n"
            "END:VTODO\n"
            "BEGIN:VTODO\nSUMMARY:f\nCOMPLETED;VALUE=DATE:20261122\nEND:VTODO\n",
            "-\ncompleted a @2026-11-22T10:15\ncompleted b @2026-11-22T10:15\ncompleted c "
            "@2026-11-22T10:15\ncompleted d @2026-11-22T10:15\ncompleted e "
            "@2026-11-22T10:15\ncompleted f @2026-11-22T11:00"},
        ReadRow{"parts",
                "BEGIN:VTODO\nUID:3\nSUMMARY:part\nRELATED-TO:2\nEND:VTODO\n"
                "BEGIN:VTODO\nUID:1\nSUMMARY:whole\nPRIORITY:2\nEND:VTODO\n"
                "BEGIN:VTODO\nUID:2\nSUMMARY:middle\nRELATED-TO;RELTYPE=PARENT:1\nEND:VTODO\n"
                "BEGIN:VTODO\nUID:4\nSUMMARY:brother\nRELATED-TO;RELTYPE=SIBLING:1\nEND:VTODO\n"
                "BEGIN:VTODO\nUID:5\nSUMMARY:orphan\nRELATED-TO:99\nEND:VTODO\n",
                "# whole p1\ntodo part\ntodo middle\n-\ntodo brother\ntodo orphan"},
        ReadRow{"states of a goal",
                "BEGIN:VTODO\nUID:1\nSUMMARY:done\nCOMPLETED:20261122T101500Z\n"
                "STATUS:COMPLETED\nEND:VTODO\n"
                "BEGIN:VTODO\nUID:2\nSUMMARY:begun\nPERCENT-COMPLETE:40\nEND:VTODO\n"
                "BEGIN:VTODO\nUID:3\nSUMMARY:open\nSTATUS:NEEDS-ACTION\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:a\nRELATED-TO:1\nSTATUS:COMPLETED\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:b\nRELATED-TO:2\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:c\nRELATED-TO:3\nEND:VTODO\n",
                "# done p2\ncompleted a\n# begun p2\ntodo b\n# open p2\ntodo c",
                "6: COMPLETED:20261122T101500Z (no place)\n12: PERCENT-COMPLETE:40 (no place)"},
        ReadRow{"priorities and categories of parts",
                "BEGIN:VTODO\nUID:1\nSUMMARY:whole\nPRIORITY:2\nCATEGORIES:Home\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:a\nRELATED-TO:1\nPRIORITY:9\nCATEGORIES:whole\n"
                "END:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:b\nRELATED-TO:1\nPRIORITY:0\nCATEGORIES:Shop\n"
                "END:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:c\nPRIORITY:1\nEND:VTODO\n",
                "# whole p1\ntodo a\ntodo b\n-\ntodo c",
                "7: CATEGORIES:Home (no place)\n12: PRIORITY:9 (no place)\n"
                "19: CATEGORIES:Shop (no place)\n23: PRIORITY:1 (no place)"},
        ReadRow{"a circle",
                "BEGIN:VTODO\nUID:1\nSUMMARY:a\nRELATED-TO:2\nEND:VTODO\n"
                "BEGIN:VTODO\nUID:2\nSUMMARY:b\nRELATED-TO:1\nEND:VTODO\n"
                "BEGIN:VTODO\nUID:3\nSUMMARY:c\nRELATED-TO:3\nEND:VTODO\n",
                "-\ntodo a\ntodo b\ntodo c"},
        ReadRow{"categories",
                "X-WR-CALNAME:My list\n"
                "BEGIN:VTODO\nSUMMARY:a\nPRIORITY:1\nCATEGORIES:Home,Garden\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:b\nPRIORITY:1\nCATEGORIES:Home\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:c\nPRIORITY:9\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:d\nPRIORITY:2\nEND:VTODO\n",
                "# Home p0\ntodo a\ntodo b\n# My list p2\ntodo c\ntodo d",
                "7: CATEGORIES:Home,Garden (no place)\n"
                "16: PRIORITY:9 (no place)\n20: PRIORITY:2 (no place)"},
        ReadRow{"lines of categories",
                "BEGIN:VTODO\nSUMMARY:a\nCATEGORIES:Home\nCATEGORIES:Garden\nEND:VTODO\n"
                "BEGIN:VTODO\nUID:1\nSUMMARY:whole\nEND:VTODO\n"
                "BEGIN:VTODO\nSUMMARY:b\nRELATED-TO:1\nCATEGORIES:Shop\nCATEGORIES:whole\n"
                "END:VTODO\n",
                "# whole p2\ntodo b\n# Home p2\ntodo a",
                "6: CATEGORIES:Garden (no place)\n15: CATEGORIES:Shop (no place)"},
        ReadRow{"other things",
                "BEGIN:VTIMEZONE\nTZID:x\nBEGIN:STANDARD\nEND:STANDARD\nEND:VTIMEZONE\n"
                "BEGIN:VEVENT\nSUMMARY:Party\nDESCRIPTION:x\nEND:VEVENT\n"
                "BEGIN:VTODO\nSUMMARY:a\nDUE;VALUE=DATE:20261201\nX-OTHER:1\n"
                "BEGIN:VALARM\nSUMMARY:ring\nDESCRIPTION:ring\nEND:VALARM\nEND:VTODO\n"
                "BEGIN:VTODO\nSTATUS:COMPLETED\nEND:VTODO\n"
                "nonsense\n",
                "-\ntodo a",
                "8: SUMMARY:Party (not a todo)\n14: DUE;VALUE=DATE:20261201 (no place)\n16: "
                "BEGIN:VALARM (no place)\n21: BEGIN:VTODO (no title)\n24: nonsense (damaged)"}),
    caseName);

TEST(CalendarReading, Lists_the_first_lines_that_it_skips_however_late_it_knows_of_them)
{
    QByteArray components = "BEGIN:VTODO\nUID:1\nSTATUS:COMPLETED\nSUMMARY:whole\nEND:VTODO\n";
    for (int i = 0; i < 150; ++i)
        components += "BEGIN:VTODO\nRELATED-TO:1\nDUE:20261201T170000Z\nSUMMARY:a\nEND:VTODO\n";
    const ImportedBoard board =
        boardOf(TransferFormat::iCalendar, calendarOf(components.constData()));
    EXPECT_EQ(board.skippedCount, 151);
    ASSERT_EQ(board.skipped.size(), mostListedSkippedLines);
    EXPECT_EQ(skippedLinesOf(board).front(), "5: STATUS:COMPLETED (no place)");
    EXPECT_EQ(board.skipped.constLast().line, 10 + 5 * 98);
}

TEST(CalendarFolding, May_be_within_a_character)
{
    const Lines lines = textLines("-\ntodo Caf\u00e9 \U0001F95B!\ntodo b");
    const Lines skipped{"9: nonsense (damaged)"};
    for (const char* const fold : {"\n ", "\n\t"}) {
        const QByteArray components =
            QByteArray("BEGIN:VTODO\nSUMMARY:Caf\xc3<\xa9 \xf0<\x9f\xa5<\x9b!\nEND:VTODO\n"
                       "nonsense\nBEGIN:VTODO\nSUMMARY:b\nEND:VTODO\n")
                .replace('<', fold);
        QByteArray file = calendarOf(components.constData());
        for (int i = 0; i < 2; ++i) {
            const ImportedBoard board = boardOf(TransferFormat::iCalendar, file);
            EXPECT_EQ(linesOf(board), lines);
            EXPECT_EQ(skippedLinesOf(board), skipped);
            file.replace("\r\n", "\n");
        }
    }
}

TEST(CalendarFolding, Makes_no_text_of_other_bytes)
{
    using enum ImportRefusal;
    for (const char* const title : {"caf\xe9\n d", "caf\n \xe9", "\xf0\n \x9f\n a", "a\n \x9b"}) {
        const QByteArray todo = QByteArray("BEGIN:VTODO\nSUMMARY:") + title + "\nEND:VTODO\n";
        EXPECT_EQ(refusalOf(TransferFormat::iCalendar, calendarOf(todo.constData())),
                  wrongEncoding);
    }
}

} // namespace
} // namespace kelpa::test
