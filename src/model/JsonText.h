// Writes JSON (UTF-8, without white space unless it is asked for) directly into one byte array. A
// board is written at every change, so ten thousand todos must take a small part of a frame.
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
    /// `expectedSize` in bytes; the array grows beyond it when necessary.
    explicit JsonText(qsizetype expectedSize);

    /// Appends text that already is JSON: punctuation, member names.
    void raw(std::string_view json);
    /// An escaped string; an unpaired surrogate becomes U+FFFD.
    void string(QStringView text);
    /// A string: 36 characters, upper case, hyphenated.
    void uuid(const QUuid& uuid);
    void integer(std::int64_t number);
    /// The shortest text that reads back as the same double; `number` must be finite.
    void number(double number);
    /// Spaces until the size is a multiple of `multiple`.
    void padTo(qsizetype multiple);
    /// Removes the comma after the last element, if there is one, and writes `bracket`.
    void close(char bracket);

    QByteArray take();

private:
    /// Makes room for `size` more bytes; `advanceTo` gives back the unused ones.
    char* room(qsizetype size);
    void advanceTo(const char* end);

    QByteArray m_bytes;
    qsizetype m_size = 0;
};

} // namespace kelpa
