// Reads the values of a JSON document strictly: what is not exactly of the expected form is absent.
// For the sources beside it.
#pragma once

#include <QByteArray>
#include <QString>

#include <rapidjson/document.h>

#include <cstdint>
#include <optional>

namespace kelpa {

using Json = rapidjson::Value;

/// The member `key` of `object`; null when it is absent or JSON null.
const Json* member(const Json& object, const char* key);

/// Absent where there is no value, or none that is a text.
std::optional<QString> toText(const Json* value);

/// Integers in any notation (5, 5.0, 5e0) that name a signed 64-bit integer exactly.
std::optional<std::int64_t> toInteger(const Json& value);

/// A parsed document. Rejects invalid UTF-8.
class JsonDocument
{
public:
    explicit JsonDocument(const QByteArray& json);

    /// Null where the text is no JSON.
    const Json* root() const { return m_isParsed ? &m_document : nullptr; }

private:
    /// The texts of the document are parts of it.
    QByteArray m_bytes;
    rapidjson::Document m_document;
    bool m_isParsed = false;
};

} // namespace kelpa
