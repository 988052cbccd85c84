// Weeks in which windows come and go by the hundred: what is stored stops growing, but for what a
// person has assigned by hand, and so does the heap.

#include "store/recall/WindowRecallFixture.h"
#include "windows/memory/WindowMemory.h"

#include <QByteArray>
#include <QHashSeed>
#include <QScopeGuard>

#include <malloc.h>

#include <cstdint>
#include <vector>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

constexpr int days = 28;
constexpr int daysOfAssigning = 7;
constexpr int windowsADay = 200;
constexpr int openAtOnce = 20;
constexpr int todosADay = 10;
constexpr int goalCount = 10;
/// The first day that begins with a full memory, if every window of a day is remembered.
constexpr int full = WindowMemory::maxWindows / windowsADay;
/// A window and its goal in the file.
constexpr qsizetype assignmentBytes = 64;
/// The first day that begins with a full memory, if only the windows of every day are remembered:
/// of each evening, what they were stays for undo.
constexpr int fullOfDaily = WindowMemory::maxWindows / openAtOnce;
constexpr int daysOfFullMemory = 14;
/// What the heap may grow by for each window that has come and gone, on average: less than the
/// smallest block of the allocator, 32 bytes.
constexpr std::int64_t heapBytesAWindow = 24;

/// In blocks that are in use, of all threads.
std::int64_t heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}

/// False where a sanitizer or another tool replaces the allocator.
bool isHeapCounted()
{
    const std::int64_t before = heapBytes();
    const QByteArray block(1 << 20, 'x');
    return heapBytes() >= before + block.size();
}

struct Evening
{
    qsizetype rememberedWindows = 0;
    qsizetype assignments = 0;
    /// Of all values in the file.
    qsizetype storedBytes = 0;
    /// Of the process.
    std::int64_t heapBytes = 0;
};

class WeeksOfUse : public WindowRecalls
{
protected:
    void begin()
    {
        for (int i = 0; i < goalCount; ++i)
            m_goals.append(makeGoal(QStringLiteral("Goal %1").arg(i)));
    }

    /// New windows, a few at a time, which the person gives a goal if that is asked for; and those
    /// of every day, which find theirs by themselves. Todos come and go as well.
    Evening day(int number, bool isAssigning)
    {
        for (int first = 0; first < windowsADay; first += openAtOnce) {
            QSet<WindowID> windows;
            for (int i = first; i < first + openAtOnce; ++i) {
                const auto id = static_cast<WindowID>(1000 + number * windowsADay + i);
                const bool isDaily = !isAssigning && i < openAtOnce;
                desktop.addAccessibleWindow(
                    id, editor,
                    isDaily ? QStringLiteral("Account %1").arg(i)
                            : QStringLiteral("Letter %1 of day %2").arg(i).arg(number));
                desktop.captureSizes.insert(id, QSize(640, 480));
                windows.insert(id);
            }
            store().refresh();
            capture(windows);
            waitForBurst();
            const GoalID goal = m_goals.at(first / openAtOnce % goalCount);
            if (isAssigning || (number == 0 && first == 0)) {
                EXPECT_TRUE(store().assign(windows, goal));
            }
            scheduler.advance(1h);
            for (const WindowID window : windows) {
                desktop.removeWindow(window);
                desktop.captureSizes.remove(window);
            }
            store().refresh();
        }
        for (int i = 0; i < todosADay; ++i)
            store().deleteTodo(makeTodo(m_goals.first()), m_goals.first());
        scheduler.advance(14h);
        store().finishSaving();
        // What the stand-in has recorded.
        desktop.calls.clear();
        desktop.captured.clear();
        return evening();
    }

    /// Cards of the windows are in view.
    void capture(const QSet<WindowID>& windows)
    {
        for (const WindowID window : windows)
            store().noteWindowInView(window);
        for (qsizetype i = 0; i < windows.size(); ++i) {
            store().refreshPreviews(scheduler.now());
            scheduler.runBackgroundWork();
        }
        EXPECT_EQ(store().previews().size(), windows.size());
    }

    std::vector<Evening> useFor(int dayCount, bool isAssigning)
    {
        begin();
        std::vector<Evening> evenings;
        evenings.reserve(static_cast<std::size_t>(dayCount));
        for (int number = 0; number < dayCount; ++number)
            evenings.push_back(day(number, isAssigning));
        return evenings;
    }

    Evening evening() const
    {
        Evening found;
        found.rememberedWindows = stored().value_or(RememberedWindows()).windows.size();
        found.assignments =
            decodeAssignments(settings.document(assignmentsKey)).value_or(Assignments()).size();
        for (auto each = settings.values.keyBegin(); each != settings.values.keyEnd(); ++each)
            found.storedBytes += settings.document(*each).size();
        found.heapBytes = heapBytes();
        return found;
    }

private:
    QList<GoalID> m_goals;
};

TEST_F(WeeksOfUse, What_is_stored_stops_growing)
{
    const std::vector<Evening> evenings = useFor(days, false);
    const Evening& week = evenings.at(days / 2 - 1);
    const Evening& last = evenings.back();
    EXPECT_EQ(last.rememberedWindows, openAtOnce) << "those of every day";
    EXPECT_EQ(last.assignments, openAtOnce);
    EXPECT_GT(last.storedBytes, 0);
    EXPECT_LE(last.storedBytes, week.storedBytes * 102 / 100);
}

TEST_F(WeeksOfUse, The_heap_stops_growing_when_a_thousand_windows_are_remembered)
{
    // Sanitizers bring an allocator of their own, whose heap `mallinfo2` does not know; what it
    // counts would be none of this program's. Every run of the tests without a sanitizer measures
    // it.
    if (!isHeapCounted())
        GTEST_SKIP() << "the heap is that of a sanitizer, which tells nothing of it";
    // Otherwise hash tables grow at random, by a few tens of kilobytes.
    QHashSeed::setDeterministicGlobalSeed();
    const auto seeded = qScopeGuard([] { QHashSeed::resetRandomGlobalSeed(); });
    const std::vector<Evening> evenings = useFor(fullOfDaily + 1 + daysOfFullMemory, false);
    const std::int64_t before = evenings.at(fullOfDaily).heapBytes;
    EXPECT_LE(evenings.back().heapBytes,
              before + heapBytesAWindow * windowsADay * daysOfFullMemory);
}

TEST_F(WeeksOfUse, Of_windows_that_are_all_assigned_by_hand_the_last_thousand_are_remembered)
{
    const std::vector<Evening> evenings = useFor(daysOfAssigning, true);
    for (std::size_t number = full; number < evenings.size(); ++number) {
        const Evening& now = evenings.at(number);
        const Evening& before = evenings.at(number - 1);
        EXPECT_EQ(now.rememberedWindows, WindowMemory::maxWindows);
        // An assignment outlives its window.
        EXPECT_EQ(now.assignments, before.assignments + windowsADay);
        EXPECT_LE(now.storedBytes, before.storedBytes + windowsADay * assignmentBytes);
    }
}

} // namespace
} // namespace kelpa::test
