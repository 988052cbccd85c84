// Importing 100,000 todos into a board that shows: how long it takes from the choice of the file,
// and for how long the main thread computes without a break, which is what a person would feel. The
// latter is processor time of that thread, which other load on the machine hardly changes.
#include "bench/store/board/BoardFixture.h"
#include "bench/views/Figures.h"
#include "platform/qt/DiskFiles.h"
#include "platform/qt/QtScheduler.h"
#include "platform/qt/WorkerPool.h"
#include "platform/sqlite/WriteBehindSettings.h"
#include "platform/sqlite/backup/SqliteBackups.h"
#include "store/BoardTransfer.h"
#include "store/WindowStore.h"
#include "store/board/BoardContents.h"
#include "store/board/BoardPersistence.h"
#include "support/FakeDesktop.h"
#include "views/ViewEngine.h"

#include <QElapsedTimer>
#include <QFile>
#include <QQuickWindow>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <memory>
#include <stdexcept>

namespace kelpa::bench {
namespace {

constexpr int rounds = 3;
constexpr int todoCount = 100'000;
constexpr int shownGoals = 20;
constexpr int shownTodos = 1'000;

/// What is imported, and how.
struct Import
{
    const char* name;
    TransferFormat format;
    /// 0 for todos without a goal, all in one list.
    int goalCount;
    ImportMode mode;
};

constexpr int manyGoals = 200;

constexpr std::array imports{
    Import{"json", TransferFormat::json, manyGoals, ImportMode::add},
    Import{"markdown", TransferFormat::markdown, manyGoals, ImportMode::add},
    Import{"todo.txt", TransferFormat::todoTxt, manyGoals, ImportMode::add},
    Import{"icalendar", TransferFormat::iCalendar, manyGoals, ImportMode::add},
    Import{"markdown, no goal", TransferFormat::markdown, 0, ImportMode::add},
    Import{"json, replacing", TransferFormat::json, manyGoals, ImportMode::replace},
};

QByteArray fileOf(const Import& import)
{
    const TransferClock clock{Date{800'000'000}, QTimeZone::utc()};
    if (import.goalCount > 0)
        return exported(import.format, largeBoard(import.goalCount, todoCount), {}, clock).value();
    return exported(import.format, {}, largeBoard(1, todoCount).constFirst().todos, clock).value();
}

/// Of the calling thread.
double threadMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Times in milliseconds.
struct Part
{
    std::vector<double> wall;
    std::vector<double> ofMainThread;
    std::vector<double> longest;
};

/// Runs the event loop until `isDone` and the next frame after that.
template <class Begin, class IsDone>
void measure(Part& part, QQuickWindow& window, const Begin& begin, const IsDone& isDone)
{
    bool isDrawn = false;
    const auto drawn = QObject::connect(&window, &QQuickWindow::frameSwapped,
                                        [&] { isDrawn = isDrawn || isDone(); });
    QElapsedTimer time;
    time.start();
    double total = 0;
    double longest = 0;
    const auto slice = [&](const auto& work) {
        const double start = threadMilliseconds();
        work();
        const double spent = threadMilliseconds() - start;
        total += spent;
        longest = std::max(longest, spent);
    };
    slice(begin);
    while (true) {
        slice([] { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); });
        if (isDrawn)
            break;
        if (isDone())
            window.update();
    }
    part.wall.push_back(static_cast<double>(time.nsecsElapsed()) / 1e6);
    part.ofMainThread.push_back(total);
    part.longest.push_back(longest);
    QObject::disconnect(drawn);
}

class ShownBoard
{
public:
    ShownBoard()
    {
        m_settings.write(boardEntries(largeBoard(shownGoals, shownTodos), {}));
        m_store = std::make_unique<WindowStore>(m_desktop.platform(), m_settings, m_scheduler);
        m_transfer = std::make_unique<BoardTransfer>(*m_store, m_backups, m_files, m_scheduler);
        ViewEngine::Options options;
        options.appearance = Appearance::light;
        options.isReducingMotion = true;
        m_engine = std::make_unique<ViewEngine>(*m_store, m_desktop,
                                                std::make_shared<WorkerPool>(1), options);
        if (!m_engine->show())
            throw std::runtime_error("the board cannot be shown");
        Part first;
        measure(
            first, *m_engine->window(), [] {}, [] { return true; });
    }
    ShownBoard(const ShownBoard&) = delete;
    ShownBoard& operator=(const ShownBoard&) = delete;
    ~ShownBoard()
    {
        m_engine.reset();
        m_scheduler.shutDown();
    }

    struct Parts
    {
        Part reading;
        Part importing;
        Part undoing;
        Part redoing;
    };

    void import(const Import& import, Parts& parts)
    {
        const QString path = m_folder.filePath(QStringLiteral("todos"));
        QFile file(path);
        const QByteArray bytes = fileOf(import);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error("no room for the file");
        file.close();
        QQuickWindow& window = *m_engine->window();
        measure(
            parts.reading, window, [&] { m_transfer->read(path, import.format); },
            [&] { return !m_transfer->isReading(); });
        const BoardContents before = m_store->boardContents();
        measure(
            parts.importing, window, [&] { m_transfer->import(import.mode); },
            [&] { return !m_transfer->isImporting(); });
        const BoardContents after = m_store->boardContents();
        if (openTodoCount(after) < todoCount / 2)
            throw std::runtime_error("nothing was imported");
        const auto isDone = [] { return true; };
        measure(
            parts.undoing, window, [&] { m_store->undo(); }, isDone);
        if (m_store->boardContents() != before)
            throw std::runtime_error("nothing was undone");
        measure(
            parts.redoing, window, [&] { m_store->redo(); }, isDone);
        if (m_store->boardContents() != after)
            throw std::runtime_error("nothing was done again");
        m_store->finishSaving();
    }

private:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("kelpa.sqlite"));
    test::FakeDesktop m_desktop;
    QtScheduler m_scheduler;
    WriteBehindSettings m_settings{std::make_unique<SqliteSettingsStore>(m_path)};
    SqliteBackups m_backups{m_path};
    DiskFiles m_files;
    std::unique_ptr<WindowStore> m_store;
    std::unique_ptr<BoardTransfer> m_transfer;
    std::unique_ptr<ViewEngine> m_engine;
};

int run()
{
    std::printf(
        "milliseconds, medians of %d rounds: %d todos into a board of %d goals and %d todos, "
        "in a window of 1200 x 800\n\n",
        rounds, todoCount, shownGoals, shownTodos);
    std::printf("| %-17s | %-26s | %9s | %11s | %13s | %9s |\n", "", "", "in all", "main thread",
                "longest break", "at worst");
    for (const Import& import : imports) {
        ShownBoard::Parts parts;
        for (int round = 0; round < rounds; ++round) {
            ShownBoard board;
            board.import(import, parts);
        }
        const auto row = [&](const char* name, const Part& part) {
            std::printf("| %-17s | %-26s | %9.0f | %11.0f | %13.1f | %9.1f |\n", import.name, name,
                        quantile(part.wall, median), quantile(part.ofMainThread, median),
                        quantile(part.longest, median), quantile(part.longest, 1));
        };
        row("reading, until the preview", parts.reading);
        row("importing, until its frame", parts.importing);
        row("undoing, until its frame", parts.undoing);
        row("redoing, until its frame", parts.redoing);
    }
    return 0;
}

} // namespace
} // namespace kelpa::bench

int main(int argc, char** argv)
{
    return kelpa::bench::runOffscreen(argc, argv, kelpa::bench::run);
}
