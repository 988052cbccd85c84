// Measures how late the frames of a board are that scrolls while fifty windows change their titles
// and contents: with background work that yields to the interface, and beside it with the same work
// at the interface's own priority; both on a machine with nothing else to do, and on one whose
// every processor is busy. Then the same while thirty windows a second open and close instead,
// which is all that `--churn` measures. Prints one table.

#include "bench/views/Figures.h"
#include "bench/views/SceneProbe.h"
#include "live/LiveBoard.h"
#include "live/StripedWindow.h"
#include "platform/qt/QtScheduler.h"
#include "platform/qt/WorkerPool.h"
#include "support/desktop/WaitUntil.h"
#include "views/ViewEngine.h"
#include "views/scene/WaterfallView.h"

#include <QQuickWindow>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <list>
#include <memory>
#include <random>
#include <stdexcept>
#include <thread>
#include <vector>

namespace kelpa::bench {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using namespace std::chrono_literals;

constexpr int windowCount = 50;
constexpr int frames = 300;
constexpr int rounds = 3;
constexpr auto frameTime = std::chrono::microseconds(16667);
constexpr double scrollStep = 12;

/// Fifty windows of another program, which change all the time.
class ChangingWindows
{
public:
    explicit ChangingWindows(const QByteArray& display) : m_client(display)
    {
        for (int index = 0; index < windowCount; ++index) {
            m_windows.push_back(
                test::openStriped(m_client, {.title = "window " + QByteArray::number(index)}));
        }
        m_client.sync();
    }

    void start()
    {
        m_changing = std::jthread([this](const std::stop_token& stop) { change(stop); });
    }
    void stop() { m_changing = {}; }

private:
    /// Each window once in a quarter of a second.
    void change(const std::stop_token& stop)
    {
        std::minstd_rand random;
        for (std::size_t count = 0; !stop.stop_requested(); ++count) {
            const xcb_window_t window = m_windows.at(count % m_windows.size());
            const auto top = static_cast<std::int16_t>(random() % 200);
            m_client.fill(window, {0, top, 400, 60}, static_cast<std::uint32_t>(random()));
            m_client.setText(window, "_NET_WM_NAME", "window " + QByteArray::number(count));
            m_client.sync();
            std::this_thread::sleep_for(5ms);
        }
    }

    test::TestClient m_client;
    std::vector<xcb_window_t> m_windows;
    std::jthread m_changing;
};

/// Thirty windows a second that open and, a third of a second later, close.
class ChurningWindows
{
public:
    explicit ChurningWindows(const QByteArray& display) : m_client(display) {}

    void start()
    {
        m_churning = std::jthread([this](const std::stop_token& stop) { churn(stop); });
    }
    void stop() { m_churning = {}; }

private:
    void churn(const std::stop_token& stop)
    {
        std::deque<xcb_window_t> open;
        auto due = Clock::now();
        for (int count = 0; !stop.stop_requested(); ++count) {
            open.push_back(
                test::openStriped(m_client, {.title = "new " + QByteArray::number(count)}));
            if (open.size() > 10) {
                m_client.destroy(open.front());
                open.pop_front();
            }
            m_client.sync();
            due += 33ms;
            std::this_thread::sleep_until(due);
        }
        for (const xcb_window_t window : open)
            m_client.destroy(window);
        m_client.sync();
    }

    test::TestClient m_client;
    std::jthread m_churning;
};

/// Keeps every processor busy.
class BusyMachine
{
public:
    BusyMachine()
    {
        for (unsigned count = 0; count < std::thread::hardware_concurrency(); ++count) {
            m_programs.emplace_back(
                QByteArray(), QStringLiteral("sh"),
                QStringList{QStringLiteral("-c"), QStringLiteral("while :; do :; done")});
        }
    }

private:
    std::list<test::Program> m_programs;
};

class ScrollingBoard
{
public:
    ScrollingBoard(const QByteArray& display, int niceness)
        : m_scheduler(niceness), m_board(display, m_scheduler)
    {
        ViewEngine::Options options;
        options.appearance = Appearance::light;
        options.isReducingMotion = true;
        m_engine = std::make_unique<ViewEngine>(*m_board.store(), m_applications,
                                                std::make_shared<WorkerPool>(1), options);
        m_engine->show();
        m_board.store()->startObserving();
        if (!test::waitUntil([this] { return m_board.store()->windows().size() == windowCount; }))
            throw std::runtime_error("the windows are not listed");
        // Folded they would all be in view.
        m_board.store()->setUnsortedFold(UnsortedFold::unfolded);
        // Until all cards in view have their pictures.
        test::waitUntil([] { return false; }, 1500ms);
    }
    ScrollingBoard(const ScrollingBoard&) = delete;
    ScrollingBoard& operator=(const ScrollingBoard&) = delete;
    ~ScrollingBoard()
    {
        m_engine.reset();
        m_board.closeStore();
        if (!test::waitUntil([this] { return m_scheduler.shutDown(); }))
            qFatal("the background work does not end");
    }

    /// The time from each step of scrolling to its frame.
    void scroll(std::vector<double>& times)
    {
        QQuickWindow& window = *m_engine->window();
        auto& targets =
            *qobject_cast<WaterfallView*>(findItem(*window.contentItem(), "kelpa::WaterfallView"));
        QQuickItem& view = *targets.parentItem()->parentItem();
        const double end = view.property("contentHeight").toDouble() - view.height();
        if (end < 10 * scrollStep)
            throw std::runtime_error("there is nothing to scroll");
        double place = 0;
        double direction = scrollStep;
        auto due = Clock::now();
        for (int frame = 0; frame < frames; ++frame) {
            if (place + direction > end || place + direction < 0)
                direction = -direction;
            place += direction;
            bool isDrawn = false;
            const auto drawn = QObject::connect(&window, &QQuickWindow::frameSwapped,
                                                [&isDrawn] { isDrawn = true; });
            view.setProperty("contentY", place);
            while (!isDrawn)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            QObject::disconnect(drawn);
            // From the time at which the step was due: a main thread that waits for a processor is
            // late as well.
            times.push_back(Milliseconds(Clock::now() - due).count());
            due = std::max(due + frameTime, Clock::now());
            while (Clock::now() < due)
                QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        }
    }

private:
    QtScheduler m_scheduler;
    test::LiveBoard m_board;
    test::FakeDesktop m_applications;
    std::unique_ptr<ViewEngine> m_engine;
};

void print(const char* machine, const char* priority, const std::vector<double>& times)
{
    const auto late = std::ranges::count_if(
        times, [](double time) { return time > Milliseconds(frameTime).count(); });
    std::printf("%-8s %-10s %10.1f %10.1f %10.1f %10.1f\n", machine, priority,
                quantile(times, median), quantile(times, 0.95), quantile(times, 1),
                100.0 * static_cast<double>(late) / static_cast<double>(times.size()));
    std::fflush(stdout);
}

void measure(const QByteArray& display, ChangingWindows& windows, const char* machine)
{
    std::vector<double> same;
    std::vector<double> yielding;
    for (int round = 0; round < rounds; ++round) {
        for (const int niceness : {0, QtScheduler::utilityNiceness}) {
            ScrollingBoard board(display, niceness);
            windows.start();
            board.scroll(niceness == 0 ? same : yielding);
            windows.stop();
        }
    }
    print(machine, "same", same);
    print(machine, "yielding", yielding);
}

void measureChurn(const QByteArray& display)
{
    std::vector<double> times;
    ChurningWindows windows(display);
    for (int round = 0; round < rounds; ++round) {
        ScrollingBoard board(display, QtScheduler::utilityNiceness);
        windows.start();
        board.scroll(times);
        windows.stop();
    }
    print("churn", "yielding", times);
}

int run()
{
    const test::XServer xServer;
    const test::WindowManager manager(xServer.display());
    ChangingWindows windows(xServer.display());
    std::printf("%-8s %-10s %10s %10s %10s %10s\n", "Machine", "Priority", "median ms", "95% ms",
                "worst ms", "late %");
    if (QCoreApplication::arguments().value(1) != QStringLiteral("--churn")) {
        measure(xServer.display(), windows, "idle");
        const BusyMachine busy;
        measure(xServer.display(), windows, "busy");
    }
    measureChurn(xServer.display());
    return 0;
}

} // namespace
} // namespace kelpa::bench

int main(int argc, char** argv)
{
    return kelpa::bench::runOffscreen(argc, argv, kelpa::bench::run);
}
