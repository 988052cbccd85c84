#include "platform/freedesktop/applications/LaunchedProcess.h"

#include "platform/freedesktop/applications/ProcessStatus.h"

#include <QFile>
#include <QList>

#include <unistd.h>

namespace kelpa {

namespace {

/// More than the system gives to a program that is not made to be one of a kind.
constexpr qint64 longestEnvironment = qint64{1} << 20;

/// A chain of starts is shorter; a process whose number passed on while it was followed is no
/// reason to go in circles.
constexpr int longestDescent = 64;

constexpr ProcessID firstProcess = 1;

/// What it was told when it was loaded, whatever it has changed of that since.
bool wasTold(const QByteArray& startupID, ProcessID process)
{
    QFile file(QStringLiteral("/proc/%1/environ").arg(process));
    if (startupID.isEmpty() || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray told = "DESKTOP_STARTUP_ID=" + startupID;
    return file.read(longestEnvironment).split('\0').contains(told);
}

} // namespace

bool cameOf(const Launch& launch, ProcessID process)
{
    for (int step = 0; step < longestDescent && process > firstProcess; ++step) {
        if ((launch.process > 0 && getsid(process) == launch.process) ||
            wasTold(launch.startupID, process))
            return true;
        process = processStatus(process).value_or(ProcessStatus{}).parent;
    }
    return false;
}

} // namespace kelpa
