#include "model/JsonText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace kelpa {

namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";

/// The most bytes that one UTF-16 unit takes: "\u001F". A surrogate pair takes four.
constexpr qsizetype maxBytesPerUnit = 6;
/// The quotation marks around a string.
constexpr qsizetype quotes = 2;
constexpr qsizetype uuidLength = 36;
/// "-9223372036854775808" and the longest shortest form of a double, "-2.2250738585072014e-308".
constexpr qsizetype maxNumberLength = 32;

char* writeEscaped(char* out, char16_t control)
{
    *out++ = '\\';
    switch (control) {
    case u'"':
    case u'\\':
        *out++ = static_cast<char>(control);
        return out;
    case u'\n':
        *out++ = 'n';
        return out;
    case u'\r':
        *out++ = 'r';
        return out;
    case u'\t':
        *out++ = 't';
        return out;
    default:
        out = std::copy_n("u00", 3, out);
        *out++ = hexDigits[control >> 4];
        *out++ = hexDigits[control & 0xf];
        return out;
    }
}

char* writeUtf8(char* out, char32_t c)
{
    const auto tail = [c](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3f)); };
    if (c < 0x800) {
        *out++ = static_cast<char>(0xc0 | (c >> 6));
    } else if (c < 0x10000) {
        *out++ = static_cast<char>(0xe0 | (c >> 12));
        *out++ = tail(6);
    } else {
        *out++ = static_cast<char>(0xf0 | (c >> 18));
        *out++ = tail(12);
        *out++ = tail(6);
    }
    *out++ = tail(0);
    return out;
}

} // namespace

JsonText::JsonText(qsizetype expectedSize) : m_bytes(expectedSize, Qt::Uninitialized) {}

char* JsonText::room(qsizetype size)
{
    if (m_bytes.size() - m_size < size)
        m_bytes.resize(std::max(m_bytes.size() * 2, m_size + size));
    return m_bytes.data() + m_size;
}

void JsonText::advanceTo(const char* end)
{
    m_size = end - m_bytes.constData();
}

void JsonText::raw(std::string_view json)
{
    char* const out = room(static_cast<qsizetype>(json.size()));
    advanceTo(std::copy(json.begin(), json.end(), out));
}

void JsonText::string(QStringView text)
{
    char* out = room(text.size() * maxBytesPerUnit + quotes);
    *out++ = '"';
    const char16_t* const end = text.utf16() + text.size();
    for (const char16_t* in = text.utf16(); in != end; ++in) {
        const char16_t unit = *in;
        if (unit < 0x80) {
            if (unit < 0x20 || unit == u'"' || unit == u'\\')
                out = writeEscaped(out, unit);
            else
                *out++ = static_cast<char>(unit);
        } else if (!QChar::isSurrogate(unit)) {
            out = writeUtf8(out, unit);
        } else if (QChar::isHighSurrogate(unit) && in + 1 != end && QChar::isLowSurrogate(in[1])) {
            out = writeUtf8(out, QChar::surrogateToUcs4(unit, *++in));
        } else {
            out = writeUtf8(out, QChar::ReplacementCharacter);
        }
    }
    *out++ = '"';
    advanceTo(out);
}

void JsonText::uuid(const QUuid& uuid)
{
    char* out = room(uuidLength + quotes);
    const auto hex = [&out](std::uint32_t value, int digits) {
        for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
            *out++ = hexDigits[(value >> shift) & 0xf];
    };
    *out++ = '"';
    hex(uuid.data1, 8);
    *out++ = '-';
    hex(uuid.data2, 4);
    *out++ = '-';
    hex(uuid.data3, 4);
    *out++ = '-';
    for (int i = 0; i < 8; ++i) {
        if (i == 2)
            *out++ = '-';
        hex(uuid.data4[i], 2);
    }
    *out++ = '"';
    advanceTo(out);
}

void JsonText::integer(std::int64_t number)
{
    char* const out = room(maxNumberLength);
    advanceTo(std::to_chars(out, out + maxNumberLength, number).ptr);
}

void JsonText::number(double number)
{
    Q_ASSERT(std::isfinite(number));
    char* const out = room(maxNumberLength);
    advanceTo(std::to_chars(out, out + maxNumberLength, number).ptr);
}

void JsonText::padTo(qsizetype multiple)
{
    const qsizetype missing = (multiple - m_size % multiple) % multiple;
    char* const out = room(missing);
    advanceTo(std::fill_n(out, missing, ' '));
}

void JsonText::close(char bracket)
{
    if (m_size > 0 && m_bytes.at(m_size - 1) == ',')
        --m_size;
    raw({&bracket, 1});
}

QByteArray JsonText::take()
{
    m_bytes.truncate(std::exchange(m_size, 0));
    return std::exchange(m_bytes, {});
}

} // namespace kelpa
