// Measures how soon a change of a window reaches the store: from the request of its program until
// the store's list of windows shows it. No timer starts discovery passes meanwhile. Each change
// follows a quiet period. Prints one table.

#include "live/LiveBoard.h"
#include "support/desktop/LoopScheduler.h"
#include "support/desktop/WaitUntil.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace kelpa::bench {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using namespace std::chrono_literals;

constexpr int rounds = 25;

class Desktop
{
public:
    explicit Desktop(int windows)
    {
        for (int index = 1; index < windows; ++index) {
            m_client.open({.title = "other " + QByteArray::number(index)});
        }
        store().startObserving();
        if (!test::waitUntil([&] { return store().windows().size() == windows - 1; }, 60s)) {
            qFatal("the windows are not listed");
        }
    }

    WindowStore& store() { return *m_board.store(); }
    test::TestClient& client() { return m_client; }
    std::optional<WindowItem> window(const char* title) const
    {
        return m_board.window(QString::fromUtf8(title));
    }

    /// Carries out `change` and adds the time until `isKnown` holds.
    void time(std::vector<double>& times, const std::function<void()>& change,
              const std::function<bool()>& isKnown)
    {
        rest();
        const auto begin = Clock::now();
        change();
        m_client.sync();
        QEventLoop loop;
        QObject::connect(&store(), &WindowStore::windowsChanged, &loop, [&] {
            if (isKnown()) {
                times.push_back(Milliseconds(Clock::now() - begin).count());
                loop.quit();
            }
        });
        QTimer::singleShot(10s, &loop, [] { qFatal("a change was not noticed"); });
        loop.exec();
    }

private:
    /// Waits until there have been no discovery passes for a while, so that event coalescing has
    /// returned to its shortest interval.
    void rest()
    {
        int before = 0;
        do {
            before = m_board.discoveryPasses();
        } while (test::waitUntil([&] { return m_board.discoveryPasses() != before; }, 300ms));
    }

    test::XServer m_xServer;
    test::WindowManager m_manager{m_xServer.display()};
    test::TestClient m_client{m_xServer.display()};
    test::TimerlessScheduler m_scheduler;
    test::LiveBoard m_board{m_xServer.display(), m_scheduler};
};

void print(const char* what, int windows, std::vector<double>& times)
{
    std::sort(times.begin(), times.end());
    std::printf("%-12s %8d %10.1f %10.1f %10.1f\n", what, windows, times.at(times.size() / 2),
                times.at(times.size() * 9 / 10), times.back());
    std::fflush(stdout);
}

void measure(int windows)
{
    Desktop desktop(windows);
    test::TestClient& client = desktop.client();
    std::vector<double> opened;
    std::vector<double> renamed;
    std::vector<double> minimized;
    std::vector<double> restored;
    std::vector<double> closed;
    for (int round = 0; round < rounds; ++round) {
        xcb_window_t window = XCB_WINDOW_NONE;
        desktop.time(
            opened, [&] { window = client.open({.title = "window"}); },
            [&] { return desktop.window("window").has_value(); });
        desktop.time(
            renamed, [&] { client.setText(window, "_NET_WM_NAME", "renamed"); },
            [&] { return desktop.window("renamed").has_value(); });
        desktop.time(
            minimized, [&] { client.minimize(window); },
            [&] { return desktop.window("renamed")->isMinimized; });
        desktop.time(
            restored, [&] { client.map(window); },
            [&] { return !desktop.window("renamed")->isMinimized; });
        desktop.time(
            closed, [&] { client.destroy(window); }, [&] { return !desktop.window("renamed"); });
    }
    print("new", windows, opened);
    print("renamed", windows, renamed);
    print("minimised", windows, minimized);
    print("restored", windows, restored);
    print("closed", windows, closed);
}

} // namespace
} // namespace kelpa::bench

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    std::printf("%-12s %8s %10s %10s %10s\n", "Window", "of", "median ms", "90% ms", "worst ms");
    kelpa::bench::measure(10);
    kelpa::bench::measure(200);
    return 0;
}
