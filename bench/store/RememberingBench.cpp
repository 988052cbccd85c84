// What remembering windows costs a board that does nothing new: the main thread's share of a
// discovery pass without a change, with the memory and without it in turn, and the bytes that a
// save of a todo writes. Prints two tables.

#include "bench/store/board/BoardFixture.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "store/WindowStore.h"
#include "store/board/BoardPersistence.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemorySettingsStore.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace kelpa::bench {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int goalCount = 20;
constexpr int todoCount = 200;
constexpr int passes = 400;

/// A store whose goals have windows that are there, and as many that are not.
class Board
{
public:
    Board(SettingsStore& settings, int windowCount, bool isRemembering)
    {
        const QList<Goal> goals = largeBoard(goalCount, todoCount);
        RememberedWindows remembered;
        Assignments assignments;
        for (int i = 0; i < 2 * windowCount; ++i) {
            const auto id = static_cast<WindowID>(i + 1);
            assignments.insert(QString::number(id), goals[i % goalCount].id);
            if (i < windowCount) {
                m_desktop.addWindow(id, 100 + static_cast<ProcessID>(i % 20), title(i, 0));
                continue;
            }
            RememberedWindow window;
            window.windowID = id;
            window.traits.application = QStringLiteral("org.example.Program%1").arg(i % 20);
            window.traits.applicationName = QStringLiteral("Program %1").arg(i % 20);
            window.traits.title = title(i, 0);
            window.seenAt = m_scheduler.calendarTime();
            remembered.windows.append(window);
            remembered.newestWindow = id;
        }
        std::vector<SettingsEntry> entries = boardEntries(goals, {});
        entries.push_back(assignmentsEntry(assignments));
        entries.push_back({rememberingWindowsKey, isRemembering});
        if (isRemembering)
            entries.push_back(windowMemoryEntry(remembered));
        settings.write(entries);
        m_store = std::make_unique<WindowStore>(m_desktop.platform(), settings, m_scheduler);
        m_store->awaitWindows({});
        m_store->refresh();
    }

    WindowStore& store() { return *m_store; }

    double passTime()
    {
        const auto start = Clock::now();
        m_store->refresh();
        return Milliseconds(Clock::now() - start).count();
    }

    void toggleTodo()
    {
        const Goal& goal = m_store->goals().first();
        m_store->toggleTodo(goal.todos.first().id, goal.id);
    }

    /// The first of the windows shows something else, with a title of another length, so that all
    /// that is stored after it moves.
    void rename()
    {
        for (WindowListEntry& entry : *m_desktop.windowList) {
            if (entry.number == 1U)
                entry.name = title(0, 10 * ++m_names);
        }
        m_store->refresh();
    }

private:
    static QString title(int window, int name)
    {
        return QStringLiteral("Chapter %1.%2 of the handbook of remembered windows - Program")
            .arg(window)
            .arg(name);
    }

    int m_names = 0;
    test::FakeDesktop m_desktop;
    test::ManualScheduler m_scheduler;
    std::unique_ptr<WindowStore> m_store;
};

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values.at(values.size() / 2);
}

void printPass(int windowCount)
{
    test::MemorySettingsStore settingsWithout;
    test::MemorySettingsStore settingsWith;
    Board without(settingsWithout, windowCount, false);
    Board with(settingsWith, windowCount, true);
    std::vector<double> timesWithout;
    std::vector<double> timesWith;
    for (int i = 0; i < passes; ++i) {
        timesWithout.push_back(without.passTime());
        timesWith.push_back(with.passTime());
    }
    const double before = median(timesWithout);
    const double now = median(timesWith);
    std::printf("| %7d | %10d | %10.3f | %10.3f | %5.2f |\n", windowCount, windowCount, before, now,
                now / before);
    std::fflush(stdout);
}

/// The bytes by which the write-ahead log grows.
qint64 bytesOf(const QString& path, const std::function<void()>& save)
{
    const QString log = path + QStringLiteral("-wal");
    const qint64 before = QFileInfo(log).size();
    save();
    return QFileInfo(log).size() - before;
}

qint64 savedBytes(int windowCount, bool isRemembering, bool isRenamed)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("board.sqlite"));
    SqliteSettingsStore disk(path);
    Board board(disk, windowCount, isRemembering);
    // The first save stores what the first pass has found.
    board.toggleTodo();
    return bytesOf(path, [&] {
        if (isRenamed)
            board.rename();
        board.toggleTodo();
    });
}

void printSave(int windowCount)
{
    std::printf("| %7d | %10d | %10lld | %10lld | %10lld |\n", windowCount, windowCount,
                static_cast<long long>(savedBytes(windowCount, false, true)),
                static_cast<long long>(savedBytes(windowCount, true, false)),
                static_cast<long long>(savedBytes(windowCount, true, true)));
    std::fflush(stdout);
}

} // namespace
} // namespace kelpa::bench

int main()
{
    std::printf("A pass without a change, milliseconds\n\n");
    std::printf("| windows | remembered |    without |       with | ratio |\n");
    std::printf("|--------:|-----------:|-----------:|-----------:|------:|\n");
    for (const int windowCount : {10, 50, 200, 500})
        kelpa::bench::printPass(windowCount);
    std::printf("\nA todo is saved, bytes; renamed: after a window shows something else\n\n");
    std::printf("| windows | remembered |    without |       with |    renamed |\n");
    std::printf("|--------:|-----------:|-----------:|-----------:|-----------:|\n");
    for (const int windowCount : {10, 50, 200, 500})
        kelpa::bench::printSave(windowCount);
    return 0;
}
