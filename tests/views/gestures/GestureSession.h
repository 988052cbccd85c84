// The whole board in its window over a desktop of plain data, and a person who does anything that
// a keyboard and a pointer can do there.
#pragma once

#include "store/BackupBrowser.h"
#include "store/BoardTransfer.h"
#include "support/MemoryBackups.h"
#include "support/StoreFixture.h"
#include "support/TransferFakes.h"
#include "views/ViewEngine.h"
#include "views/gestures/BoardPromises.h"
#include "views/gestures/ComplaintRecorder.h"
#include "views/gestures/ManualViewTime.h"
#include "views/scene/BoardDragSource.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <string>

namespace kelpa::test {

/// Main thread; one at a time.
class GestureSession : private StoreFixture
{
public:
    explicit GestureSession(std::uint64_t seed);
    GestureSession(const GestureSession&) = delete;
    GestureSession& operator=(const GestureSession&) = delete;
    ~GestureSession() override;

    struct Outcome
    {
        /// What was done.
        std::string gesture;
        /// A sentence for each promise that is broken since; empty where all hold.
        std::string faults;
        /// What there is on the board since, to compare two runs.
        std::string board;
    };

    /// Does the gesture with that number: what it does depends on the seed, the number and what
    /// shows, so that others before it can be left out.
    Outcome perform(int number);
    /// Leaves fields, menus and sheets as a person does, after which an arrow key selects
    /// something, unless the board has lost the keyboard.
    Outcome findKeyboardAgain();

    /// How many gestures were of each kind, the drags by what came of them.
    const std::map<std::string, int>& counts() const { return m_counts; }

private:
    void TestBody() override {}

    int below(int bound) { return static_cast<int>(m_random() % static_cast<unsigned>(bound)); }
    bool chance(int oneIn) { return below(oneIn) == 0; }
    template <class Value, std::size_t count>
    Value any(const std::array<Value, count>& values)
    {
        return values.at(static_cast<std::size_t>(below(static_cast<int>(count))));
    }

    // What a person does; each gives its description. Gestures.cpp.
    std::string anyGesture();
    std::string pressKey();
    std::string write();
    std::string compose();
    std::string click();
    std::string turnWheel();
    std::string resize();
    std::string leaveAndComeBack();
    std::string closeAndShow();
    std::string letTimePass();
    // DragGesture.cpp.
    std::string drag();
    void carryDrag(BoardDragSource& source, QPoint to);
    // What others do: Surroundings.cpp.
    std::string changeDesktop();
    std::string changeFromOutside();
    std::string answerDialogs();

    /// A place in the window, mostly on something that takes presses.
    QPoint anyPlace();
    QPoint placeOn(const QList<QQuickItem*>& items);
    void fillBoard();
    void showAgain();
    /// Keeps the board of a size that a person has: on a larger one, most gestures would scroll.
    void thinOut();
    void count(const std::string& kind) { ++m_counts[kind]; }

    /// The types of the items that are on their way to their places.
    QStringList moving() const;
    /// Lets frames and time pass until nothing moves; false if something always does.
    bool settle();
    QStringList faultsAtRest();
    std::string description();
    ShownBoard shownBoard() { return {store(), *m_controller, *m_window, m_mayBeWriting}; }

    std::uint64_t m_seed = 0;
    std::mt19937_64 m_random;
    ComplaintRecorder m_complaints;
    ManualViewTime m_time;
    FakeFileDialogs m_dialogs;
    MemoryFiles m_files;
    KeepingBackups m_keptBackups;
    MemoryBackups m_backupFiles;
    std::unique_ptr<BackupBrowser> m_backups;
    std::unique_ptr<BoardTransfer> m_transfer;
    std::unique_ptr<ViewEngine> m_view;
    QQuickWindow* m_window = nullptr;
    BoardController* m_controller = nullptr;
    std::map<std::string, int> m_counts;
    QString m_startFaults;
    bool m_mayBeWriting = false;
};

} // namespace kelpa::test
