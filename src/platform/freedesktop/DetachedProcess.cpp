#include "platform/freedesktop/DetachedProcess.h"

#include <QDir>
#include <QProcess>

#include <linux/close_range.h>
#include <unistd.h>

#include <csignal>

namespace kelpa {

namespace {

constexpr unsigned int firstOwnDescriptor = 3;

/// In the new process, before the program is loaded: only what is safe there.
void becomeIndependent()
{
    setsid();
    // Closed with the loading, so that a failure of it can still be told.
    close_range(firstOwnDescriptor, ~0U, CLOSE_RANGE_CLOEXEC);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    for (int number = 1; number < NSIG; ++number) {
        // Those that cannot be set are not ignored either.
        std::signal(number, SIG_DFL);
    }
}

} // namespace

std::optional<ProcessID> startDetached(const QStringList& command,
                                       const QProcessEnvironment& environment)
{
    if (command.isEmpty()) {
        return std::nullopt;
    }
    QProcess process;
    process.setProgram(command.front());
    process.setArguments(command.mid(1));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(QDir::homePath());
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier(becomeIndependent);
    qint64 started = 0;
    if (!process.startDetached(&started)) {
        return std::nullopt;
    }
    return static_cast<ProcessID>(started);
}

std::vector<ProcessID> processesOfSession(ProcessID leader)
{
    std::vector<ProcessID> processes;
    const QStringList names =
        QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
    for (const QString& name : names) {
        bool isProcess = false;
        const ProcessID process = name.toInt(&isProcess);
        if (isProcess && getsid(process) == leader) {
            processes.push_back(process);
        }
    }
    return processes;
}

} // namespace kelpa
