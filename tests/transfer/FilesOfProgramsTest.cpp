// Whole files as task programs, editors and calendars write them, all of them made up here: what
// arrives on the board, what is told as left out, and that nothing is lost on the way back.
#include "transfer/ReadingFixture.h"

#include <QStringEncoder>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using testing::IsEmpty;

/// A list as an app on a phone keeps it: dates, contexts, projects and keys of several add-ons.
const QByteArray phoneList = R"((A) 2026-11-02 Book the ferry +Summer_trip @phone due:2026-12-01
(A) 2026-11-03 Compare tents +Summer_trip @web pri:high
x 2026-11-20 2026-11-01 Ask Jo about the dog +Summer_trip
(B) Mow the lawn @garden rec:1w t:2026-11-28
x 2026-11-19 Water the figs @garden pri:C
2026-10-30 Read https://example.org/a?b=c+d#e +Reading uuid:6f1e
(D) Bleed the radiators +House h:1
+House
Fix 2+2=4 in the lecture notes
)";

TEST(PhoneList, Arrives_with_its_projects_priorities_and_days)
{
    const ImportedBoard board = boardOf(TransferFormat::todoTxt, phoneList);
    EXPECT_EQ(linesOf(board),
              textLines("# Summer trip p0\n"
                        "todo 2026-11-02 Book the ferry @phone due:2026-12-01\n"
                        "todo 2026-11-03 Compare tents @web pri:high\n"
                        "completed 2026-11-01 Ask Jo about the dog @2026-11-20T11:00\n"
                        "# Reading p2\n"
                        "todo 2026-10-30 Read https://example.org/a?b=c+d#e uuid:6f1e\n"
                        "# House p3\n"
                        "todo Bleed the radiators h:1\n"
                        "-\n"
                        "todo (B) Mow the lawn @garden rec:1w t:2026-11-28\n"
                        "completed Water the figs @garden pri:C @2026-11-19T11:00\n"
                        "todo Fix 2+2=4 in the lecture notes"));
    EXPECT_EQ(skippedLinesOf(board), textLines("8: +House (no title)"));
}

/// Notes in folders, as an editor for Markdown keeps them: a header, wiki links, tags, dates with
/// signs, nested tasks, a table, a quotation and code.
const QByteArray notes = R"(---
tags: [home, "2026"]
---

# Move

Some thoughts before the list.

## Before

- [ ] Give notice 📅 2026-12-01 #urgent
- [x] ~~Measure the [[New flat|rooms]]~~ ✅ 2026-11-20
	- [x] kitchen
	- [ ] bedroom
- [/] Pack books
    1. [ ] fiction
    2. [ ] the rest

> - [ ] quoted by somebody

| Who | What |
|-----|------|
| Jo  | van  |

## After

* [ ] Change the address
  with the bank
* [-] Buy a piano

```js
- [ ] not a todo
```
)";

TEST(Notes, Arrive_with_headings_as_goals_and_nested_tasks_beside_each_other)
{
    const ImportedBoard board = boardOf(TransferFormat::markdown, notes);
    EXPECT_EQ(linesOf(board),
              textLines("# Before p2\n"
                        "todo Give notice 📅 2026-12-01 #urgent\n"
                        "completed ~~Measure the [[New flat|rooms]]~~ ✅ 2026-11-20\n"
                        "completed kitchen\n"
                        "todo bedroom\n"
                        "ing Pack books\n"
                        "todo fiction\n"
                        "todo the rest\n"
                        "todo quoted by somebody\n"
                        "# After p2\n"
                        "todo Change the address with the bank\n"
                        "completed Buy a piano"));
    EXPECT_EQ(skippedLinesOf(board), textLines("1: --- (not a todo)\n"
                                               "2: tags: [home, \"2026\"] (not a todo)\n"
                                               "3: --- (not a todo)\n"
                                               "5: Move (not a todo)\n"
                                               "7: Some thoughts before the list. (not a todo)\n"
                                               "21: | Who | What | (not a todo)\n"
                                               "22: |-----|------| (not a todo)\n"
                                               "23: | Jo  | van  | (not a todo)\n"
                                               "31: ```js (not a todo)\n"
                                               "32: - [ ] not a todo (not a todo)\n"
                                               "33: ``` (not a todo)"));
}

/// A calendar as a groupware server hands it out: a zone with its rules, folded lines, parts, a
/// repetition, an alarm, notes, and an appointment among the todos.
const QByteArray calendar = R"(BEGIN:VCALENDAR
VERSION:2.0
PRODID:-//Example//Groupware 5//DE
CALSCALE:GREGORIAN
X-WR-CALNAME:Haus & Hof
BEGIN:VTIMEZONE
TZID:Europe/Berlin
BEGIN:DAYLIGHT
TZOFFSETFROM:+0100
TZOFFSETTO:+0200
TZNAME:CEST
DTSTART:19700329T020000
RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU
END:DAYLIGHT
BEGIN:STANDARD
TZOFFSETFROM:+0200
TZOFFSETTO:+0100
TZNAME:CET
DTSTART:19701025T030000
RRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU
END:STANDARD
END:VTIMEZONE
BEGIN:VTODO
UID:a-1
DTSTAMP:20261120T080000Z
CREATED:20261101T080000Z
LAST-MODIFIED:20261120T080000Z
SUMMARY:Dach ausbessern\, bevor es schneit: Ziegel\, Latten und di
 e Rinne
PRIORITY:1
STATUS:NEEDS-ACTION
DUE;TZID=Europe/Berlin:20261201T170000
DESCRIPTION:Leiter von Jo leihen
BEGIN:VALARM
ACTION:DISPLAY
TRIGGER:-PT15M
DESCRIPTION:Dach
END:VALARM
END:VTODO
BEGIN:VTODO
UID:a-2
RELATED-TO:a-1
SUMMARY:Ziegel bestellen
STATUS:COMPLETED
PERCENT-COMPLETE:100
COMPLETED;TZID=Europe/Berlin:20261119T120000
END:VTODO
BEGIN:VTODO
UID:a-3
SUMMARY:Filter wechseln
PRIORITY:5
RRULE:FREQ=MONTHLY;INTERVAL=3
DTSTART;VALUE=DATE:20261201
END:VTODO
BEGIN:VEVENT
UID:e-1
DTSTART:20261201T100000Z
SUMMARY:Schornsteinfeger
END:VEVENT
END:VCALENDAR
)";

TEST(GroupwareCalendar, Arrives_with_parts_and_names_what_the_board_has_no_place_for)
{
    const ImportedBoard board = boardOf(TransferFormat::iCalendar, calendar);
    EXPECT_EQ(linesOf(board),
              textLines("# Dach ausbessern, bevor es schneit: Ziegel, Latten und die Rinne p0\n"
                        "completed Ziegel bestellen @2026-11-19T11:00\n"
                        "# Haus & Hof p2\n"
                        "todo Filter wechseln"));
    EXPECT_EQ(skippedLinesOf(board),
              textLines("32: DUE;TZID=Europe/Berlin:20261201T170000 (no place)\n"
                        "33: DESCRIPTION:Leiter von Jo leihen (no place)\n"
                        "34: BEGIN:VALARM (no place)\n"
                        "52: RRULE:FREQ=MONTHLY;INTERVAL=3 (no place)\n"
                        "53: DTSTART;VALUE=DATE:20261201 (no place)\n"
                        "55: SUMMARY:Schornsteinfeger (not a todo)"));
}

struct ProgramFile
{
    TransferFormat format;
    QByteArray text;
};

class FilesOfPrograms : public testing::TestWithParam<int>
{
protected:
    static ProgramFile file()
    {
        switch (GetParam()) {
        case 0:
            return {TransferFormat::todoTxt, phoneList};
        case 1:
            return {TransferFormat::markdown, notes};
        default:
            return {TransferFormat::iCalendar, calendar};
        }
    }
};

TEST_P(FilesOfPrograms, Are_the_same_with_the_line_ends_and_encodings_of_other_systems)
{
    const auto [format, text] = file();
    const ImportedBoard board = boardOf(format, text);
    const auto expectSame = [&, format = format](const QByteArray& bytes) {
        const ImportedBoard other = boardOf(format, bytes);
        EXPECT_EQ(linesOf(other), linesOf(board));
        EXPECT_EQ(skippedLinesOf(other), skippedLinesOf(board));
    };
    const QByteArray windows = QByteArray(text).replace("\n", "\r\n");
    expectSame(windows);
    expectSame(QByteArray(text).replace("\n", "\r"));
    expectSame("\xef\xbb\xbf" + windows);
    expectSame(text.chopped(1));
    for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
        QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
        expectSame(encoder.encode(QString::fromUtf8(windows)));
    }
}

TEST_P(FilesOfPrograms, In_a_code_page_are_refused)
{
    const auto [format, text] = file();
    const QByteArray latin = QByteArray(text).replace("e", "\xe9");
    EXPECT_EQ(refusalOf(format, latin), ImportRefusal::wrongEncoding);
}

/// Through each of the formats that Kelpa writes and back.
TEST_P(FilesOfPrograms, Come_back_from_every_format_as_they_arrived)
{
    const auto [format, text] = file();
    const ImportedBoard board = boardOf(format, text);
    for (const TransferFormat other : allTransferFormats) {
        SCOPED_TRACE(rawValue(other).toStdString());
        const QByteArray bytes = bytesOf(other, board.goals, board.todosWithoutGoal, transferClock);
        const ImportedBoard back = boardOf(other, bytes);
        EXPECT_EQ(linesOf(back), linesOf(board));
        EXPECT_THAT(back.skipped, IsEmpty());
    }
}

TEST_P(FilesOfPrograms, Cut_off_anywhere_are_refused_or_lose_nothing_before_the_cut)
{
    const auto [format, text] = file();
    const Lines whole = linesOf(boardOf(format, text));
    for (qsizetype length = 1; length < text.size(); length += 7) {
        const ImportResult result = readImport(text.first(length), format, transferClock);
        if (format == TransferFormat::iCalendar) {
            ASSERT_TRUE(std::holds_alternative<ImportRefusal>(result)) << length;
            continue;
        }
        const auto* const board = std::get_if<ImportedBoard>(&result);
        if (board == nullptr)
            continue;
        qsizetype todos = board->todosWithoutGoal.size();
        for (const Goal& goal : board->goals)
            todos += goal.todos.size();
        ASSERT_LE(static_cast<std::size_t>(todos), whole.size()) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, FilesOfPrograms, testing::Values(0, 1, 2));

} // namespace
} // namespace kelpa::test
