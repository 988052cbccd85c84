#include "model/JsonReading.h"

#include <QStringDecoder>

#include <rapidjson/reader.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace kelpa {

namespace {

/// Whether the absolute value of a number other than zero is at least 1.
bool isLarge(std::string_view number)
{
    const std::size_t e = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, e);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = mantissa.find_first_of("123456789");
    // Powers of ten by which the first digit that counts lies before the point, or behind it.
    const std::int64_t place = first < point ? static_cast<std::int64_t>(point - first) - 1
                                             : -static_cast<std::int64_t>(first - point);
    std::string_view exponent = number.substr(std::min(e + 1, number.size()));
    if (exponent.starts_with('+'))
        exponent.remove_prefix(1);
    std::int64_t power = 0;
    if (std::from_chars(exponent.data(), exponent.data() + exponent.size(), power).ec ==
        std::errc::result_out_of_range)
        return !exponent.starts_with('-');
    return power >= -place;
}

/// Hands on to a document what the parser reads, with numbers as values. The parser's own
/// conversion to full precision counts the leading zero bits of a zero that has an exponent
/// (0e0119), which is undefined, shifts by that count, and may read another number.
class ValuesOfText
    : public rapidjson::BaseReaderHandler<rapidjson::Document::EncodingType, ValuesOfText>
{
public:
    using Length = rapidjson::SizeType;

    explicit ValuesOfText(rapidjson::Document& document) : m_document(document) {}

    bool Null() { return m_document.Null(); }
    bool Bool(bool value) { return m_document.Bool(value); }
    bool String(const char* text, Length length, bool isCopied)
    {
        return m_document.String(text, length, isCopied);
    }
    bool Key(const char* text, Length length, bool isCopied)
    {
        return m_document.Key(text, length, isCopied);
    }
    bool StartObject() { return m_document.StartObject(); }
    bool EndObject(Length count) { return m_document.EndObject(count); }
    bool StartArray() { return m_document.StartArray(); }
    bool EndArray(Length count) { return m_document.EndArray(count); }

    /// Any number that the grammar allows but those that the parser itself refuses: with an
    /// exponent beyond 308 and one more for each digit after the point, even of a zero (0e309).
    /// False, which ends the parsing, for one that is too large.
    bool RawNumber(const char* text, Length length, bool /*isCopied*/)
    {
        const char* const end = text + length;
        std::int64_t integer = 0;
        if (std::from_chars(text, end, integer) == std::from_chars_result{end, std::errc()})
            return m_document.Int64(integer);
        double number = 0;
        if (std::from_chars(text, end, number).ec == std::errc::result_out_of_range) {
            if (isLarge({text, length}))
                return false;
            number = 0; // nearer to zero than any other that there is
        }
        return m_document.Double(number);
    }

private:
    rapidjson::Document& m_document;
};

} // namespace

const Json* member(const Json& object, const char* key)
{
    const auto found = object.FindMember(key);
    if (found == object.MemberEnd() || found->value.IsNull())
        return nullptr;
    return &found->value;
}

std::optional<QString> toText(const Json* value)
{
    if (value == nullptr || !value->IsString())
        return std::nullopt;
    // Keeps a byte order mark as a character, so that every text reads back as written.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom |
                                                     QStringDecoder::Flag::Stateless);
    QString text = decoder(
        QByteArrayView(value->GetString(), static_cast<qsizetype>(value->GetStringLength())));
    // The parser accepts the escape of an unpaired surrogate.
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

std::optional<std::int64_t> toInteger(const Json& value)
{
    if (value.IsInt64())
        return value.GetInt64();
    if (!value.IsDouble())
        return std::nullopt;
    const double number = value.GetDouble();
    // The parser also gives a double for integers beyond 64 bits, and those just below the smallest
    // 64-bit integer round to it.
    constexpr double limit = 9'223'372'036'854'775'808.0; // 2^63
    if (number <= -limit || number >= limit || std::trunc(number) != number)
        return std::nullopt;
    return static_cast<std::int64_t>(number);
}

JsonDocument::JsonDocument(const QByteArray& json) : m_bytes(json)
{
    // The parser takes a NUL for the end and ignores what follows.
    if (m_bytes.contains('\0') || !QByteArrayView(m_bytes).isValidUtf8())
        return;
    // Iteratively, so that deep nesting cannot exhaust the stack; and in place, without checking
    // each character again: a text of some megabytes takes a third of the time.
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseInsituFlag |
                               rapidjson::kParseNumbersAsStringsFlag;
    constexpr QByteArrayView byteOrderMark{"\xef\xbb\xbf"};
    const bool hasByteOrderMark = m_bytes.startsWith(byteOrderMark);
    rapidjson::InsituStringStream text(m_bytes.data() +
                                       (hasByteOrderMark ? byteOrderMark.size() : 0));
    rapidjson::Reader parser;
    const auto values = [&](rapidjson::Document& document) {
        ValuesOfText handler(document);
        m_isParsed = !parser.Parse<flags>(text, handler).IsError();
        return m_isParsed;
    };
    m_document.Populate(values);
}

} // namespace kelpa
