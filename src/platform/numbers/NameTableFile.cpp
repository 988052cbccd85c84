#include "platform/numbers/NameTableFile.h"

#include <QFile>
#include <QSaveFile>

namespace kelpa {

std::optional<NameTable> NameTableFile::read()
{
    // The largest table there can be: each line is a number, a name in hexadecimal, a space and an
    // end; the heading and the checksum are shorter than one.
    constexpr qint64 longestLine = 2 * NameTable::longestName + 12;
    constexpr qint64 largest = longestLine * (static_cast<qint64>(NameTable::mostWindows) + 3);
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largest)
        return std::nullopt;
    return decodedNameTable(file.read(largest));
}

bool NameTableFile::write(const NameTable& table)
{
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(encodedNameTable(table));
    return file.commit();
}

} // namespace kelpa
