#include "NumberFloorFile.h"

#include <QFile>
#include <QSaveFile>

#include <utility>

namespace kelpa {

NumberFloorFile::NumberFloorFile(QString path) : m_path(std::move(path)) {}

WindowID NumberFloorFile::floor() const
{
    constexpr qint64 longestNumber = 16;
    QFile file(m_path);
    return file.open(QIODevice::ReadOnly) ? file.read(longestNumber).trimmed().toUInt() : 0;
}

bool NumberFloorFile::reserve(WindowID upTo)
{
    QSaveFile file(m_path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QByteArray::number(upTo) + '\n');
        file.commit();
    }
    return true;
}

} // namespace kelpa
