// Resident memory of processes that show a board, at the stages of its way to the screen.
#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStringList>

#include <cstdio>
#include <stdexcept>
#include <vector>

namespace kelpa::bench {

inline const QString memoryOption = QStringLiteral("--memory");

/// Of this process, in MiB.
inline double residentMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).simplified().split(' ').front().toDouble() / 1024;
    }
    return 0;
}

/// What a process of this program with the option prints for such a board, in MiB.
inline std::vector<double> memoryOfProcess(int goalCount)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(),
                  {memoryOption, QString::number(goalCount)});
    process.waitForFinished(-1);
    std::vector<double> stages;
    const QByteArrayList lines = process.readAllStandardOutput().trimmed().split('\n');
    stages.reserve(static_cast<std::size_t>(lines.size()));
    for (const QByteArray& line : lines)
        stages.push_back(line.toDouble());
    return stages;
}

} // namespace kelpa::bench
