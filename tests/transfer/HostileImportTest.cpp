// Files that nobody should have written: every format refuses them, or reads what is there.
#include "support/BoardBuilders.h"
#include "support/Seed.h"
#include "transfer/ReadingFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace kelpa::test {
namespace {

using enum ImportRefusal;

class HostileImport : public testing::TestWithParam<TransferFormat>
{
protected:
    static std::optional<ImportRefusal> refusal(const QByteArray& bytes)
    {
        return refusalOf(GetParam(), bytes);
    }
    /// A small file of the format, with a goal and two todos.
    static QByteArray file()
    {
        return bytesOf(GetParam(),
                       {goal(QStringLiteral("Taxes"), {todo(QStringLiteral("Receipts"))})},
                       {todo(QStringLiteral("Milk \U0001F95B"), 1)}, transferClock);
    }
};

TEST_P(HostileImport, Is_refused_where_it_is_empty)
{
    EXPECT_EQ(refusal({}), empty);
    EXPECT_EQ(refusal(" \r\n\t\n"), empty);
    EXPECT_EQ(refusal("\xef\xbb\xbf"), empty);
}

TEST_P(HostileImport, Is_refused_in_other_encodings)
{
    EXPECT_EQ(refusal(file() + "caf\xe9\n"), wrongEncoding);
    EXPECT_EQ(refusal(file() + '\0'), wrongEncoding);
    EXPECT_EQ(refusal(QByteArray("\x89PNG\r\n\x1a\n", 8)), wrongEncoding);
    EXPECT_EQ(refusal("\x1f\x8b\x08"), wrongEncoding);
    // Without a mark nobody can tell it from Latin text with zeros.
    EXPECT_EQ(refusal(QByteArray("-\0 \0a\0\n\0", 8)), wrongEncoding);
}

TEST_P(HostileImport, Is_cut_off_where_it_ends_within_a_character)
{
    const QByteArray whole = file() + "caf\xc3\xa9 \xf0\x9f\xa5\x9b";
    for (qsizetype chopped = 1; chopped < 4; ++chopped)
        EXPECT_EQ(refusal(whole.chopped(chopped)), cutOff) << chopped;
    // As in a code page, of which nobody knows which one it is.
    EXPECT_EQ(refusal("caf\xe9"), wrongEncoding);
    EXPECT_EQ(refusal(file() + "caf\xe9 x"), wrongEncoding);
}

TEST_P(HostileImport, May_be_utf_16_with_a_mark)
{
    const QString text = QString::fromUtf8(file());
    QByteArray little("\xff\xfe");
    QByteArray big("\xfe\xff");
    for (const QChar c : text) {
        little.append(static_cast<char>(c.cell())).append(static_cast<char>(c.row()));
        big.append(static_cast<char>(c.row())).append(static_cast<char>(c.cell()));
    }
    const Lines lines = linesOf(boardOf(GetParam(), file()));
    EXPECT_EQ(lines.size(), 4);
    EXPECT_EQ(linesOf(boardOf(GetParam(), little)), lines);
    EXPECT_EQ(linesOf(boardOf(GetParam(), big)), lines);
    EXPECT_EQ(linesOf(boardOf(GetParam(), "\xef\xbb\xbf" + file())), lines);
    EXPECT_EQ(refusal(little.chopped(1)), cutOff);
}

TEST_P(HostileImport, Is_refused_where_it_is_too_large)
{
    EXPECT_EQ(refusal(QByteArray(largestImport + 1, ' ')), tooLarge);
}

TEST_P(HostileImport, Keeps_a_line_of_a_megabyte)
{
    const QString title = QString(1'000'000, u'a');
    const QByteArray bytes = bytesOf(GetParam(), {}, {todo(title)}, transferClock);
    const ImportResult result = readImport(bytes, GetParam(), transferClock);
    ASSERT_TRUE(std::holds_alternative<ImportedBoard>(result));
    EXPECT_EQ(std::get<ImportedBoard>(result).todosWithoutGoal.value(0).title, title);
}

TEST_P(HostileImport, Survives_damage)
{
    const std::uint64_t number = seed();
    SCOPED_TRACE(seedText(number));
    std::mt19937_64 random(number);
    const QByteArray whole = file() + file();
    const QByteArray marks = "\n\r#-*[]x:;\\\"{}()+~`<>!= \t0A\xe2";
    for (int round = 0; round < 3000; ++round) {
        QByteArray bytes = whole;
        for (int i = 0; i < 8; ++i) {
            const auto at =
                static_cast<qsizetype>(random() % static_cast<std::uint64_t>(bytes.size()));
            const char mark =
                marks[static_cast<qsizetype>(random() % static_cast<std::uint64_t>(marks.size()))];
            switch (random() % 3) {
            case 0:
                bytes[at] = mark;
                break;
            case 1:
                bytes.insert(at, mark);
                break;
            default:
                bytes.remove(at, 3);
            }
        }
        const ImportResult result = readImport(bytes, GetParam(), transferClock);
        if (const auto* const board = std::get_if<ImportedBoard>(&result)) {
            ASSERT_FALSE(linesOf(*board).empty());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, HostileImport, testing::ValuesIn(allTransferFormats),
                         [](const auto& row) {
                             return rawValue(row.param).remove(u'.').toStdString();
                         });

TEST(HostileCalendar, Cut_off_is_refused)
{
    const QByteArray whole =
        bytesOf(TransferFormat::iCalendar, {goal(QStringLiteral("Taxes"))}, {}, transferClock);
    for (qsizetype length = 17; length < whole.size() - 4; ++length)
        ASSERT_EQ(refusalOf(TransferFormat::iCalendar, whole.first(length)), cutOff) << length;
    EXPECT_EQ(refusalOf(TransferFormat::iCalendar, "BEGIN:VTODO\nEND:VTODO\n"), notThisFormat);
}

TEST(HostileCalendar, A_component_of_many_megabytes_is_left_out)
{
    const QByteArray text = "BEGIN:VCALENDAR\nBEGIN:VTODO\nSUMMARY:" + QByteArray(5'000'000, 'a') +
                            "\nEND:VTODO\nBEGIN:VTODO\nSUMMARY:b\nEND:VTODO\nEND:VCALENDAR\n";
    const ImportedBoard board = boardOf(TransferFormat::iCalendar, text);
    EXPECT_EQ(linesOf(board), textLines("-\ntodo b"));
    ASSERT_EQ(board.skipped.size(), 1);
    EXPECT_EQ(board.skipped[0].line, 2);
    EXPECT_EQ(board.skipped[0].reason, SkipReason::damaged);
}

TEST(HostileCalendar, Nested_a_hundred_thousand_times_is_read_past)
{
    QByteArray text = "BEGIN:VCALENDAR\n";
    for (int i = 0; i < 100'000; ++i)
        text += "BEGIN:VTODO\n";
    for (int i = 0; i < 100'000; ++i)
        text += "END:VTODO\n";
    text += "BEGIN:VTODO\nSUMMARY:a\nEND:VTODO\nEND:VCALENDAR\n";
    EXPECT_EQ(linesOf(boardOf(TransferFormat::iCalendar, text)), textLines("-\ntodo a"));
}

TEST(HostileCalendar, A_chain_of_parts_is_walked_once)
{
    QByteArray text = "BEGIN:VCALENDAR\n";
    for (int i = 1; i < 20'000; ++i) {
        const QByteArray number = QByteArray::number(i);
        text += "BEGIN:VTODO\nUID:" + number + "\nSUMMARY:" + number +
                "\nRELATED-TO:" + QByteArray::number(i - 1) + "\nEND:VTODO\n";
    }
    const ImportedBoard board = boardOf(TransferFormat::iCalendar, text + "END:VCALENDAR\n");
    ASSERT_EQ(board.goals.size(), 1);
    EXPECT_EQ(board.goals[0].todos.size(), 19'998);
}

TEST(HostileText, More_records_than_a_board_has_room_for_are_refused)
{
    for (const TransferFormat format : {TransferFormat::markdown, TransferFormat::todoTxt}) {
        EXPECT_EQ(refusalOf(format, QByteArray("- a\n").repeated(mostImportedRecords + 1)),
                  tooManyRecords);
        EXPECT_EQ(refusalOf(format, QByteArray("- a\n").repeated(mostImportedRecords)),
                  std::nullopt);
    }
}

TEST(HostileText, A_text_without_a_todo_is_nothing_to_import)
{
    EXPECT_EQ(refusalOf(TransferFormat::markdown, "Dear all,\n\nbest wishes\n"), nothingToImport);
    EXPECT_EQ(refusalOf(TransferFormat::iCalendar, "BEGIN:VCALENDAR\nEND:VCALENDAR\n"),
              nothingToImport);
}

TEST(HostileText, A_skipped_line_is_told_in_a_single_harmless_line)
{
    const QByteArray text = "- a\n\n\xe2\x80\xae" + QByteArray("word ").repeated(50) + "\n";
    const ImportedBoard board = boardOf(TransferFormat::markdown, text);
    ASSERT_EQ(board.skipped.size(), 1);
    EXPECT_LE(board.skipped[0].text.size(), 90);
    EXPECT_TRUE(board.skipped[0].text.endsWith(u'\u2026'));
    EXPECT_EQ(board.skipped[0].text.count(QChar(u'\u202c')), 1);
}

} // namespace
} // namespace kelpa::test
