// Measures a discovery pass beside a run of wmctrl on the same display: real windows, each of a
// connection of its own, on a private X server with openbox. Prints a table.

#include "support/desktop/X11Desktop.h"
#include "windows/WindowDiscovery.h"

#include <QProcess>
#include <QProcessEnvironment>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

using namespace kelpa;
using namespace kelpa::test;

namespace {

constexpr int rounds = 41;

struct Times
{
    double median = 0;
    double least = 0;
};

/// In milliseconds. The first call is not counted: it fills the caches of later ones.
Times measure(const std::function<void()>& work)
{
    work();
    std::vector<double> times;
    times.reserve(rounds);
    for (int round = 0; round < rounds; ++round) {
        const auto begin = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> time =
            std::chrono::steady_clock::now() - begin;
        times.push_back(time.count());
    }
    std::sort(times.begin(), times.end());
    return {times.at(times.size() / 2), times.front()};
}

/// The measured pass, as the board runs it: reading the desktop, matching and filtering. Returns
/// the number of windows found.
std::size_t pass(x11::X11WindowServer& server)
{
    constexpr ProcessID noProcess = 0;
    const std::unique_ptr<DiscoverySource> source = server.openDiscoverySource();
    return static_cast<std::size_t>(WindowDiscovery::visibleWindows(*source, noProcess).size());
}

void runWmctrl(const QByteArray& display)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromUtf8(display));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral("wmctrl"), {QStringLiteral("-lpGx")});
    if (!process.waitForFinished() || process.exitCode() != 0) {
        qFatal("wmctrl does not run");
    }
}

void row(int windows)
{
    const XServer xServer;
    const WindowManager manager(xServer.display());
    X11Surroundings surroundings;
    const auto server = surroundings.makeServer(xServer.display());
    std::vector<TestClient> clients;
    for (int index = 0; index < windows; ++index) {
        TestClient& client = clients.emplace_back(xServer.display());
        const auto place = static_cast<std::int16_t>(10 + index % 40 * 8);
        client.open({place, place, 400, 300, "window " + QByteArray::number(index), "Program"});
    }
    const auto expected = static_cast<std::size_t>(windows);
    if (!waitUntil([&] { return pass(*server) == expected; }, std::chrono::seconds(60))) {
        qFatal("the windows do not appear");
    }
    const x11::XcbTraffic before = server->traffic();
    pass(*server);
    const x11::XcbTraffic after = server->traffic();
    const Times ours = measure([&] { pass(*server); });
    const Times theirs = measure([&] { runWmctrl(xServer.display()); });
    std::printf("%7d %10.2f %10.2f %12llu %10llu %10llu %14.2f %14.2f\n", windows, ours.median,
                ours.least, static_cast<unsigned long long>(after.roundTrips - before.roundTrips),
                static_cast<unsigned long long>(after.bytesSent - before.bytesSent),
                static_cast<unsigned long long>(after.bytesReceived - before.bytesReceived),
                theirs.median, theirs.least);
    std::fflush(stdout);
}

} // namespace

int main()
{
    std::printf("%7s %10s %10s %12s %10s %10s %14s %14s\n", "windows", "pass ms", "least ms",
                "round trips", "sent B", "received B", "wmctrl ms", "least ms");
    for (const int windows : {10, 50, 200}) {
        row(windows);
    }
    return 0;
}
