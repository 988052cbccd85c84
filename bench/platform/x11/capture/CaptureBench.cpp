// Measures previews: the time of one beside a bare read of the same window through shared memory
// and the usual screenshot programs, the memory of many, and the cost of unchanged windows. Prints
// tables.

#include "platform/x11/capture/ShmSegment.h"
#include "support/desktop/X11Desktop.h"
#include "windows/PreviewRotation.h"

#include <xcb/composite.h>

#include <QFile>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>

namespace kelpa::bench {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using test::TestClient;

constexpr std::uint16_t width = 1920;
constexpr std::uint16_t height = 1080;
constexpr QSize scaledSize = previewCardSize;
constexpr int runs = 51;
constexpr int programRuns = 7;

struct Times
{
    double median = 0;
    double ninetieth = 0;
};

Times timed(int count, const std::function<void()>& work)
{
    std::vector<double> times;
    for (int run = 0; run < count; ++run) {
        const auto start = Clock::now();
        work();
        times.push_back(Milliseconds(Clock::now() - start).count());
    }
    std::sort(times.begin(), times.end());
    return {times.at(times.size() / 2), times.at(times.size() * 9 / 10)};
}

double residentMegabytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("no /proc");
    }
    // In pages, without those shared with the server or other programs.
    const QList<QByteArray> fields = file.readAll().split(' ');
    const qint64 pages = fields.at(1).toLongLong() - fields.at(2).toLongLong();
    return static_cast<double>(pages * 4096) / 1e6;
}

void require(bool holds, const char* what)
{
    if (!holds) {
        qFatal("%s", what);
    }
}

/// Roughly lines of text, so that no part is of one colour.
void draw(TestClient& client, xcb_window_t window, std::uint32_t salt)
{
    for (std::int16_t y = 0; y < height; y += 18) {
        for (std::int16_t x = 0; x < width; x += 90) {
            const std::uint32_t color =
                (static_cast<std::uint32_t>(x * 131 + y * 17) + salt) * 2654435761U;
            client.fill(window, {x, y, static_cast<std::uint16_t>(30 + color % 50), 11},
                        color >> 8U);
        }
    }
}

class Desktop
{
public:
    xcb_window_t open(const QByteArray& title, std::uint16_t w, std::uint16_t h)
    {
        const xcb_window_t window = m_client.open({0, 0, w, h, title, {}, false, 0xF0F0F0});
        require(test::waitUntil([&] { return m_client.isListed(window); }), "no window");
        return window;
    }

    std::map<QString, WindowID> numbers()
    {
        std::map<QString, WindowID> result;
        for (const WindowListEntry& entry : test::runDiscoveryPass(*m_server)) {
            result[entry.name.value_or(QString())] = entry.number.value_or(0);
        }
        return result;
    }

    std::optional<WindowCapture> capture(WindowID id, CaptureNeed need)
    {
        return m_server->captureWindow({id, scaledSize, need}, {});
    }

    WindowCapture settled(WindowID id)
    {
        std::optional<WindowCapture> result;
        require(test::waitUntil([&] {
                    result = capture(id, CaptureNeed::always);
                    return result.has_value();
                }),
                "no picture");
        return *result;
    }

    TestClient& client() { return m_client; }
    x11::X11WindowServer& server() { return *m_server; }
    const QByteArray& display() const { return m_xServer.display(); }

private:
    // Larger than the window and its frame, so that the other programs can read all of it.
    test::XServer m_xServer{
        {QStringLiteral("-screen"), QStringLiteral("0"), QStringLiteral("2000x1200x24")}};
    test::WindowManager m_manager{m_xServer.display()};
    test::X11Surroundings m_surroundings;
    std::unique_ptr<x11::X11WindowServer> m_server = m_surroundings.makeServer(m_xServer.display());
    TestClient m_client{m_xServer.display()};
};

/// Reads the whole window through shared memory, and scales it to the preview's size on the client
/// side if `isScaled`.
Times bareRead(const Desktop& desktop, xcb_window_t window, bool isScaled)
{
    const auto connection = x11::XcbConnection::open(desktop.display());
    const auto segment = x11::ShmSegment::create(*connection, std::size_t{width} * height * 4);
    require(segment != nullptr, "no shared memory");
    return timed(runs, [&] {
        const auto cookie =
            xcb_shm_get_image(connection->raw(), window, 0, 0, width, height, 0xFFFFFFFF,
                              XCB_IMAGE_FORMAT_Z_PIXMAP, segment->id(), 0);
        const std::unique_ptr<xcb_shm_get_image_reply_t, x11::XcbFree> reply(
            xcb_shm_get_image_reply(connection->raw(), cookie, nullptr));
        require(reply && reply->size == segment->size(), "no bare read");
        if (isScaled) {
            const auto* pixels = static_cast<const uchar*>(segment->data());
            const QImage image(pixels, width, height, qsizetype{4} * width, QImage::Format_RGB32);
            require(image.scaled(scaledSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                        .pixelColor(1, 1)
                        .isValid(),
                    "no scaled read");
        }
    });
}

Times program(const QString& name, const QStringList& arguments)
{
    return timed(programRuns, [&] {
        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        process.start(name, arguments);
        require(process.waitForFinished() && process.exitCode() == 0, qPrintable(name));
    });
}

void print(const char* what, const Times& times, double reference)
{
    std::printf("%-58s %9.3f %9.3f %8.2f\n", what, times.median, times.ninetieth,
                times.median / reference);
}

void printTimes(Desktop& desktop)
{
    const xcb_window_t window = desktop.open("large", width, height);
    draw(desktop.client(), window, 1);
    const WindowID id = desktop.numbers().at(QStringLiteral("large"));
    require(desktop.settled(id).image.size() == scaledSize, "another size");
    const Times bare = bareRead(desktop, window, false);
    const Times scaled = bareRead(desktop, window, true);
    const Times captured = timed(runs, [&] { desktop.capture(id, CaptureNeed::always); });
    const Times unchanged = timed(runs, [&] { desktop.capture(id, CaptureNeed::ifChanged); });
    const QString display = QString::fromUtf8(desktop.display());
    const QString number = QString::number(window);
    const Times import = program(QStringLiteral("import"),
                                 {QStringLiteral("-display"), display, QStringLiteral("-window"),
                                  number, QStringLiteral("ppm:/dev/null")});
    const Times dump =
        program(QStringLiteral("xwd"), {QStringLiteral("-display"), display,
                                        QStringLiteral("-silent"), QStringLiteral("-id"), number});
    std::printf("%-58s %9s %9s %8s\n", "A window of 1920x1080", "median ms", "90% ms", "to bare");
    print("bare read of all pixels through shared memory", bare, bare.median);
    print("the same, then scaled to 128x72 by QImage", scaled, bare.median);
    print("captureWindow: named, scaled to 128x72, read, checked", captured, bare.median);
    print("captureWindow: unchanged since the last capture", unchanged, bare.median);
    print("import -window ID ppm:/dev/null", import, bare.median);
    print("xwd -id ID > /dev/null", dump, bare.median);
    desktop.client().destroy(window);
}

void printMany(Desktop& desktop)
{
    constexpr int most = 200;
    for (int index = 0; index < most; ++index) {
        desktop.open("many " + QByteArray::number(index), 1280, 800);
    }
    std::map<QString, WindowID> numbers = desktop.numbers();
    std::vector<WindowID> ids;
    ids.reserve(most);
    for (int index = 0; index < most; ++index) {
        ids.push_back(numbers.at(QStringLiteral("many %1").arg(index)));
    }
    // Everything but the pictures is in place before the memory is measured.
    for (const WindowID id : ids) {
        desktop.settled(id);
    }
    const double before = residentMegabytes();
    std::vector<WindowCapture> held;
    const double each = scaledSize.width() * scaledSize.height() * 4 / 1e6;
    std::printf("\n%-58s %9s %9s %8s\n", "Private memory above that without pictures", "MB",
                "pixels MB", "ratio");
    for (const std::size_t count : {std::size_t{50}, std::size_t{most}}) {
        while (held.size() < count) {
            held.push_back(desktop.settled(ids.at(held.size())));
        }
        const double more = residentMegabytes() - before;
        const double pixels = each * static_cast<double>(count);
        std::printf("%3zu pictures of windows of 1280x800 %31.1f %9.1f %8.2f\n", count, more,
                    pixels, more / pixels);
    }
    const auto turn = [&](CaptureNeed need) {
        int read = 0;
        for (const WindowID id : ids) {
            read += desktop.capture(id, need) ? 1 : 0;
        }
        return read;
    };
    const x11::XcbTraffic traffic = desktop.server().captureTraffic();
    int read = 0;
    const Times unchanged = timed(runs, [&] { read += turn(CaptureNeed::ifChanged); });
    const std::uint64_t sent = desktop.server().captureTraffic().bytesSent - traffic.bytesSent;
    const Times all = timed(3, [&] { turn(CaptureNeed::always); });
    std::printf("\n%-58s %9s %9s\n", "A turn of 200 windows of 1280x800", "median ms", "90% ms");
    std::printf("%-58s %9.2f %9.2f\n", "all wanted", all.median, all.ninetieth);
    std::printf("%-58s %9.2f %9.2f\n", "none changed", unchanged.median, unchanged.ninetieth);
    std::printf("none changed: %d pictures read, %llu bytes sent to the server in %d turns\n", read,
                static_cast<unsigned long long>(sent), runs);
}

} // namespace
} // namespace kelpa::bench

int main()
{
    kelpa::bench::Desktop desktop;
    kelpa::bench::printTimes(desktop);
    kelpa::bench::printMany(desktop);
    return 0;
}
