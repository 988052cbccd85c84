// What the board on the screen costs: ten goals beside two hundred, with as many todos and windows
// to each goal, in turn in one process. Processor time, so that what else the machine does counts
// little.
#include "bench/board/BoardFixture.h"
#include "store/BoardPersistence.h"
#include "store/WindowStore.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemorySettingsStore.h"
#include "views/ViewEngine.h"
#include "views/WaterfallView.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace kelpa::bench {
namespace {

constexpr int rounds = 5;
constexpr int scrollSteps = 120;
constexpr double scrollStep = 40;
constexpr int todosPerGoal = 50;

double processorMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Processor time until the next frame of the window has been drawn.
template <class Cause>
double untilFrame(QQuickWindow* const* window, const Cause& cause)
{
    const double start = processorMilliseconds();
    cause();
    bool isDrawn = false;
    const auto drawn =
        QObject::connect(*window, &QQuickWindow::frameSwapped, [&isDrawn] { isDrawn = true; });
    while (!isDrawn)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(drawn);
    return processorMilliseconds() - start;
}

int itemCount(const QQuickItem& item)
{
    int count = 1;
    for (const QQuickItem* const child : item.childItems())
        count += itemCount(*child);
    return count;
}

WaterfallView* findTargets(QQuickItem& item)
{
    if (auto* const view = qobject_cast<WaterfallView*>(&item))
        return view;
    for (QQuickItem* const child : item.childItems()) {
        if (WaterfallView* const found = findTargets(*child))
            return found;
    }
    return nullptr;
}

struct Figures
{
    std::vector<double> firstFrame;
    std::vector<double> selection;
    std::vector<double> scrollFrames;
    int items = 0;
    int cards = 0;
};

/// A desktop whose windows are shared by the goals evenly, a fifth of them by none.
class Board
{
public:
    Board(int goalCount, int windowCount)
    {
        const QList<Goal> goals = largeBoard(goalCount, goalCount * todosPerGoal);
        Assignments assignments;
        for (int i = 0; i < windowCount; ++i) {
            const auto id = static_cast<WindowID>(100 + i);
            m_desktop.addAccessibleWindow(id, 1000 + i, QStringLiteral("Window %1").arg(i));
            m_desktop.captureSizes.insert(id, {1280, 800});
            if (i % 5 != 0)
                assignments.insert(QString::number(id), goals.at(i % goalCount).id);
        }
        m_settings.write(boardEntries(goals, {}));
        m_settings.write({assignmentsEntry(assignments)});
        m_store = std::make_unique<WindowStore>(m_desktop.platform(), m_settings, m_scheduler);
        m_store->refresh();
        for (int i = 0; i < windowCount; ++i) {
            m_store->refreshPreviews(m_scheduler.now());
            m_scheduler.advance(std::chrono::milliseconds(0));
        }
    }

    void measure(Figures& figures)
    {
        ViewEngine::Options options;
        options.appearance = Appearance::light;
        options.isReducingMotion = true;
        ViewEngine engine(*m_store, m_desktop, m_scheduler, options);
        QQuickWindow* window = nullptr;
        figures.firstFrame.push_back(untilFrame(&window, [&] {
            engine.show();
            window = engine.window();
        }));
        WaterfallView& targets = *findTargets(*window->contentItem());
        QQuickItem& view = *targets.parentItem()->parentItem();
        for (int step = 1; step <= scrollSteps; ++step) {
            // There and back, so that both boards have the room.
            const int place = std::min(step, scrollSteps - step);
            figures.scrollFrames.push_back(
                untilFrame(&window, [&] { view.setProperty("contentY", place * scrollStep); }));
        }
        figures.items = itemCount(*window->contentItem());
        figures.cards = targets.itemCount();
        const QList<Goal> goals = m_store->goals();
        for (int i = 0; i < 4; ++i) {
            figures.selection.push_back(untilFrame(&window, [&] {
                m_store->activateTarget(TargetSelection::goal(goals.at(i).id),
                                        WindowStore::EnterWindowLayer::no);
            }));
        }
    }

private:
    test::FakeDesktop m_desktop;
    test::ManualScheduler m_scheduler;
    test::MemorySettingsStore m_settings;
    std::unique_ptr<WindowStore> m_store;
};

double quantile(std::vector<double> values, double part)
{
    std::ranges::sort(values);
    return values.at(static_cast<std::size_t>(part * static_cast<double>(values.size() - 1)));
}

void printRow(const char* name, double small, double large)
{
    std::printf("| %-44s | %9.2f | %9.2f | %5.2f |\n", name, small, large, large / small);
}

int run()
{
    Board ten(10, 25);
    Board twoHundred(200, 500);
    Figures small;
    Figures large;
    // The first round warms up.
    for (int round = 0; round <= rounds; ++round) {
        if (round == 1) {
            small = {};
            large = {};
        }
        ten.measure(small);
        twoHundred.measure(large);
    }
    std::printf("processor milliseconds, %d rounds, window of 1200 x 800\n\n", rounds);
    std::printf("| %-44s |  10 goals | 200 goals | ratio |\n", "");
    std::printf(
        "|----------------------------------------------|----------:|----------:|------:|\n");
    printRow("from making the interface to its first frame", quantile(small.firstFrame, 0.5),
             quantile(large.firstFrame, 0.5));
    printRow("a frame while scrolling, median", quantile(small.scrollFrames, 0.5),
             quantile(large.scrollFrames, 0.5));
    printRow("a frame while scrolling, 95 of 100 below", quantile(small.scrollFrames, 0.95),
             quantile(large.scrollFrames, 0.95));
    printRow("from selecting a goal to its frame", quantile(small.selection, 0.5),
             quantile(large.selection, 0.5));
    printRow("items alive", small.items, large.items);
    printRow("targets with items", small.cards, large.cards);
    return 0;
}

} // namespace
} // namespace kelpa::bench

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    try {
        return kelpa::bench::run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
