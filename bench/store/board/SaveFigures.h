// What saves have in common that are measured beside each other: the board that they save, where,
// and what they cost.
#pragma once

#include "bench/store/board/BoardFixture.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <chrono>

namespace kelpa::bench {

inline constexpr int goalCount = 200;

inline const QString goalsKey = QStringLiteral("kelpa.goals");

/// The board before and after one todo was toggled.
inline std::array<QList<Goal>, 2> toggledBoard(int todoCount)
{
    std::array boards{largeBoard(goalCount, todoCount), largeBoard(goalCount, todoCount)};
    TodoItem& todo = boards[1][goalCount / 2].todos[0];
    todo.status = TodoStatus::completed;
    todo.completedAt = Date{800'000'000.5};
    return boards;
}

inline std::array<QByteArray, 2> toggledJson(int todoCount)
{
    const auto boards = toggledBoard(todoCount);
    return {encodeGoals(boards[0]).value_or(QByteArray()),
            encodeGoals(boards[1]).value_or(QByteArray())};
}

/// In the folder for temporary files, or in KELPA_BENCH_FOLDER's: what a save costs is a matter of
/// the disk. The last letters are replaced, so that every run has a folder of its own.
inline QString folderTemplate()
{
    return qEnvironmentVariable("KELPA_BENCH_FOLDER", QDir::tempPath()) +
           QStringLiteral("/kelpa-bench-XXXXXX");
}

/// Bytes that this process has sent to the disk so far.
inline double bytesWritten()
{
    QFile io(QStringLiteral("/proc/self/io"));
    if (!io.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : io.readAll().split('\n')) {
        if (line.startsWith("write_bytes:"))
            return line.mid(12).trimmed().toDouble();
    }
    return 0;
}

struct Spent
{
    double total = 0;
    double worst = 0;
    double bytes = 0;

    template <class Work>
    bool measure(Work work)
    {
        const double before = bytesWritten();
        const auto start = std::chrono::steady_clock::now();
        const bool isDone = work();
        const std::chrono::duration<double, std::milli> time =
            std::chrono::steady_clock::now() - start;
        total += time.count();
        worst = std::max(worst, time.count());
        bytes += bytesWritten() - before;
        return isDone;
    }
};

} // namespace kelpa::bench
