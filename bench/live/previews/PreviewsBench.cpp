// Measures how soon windows have their first pictures after the board begins to observe: while all
// of them are in view, and beside it with the timer alone, which takes the windows in turn. The
// windows cover each other, so that each of them has to draw itself first. Prints one table.

#include "live/LiveBoard.h"
#include "live/StripedWindow.h"
#include "platform/qt/QtScheduler.h"
#include "support/desktop/WaitUntil.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace kelpa::bench {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using namespace std::chrono_literals;

constexpr int rounds = 3;

enum class InView : std::uint8_t { none, all };

struct Times
{
    std::vector<double> first;
    std::vector<double> last;
};

/// One start on a display with windows.
void start(const QByteArray& display, int windows, InView inView, Times& times)
{
    QtScheduler scheduler;
    test::LiveBoard board(display, scheduler);
    WindowStore& store = *board.store();
    if (inView == InView::all) {
        // As the cards do.
        QObject::connect(&store, &WindowStore::windowsChanged, &store, [&store] {
            for (const WindowItem& window : store.windows()) {
                store.noteWindowInView(window.id);
            }
        });
    }
    const auto begin = Clock::now();
    const auto passed = [&begin] { return Milliseconds(Clock::now() - begin).count(); };
    QEventLoop loop;
    double first = 0;
    QObject::connect(&store, &WindowStore::previewsChanged, &loop, [&] {
        if (first == 0 && !store.previews().isEmpty()) {
            first = passed();
        }
        if (store.previews().size() == windows) {
            times.last.push_back(passed());
            loop.quit();
        }
    });
    QTimer::singleShot(60s, &loop, [] { qFatal("a window has no picture"); });
    store.startObserving();
    loop.exec();
    times.first.push_back(first);
    if (!test::waitUntil([&] { return scheduler.shutDown(); })) {
        qFatal("the background work does not end");
    }
}

double median(std::vector<double>& times)
{
    std::sort(times.begin(), times.end());
    return times.at(times.size() / 2);
}

void measure(int windows)
{
    const test::XServer xServer;
    const test::WindowManager manager(xServer.display());
    test::TestClient client(xServer.display());
    for (int index = 0; index < windows; ++index) {
        const xcb_window_t window = test::openStriped(
            client, {.width = 1000, .height = 700, .title = "window " + QByteArray::number(index)});
        if (!test::waitUntil([&] { return client.isListed(window) && client.isShown(window); })) {
            qFatal("a window is not shown");
        }
    }
    Times inTurn;
    Times inView;
    for (int round = 0; round < rounds; ++round) {
        start(xServer.display(), windows, InView::none, inTurn);
        start(xServer.display(), windows, InView::all, inView);
    }
    const auto print = [windows](const char* what, Times& times) {
        std::printf("%-12s %8d %10.0f %10.0f %10.0f\n", what, windows, median(times.first),
                    median(times.last), times.last.back());
    };
    print("in turn", inTurn);
    print("in view", inView);
    std::fflush(stdout);
}

} // namespace
} // namespace kelpa::bench

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    std::printf("%-12s %8s %10s %10s %10s\n", "Pictures", "windows", "first ms", "last ms",
                "worst ms");
    kelpa::bench::measure(9);
    kelpa::bench::measure(20);
    return 0;
}
