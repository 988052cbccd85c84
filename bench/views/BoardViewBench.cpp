// What the board on the screen costs: ten goals beside two hundred, with as many todos and windows
// to each goal and a picture of every window, in turn in one process; and what a process of its own
// takes in memory for each. Processor time, so that what else the machine does counts little.
#include "bench/board/BoardFixture.h"
#include "store/BoardPersistence.h"
#include "store/WindowStore.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemorySettingsStore.h"
#include "views/ViewEngine.h"
#include "views/WaterfallView.h"

#include <QAbstractItemModel>
#include <QDragMoveEvent>
#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QProcess>
#include <QQmlProperty>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSet>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <stdexcept>
#include <vector>

namespace kelpa::bench {
namespace {

constexpr int rounds = 5;
constexpr int scrollSteps = 120;
constexpr double scrollStep = 40;
constexpr int comparedGoals = 8;
constexpr int dragSteps = 60;
constexpr int todosPerGoal = 50;
constexpr int windowsPerTwoGoals = 5;

const QString memoryOption = QStringLiteral("--memory");

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

/// Lets timers and motions come to their end.
void rest()
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(80);
    while (std::chrono::steady_clock::now() < end)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

/// All items that live below an object, also those of closed menus and those that wait for use.
void collectItems(QObject& object, QSet<const QObject*>& seen, int& count)
{
    if (seen.contains(&object))
        return;
    seen.insert(&object);
    for (QObject* const child : object.children())
        collectItems(*child, seen, count);
    auto* const item = qobject_cast<QQuickItem*>(&object);
    if (item == nullptr)
        return;
    ++count;
    for (QQuickItem* const child : item->childItems())
        collectItems(*child, seen, count);
}

int itemCount(QQuickWindow& window)
{
    QSet<const QObject*> seen;
    int count = 0;
    collectItems(window, seen, count);
    collectItems(*window.contentItem(), seen, count);
    return count;
}

/// The first item, from the back to the front, whose type has the name.
QQuickItem* findItem(QQuickItem& item, const char* type)
{
    const QByteArray name = item.metaObject()->className();
    if (name == type || name.startsWith(QByteArray(type) + "_QMLTYPE"))
        return &item;
    for (QQuickItem* const child : item.childItems()) {
        if (QQuickItem* const found = findItem(*child, type))
            return found;
    }
    return nullptr;
}

/// The first row of the model whose "kind" is that.
int firstRow(const QAbstractItemModel& model, const QString& kind)
{
    const int role = model.roleNames().key("kind");
    for (int row = 0; row < model.rowCount(); ++row) {
        if (model.data(model.index(row, 0), role).toString() == kind)
            return row;
    }
    throw std::runtime_error("the board has no such target");
}

/// Of the targets that show that they would accept what is dragged over them, the first.
const QQuickItem* litTarget(const QQuickItem& item)
{
    if (item.property("isAccepting").toBool())
        return &item;
    const QList<QQuickItem*> children = item.childItems();
    for (const QQuickItem* const child : children) {
        if (const QQuickItem* const lit = litTarget(*child))
            return lit;
    }
    return nullptr;
}

struct Figures
{
    std::vector<double> firstFrame;
    std::vector<double> selection;
    std::vector<double> scrollFrames;
    /// Where there are only cards of goals.
    std::vector<double> goalFrames;
    std::vector<double> dragFrames;
    std::vector<double> dragScrollFrames;
    int items = 0;
    int cards = 0;
};

/// A desktop whose windows are shared by the goals evenly, a fifth of them by none.
class Board
{
public:
    explicit Board(int goalCount)
    {
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
        auto& targets =
            *qobject_cast<WaterfallView*>(findItem(*window->contentItem(), "kelpa::WaterfallView"));
        QQuickItem& view = *targets.parentItem()->parentItem();
        scroll(view, window, 0, view.property("contentHeight").toDouble() - view.height(),
               figures.scrollFrames);
        // All cards of goals as high as each other.
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
    }

private:
    /// From one place down to the other and up again, over and over.
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

    /// A window's card is dragged down over goals' cards, and on along the lower edge, where the
    /// board scrolls below it; then the drag is given up. The moves come as the display's part of
    /// the toolkit sends them, which has no drags where there is no display.
    void drag(QQuickItem& view, QQuickWindow*& window, double goals, Figures& figures)
    {
        const Assignments before = m_store->assignments();
        view.setProperty("contentY", goals);
        rest();
        QQuickItem& source = *findItem(*window->contentItem(), "BoardDragSource");
        QQmlProperty(&source, QStringLiteral("Drag.dragType"), qmlContext(&source)).write(0);
        QQmlProperty active(&source, QStringLiteral("Drag.active"), qmlContext(&source));
        active.write(true);
        QMimeData data;
        data.setText(QString::number(m_store->windows().front().id));

        const QRectF area = view.mapRectToScene({0, 0, view.width(), view.height()});
        QPointF place(area.center().x(), area.top() + area.height() / 4);
        QDragEnterEvent enter(place.toPoint(), Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QCoreApplication::sendEvent(window, &enter);
        const QQuickItem* lit = nullptr;
        int litTargets = 0;
        const auto step = [&](QPointF to, std::vector<double>& frames) {
            frames.push_back(untilFrame(&window, [&] {
                QDragMoveEvent move(to.toPoint(), Qt::MoveAction, &data, Qt::LeftButton,
                                    Qt::NoModifier);
                QCoreApplication::sendEvent(window, &move);
                window->update();
            }));
            const QQuickItem* const now = litTarget(*window->contentItem());
            litTargets += now != nullptr && now != lit ? 1 : 0;
            lit = now;
        };
        const double wayDown = area.bottom() - 1 - place.y();
        for (int i = 1; i <= dragSteps; ++i)
            step(place + QPointF(i % 7, wayDown * i / dragSteps), figures.dragFrames);
        place = {place.x(), area.bottom() - 1};
        for (int i = 1; i <= dragSteps; ++i)
            step(place + QPointF(i % 7, 0), figures.dragScrollFrames);
        if (litTargets < 2 || !(view.property("contentY").toDouble() > goals))
            throw std::runtime_error("a drag lit no targets, or did not scroll");
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(window, &leave);
        active.write(false);
        rest();
        if (litTarget(*window->contentItem()) != nullptr || m_store->assignments() != before)
            throw std::runtime_error("a drag that was given up left something behind");
    }

    /// From goal to goal and back, by the arrow keys.
    void select(QQuickWindow*& window, Figures& figures)
    {
        m_store->activateTarget(TargetSelection::goal(m_store->goals().front().id),
                                WindowStore::EnterWindowLayer::no);
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

/// In MiB, once the board has been shown and scrolled.
double residentMemory()
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

int printMemory(int goalCount)
{
    Board board(goalCount);
    Figures figures;
    board.measure(figures);
    std::printf("%f\n", residentMemory());
    return 0;
}

/// Of a process that shows such a board and nothing else.
double memoryOfProcess(int goalCount)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(),
                  {memoryOption, QString::number(goalCount)});
    process.waitForFinished(-1);
    return process.readAllStandardOutput().trimmed().toDouble();
}

int run()
{
    Board ten(10);
    Board twoHundred(200);
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
    printRow("the same, over cards of goals only, median", quantile(small.goalFrames, 0.5),
             quantile(large.goalFrames, 0.5));
    printRow("the same, 95 of 100 below", quantile(small.goalFrames, 0.95),
             quantile(large.goalFrames, 0.95));
    printRow("a frame while dragging a card, median", quantile(small.dragFrames, 0.5),
             quantile(large.dragFrames, 0.5));
    printRow("a frame while dragging a card, 95 of 100", quantile(small.dragFrames, 0.95),
             quantile(large.dragFrames, 0.95));
    printRow("the same at the edge, which scrolls, median", quantile(small.dragScrollFrames, 0.5),
             quantile(large.dragScrollFrames, 0.5));
    printRow("the same at the edge, 95 of 100 below", quantile(small.dragScrollFrames, 0.95),
             quantile(large.dragScrollFrames, 0.95));
    printRow("from a key press to the drawn selection", quantile(small.selection, 0.5),
             quantile(large.selection, 0.5));
    printRow("resident memory of a process, MiB", memoryOfProcess(10), memoryOfProcess(200));
    printRow("items alive, also in closed menus", small.items, large.items);
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
        const QStringList arguments = QCoreApplication::arguments();
        return arguments.size() == 3 && arguments.at(1) == kelpa::bench::memoryOption
                   ? kelpa::bench::printMemory(arguments.at(2).toInt())
                   : kelpa::bench::run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
