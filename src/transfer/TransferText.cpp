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

} // namespace

bool hasUtf16Mark(const QByteArray& bytes)
{
    return bytes.startsWith(utf16LittleMark) || bytes.startsWith(utf16BigMark);
}

std::variant<QString, ImportRefusal> textOfFile(const QByteArray& bytes)
{
    if (bytes.size() > largestImport)
        return ImportRefusal::tooLarge;
    const bool isUtf16 = hasUtf16Mark(bytes);
    // Half a unit at the end is left of a file that was cut off; the decoder would wait for more.
    if (isUtf16 && bytes.size() % 2 != 0)
        return ImportRefusal::cutOff;
    QByteArrayView content(bytes);
    if (bytes.startsWith(utf8Mark))
        content = content.sliced(utf8Mark.size());
    if (!isUtf16 && !content.isValidUtf8())
        return endsWithinCharacter(content) ? ImportRefusal::cutOff : ImportRefusal::wrongEncoding;
    QStringDecoder decoder(isUtf16 ? QStringDecoder::Utf16 : QStringDecoder::Utf8,
                           isUtf16 ? QStringDecoder::Flag::Stateless
                                   : QStringDecoder::Flag::Stateless |
                                         QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(content);
    if (decoder.hasError() || text.contains(QChar(QChar::Null)))
        return ImportRefusal::wrongEncoding;
    if (QStringView(text).trimmed().isEmpty())
        return ImportRefusal::empty;
    return text;
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
    if (board.skipped.size() >= mostListedSkippedLines)
        return;
    // A little more, so that a cut-off text is seen to be cut off.
    const QString start =
        text.trimmed().first(std::min(text.trimmed().size(), 2 * toldOfSkippedLine)).toString();
    QString told = singleLine(beginning(start, toldOfSkippedLine));
    if (told.size() < start.size())
        told.append(u'\u2026');
    board.skipped.append({line, told, reason});
}

} // namespace kelpa
