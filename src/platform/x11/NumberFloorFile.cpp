#include "platform/x11/NumberFloorFile.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <utility>

namespace kelpa::x11 {

NumberFloorFile::NumberFloorFile(QString path, WindowID leastFloor)
    : m_path(std::move(path)), m_leastFloor(leastFloor)
{}

WindowID NumberFloorFile::floor() const
{
    constexpr qint64 longestNumber = 16;
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return m_leastFloor;
    return std::max(m_leastFloor, file.read(longestNumber).trimmed().toUInt());
}

bool NumberFloorFile::reserve(WindowID upTo)
{
    // A folder that came late, with its disk, may hold a greater one than was found at the start.
    const WindowID number = std::max(upTo, floor());
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    file.write(QByteArray::number(number) + '\n');
    return file.commit();
}

} // namespace kelpa::x11
