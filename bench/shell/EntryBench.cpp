// Measures how soon the field for a todo has the keyboard: from the request on the session bus, as
// a launcher sends it, and from the start of the command, as a key of the desktop runs it, until
// the window manager reports the field as the active window, and until the field is drawn as well.
// An empty window of another program is what the window manager takes by itself. Needs a session
// bus of its own.

#include "app/SingleInstance.h"
#include "platform/freedesktop/bus/PrimaryInstance.h"
#include "support/desktop/Programs.h"
#include "support/desktop/TestClient.h"
#include "support/desktop/WaitUntil.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace kelpa::bench {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int rounds = 20;

std::uint32_t activeWindow(test::TestClient& client)
{
    return client.word(client.root(), "_NET_ACTIVE_WINDOW").value_or(0);
}

/// The pixel of the screen in the upper left corner of the field, which is white there.
bool isDrawn(test::TestClient& client)
{
    constexpr std::int16_t x = 390;
    constexpr std::int16_t y = 197;
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
        xcb_get_image_reply(client.connection(),
                            xcb_get_image(client.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP,
                                          client.root(), x, y, 1, 1, ~0U),
                            nullptr),
        &std::free);
    if (!reply || xcb_get_image_data_length(reply.get()) < 3)
        return false;
    const std::uint8_t* const pixel = xcb_get_image_data(reply.get());
    return pixel[0] == 0xFF && pixel[1] == 0xFF && pixel[2] == 0xFF;
}

/// Milliseconds from before `cause` until another window than `other` is active, which is
/// `opened` then; as long as the limit where none is.
double untilActive(test::TestClient& client, xcb_window_t other, const std::function<void()>& cause,
                   xcb_window_t& opened)
{
    const auto start = Clock::now();
    cause();
    while (Clock::now() - start < 5s) {
        opened = activeWindow(client);
        if (opened != other && opened != 0)
            break;
        pollfd watched{xcb_get_file_descriptor(client.connection()), POLLIN, 0};
        poll(&watched, 1, 20);
        while (auto* const event = xcb_poll_for_event(client.connection()))
            std::free(event);
    }
    return Milliseconds(Clock::now() - start).count();
}

void print(const char* name, double first, std::vector<double> times)
{
    std::ranges::sort(times);
    std::printf("| %-24s | %6.1f | %6.1f | %6.1f | %6.1f |\n", name, first, times[times.size() / 2],
                times.front(), times.back());
    std::fflush(stdout);
}

enum class Until : std::uint8_t { active, drawn };

/// Opens the field over the window `other` again and again, and closes it each time.
void measure(const char* name, test::TestClient& client, xcb_window_t other,
             const std::function<void()>& open, const std::function<void(xcb_window_t)>& close,
             Until until = Until::active)
{
    double first = 0;
    std::vector<double> times;
    for (int round = -1; round < rounds; ++round) {
        // As far apart as a person's requests, so that nothing of the last one is under way.
        std::this_thread::sleep_for(300ms);
        xcb_window_t opened = 0;
        const auto start = Clock::now();
        double time = untilActive(client, other, open, opened);
        if (until == Until::drawn) {
            while (!isDrawn(client) && Clock::now() - start < 5s)
                std::this_thread::sleep_for(500us);
            time = Milliseconds(Clock::now() - start).count();
        }
        if (round < 0)
            first = time;
        else
            times.push_back(time);
        close(opened);
        test::waitUntil([&] { return activeWindow(client) == other; });
    }
    print(name, first, times);
}

void run()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("board.sqlite"));
    const test::XServer server;
    const test::WindowManager manager(server.display(), test::WindowManagerKind::openbox);
    test::TestClient client(server.display());
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(client.connection(), client.root(), XCB_CW_EVENT_MASK, &mask);
    const xcb_window_t other = client.open(
        {.x = 0, .y = 0, .width = 1200, .height = 760, .title = "other", .background = 0x204060});
    test::waitUntil([&] { return activeWindow(client) == other; });

    std::printf("request to the field that has the keyboard, %d times, milliseconds\n\n", rounds);
    std::printf("|                          |  first | median |   best |  worst |\n");
    std::printf("|--------------------------|-------:|-------:|-------:|-------:|\n");
    measure(
        "an empty window", client, other, [&] { client.open({.title = "empty"}); },
        [&](xcb_window_t opened) { client.destroy(opened); });

    const QStringList arguments{QStringLiteral("--settings"), path};
    const test::Program kelpa(server.display(), QStringLiteral(KELPA_PROGRAM), arguments);
    xcb_window_t board = 0;
    untilActive(
        client, other, [] {}, board);
    // Until the board has settled; then it is closed, as it mostly is when the field is asked for.
    std::this_thread::sleep_for(5s);
    const auto closeWindow = [&client](xcb_window_t window) {
        client.request(window, "_NET_CLOSE_WINDOW", {0, 2, 0, 0, 0});
    };
    const QByteArray name = busNameOfBoard(path).toUtf8();
    const auto ask = [&name] {
        activatePrimaryInstance(name, {}, 5s, -1, {}, newTodoAction.toUtf8());
    };
    closeWindow(board);
    test::waitUntil([&] { return activeWindow(client) == other; });
    measure("by the bus", client, other, ask, closeWindow);
    measure("by the bus, drawn", client, other, ask, closeWindow, Until::drawn);
    QProcess command;
    command.setProgram(QStringLiteral(KELPA_PROGRAM));
    command.setArguments(arguments + QStringList{QStringLiteral("--new-todo")});
    const auto start = [&command] {
        command.waitForFinished();
        command.start();
        command.waitForStarted();
    };
    measure("by the command", client, other, start, closeWindow);
    measure("by the command, drawn", client, other, start, closeWindow, Until::drawn);
    command.waitForFinished();
}

} // namespace
} // namespace kelpa::bench

int main(int argc, char** argv)
{
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("NO_AT_BRIDGE", "1");
    const QCoreApplication application(argc, argv);
    kelpa::bench::run();
    return 0;
}
