#include "platform/freedesktop/applications/ProcessStatus.h"

#include <QByteArray>
#include <QFile>
#include <QList>

namespace kelpa {

std::optional<ProcessStatus> processStatus(ProcessID process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (process <= 0 || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    // Number, name in parentheses, state, parent; the name may contain anything.
    const QByteArray line = file.readAll();
    const QList<QByteArray> rest = line.mid(line.lastIndexOf(')') + 1).simplified().split(' ');
    if (rest.size() < 2)
        return std::nullopt;
    return ProcessStatus{rest[0] != "Z" && rest[0] != "X", rest[1].toInt()};
}

} // namespace kelpa
