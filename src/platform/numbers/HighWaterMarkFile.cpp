#include "platform/numbers/HighWaterMarkFile.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kelpa {

namespace {

/// The greatest of `given` that may be believed; 0 when there is none.
WindowID greatestBelieved(const std::set<WindowID>& given)
{
    const auto above = given.upper_bound(greatestBelievedWindow);
    return above == given.begin() ? 0 : *std::prev(above);
}

} // namespace

HighWaterMarkFile::HighWaterMarkFile(QString path, const std::set<WindowID>& given)
    : m_path(std::move(path)), m_leastMark(greatestBelieved(given))
{}

WindowID HighWaterMarkFile::read() const
{
    constexpr qint64 longestNumber = 16;
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return m_leastMark;
    const WindowID stored = file.read(longestNumber).trimmed().toUInt();
    return stored > greatestBelievedWindow ? m_leastMark : std::max(m_leastMark, stored);
}

bool HighWaterMarkFile::reserve(WindowID upTo)
{
    // The file may have become readable only after the start, with a disk that was mounted late.
    const WindowID number = std::max(upTo, read());
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(QByteArray::number(number) + '\n');
    return file.commit();
}

} // namespace kelpa
