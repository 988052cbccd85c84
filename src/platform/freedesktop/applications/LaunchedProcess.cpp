#include "platform/freedesktop/applications/LaunchedProcess.h"

#include "platform/freedesktop/applications/ProcessStatus.h"

#include <QFile>
#include <QList>

#include <unistd.h>

namespace kelpa {

namespace {

/// Longer than any ordinary environment.
constexpr qint64 longestEnvironment = qint64{1} << 20;

/// A chain of parents is shorter; bounds a cycle that process ids reused meanwhile would cause.
constexpr int longestDescent = 64;

constexpr ProcessID firstProcess = 1;

/// Whether the startup id is in the environment with which the process was started.
bool hasStartupID(const QByteArray& startupID, ProcessID process)
{
    QFile file(QStringLiteral("/proc/%1/environ").arg(process));
    if (startupID.isEmpty() || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray variable = "DESKTOP_STARTUP_ID=" + startupID;
    return file.read(longestEnvironment).split('\0').contains(variable);
}

} // namespace

bool cameOf(const Launch& launch, ProcessID process)
{
    for (int step = 0; step < longestDescent && process > firstProcess; ++step) {
        if ((launch.process > 0 && getsid(process) == launch.process) ||
            hasStartupID(launch.startupID, process))
            return true;
        process = processStatus(process).value_or(ProcessStatus{}).parent;
    }
    return false;
}

} // namespace kelpa
