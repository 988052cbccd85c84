#include "platform/x11/connection/PropertyText.h"

#include "model/DirectionalNesting.h"

#include <QChar>

namespace kelpa::x11 {

namespace {

bool isBreak(char16_t unit)
{
    return (unit >= u'\t' && unit <= u'\r') || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

} // namespace

QString harmlessText(const QString& text)
{
    QString result;
    result.reserve(text.size());
    DirectionalNesting nesting(DirectionalNesting::Overrides::dropped);
    for (const QChar character : text) {
        const char16_t unit = character.unicode();
        if (isBreak(unit)) {
            result += QLatin1Char(' ');
        } else if (DirectionalNesting::isControl(unit)) {
            if (nesting.keeps(unit))
                result += character;
        } else if (character.category() != QChar::Other_Control) {
            result += character;
        }
    }
    return result + nesting.closers();
}

QByteArrayView withoutPartialCharacter(QByteArrayView bytes)
{
    const auto byteAt = [&](qsizetype index) { return static_cast<unsigned char>(bytes[index]); };
    const qsizetype end = bytes.size();
    for (qsizetype back = 1; back <= 3 && back <= end; ++back) {
        const unsigned char byte = byteAt(end - back);
        if ((byte & 0xC0U) == 0x80U)
            continue;
        const int length = byte >= 0xF0U ? 4 : byte >= 0xE0U ? 3 : byte >= 0xC0U ? 2 : 1;
        return length > back ? bytes.first(end - back) : bytes;
    }
    return bytes;
}

namespace {

/// Compound text begins with ASCII in the left half of the code table and Latin-1 in the right one;
/// escape sequences designate other character sets.
class CompoundTextReader
{
public:
    explicit CompoundTextReader(QByteArrayView bytes) : m_bytes(bytes) {}

    QString read()
    {
        while (m_at < m_bytes.size()) {
            const auto byte = static_cast<unsigned char>(m_bytes[m_at]);
            if (byte == escape) {
                readEscape();
            } else if (byte == sequenceIntroducer) {
                skipDirection();
            } else {
                take(byte);
                ++m_at;
            }
        }
        return m_text;
    }

private:
    static constexpr unsigned char escape = 0x1B;
    static constexpr unsigned char sequenceIntroducer = 0x9B;

    void take(unsigned char byte)
    {
        const bool isControl = byte < 0x21U || (byte >= 0x7FU && byte < 0xA0U);
        if (isControl || (byte < 0x80U ? m_isLeftAscii : m_isRightLatin1)) {
            m_text += QLatin1Char(static_cast<char>(byte));
            m_isInUnknown = false;
        } else if (!m_isInUnknown) {
            m_text += QChar(QChar::ReplacementCharacter);
            m_isInUnknown = true;
        }
    }

    void readEscape()
    {
        const QByteArrayView rest = m_bytes.sliced(m_at + 1);
        if (rest.startsWith("%G")) {
            readUtf8(m_at + 3);
            return;
        }
        // Intermediate bytes, then one final byte that names the character set.
        qsizetype length = 0;
        while (length < rest.size() && rest[length] >= 0x20 && rest[length] <= 0x2F)
            ++length;
        const QByteArrayView intermediate = rest.first(length);
        const char final = length < rest.size() ? rest[length] : '\0';
        m_at += length + 2;
        if (intermediate == "(" || intermediate == "$(") {
            m_isLeftAscii = intermediate == "(" && (final == 'B' || final == 'J');
        } else if (intermediate == "-" || intermediate == ")" || intermediate == "$)") {
            m_isRightLatin1 = intermediate == "-" && final == 'A';
        } else if (intermediate == "%/") {
            skipExtendedSegment();
        }
        m_at = std::min(m_at, m_bytes.size());
    }

    void readUtf8(qsizetype begin)
    {
        begin = std::min(begin, m_bytes.size());
        const qsizetype end = m_bytes.indexOf("\x1B%@", begin);
        const QByteArrayView segment =
            m_bytes.sliced(begin, (end < 0 ? m_bytes.size() : end) - begin);
        m_text += QString::fromUtf8(segment);
        m_at = end < 0 ? m_bytes.size() : end + 3;
        m_isInUnknown = false;
    }

    /// Skips a segment of a named encoding: two bytes of length, each with its top bit set, and the
    /// text.
    void skipExtendedSegment()
    {
        if (m_at + 2 > m_bytes.size()) {
            m_at = m_bytes.size();
            return;
        }
        const auto high = static_cast<unsigned char>(m_bytes[m_at]) & 0x7FU;
        const auto low = static_cast<unsigned char>(m_bytes[m_at + 1]) & 0x7FU;
        m_at += 2 + static_cast<qsizetype>(high * 128U + low);
        m_text += QChar(QChar::ReplacementCharacter);
        m_isInUnknown = false;
    }

    /// Skips CSI, parameters and `]`: a change of direction, which carries no text.
    void skipDirection()
    {
        ++m_at;
        while (m_at < m_bytes.size() && m_bytes[m_at] >= 0x30 && m_bytes[m_at] <= 0x3F)
            ++m_at;
        if (m_at < m_bytes.size() && m_bytes[m_at] == ']')
            ++m_at;
    }

    QByteArrayView m_bytes;
    qsizetype m_at = 0;
    QString m_text;
    bool m_isLeftAscii = true;
    bool m_isRightLatin1 = true;
    bool m_isInUnknown = false;
};

} // namespace

QString fromCompoundText(QByteArrayView bytes)
{
    return CompoundTextReader(bytes).read();
}

} // namespace kelpa::x11
