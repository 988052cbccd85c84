// Cuts while the running board changes, imports a file and restores a backup: the store with all of
// its parts over the thread that writes behind, on a real file.
#include "platform/qt/DiskFiles.h"
#include "platform/sqlite/WriteBehindSettings.h"
#include "platform/sqlite/backup/SqliteBackups.h"
#include "platform/sqlite/power/PowerCuts.h"
#include "store/BackupBrowser.h"
#include "store/BoardTransfer.h"
#include "store/WindowStore.h"
#include "store/board/BoardPersistence.h"
#include "support/BoardBuilders.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemoryBackups.h"
#include "support/MemorySettingsStore.h"
#include "support/ProgramArguments.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <vector>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

/// A board whose list of goals has several pages.
BoardContents longBoard(const QString& title)
{
    QList<TodoItem> todos;
    for (int i = 0; i < 300; ++i)
        todos.append(todo(title + QString::number(i), i));
    return {{goal(title, todos)}, {todo(title, 300)}, {}};
}

/// A running board, on the disk or in memory.
struct Board
{
    Board(SettingsStore& storage, Backups& copies) : settings(storage), backups(copies) {}

    /// Lets the event loop, timers and background work run until neither transfer nor browser has
    /// anything to do. Whoever waits for the disk hears of its end in the event loop.
    void settle()
    {
        QElapsedTimer time;
        time.start();
        do {
            QCoreApplication::processEvents();
            scheduler.advance(0ms);
            scheduler.runBackgroundWork();
        } while ((transfer.isReading() || transfer.isImporting() || browser.isRestoring()) &&
                 time.elapsed() < 60'000);
    }

    SettingsStore& settings;
    Backups& backups;
    FakeDesktop desktop;
    ManualScheduler scheduler;
    DiskFiles files;
    WindowStore store{desktop.platform(), settings, scheduler};
    BoardTransfer transfer{store, backups, files, scheduler};
    BackupBrowser browser{store, backups, scheduler};
};

enum class Promise : std::uint8_t { none, onTheDisk };

struct Step
{
    std::function<void(Board&)> work;
    /// Whether the disk has all of it once it has returned.
    Promise promise = Promise::onTheDisk;
};

/// How long a change waits for the disk: not at all, so that changes are combined, or always.
class BoardPowerCutTest : public PowerCuts,
                          public testing::WithParamInterface<std::chrono::milliseconds>
{
protected:
    void SetUp() override
    {
        const auto file = openStore();
        change(valuesOf(before),
               [&] { ASSERT_TRUE(file->write(wholeBoardEntries(before).value())); });
        setContents(otherFile,
                    exported(TransferFormat::json, other.goals, other.unassignedTodos, {}).value());
    }
    static SettingsValues valuesOf(const BoardContents& board)
    {
        SettingsValues values;
        const std::vector<SettingsEntry> entries = wholeBoardEntries(board).value();
        for (const SettingsEntry& entry : entries)
            values.insert(entry.key, entry.value);
        return values;
    }

    /// What is stored at first and after each of the steps, told by a board in memory.
    std::vector<SettingsValues> valuesAfter(const std::vector<Step>& steps, Backups& backups) const
    {
        MemorySettingsStore memory;
        memory.values = valuesOf(before);
        Board board(memory, backups);
        std::vector<SettingsValues> values{memory.values};
        for (const Step& step : steps) {
            step.work(board);
            board.settle();
            values.push_back(memory.values);
        }
        return values;
    }

    /// Takes the steps on the disk, and tries the cuts. A copy of the board before the last step is
    /// among the backups once that step has ended.
    void takeStepsAndCut(const std::vector<Step>& steps, Backups& ofMemory)
    {
        const std::vector<SettingsValues> values = valuesAfter(steps, ofMemory);
        beginCuts();
        {
            WriteBehindSettings settings(openStore(), GetParam());
            SqliteBackups backups(path);
            std::unique_ptr<Board> board;
            change(values.front(), [&] {
                board = std::make_unique<Board>(settings, backups);
                board->store.finishSaving();
            });
            for (std::size_t i = 0; i < steps.size(); ++i) {
                const auto work = [&] {
                    steps[i].work(*board);
                    if (steps[i].promise == Promise::none)
                        return;
                    board->settle();
                    board->store.finishSaving();
                };
                if (steps[i].promise == Promise::none)
                    changeUnconfirmed(values[i + 1], work);
                else
                    change(values[i + 1], work);
            }
            expectBackup(values[steps.size() - 1]);
        }
        EXPECT_EQ(openStore()->values(), values.back());
        tryCuts();
    }

    const BoardContents before = longBoard(QStringLiteral("Before"));
    const BoardContents other = longBoard(QStringLiteral("Other"));
    QTemporaryDir elsewhere;
    const QString otherFile = elsewhere.filePath(QStringLiteral("board.json"));

private:
    ProgramArguments m_arguments;
    QCoreApplication m_application{m_arguments.count, m_arguments.values.data()};
};

TEST_P(BoardPowerCutTest, Of_changes_and_an_import_right_after_them)
{
    const GoalID goalID = before.goals[0].id;
    const auto rename = [&](const char* title) {
        return [goalID, title](Board& board) {
            board.store.renameGoal(goalID, QString::fromLatin1(title));
        };
    };
    MemoryBackups backups;
    takeStepsAndCut({{rename("First"), Promise::none},
                     {rename("Second"), Promise::none},
                     {rename("Third"), Promise::none},
                     {[this](Board& board) {
                         board.transfer.read(otherFile);
                         // The file is read while the changes are still under way.
                         board.scheduler.runBackgroundWork();
                         ASSERT_TRUE(board.transfer.preview());
                         board.transfer.import(ImportMode::replace);
                     }}},
                    backups);
}

TEST_P(BoardPowerCutTest, Of_a_restored_backup)
{
    {
        SqliteBackups kept(path);
        ASSERT_TRUE(kept.keepBoard(BackupReason::daily));
        expectBackup(valuesOf(before));
    }
    const QString name = SqliteBackups(path).list().constFirst().name;
    MemoryBackups backups;
    backups.add(name, before.goals, before.unassignedTodos);
    const GoalID goalID = before.goals[0].id;
    takeStepsAndCut(
        {{[goalID](Board& board) { board.store.renameGoal(goalID, QStringLiteral("Renamed")); },
          Promise::none},
         {[name](Board& board) { board.browser.restore(name); }}},
        backups);
}

INSTANTIATE_TEST_SUITE_P(Patience, BoardPowerCutTest, testing::Values(0ms, 60'000ms),
                         [](const auto& row) {
                             return std::string(row.param == 0ms ? "Late" : "Awaited");
                         });

} // namespace
} // namespace kelpa::test
