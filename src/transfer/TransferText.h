// The text of a file that is imported: its encoding, and its lines.
#pragma once

#include "transfer/ImportedBoard.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>
#include <variant>

namespace kelpa {

/// Whether a file begins with the byte order mark of UTF-16.
bool hasUtf16Mark(const QByteArray& bytes);

/// The text of a file in UTF-8, or in UTF-16 with a byte order mark, which is left out. Refuses
/// files that are empty or too large, and bytes of another encoding.
std::variant<QString, ImportRefusal> textOfFile(const QByteArray& bytes);

/// Walks through the lines of a text, which end with LF, CR LF or CR.
class LineReader
{
public:
    /// `text` outlives this.
    explicit LineReader(QStringView text) : m_rest(text) {}

    /// The next line without its end; absent after the last one. A line end at the end of the text
    /// begins no other line.
    std::optional<QStringView> next();
    /// Of the line that `next` returned last, from 1; 0 before.
    qsizetype number() const { return m_number; }

private:
    QStringView m_rest;
    qsizetype m_number = 0;
};

/// Notes that a line of the file was left out.
void skip(ImportedBoard& board, qsizetype line, QStringView text, SkipReason reason);

} // namespace kelpa
