// Files that nobody should have written: every format refuses them, or reads what is there.
#include "support/BoardBuilders.h"
#include "support/Seed.h"
#include "transfer/ReadingFixture.h"

#include <QStringEncoder>

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

/// The bytes of a text in UTF-16 or UTF-32, behind a mark.
QByteArray encoded(QStringConverter::Encoding encoding, const QString& text)
{
    QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
    return encoder.encode(text);
}

TEST_P(HostileImport, Is_refused_where_a_mark_of_utf_16_is_before_something_else)
{
    const QString text = QString::fromUtf8(file() + file() + file());
    for (const bool isLittle : {true, false}) {
        SCOPED_TRACE(isLittle);
        const QByteArray mark = isLittle ? "\xff\xfe" : "\xfe\xff";
        const auto encoding = isLittle ? QStringConverter::Utf16LE : QStringConverter::Utf16BE;
        const QByteArray whole = encoded(encoding, text);
        EXPECT_EQ(refusal(mark), empty);
        // A text of bytes, of even length and of odd.
        const QByteArray ascii = text.toUtf8().replace("\xf0\x9f\xa5\x9b", "gl");
        EXPECT_EQ(refusal(mark + ascii), wrongEncoding);
        EXPECT_EQ(refusal(mark + ascii + "a"), wrongEncoding);
        // The other byte first.
        const auto other = isLittle ? QStringConverter::Utf16BE : QStringConverter::Utf16LE;
        EXPECT_EQ(refusal(mark + encoded(other, text).sliced(2)), wrongEncoding);
        // A half of a pair of surrogates, a second one, and the two in the wrong sequence.
        for (const char16_t* const bad : {u"a\xd83e b",
                                          u"a \xdd5b"
                                          u"b",
                                          u"\xdd5b\xd83e b"}) {
            const QString broken = text + QString::fromUtf16(bad) + u'\n';
            QByteArray bytes = mark;
            for (const QChar c : broken) {
                const char low = static_cast<char>(c.cell());
                const char high = static_cast<char>(c.row());
                bytes.append(isLittle ? low : high).append(isLittle ? high : low);
            }
            EXPECT_EQ(refusal(bytes), wrongEncoding);
        }
        // Cut off within a unit, and between the units of a character.
        EXPECT_EQ(refusal(whole.chopped(1)), cutOff);
        const QByteArray milk = encoded(encoding, text + QStringLiteral("\U0001F95B"));
        EXPECT_EQ(refusal(milk.chopped(1)), cutOff);
        EXPECT_EQ(refusal(milk.chopped(2)), cutOff);
        EXPECT_EQ(refusal(milk.chopped(3)), cutOff);
    }
}

TEST_P(HostileImport, Is_refused_in_utf_32)
{
    const QString text = QString::fromUtf8(file());
    for (const auto encoding : {QStringConverter::Utf32LE, QStringConverter::Utf32BE}) {
        const QByteArray whole = encoded(encoding, text);
        for (qsizetype chopped = 0; chopped < 8; ++chopped)
            EXPECT_EQ(refusal(whole.chopped(chopped)), wrongEncoding) << chopped;
        EXPECT_EQ(refusal(whole.first(4)), wrongEncoding);
    }
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

TEST(HostileText, Ideographs_in_utf_16_are_read_although_no_byte_of_them_is_a_line_end)
{
    const QString one =
        QStringLiteral("\u7ed9\u5ba2\u6237\u56de\u4fe1\u786e\u8ba4\u7b2c\u4e09\u53f7"
                       "\u62a5\u4ef7\u5355\u7684\u4ea4\u4ed8\u65e5\u671f");
    for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
        EXPECT_EQ(linesOf(boardOf(TransferFormat::todoTxt, encoded(encoding, one))),
                  (Lines{"-", "todo " + one.toStdString()}));
    }
}

TEST(HostileText, Hiragana_in_utf_16_is_read_although_both_bytes_of_it_may_be_ascii)
{
    for (const char* const title :
         {"\u3042\u3057\u305f\u306e\u3042\u3055\u306b\u305f\u307e\u3054\u3068\u304e\u3085\u3046"
          "\u306b\u3085\u3046\u3092\u304b\u3046",
          "\u3046\u3061\u306e\u3044\u306c\u306e\u3048\u3055\u3068\u304a\u304b\u3057\u3092\u304b"
          "\u3044\u306b\u3044\u304f",
          // With one ideograph whose bytes are a character of UTF-8 too.
          "\u304d\u3087\u3046\u306e\u304a\u304b\u305a\u306b\u91ce\u3055\u3044\u306e\u306b\u3057"
          "\u3081\u3055\u3044\u3068"}) {
        for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE})
            EXPECT_EQ(linesOf(boardOf(TransferFormat::todoTxt,
                                      encoded(encoding, QString::fromUtf8(title)))),
                      (Lines{"-", std::string("todo ") + title}));
    }
}

TEST(HostileText, A_mark_of_utf_16_before_utf_8_is_refused)
{
    const QByteArray japanese = QByteArray("\u660e\u65e5\u306e\u671d\u306b\u5375\u3068\u725b\u4e73"
                                           "\u3092\u8cb7\u3046\n")
                                    .repeated(4);
    const QByteArray german = QByteArray("M\u00fcll f\u00fcr \u00d6l\u00f6fen\n").repeated(4);
    for (const QByteArray& text : {japanese, german}) {
        for (const QByteArray& mark : {QByteArray("\xff\xfe"), QByteArray("\xfe\xff")})
            EXPECT_EQ(refusalOf(TransferFormat::todoTxt, mark + text), wrongEncoding);
    }
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
