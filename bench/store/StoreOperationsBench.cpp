// How long each operation of the store keeps the main thread: without a disk and with the real
// settings store on one, and how both grow with the board. Prints one table.

#include "bench/store/board/BoardFixture.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "store/WindowStore.h"
#include "store/board/BoardPersistence.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemorySettingsStore.h"

#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

namespace kelpa::bench {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int goalCount = 200;
constexpr int windowCount = 500;

/// A store on a large board, with goals in automatic order and windows on the desktop.
class Board
{
public:
    Board(SettingsStore& settings, int todoCount)
    {
        for (WindowID id = 1; id <= windowCount; ++id)
            m_desktop.addWindow(id, 100 + static_cast<ProcessID>(id % 20),
                                QStringLiteral("Window %1").arg(id));
        const QList<Goal> goals = largeBoard(goalCount, todoCount);
        settings.write(boardEntries(goals, {}));
        m_store = std::make_unique<WindowStore>(m_desktop.platform(), settings, m_scheduler);
        m_store->refresh();
    }

    WindowStore& store() { return *m_store; }
    /// Goals and todos spread over the board.
    const Goal& goal(int i) const { return m_store->goals()[i * 37 % goalCount]; }
    const TodoItem& todo(int i) const { return goal(i).todos[i % goal(i).todos.size()]; }

private:
    test::FakeDesktop m_desktop;
    test::ManualScheduler m_scheduler;
    std::unique_ptr<WindowStore> m_store;
};

struct Operation
{
    const char* name;
    std::function<void(Board&, int)> run;
};

const std::vector<Operation>& operations()
{
    static const std::vector<Operation> all{
        {"toggleTodo", [](Board& b, int i) { b.store().toggleTodo(b.todo(i).id, b.goal(i).id); }},
        {"updateTodo",
         [](Board& b, int i) {
             b.store().updateTodo(b.todo(i).id, QStringLiteral("Edited %1").arg(i), b.goal(i).id);
         }},
        {"addTodo",
         [](Board& b, int i) { b.store().addTodo(QStringLiteral("New %1").arg(i), b.goal(i).id); }},
        {"deleteTodo", [](Board& b, int i) { b.store().deleteTodo(b.todo(i).id, b.goal(i).id); }},
        {"moveTodo to a goal",
         [](Board& b, int i) { b.store().moveTodo(b.todo(i).id, b.goal(i).id, b.goal(i + 1).id); }},
        {"moveTodo before",
         [](Board& b, int i) { b.store().moveTodo(b.todo(i).id, b.todo(i + 1).id); }},
        {"renameGoal",
         [](Board& b, int i) { b.store().renameGoal(b.goal(i).id, QStringLiteral("G%1").arg(i)); }},
        {"setGoalPriority",
         [](Board& b, int i) {
             b.store().setGoalPriority(static_cast<GoalPriority>(i % 4), b.goal(i).id);
         }},
        {"assign",
         [](Board& b, int i) {
             b.store().assign(static_cast<WindowID>(1 + i % windowCount), b.goal(i).id);
         }},
        {"moveTargetSelection",
         [](Board& b, int i) {
             b.store().moveTargetSelection(i % 50 < 25 ? NavigationDirection::down
                                                       : NavigationDirection::up);
         }},
    };
    return all;
}

struct Times
{
    double median = 0;
    double worst = 0;
};

Times measure(Board& board, const Operation& operation, int rounds)
{
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        const auto start = Clock::now();
        operation.run(board, i);
        times.push_back(Milliseconds(Clock::now() - start).count());
    }
    std::ranges::sort(times);
    return {times[times.size() / 2], times.back()};
}

void printRows(int todoCount)
{
    const int rounds = todoCount > 10'000 ? 60 : 200;
    for (const Operation& operation : operations()) {
        // A board of its own for each operation, so that none finds what another left.
        test::MemorySettingsStore memory;
        Board inMemory(memory, todoCount);
        const Times withoutDisk = measure(inMemory, operation, rounds);

        const QTemporaryDir folder;
        SqliteSettingsStore disk(folder.filePath(QStringLiteral("board.sqlite")));
        Board onDisk(disk, todoCount);
        const Times withDisk = measure(onDisk, operation, rounds);

        std::printf("| %6d | %-20s | %8.3f | %8.3f | %8.3f | %8.3f |\n", todoCount, operation.name,
                    withoutDisk.median, withoutDisk.worst, withDisk.median, withDisk.worst);
        std::fflush(stdout);
    }
}

} // namespace
} // namespace kelpa::bench

int main()
{
    std::printf("milliseconds on the main thread; %d goals, %d windows\n\n",
                kelpa::bench::goalCount, kelpa::bench::windowCount);
    std::printf("|  todos | operation            |   median |    worst | med disk | wrst dsk |\n");
    std::printf("|-------:|----------------------|---------:|---------:|---------:|---------:|\n");
    for (const int todoCount : {1'000, 10'000, 100'000})
        kelpa::bench::printRows(todoCount);
    return 0;
}
