#include "transfer/TransferText.h"

#include "model/Text.h"

#include <QByteArrayView>
#include <QStringDecoder>

#include <algorithm>

namespace kelpa {

namespace {

constexpr QByteArrayView utf8Mark{"\xef\xbb\xbf"};
constexpr QByteArrayView utf16LittleMark{"\xff\xfe"};
constexpr QByteArrayView utf16BigMark{"\xfe\xff"};
constexpr QByteArrayView utf32LittleMark{"\xff\xfe\0\0", 4};
constexpr QByteArrayView utf32BigMark{"\0\0\xfe\xff", 4};

/// How much of a skipped line is told, in UTF-16 units.
constexpr qsizetype toldOfSkippedLine = 80;

/// Whether all that is wrong with a text in UTF-8 is that its last character is not whole. A text
/// without any other character beyond ASCII may as well be one of a code page.
bool endsWithinCharacter(QByteArrayView text)
{
    constexpr qsizetype longestRest = 3;
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    for (qsizetype rest = 1; rest <= std::min(longestRest, text.size()); ++rest) {
        const auto lead = static_cast<unsigned char>(text[text.size() - rest]);
        const QByteArrayView before = text.chopped(rest);
        if (lead >= 0xc2 && lead <= 0xf4)
            return before.isValidUtf8() && !std::ranges::all_of(before, isAscii);
        if (lead < 0x80 || lead > 0xbf)
            return false;
    }
    return false;
}

bool hasUtf32Mark(const QByteArray& bytes)
{
    return bytes.startsWith(utf32LittleMark) || bytes.startsWith(utf32BigMark);
}

/// Whether both bytes of a character may be ASCII although the character is a common one.
bool isHiragana(QChar c)
{
    return c.unicode() >= 0x3041 && c.unicode() <= 0x309f;
}

/// Whether what is behind the mark of UTF-16 are bytes of another encoding: a text of ASCII or of
/// UTF-8, or one with the other byte first. All read as far-fetched ideographs without any blank or
/// line end. `text` is what `bytes` are in UTF-16.
bool isMisread(QByteArrayView bytes, QStringView text)
{
    // Fewer characters might be meant, however unlikely they are.
    constexpr qsizetype fewest = 16;
    const auto isAscii = [](QChar c) { return c.unicode() < 0x80; };
    if (text.size() < fewest || std::ranges::any_of(text, isAscii))
        return false;
    const bool isUtf8 = bytes.isValidUtf8();
    const auto isOfText = [isUtf8](uchar byte) {
        return (byte >= 0x20 && byte < 0x7f) || byte == '\n' || byte == '\r' || byte == '\t' ||
               (isUtf8 && byte >= 0x80);
    };
    qsizetype plainBytes = 0;
    qsizetype swapped = 0;
    for (const QChar c : text) {
        if (!isHiragana(c))
            plainBytes += (isOfText(c.row()) ? 1 : 0) + (isOfText(c.cell()) ? 1 : 0);
        swapped += c.cell() == 0 ? 1 : 0;
    }
    // A tenth may be anything.
    return plainBytes >= 2 * text.size() * 9 / 10 || swapped >= text.size() * 9 / 10;
}

std::variant<QString, ImportRefusal> textOfUtf16(QByteArrayView bytes)
{
    // Half a unit at the end is left of a file that was cut off; the decoder would wait for more.
    const bool isHalved = bytes.size() % 2 != 0;
    QStringDecoder decoder(QStringDecoder::Utf16, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes.chopped(isHalved ? 1 : 0));
    const bool endsWithinCharacter = !text.isEmpty() && text.back().isHighSurrogate();
    const QStringView whole = QStringView(text).chopped(endsWithinCharacter ? 1 : 0);
    // The decoder lets single surrogates pass.
    if (decoder.hasError() || !whole.isValidUtf16() ||
        isMisread(bytes.sliced(utf16LittleMark.size()), whole))
        return ImportRefusal::wrongEncoding;
    if (isHalved || endsWithinCharacter)
        return ImportRefusal::cutOff;
    return text;
}

std::variant<QString, ImportRefusal> textOfUtf8(QByteArrayView bytes)
{
    if (bytes.startsWith(utf8Mark))
        bytes = bytes.sliced(utf8Mark.size());
    if (!bytes.isValidUtf8())
        return endsWithinCharacter(bytes) ? ImportRefusal::cutOff : ImportRefusal::wrongEncoding;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(bytes);
    if (decoder.hasError())
        return ImportRefusal::wrongEncoding;
    return text;
}

} // namespace

bool hasUtf16Mark(const QByteArray& bytes)
{
    return !hasUtf32Mark(bytes) &&
           (bytes.startsWith(utf16LittleMark) || bytes.startsWith(utf16BigMark));
}

std::variant<QString, ImportRefusal> textOfFile(const QByteArray& bytes)
{
    if (bytes.size() > largestImport)
        return ImportRefusal::tooLarge;
    if (hasUtf32Mark(bytes))
        return ImportRefusal::wrongEncoding;
    auto result = hasUtf16Mark(bytes) ? textOfUtf16(bytes) : textOfUtf8(bytes);
    if (std::holds_alternative<ImportRefusal>(result))
        return result;
    const QString& text = std::get<QString>(result);
    if (text.contains(QChar(QChar::Null)))
        return ImportRefusal::wrongEncoding;
    if (QStringView(text).trimmed().isEmpty())
        return ImportRefusal::empty;
    return result;
}

std::optional<QStringView> LineReader::next()
{
    if (m_rest.isEmpty())
        return std::nullopt;
    ++m_number;
    qsizetype end = 0;
    while (end < m_rest.size() && m_rest[end] != u'\n' && m_rest[end] != u'\r')
        ++end;
    const QStringView line = m_rest.first(end);
    if (m_rest.sliced(end).startsWith(u"\r\n"))
        ++end;
    m_rest = end < m_rest.size() ? m_rest.sliced(end + 1) : QStringView();
    return line;
}

void skip(ImportedBoard& board, qsizetype line, QStringView text, SkipReason reason)
{
    ++board.skippedCount;
    if (board.skipped.size() >= mostListedSkippedLines) {
        // A reader may learn of a line only by what follows.
        const auto last = std::ranges::max_element(board.skipped, {}, &SkippedLine::line);
        if (last->line <= line)
            return;
        board.skipped.erase(last);
    }
    // A little more, so that a cut-off text is seen to be cut off.
    const QString start =
        text.trimmed().first(std::min(text.trimmed().size(), 2 * toldOfSkippedLine)).toString();
    QString told = singleLine(beginning(start, toldOfSkippedLine));
    if (told.size() < start.size())
        told.append(u'\u2026');
    board.skipped.append({line, told, reason});
}

} // namespace kelpa
