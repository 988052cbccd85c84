// Compares a board of ten goals with one of two hundred, or as many as --goals says, that has as
// many todos and windows to each goal, and a preview of every window: processor time in one
// process, which other load on the machine hardly changes, and resident memory in a process of its
// own for each.
#include "bench/store/board/BoardFixture.h"
#include "bench/views/Figures.h"
#include "bench/views/ProcessMemory.h"
#include "bench/views/SceneProbe.h"
#include "layout/BoardMetrics.h"
#include "platform/qt/WorkerPool.h"
#include "store/WindowStore.h"
#include "store/board/BoardPersistence.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemorySettingsStore.h"
#include "views/ViewEngine.h"
#include "views/scene/BoardDragSource.h"
#include "views/scene/WaterfallView.h"

#include <QDragMoveEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QQuickWindow>

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <vector>

namespace kelpa::bench {
namespace {

constexpr int defaultRounds = 5;
constexpr int smallBoard = 10;
constexpr int defaultLargeBoard = 200;
constexpr int scrollSteps = 120;
constexpr double scrollStep = 40;
constexpr int comparedGoals = 8;
constexpr int dragSteps = 60;
constexpr int menuOpenings = 3;
constexpr int todosPerGoal = 50;
constexpr int windowsPerTwoGoals = 5;

constexpr std::array memoryStages{
    "resident MiB of a process: made-up desktop",
    "with goals and todos",
    "with a preview of each window",
    "with the first frame",
    "after scrolling, dragging and selecting",
    "after a window's menu was open",
};

struct Figures
{
    std::vector<double> firstFrame;
    std::vector<double> selection;
    std::vector<double> scrollFrames;
    /// Over cards of goals only.
    std::vector<double> goalFrames;
    std::vector<double> dragFrames;
    std::vector<double> dragScrollFrames;
    std::vector<double> firstMenu;
    std::vector<double> laterMenus;
    /// In MiB, at `memoryStages`.
    std::vector<double> memory;
    int items = 0;
    int itemsAfterMenus = 0;
    int cards = 0;
};

/// A fifth of the desktop's windows belong to no goal, the others to the goals in turn.
class Board
{
public:
    /// Records the memory of the process in `figures` where there are any.
    explicit Board(int goalCount, Figures* figures = nullptr)
    {
        const auto noteMemory = [figures] {
            if (figures != nullptr)
                figures->memory.push_back(residentMemory());
        };
        const int windowCount = goalCount * windowsPerTwoGoals / 2;
        const QList<Goal> goals = largeBoard(goalCount, goalCount * todosPerGoal);
        Assignments assignments;
        for (int i = 0; i < windowCount; ++i) {
            const auto id = static_cast<WindowID>(100 + i);
            m_desktop.addAccessibleWindow(id, 1000 + i, QStringLiteral("Window %1").arg(i));
            m_desktop.captureSizes.insert(id, {1280, 800});
            if (i % 5 != 0)
                assignments.insert(QString::number(id), goals.at(i % goalCount).id);
        }
        noteMemory();
        m_settings.write(boardEntries(goals, {}));
        m_settings.write({assignmentsEntry(assignments)});
        m_store = std::make_unique<WindowStore>(m_desktop.platform(), m_settings, m_scheduler);
        m_store->refresh();
        noteMemory();
        for (int i = 0; i < windowCount; ++i) {
            m_store->refreshPreviews(m_scheduler.now());
            m_scheduler.advance(std::chrono::milliseconds(0));
        }
        noteMemory();
    }

    void measure(Figures& figures)
    {
        ViewEngine::Options options;
        options.appearance = Appearance::light;
        options.isReducingMotion = true;
        ViewEngine engine(*m_store, m_desktop, std::make_shared<WorkerPool>(1), options);
        QQuickWindow* window = nullptr;
        figures.firstFrame.push_back(untilFrame(&window, [&] {
            engine.show();
            window = engine.window();
        }));
        figures.memory.push_back(residentMemory());
        auto& targets =
            *qobject_cast<WaterfallView*>(findItem(*window->contentItem(), "kelpa::WaterfallView"));
        QQuickItem& view = *targets.parentItem()->parentItem();
        scroll(view, window, 0, view.property("contentHeight").toDouble() - view.height(),
               figures.scrollFrames);
        // Collapsed, all cards of goals have the same height.
        m_store->clearTargetSelection();
        rest();
        const int goal =
            firstRow(*targets.modelValue().value<QAbstractItemModel*>(), QStringLiteral("goal"));
        const double goals = targets.y() + targets.rowRect(goal).top();
        const double beyond = targets.y() + targets.rowRect(goal + comparedGoals - 1).bottom();
        scroll(view, window, goals, beyond - view.height(), figures.goalFrames);
        drag(view, window, goals, figures);
        view.setProperty("contentY", 0);
        rest();
        select(window, figures);
        figures.items = itemCount(*window);
        figures.cards = targets.itemCount();
        figures.memory.push_back(residentMemory());
        openMenus(window, figures);
        figures.memory.push_back(residentMemory());
        figures.itemsAfterMenus = itemCount(*window);
    }

private:
    /// Scrolls from one position down to the other and up again, over and over.
    static void scroll(QQuickItem& view, QQuickWindow*& window, double from, double to,
                       std::vector<double>& frames)
    {
        view.setProperty("contentY", from);
        rest();
        double place = from;
        double direction = 1;
        for (int step = 0; step < scrollSteps; ++step) {
            if (place + direction * scrollStep > to || place + direction * scrollStep < from)
                direction = -direction;
            place += direction * scrollStep;
            frames.push_back(untilFrame(&window, [&] { view.setProperty("contentY", place); }));
        }
        rest();
    }

    /// Drags a window's card from above the goals' cards down over them, and on along the lower
    /// edge, where the board scrolls below it; then cancels the drag. The toolkit has no drags on
    /// its offscreen platform, so that their events are sent as another platform sends them.
    void drag(QQuickItem& view, QQuickWindow*& window, double goals, Figures& figures)
    {
        const Assignments before = m_store->assignments();
        view.setProperty("contentY", goals - targetSpacing - 1.5 * windowCardHeight);
        rest();
        auto& source = *qobject_cast<BoardDragSource*>(
            findItem(*window->contentItem(), "kelpa::BoardDragSource"));
        const QRectF area = view.mapRectToScene({0, 0, view.width(), view.height()});
        const QQuickItem* const card = shownItem(*window->contentItem(), "WindowCard", area);
        if (card == nullptr)
            throw std::runtime_error("there is no card to drag");
        const QPointF held = card->mapToScene({card->width() / 2, card->height() / 2});
        int highlightedTargets = 0;
        const auto carrying = QObject::connect(&source, &BoardDragSource::isDraggingChanged, [&] {
            if (source.isDragging())
                highlightedTargets = carry(window, area, held, card->property("windowID"), figures);
        });
        sendMouse(*window, QEvent::MouseButtonPress, held, Qt::LeftButton);
        for (int i = 1; i <= 20; ++i)
            sendMouse(*window, QEvent::MouseMove, held + QPointF(0, i), Qt::LeftButton);
        rest();
        QObject::disconnect(carrying);
        sendMouse(*window, QEvent::MouseButtonRelease, held, Qt::NoButton);
        rest();
        if (highlightedTargets < 2 || !(view.property("contentY").toDouble() > goals))
            throw std::runtime_error("a drag highlighted no targets, or did not scroll");
        if (highlightedTarget(*window->contentItem()) != nullptr ||
            m_store->assignments() != before)
            throw std::runtime_error("a cancelled drag left something behind");
    }

    /// The number of targets that were highlighted on the way.
    static int carry(QQuickWindow*& window, const QRectF& area, QPointF from,
                     const QVariant& windowID, Figures& figures)
    {
        QMimeData data;
        data.setText(QString::number(windowID.toUInt()));
        QDragEnterEvent enter(from.toPoint(), Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QCoreApplication::sendEvent(window, &enter);
        const QQuickItem* highlighted = nullptr;
        int highlightedTargets = 0;
        const auto step = [&](QPointF to, std::vector<double>& frames) {
            frames.push_back(untilFrame(&window, [&] {
                QDragMoveEvent move(to.toPoint(), Qt::MoveAction, &data, Qt::LeftButton,
                                    Qt::NoModifier);
                QCoreApplication::sendEvent(window, &move);
                window->update();
            }));
            const QQuickItem* const now = highlightedTarget(*window->contentItem());
            highlightedTargets += now != nullptr && now != highlighted ? 1 : 0;
            highlighted = now;
        };
        const double wayDown = area.bottom() - 1 - from.y();
        for (int i = 1; i <= dragSteps; ++i)
            step(from + QPointF(i % 7, wayDown * i / dragSteps), figures.dragFrames);
        for (int i = 1; i <= dragSteps; ++i)
            step({from.x() + i % 7, area.bottom() - 1}, figures.dragScrollFrames);
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(window, &leave);
        return highlightedTargets;
    }

    /// Selects one goal after the other and back, by the arrow keys.
    void select(QQuickWindow*& window, Figures& figures)
    {
        m_store->activateTarget(TargetSelection::goal(m_store->goals().front().id),
                                EnterWindowLayer::no);
        rest();
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Down, Qt::Key_Up}) {
            const TargetSelection before = m_store->boardNavigation().target;
            figures.selection.push_back(untilFrame(&window, [&] {
                QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
                QCoreApplication::sendEvent(window, &press);
                if (m_store->boardNavigation().target == before)
                    throw std::runtime_error("a key selected nothing");
            }));
            rest();
        }
    }

    /// Opens the menu of a window's card, which has an entry for every goal.
    void openMenus(QQuickWindow*& window, Figures& figures)
    {
        const auto press = [&window](Qt::Key key) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            QCoreApplication::sendEvent(window, &event);
        };
        m_store->activateTarget(TargetSelection::unassigned(), EnterWindowLayer::yes);
        rest();
        for (int time = 0; time < menuOpenings; ++time) {
            std::vector<double>& times = time == 0 ? figures.firstMenu : figures.laterMenus;
            times.push_back(untilFrame(&window, [&press] { press(Qt::Key_Menu); }));
            rest();
            if (findItem(*window->contentItem(), "AppMenuItem") == nullptr)
                throw std::runtime_error("no menu opened");
            press(Qt::Key_Escape);
            rest();
        }
    }

    test::FakeDesktop m_desktop;
    test::ManualScheduler m_scheduler;
    test::MemorySettingsStore m_settings;
    std::unique_ptr<WindowStore> m_store;
};

/// Prints the memory of this process at each stage; without goals, that of an empty window.
int printMemory(int goalCount)
{
    if (goalCount == 0) {
        QQuickWindow empty;
        QQuickWindow* window = &empty;
        empty.resize(1200, 800);
        untilFrame(&window, [&empty] { empty.show(); });
        std::printf("%f\n", residentMemory());
        return 0;
    }
    Figures figures;
    Board board(goalCount, &figures);
    board.measure(figures);
    for (const double stage : figures.memory)
        std::printf("%f\n", stage);
    return 0;
}

void printMemoryOf(int goalCount)
{
    const std::vector<double> small = memoryOfProcess(smallBoard);
    const std::vector<double> large = memoryOfProcess(goalCount);
    for (std::size_t stage = 0; stage < memoryStages.size(); ++stage)
        printTableRow(memoryStages.at(stage), small.at(stage), large.at(stage));
    std::printf("\nan empty window: %.2f MiB\n", memoryOfProcess(0).at(0));
}

constexpr double mostFrames = 0.95;

/// A quantile of a series of processor times.
struct TimeRow
{
    const char* name;
    std::vector<double> Figures::*times;
    double part;
};

constexpr std::array timeRows{
    TimeRow{"from making the interface to its first frame", &Figures::firstFrame, median},
    TimeRow{"a frame while scrolling, median", &Figures::scrollFrames, median},
    TimeRow{"a frame while scrolling, 95 of 100 below", &Figures::scrollFrames, mostFrames},
    TimeRow{"the same, over cards of goals only, median", &Figures::goalFrames, median},
    TimeRow{"the same, 95 of 100 below", &Figures::goalFrames, mostFrames},
    TimeRow{"a frame while dragging a card, median", &Figures::dragFrames, median},
    TimeRow{"a frame while dragging a card, 95 of 100", &Figures::dragFrames, mostFrames},
    TimeRow{"the same at the edge, which scrolls, median", &Figures::dragScrollFrames, median},
    TimeRow{"the same at the edge, 95 of 100 below", &Figures::dragScrollFrames, mostFrames},
    TimeRow{"from a key press to the drawn selection", &Figures::selection, median},
    TimeRow{"from a key press to a window's menu, first", &Figures::firstMenu, median},
    TimeRow{"the same, later", &Figures::laterMenus, median},
};

/// A number that is the same in every round.
struct CountRow
{
    const char* name;
    int Figures::*count;
};

constexpr std::array countRows{
    CountRow{"items alive, also in closed menus", &Figures::items},
    CountRow{"the same, after a window's menu was open", &Figures::itemsAfterMenus},
    CountRow{"targets with items", &Figures::cards},
};

int run(int goalCount, int rounds)
{
    Board ten(smallBoard);
    Board many(goalCount);
    Figures small;
    Figures large;
    // The first round warms up.
    for (int round = 0; round <= rounds; ++round) {
        if (round == 1) {
            small = {};
            large = {};
        }
        ten.measure(small);
        many.measure(large);
    }
    std::printf("processor milliseconds, %d rounds, window of 1200 x 800\n\n", rounds);
    printTableHead("10 goals", qPrintable(QStringLiteral("%1 goals").arg(goalCount)));
    for (const TimeRow& row : timeRows)
        printTableRow(row.name, quantile(small.*row.times, row.part),
                      quantile(large.*row.times, row.part));
    for (const CountRow& row : countRows)
        printTableRow(row.name, small.*row.count, large.*row.count);
    printMemoryOf(goalCount);
    return 0;
}

} // namespace
} // namespace kelpa::bench

int main(int argc, char** argv)
{
    using namespace kelpa::bench;
    return runOffscreen(argc, argv, [] {
        const QStringList arguments = QCoreApplication::arguments();
        if (arguments.size() == 3 && arguments.at(1) == memoryOption)
            return printMemory(arguments.at(2).toInt());
        const auto number = [&arguments](const QString& option, int otherwise) {
            const qsizetype at = arguments.indexOf(option);
            return at < 0 ? otherwise : qMax(1, arguments.value(at + 1).toInt());
        };
        return run(number(QStringLiteral("--goals"), defaultLargeBoard),
                   number(QStringLiteral("--rounds"), defaultRounds));
    });
}
