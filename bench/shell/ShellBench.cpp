// Measures how soon a double tap brings Kelpa forward, and what listening for it costs while the
// person types into another program. Measured from outside: keys are pressed as on a keyboard, the
// window manager reports the active window, the kernel reports what a program has used.

#include "support/desktop/Programs.h"
#include "support/desktop/TestClient.h"
#include "support/desktop/WaitUntil.h"

#define XK_MISCELLANY
#define XK_LATIN1
#include <X11/keysymdef.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <xcb/xtest.h>

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace kelpa::bench {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int rounds = 30;
constexpr auto typingTime = 20s;
constexpr auto betweenKeys = 50ms;

/// Presses keys of the display, found by their keysyms.
class Keyboard
{
public:
    explicit Keyboard(test::TestClient& client) : m_client(client)
    {
        const xcb_setup_t& setup = *xcb_get_setup(client.connection());
        const std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&std::free)> reply(
            xcb_get_keyboard_mapping_reply(
                client.connection(),
                xcb_get_keyboard_mapping(
                    client.connection(), setup.min_keycode,
                    static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1)),
                nullptr),
            &std::free);
        const xcb_keysym_t* const symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
        const std::ptrdiff_t width = reply->keysyms_per_keycode;
        for (int key = setup.max_keycode - setup.min_keycode; key >= 0; --key) {
            const auto code = static_cast<xcb_keycode_t>(setup.min_keycode + key);
            if (symbols[key * width] == XK_Super_L)
                m_super = code;
            else if (symbols[key * width] == XK_a)
                m_letter = code;
        }
    }

    void pressSuper() { move(XCB_KEY_PRESS, m_super); }
    void releaseSuper() { move(XCB_KEY_RELEASE, m_super); }
    void typeLetter()
    {
        move(XCB_KEY_PRESS, m_letter);
        move(XCB_KEY_RELEASE, m_letter);
    }

private:
    void move(std::uint8_t type, xcb_keycode_t key)
    {
        xcb_test_fake_input(m_client.connection(), type, key, 0, m_client.root(), 0, 0, 0);
        xcb_flush(m_client.connection());
    }

    test::TestClient& m_client;
    xcb_keycode_t m_super = 0;
    xcb_keycode_t m_letter = 0;
};

std::uint32_t activeWindow(test::TestClient& client)
{
    return client.word(client.root(), "_NET_ACTIVE_WINDOW").value_or(0);
}

/// Milliseconds from `start` until the window manager reports the window as active; absent after
/// two seconds.
std::optional<double> timeToFront(test::TestClient& client, xcb_window_t window,
                                  Clock::time_point start)
{
    while (Clock::now() - start < 2s) {
        if (activeWindow(client) == window)
            return Milliseconds(Clock::now() - start).count();
        pollfd watched{xcb_get_file_descriptor(client.connection()), POLLIN, 0};
        poll(&watched, 1, 20);
        while (auto* const event = xcb_poll_for_event(client.connection()))
            std::free(event);
    }
    return std::nullopt;
}

void activate(test::TestClient& client, xcb_window_t window)
{
    client.request(window, "_NET_ACTIVE_WINDOW", {2, 0, 0, 0, 0});
    test::waitUntil([&] { return activeWindow(client) == window; });
}

std::optional<double> timeOfOneDoubleTap(test::TestClient& client, Keyboard& keyboard,
                                         xcb_window_t other, xcb_window_t own)
{
    // Kelpa retries when it is not in front; no person switches back so quickly.
    std::this_thread::sleep_for(300ms);
    activate(client, other);
    // As slow as a hand, and further from the previous taps than the two of a pair.
    std::this_thread::sleep_for(500ms);
    keyboard.pressSuper();
    std::this_thread::sleep_for(40ms);
    keyboard.releaseSuper();
    std::this_thread::sleep_for(80ms);
    keyboard.pressSuper();
    std::this_thread::sleep_for(40ms);
    // A switch before the second release would count as quick.
    if (activeWindow(client) != other)
        return std::nullopt;
    const auto start = Clock::now();
    keyboard.releaseSuper();
    return timeToFront(client, own, start);
}

void measureDoubleTaps(const char* name, test::WindowManagerKind kind)
{
    const QTemporaryDir folder;
    const test::XServer server;
    const test::WindowManager manager(server.display(), kind);
    test::TestClient client(server.display());
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(client.connection(), client.root(), XCB_CW_EVENT_MASK, &mask);
    const xcb_window_t other = client.open({.title = "other"});
    test::waitUntil([&] { return activeWindow(client) == other; });
    const test::Program kelpa(
        server.display(), QStringLiteral(KELPA_PROGRAM),
        {QStringLiteral("--settings"), folder.filePath(QStringLiteral("board.sqlite"))});
    test::waitUntil([&] { return activeWindow(client) != other && activeWindow(client) != 0; },
                    20s);
    const xcb_window_t own = activeWindow(client);
    Keyboard keyboard(client);
    std::vector<double> times;
    int missed = 0;
    for (int round = -1; round < rounds; ++round) {
        const std::optional<double> time = timeOfOneDoubleTap(client, keyboard, other, own);
        if (round < 0)
            continue;
        if (time)
            times.push_back(*time);
        else
            ++missed;
    }
    std::ranges::sort(times);
    if (times.empty())
        std::printf("| %-8s | %6s | %6s | %6s | %6d |\n", name, "-", "-", "-", missed);
    else
        std::printf("| %-8s | %6.1f | %6.1f | %6.1f | %6d |\n", name, times[times.size() / 2],
                    times.front(), times.back(), missed);
    std::fflush(stdout);
}

struct Usage
{
    double cpuMilliseconds = 0;
    /// How often one of its threads went to sleep, and so woke up.
    long long wakeUps = 0;
};

Usage usageOf(qint64 process)
{
    Usage usage;
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(process));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile schedule(tasks.filePath(task + QStringLiteral("/schedstat")));
        if (schedule.open(QIODevice::ReadOnly))
            usage.cpuMilliseconds += schedule.readAll().split(' ').value(0).toDouble() / 1e6;
        QFile status(tasks.filePath(task + QStringLiteral("/status")));
        if (!status.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& line : status.readAll().split('\n')) {
            if (line.startsWith("voluntary_ctxt_switches:"))
                usage.wakeUps += line.mid(line.indexOf(':') + 1).trimmed().toLongLong();
        }
    }
    return usage;
}

void printCost(const char* name, const Usage& before, const Usage& after)
{
    const double seconds = std::chrono::duration<double>(typingTime).count();
    std::printf("| %-34s | %11.2f | %12.1f |\n", name,
                (after.cpuMilliseconds - before.cpuMilliseconds) / seconds,
                static_cast<double>(after.wakeUps - before.wakeUps) / seconds);
    std::fflush(stdout);
}

void measureTyping(const char* name, const QString& program, const QStringList& arguments)
{
    const test::XServer server;
    const test::WindowManager manager(server.display());
    test::TestClient client(server.display());
    const test::Program subject(server.display(), program, arguments);
    // Waits until the program has started and settled.
    std::this_thread::sleep_for(6s);
    // A window that draws nothing when it receives keys, so that only keys cause events.
    const xcb_window_t typedInto = client.open({.title = "typed into"});
    activate(client, typedInto);
    Keyboard keyboard(client);
    std::this_thread::sleep_for(1s);
    Usage before = usageOf(subject.processID());
    std::this_thread::sleep_for(typingTime);
    printCost((std::string(name) + ", nothing typed").c_str(), before,
              usageOf(subject.processID()));
    before = usageOf(subject.processID());
    const auto end = Clock::now() + typingTime;
    for (auto next = Clock::now(); next < end; next += betweenKeys) {
        keyboard.typeLetter();
        std::this_thread::sleep_until(next + betweenKeys);
    }
    printCost((std::string(name) + ", 20 keys a second").c_str(), before,
              usageOf(subject.processID()));
}

void run()
{
    std::printf("second release of Super to the window in front, %d times, milliseconds\n\n",
                rounds);
    std::printf("|          | median |   best |  worst | missed |\n");
    std::printf("|----------|-------:|-------:|-------:|-------:|\n");
    measureDoubleTaps("openbox", test::WindowManagerKind::openbox);
    measureDoubleTaps("xfwm4", test::WindowManagerKind::xfwm4);
    if (test::isInstalled(test::WindowManagerKind::kwin))
        measureDoubleTaps("kwin", test::WindowManagerKind::kwin);
    if (test::isInstalled(test::WindowManagerKind::mutter))
        measureDoubleTaps("mutter", test::WindowManagerKind::mutter);

    const QTemporaryDir folder;
    std::printf("\nwhat is used while another program is typed into, a second\n\n");
    std::printf("|                                    | ms of a CPU | wake-ups     |\n");
    std::printf("|------------------------------------|------------:|-------------:|\n");
    measureTyping("listening alone", QStringLiteral(MONITOR_PROGRAM), {});
    measureTyping("Kelpa", QStringLiteral(KELPA_PROGRAM),
                  {QStringLiteral("--settings"), folder.filePath(QStringLiteral("board.sqlite"))});
}

} // namespace
} // namespace kelpa::bench

int main(int argc, char** argv)
{
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("NO_AT_BRIDGE", "1");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    const QCoreApplication application(argc, argv);
    kelpa::bench::run();
    return 0;
}
