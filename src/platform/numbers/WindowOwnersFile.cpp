#include "platform/numbers/WindowOwnersFile.h"

#include <QFile>
#include <QList>

#include <cstdio>
#include <limits>

namespace kelpa {

namespace {

const char* const format = "kelpa-window-owners";
constexpr int version = 1;
const char* const lastLine = "end";
/// In place of what is not known.
const char* const unknown = "-";

/// More than `WindowOwners::maxOwners` take.
constexpr qint64 longestFile = 4 << 20;

QByteArray firstLine()
{
    return QByteArray(format) + ' ' + QByteArray::number(version);
}

template <class Number>
QByteArray text(const std::optional<Number>& number)
{
    return number ? QByteArray::number(*number) : QByteArray(unknown);
}

/// False for what is no number of the type; sets `number`, which stays absent where it is unknown.
template <class Number>
bool read(const QByteArray& word, std::optional<Number>& number)
{
    if (word == unknown)
        return true;
    bool isNumber = false;
    const quint64 value = word.toULongLong(&isNumber);
    if (!isNumber || value > static_cast<quint64>(std::numeric_limits<Number>::max()))
        return false;
    number = static_cast<Number>(value);
    return true;
}

bool readOwner(const QByteArray& line, RecordedOwners& owners)
{
    const QList<QByteArray> words = line.split(' ');
    if (words.size() != 5)
        return false;
    std::optional<WindowID> number;
    std::optional<std::uint32_t> window;
    WindowOwner owner;
    if (!read(words[0], number) || !read(words[1], window) || !read(words[2], owner.process) ||
        !read(words[3], owner.processStart) || !number || !window)
        return false;
    owner.window = *window;
    if (words[4] != unknown)
        owner.application = QString::fromUtf8(QByteArray::fromPercentEncoding(words[4]));
    owners.owners[*number] = owner;
    return true;
}

} // namespace

QByteArray encoded(const RecordedOwners& owners)
{
    QByteArray content = firstLine() + '\n' + QByteArray::number(owners.upTo) + '\n';
    for (const auto& [number, owner] : owners.owners) {
        const QByteArray application = owner.application.toUtf8().toPercentEncoding({}, unknown);
        content += QByteArray::number(number) + ' ' + QByteArray::number(owner.window) + ' ' +
                   text(owner.process) + ' ' + text(owner.processStart) + ' ' +
                   (application.isEmpty() ? QByteArray(unknown) : application) + '\n';
    }
    return content + lastLine + '\n';
}

std::optional<RecordedOwners> decodedOwners(const QByteArray& content)
{
    const QList<QByteArray> lines = content.split('\n');
    if (lines.size() < 4 || lines[0] != firstLine())
        return std::nullopt;
    RecordedOwners owners;
    std::optional<WindowID> upTo;
    if (!read(lines[1], upTo) || !upTo)
        return std::nullopt;
    owners.upTo = *upTo;
    for (qsizetype index = 2; index < lines.size() - 2; ++index) {
        if (!readOwner(lines[index], owners))
            return std::nullopt;
    }
    // Everything that is written otherwise, or twice, or in another order, is damage.
    const bool isPlausible = owners.upTo <= greatestBelievedWindow &&
                             (owners.owners.empty() || owners.owners.rbegin()->first <= *upTo);
    return isPlausible && encoded(owners) == content ? std::optional(owners) : std::nullopt;
}

RecordedOwners WindowOwnersFile::read() const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > longestFile)
        return {};
    return decodedOwners(file.readAll()).value_or(RecordedOwners());
}

void WindowOwnersFile::save(const RecordedOwners& owners)
{
    const QString next = m_path + QStringLiteral(".new");
    // A board may lie where others write too: a file that is made anew follows none of their links.
    QFile::remove(next);
    QFile file(next);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
        return;
    const QByteArray content = encoded(owners);
    const bool isWritten = file.write(content) == content.size() && file.flush();
    file.close();
    if (isWritten)
        std::rename(QFile::encodeName(next).constData(), QFile::encodeName(m_path).constData());
    else
        file.remove();
}

} // namespace kelpa
