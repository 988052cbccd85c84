// Compares a board of titles that people write with the same board after somebody has pasted whole
// files into it: processor time from the stored values to the first frame, while scrolling,
// searching and changing another todo, and the characters that are laid out.
#include "bench/store/board/BoardFixture.h"
#include "bench/views/Figures.h"
#include "bench/views/SceneProbe.h"
#include "platform/qt/WorkerPool.h"
#include "store/WindowStore.h"
#include "store/board/BoardPersistence.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemorySettingsStore.h"
#include "views/ViewEngine.h"
#include "views/board/BoardController.h"
#include "views/scene/WaterfallView.h"

#include <QQuickWindow>

#include <array>
#include <cstdio>
#include <memory>
#include <vector>

namespace kelpa::bench {
namespace {

constexpr int rounds = 7;
constexpr int goalCount = 10;
constexpr int todoCount = 100;
constexpr int windowCount = 20;
constexpr int steps = 30;
constexpr double scrollStep = 40;
constexpr qsizetype megabyte = 1 << 20;

struct Figures
{
    std::vector<double> loading;
    std::vector<double> firstFrame;
    std::vector<double> scrolling;
    std::vector<double> searching;
    std::vector<double> changing;
    int characters = 0;
};

enum class Texts : std::uint8_t { usual, overlong };

/// What gets into titles by accident, or on purpose.
QStringList overlongTitles()
{
    const QString bidi = QStringLiteral("\u202eabc\u2067");
    return {QString(5 * megabyte, u'x'), QStringLiteral("word ").repeated(megabyte),
            u'e' + QString(megabyte, QChar(0x0301)), QString(megabyte, u'\n') + u'x',
            bidi.repeated(megabyte / bidi.size())};
}

QList<Goal> goalsWith(Texts texts)
{
    QList<Goal> goals = largeBoard(goalCount, todoCount);
    if (texts == Texts::usual)
        return goals;
    const QStringList titles = overlongTitles();
    // In the first goals, which the first frame shows.
    for (qsizetype i = 0; i < titles.size(); ++i)
        goals[i % 2].todos[i + 1].title = titles.at(i);
    goals[1].title = titles.front();
    return goals;
}

/// Adds the characters of all items that lay out a text.
void countCharacters(const QQuickItem& item, int& count)
{
    if (item.inherits("QQuickText"))
        count += static_cast<int>(item.property("text").toString().size());
    const QList<QQuickItem*> children = item.childItems();
    for (const QQuickItem* const child : children)
        countCharacters(*child, count);
}

class Board
{
public:
    explicit Board(Texts texts)
    {
        const QList<Goal> goals = goalsWith(texts);
        Assignments assignments;
        for (int i = 0; i < windowCount; ++i) {
            const auto id = static_cast<WindowID>(100 + i);
            m_desktop.addAccessibleWindow(id, 1000 + i, QStringLiteral("Window %1").arg(i));
            assignments.insert(QString::number(id), goals.at(i % 2).id);
        }
        m_settings.write(boardEntries(goals, {}));
        m_settings.write({assignmentsEntry(assignments)});
    }

    void measure(Figures& figures)
    {
        const double start = processorMilliseconds();
        WindowStore store(m_desktop.platform(), m_settings, m_scheduler);
        figures.loading.push_back(processorMilliseconds() - start);
        store.refresh();
        ViewEngine::Options options;
        options.appearance = Appearance::light;
        options.isReducingMotion = true;
        ViewEngine engine(store, m_desktop, std::make_shared<WorkerPool>(1), options);
        QQuickWindow* window = nullptr;
        figures.firstFrame.push_back(untilFrame(&window, [&] {
            engine.show();
            window = engine.window();
        }));
        rest();
        figures.characters = 0;
        countCharacters(*window->contentItem(), figures.characters);

        auto& targets =
            *qobject_cast<WaterfallView*>(findItem(*window->contentItem(), "kelpa::WaterfallView"));
        QQuickItem& view = *targets.parentItem()->parentItem();
        const auto frameAfter = [&window](const auto& change) {
            return untilFrame(&window, [&] {
                change();
                window->update();
            });
        };
        for (int step = 1; step <= steps; ++step)
            figures.scrolling.push_back(
                frameAfter([&] { view.setProperty("contentY", scrollStep * (step % 15)); }));
        view.setProperty("contentY", 0);
        rest();
        search(store, figures);
        const Goal goal = store.goals().front();
        for (int step = 0; step < steps; ++step)
            figures.changing.push_back(
                frameAfter([&] { store.toggleTodo(goal.todos.front().id, goal.id); }));
    }

private:
    /// In the sheet that offers windows: it also searches the titles of goals.
    static void search(WindowStore& store, Figures& figures)
    {
        BoardController controller(store);
        WindowPicker& picker = *controller.windows()->picker();
        picker.open(store.goals().back().id.text());
        for (int step = 0; step < steps; ++step) {
            const double start = processorMilliseconds();
            picker.setSearchText(step % 2 == 0 ? QStringLiteral("quarter") : QStringLiteral("w"));
            figures.searching.push_back(processorMilliseconds() - start);
        }
        picker.close();
    }

    test::FakeDesktop m_desktop;
    test::ManualScheduler m_scheduler;
    test::MemorySettingsStore m_settings;
};

struct TimeRow
{
    const char* name;
    std::vector<double> Figures::*times;
};

constexpr std::array timeRows{
    TimeRow{"reading the stored board", &Figures::loading},
    TimeRow{"from making the interface to its first frame", &Figures::firstFrame},
    TimeRow{"a frame while scrolling", &Figures::scrolling},
    TimeRow{"a search among windows and goals", &Figures::searching},
    TimeRow{"changing another todo, until its frame", &Figures::changing},
};

int run()
{
    Board usualBoard(Texts::usual);
    Board overlongBoard(Texts::overlong);
    Figures usual;
    Figures overlong;
    // The first round warms up.
    for (int round = 0; round <= rounds; ++round) {
        if (round == 1) {
            usual = {};
            overlong = {};
        }
        usualBoard.measure(usual);
        overlongBoard.measure(overlong);
    }
    std::printf("processor milliseconds, medians of %d rounds, window of 1200 x 800\n\n", rounds);
    printTableHead("usual", "overlong");
    for (const TimeRow& row : timeRows)
        printTableRow(row.name, quantile(usual.*row.times, median),
                      quantile(overlong.*row.times, median));
    printTableRow("characters laid out", usual.characters, overlong.characters);
    return 0;
}

} // namespace
} // namespace kelpa::bench

int main(int argc, char** argv)
{
    return kelpa::bench::runOffscreen(argc, argv, kelpa::bench::run);
}
