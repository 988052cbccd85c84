#include "model/JsonReading.h"

#include <QStringDecoder>

#include <cmath>

namespace kelpa {

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
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag;
    constexpr QByteArrayView byteOrderMark{"\xef\xbb\xbf"};
    const bool hasByteOrderMark = m_bytes.startsWith(byteOrderMark);
    m_document.ParseInsitu<flags>(m_bytes.data() + (hasByteOrderMark ? byteOrderMark.size() : 0));
    m_isParsed = !m_document.HasParseError();
}

} // namespace kelpa
