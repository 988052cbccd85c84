// Writes JSON, UTF-8 without white space, straight into one array of bytes: a board is written
// whenever it changes, so ten thousand todos have to take a small part of a frame.
#pragma once

#include <QByteArray>
#include <QStringView>
#include <QUuid>

#include <cstdint>
#include <string_view>

namespace kelpa {

class JsonText
{
public:
    /// `expectedSize` in bytes; more is made room for when it is needed.
    explicit JsonText(qsizetype expectedSize);

    /// Punctuation, member names: text that is JSON already.
    void raw(std::string_view json);
    /// A string with what must be escaped escaped; a half of a surrogate pair becomes U+FFFD.
    void string(QStringView text);
    /// A string: 36 characters, upper case, hyphenated.
    void uuid(const QUuid& uuid);
    void integer(std::int64_t number);
    /// The shortest text that reads back as the same double; `number` must be finite.
    void number(double number);
    /// Takes back the comma after the last element, if there is one, and writes `bracket`.
    void close(char bracket);

    QByteArray take();

private:
    /// Room for `size` more bytes; what is not used is given back by `advanceTo`.
    char* room(qsizetype size);
    void advanceTo(const char* end);

    QByteArray m_bytes;
    qsizetype m_size = 0;
};

} // namespace kelpa
