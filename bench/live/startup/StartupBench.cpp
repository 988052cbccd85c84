// Measures the time from starting the program to the first frame in its window, for Kelpa and for
// an empty Qt Quick window, alternating on one display with a window manager and other programs'
// windows: warm, and cold where the system allows dropping the file cache. Measured from outside:
// the X server reports when a window has been drawn to (damage). Each start of Kelpa is compared
// with that of the empty window just before it, so that a busy machine slows both. Says first how
// many windows Kelpa's first frame shows, which it logs. Among the boards are two of a year with
// its backups beside it: one that was changed today, and one whose next change makes a backup.
// Starts that show no frame are left out, and counted below the table with how each of them ended.
//
// Usage: startup_bench [ROUNDS [PROGRAM...]], where the programs are builds of Kelpa to compare.
// The exit status is 1 when a start has shown no frame.

#include "bench/store/board/BoardFixture.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/sqlite/backup/DailyBackup.h"
#include "platform/x11/connection/XcbConnection.h"
#include "store/board/BoardPersistence.h"
#include "support/desktop/Programs.h"
#include "support/desktop/TestClient.h"
#include "support/desktop/WaitUntil.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QMap>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <xcb/damage.h>

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace kelpa::bench {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using x11::XcbConnection;
using x11::XcbEvent;

constexpr int defaultWarmRounds = 31;
constexpr int coldRounds = 9;
constexpr int windowCount = 9;
constexpr auto deadline = std::chrono::seconds(20);

/// Windows smaller than this are the toolkit's helpers.
constexpr std::uint16_t smallestWindow = 200;

/// Watches for new windows of clients, and for drawing into them.
class FirstFrameWatch
{
public:
    explicit FirstFrameWatch(const QByteArray& display) : m_connection(XcbConnection::open(display))
    {
        xcb_connection_t* const connection = m_connection->raw();
        m_firstEvent = xcb_get_extension_data(connection, &xcb_damage_id)->first_event;
        std::free(xcb_damage_query_version_reply(
            connection, xcb_damage_query_version(connection, 1, 1), nullptr));
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection, m_connection->root(), XCB_CW_EVENT_MASK, &mask);
        m_connection->flush();
    }

    /// Discards earlier events, so that only windows created from now on count.
    void drain()
    {
        std::free(xcb_get_input_focus_reply(m_connection->raw(),
                                            xcb_get_input_focus(m_connection->raw()), nullptr));
        while (m_connection->pollEvent()) {
        }
    }

    /// Waits for the first drawing into a window that was created since `drain`; false when there
    /// is none before the deadline, or before `program` has ended.
    bool waitForFrame(test::Program& program)
    {
        const auto end = Clock::now() + deadline;
        while (Clock::now() < end) {
            // It may have drawn just before.
            const bool hasEnded = program.ending().has_value();
            while (const XcbEvent event = m_connection->pollEvent()) {
                if (isFrame(*event))
                    return true;
            }
            if (hasEnded)
                return false;
            pollfd descriptor{m_connection->fileDescriptor(), POLLIN, 0};
            poll(&descriptor, 1, 100);
        }
        return false;
    }

private:
    bool isFrame(const xcb_generic_event_t& event)
    {
        const int type = event.response_type & 0x7f;
        if (type == XCB_CREATE_NOTIFY) {
            xcb_create_notify_event_t created{};
            std::memcpy(&created, &event, sizeof created);
            // The client window, before the window manager reparents it.
            if (created.width >= smallestWindow && created.override_redirect == 0) {
                const xcb_damage_damage_t damage = xcb_generate_id(m_connection->raw());
                xcb_damage_create(m_connection->raw(), damage, created.window,
                                  XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
                m_connection->flush();
            }
            return false;
        }
        return type == m_firstEvent + XCB_DAMAGE_NOTIFY;
    }

    std::unique_ptr<XcbConnection> m_connection;
    int m_firstEvent = 0;
};

struct Subject
{
    QString name;
    QString program;
    QStringList arguments;
    /// Of each round; absent where it has shown no frame.
    std::vector<std::optional<double>> times;
    /// How often it has shown none, by what it did instead.
    QMap<QString, int> failures;
};

std::optional<double> measure(FirstFrameWatch& watch, const QByteArray& display, Subject& subject)
{
    watch.drain();
    const auto start = Clock::now();
    test::Program running(display, subject.program, subject.arguments);
    if (watch.waitForFrame(running))
        return Milliseconds(Clock::now() - start).count();
    ++subject.failures[running.ending().value_or(QStringLiteral("ran on without a frame"))];
    return std::nullopt;
}

/// Drops the system's file cache, so that the next start reads from the disk; false where that is
/// not permitted.
bool dropFileCache()
{
    sync();
    std::FILE* const file = std::fopen("/proc/sys/vm/drop_caches", "w");
    if (!file)
        return false;
    const bool isWritten = std::fputs("3\n", file) >= 0;
    return std::fclose(file) == 0 && isWritten;
}

enum class Start : std::uint8_t { cold, warm };

struct Spread
{
    double lower = 0;
    double median = 0;
    double upper = 0;
};

/// Of at least one value.
Spread spreadOf(std::vector<double> values)
{
    std::ranges::sort(values);
    const std::size_t last = values.size() - 1;
    return {values[last / 4], values[last / 2], values[last - last / 4]};
}

void print(const char* heading, int rounds, const std::vector<Subject>& subjects)
{
    std::printf("%s start to first frame, %d rounds: milliseconds, and times the empty window\n\n",
                heading, rounds);
    std::printf("| %-32s | median | middle half     | ratio | middle half   |\n", "");
    std::printf(
        "|----------------------------------|-------:|-----------------|------:|---------------|"
        "\n");
    const std::vector<std::optional<double>>& references = subjects.front().times;
    for (const Subject& subject : subjects) {
        std::vector<double> times;
        std::vector<double> ratios;
        for (std::size_t round = 0; round < subject.times.size(); ++round) {
            const std::optional<double> reference = references[round];
            if (subject.times[round])
                times.push_back(*subject.times[round]);
            if (subject.times[round] && reference)
                ratios.push_back(*subject.times[round] / *reference);
        }
        if (ratios.empty()) {
            std::printf("| %-32s |      – | –               |     – | –             |\n",
                        qPrintable(subject.name));
            continue;
        }
        const Spread time = spreadOf(times);
        const Spread ratio = spreadOf(ratios);
        std::printf("| %-32s | %6.1f | %5.1f … %6.1f  | %5.2f | %4.2f … %5.2f  |\n",
                    qPrintable(subject.name), time.median, time.lower, time.upper, ratio.median,
                    ratio.lower, ratio.upper);
    }
    std::printf("\n");
    std::fflush(stdout);
}

/// Says for each subject how often it has shown no frame, and why; false when one has shown none.
bool reportFailures(const std::vector<Subject>& subjects)
{
    bool isComplete = true;
    for (const Subject& subject : subjects) {
        for (auto it = subject.failures.begin(); it != subject.failures.end(); ++it) {
            std::fprintf(stderr, "no frame of %s: %s (%d times)\n", qPrintable(subject.name),
                         qPrintable(it.key()), it.value());
            isComplete = false;
        }
    }
    return isComplete;
}

/// Alternates the subjects, so that other load affects all alike. False when a start has shown no
/// frame.
bool measureAll(Start kind, int rounds, FirstFrameWatch& watch, const QByteArray& display,
                std::vector<Subject> subjects)
{
    // The first round warms up.
    for (int round = kind == Start::warm ? -1 : 0; round < rounds; ++round) {
        for (Subject& subject : subjects) {
            if (kind == Start::cold && !dropFileCache()) {
                std::printf("cold starts are not measured: that needs root\n\n");
                return true;
            }
            const std::optional<double> time = measure(watch, display, subject);
            if (round >= 0)
                subject.times.push_back(time);
        }
    }
    print(kind == Start::cold ? "cold" : "warm", rounds, subjects);
    return reportFailures(subjects);
}

/// How many windows Kelpa's first frame shows, as it logs itself; absent when it does not.
std::optional<int> windowsInFirstFrame(const QByteArray& display, const Subject& subject)
{
    QProcess running;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("DISPLAY"), QString::fromUtf8(display));
    variables.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("kelpa.views.debug=true"));
    running.setProcessEnvironment(variables);
    running.start(subject.program, subject.arguments);
    QString log;
    const QRegularExpression line(QStringLiteral("first frame shows (\\d+) windows"));
    const auto end = Clock::now() + deadline;
    std::optional<int> windows;
    while (!windows && Clock::now() < end && running.state() != QProcess::NotRunning) {
        running.waitForReadyRead(100);
        log += QString::fromUtf8(running.readAllStandardError());
        const QRegularExpressionMatch match = line.match(log);
        if (match.hasMatch())
            windows = match.captured(1).toInt();
    }
    running.kill();
    running.waitForFinished();
    return windows;
}

/// Programs' windows for the board, which are listed when this returns.
void openWindows(test::TestClient& client)
{
    for (int number = 1; number <= windowCount; ++number) {
        const QByteArray title = "Window " + QByteArray::number(number);
        const xcb_window_t window = client.open({.title = title, .background = 0x204060});
        if (!test::waitUntil([&] { return client.isListed(window); }))
            qFatal("a window is not listed");
    }
}

/// A board that has been changed each week for a year; the last time at `lastChange`.
void writeBoardWithBackups(const QString& path, const QDateTime& lastChange)
{
    constexpr qint64 weeks = 52;
    const QList<Goal> goals = largeBoard(50, 500);
    SqliteSettingsStore store(path);
    store.write(boardEntries(goals, {}));
    QDateTime day;
    const auto backup = std::make_shared<DailyBackup>(path, [&day] { return day; });
    store.setBeforeSave([backup] { backup->beforeSave(); });
    for (qint64 week = weeks; week >= 0; --week) {
        day = lastChange.addDays(-7 * week);
        QList<Goal> changed = goals;
        if (week > 0)
            changed.front().title = QStringLiteral("Week %1").arg(week);
        if (!store.write(boardEntries(changed, {})))
            qFatal("the board is not written");
        backup->finish();
    }
}

/// `kelpas` are programs to compare with one another.
int run(int warmRounds, const QStringList& kelpas)
{
    const QTemporaryDir folder;
    const QString emptyBoard = folder.filePath(QStringLiteral("empty.sqlite"));
    const QString fullBoard = folder.filePath(QStringLiteral("fifty.sqlite"));
    SqliteSettingsStore(fullBoard).write(boardEntries(largeBoard(50, 500), {}));
    // The same board, after somebody has pasted a file into a title.
    const QString longBoard = folder.filePath(QStringLiteral("long.sqlite"));
    QList<Goal> longGoals = largeBoard(50, 500);
    longGoals.front().todos[1].title = QString(5 << 20, u'x');
    SqliteSettingsStore(longBoard).write(boardEntries(longGoals, {}));
    const QDateTime now = QDateTime::currentDateTime();
    const QString keptBoard = folder.filePath(QStringLiteral("kept.sqlite"));
    writeBoardWithBackups(keptBoard, now);
    const QString dueBoard = folder.filePath(QStringLiteral("due.sqlite"));
    writeBoardWithBackups(dueBoard, now.addDays(-1));

    const test::XServer server;
    const test::WindowManager manager(server.display());
    test::TestClient client(server.display());
    openWindows(client);
    FirstFrameWatch watch(server.display());
    const QString option = QStringLiteral("--settings");
    std::vector<Subject> subjects{
        {QStringLiteral("an empty Qt Quick window"), QStringLiteral(EMPTY_PROGRAM), {}, {}, {}}};
    for (const QString& kelpa : kelpas) {
        const QString mark =
            kelpa == kelpas.first() ? QString() : QStringLiteral(" (") + kelpa + u')';
        subjects.push_back(
            {QStringLiteral("Kelpa, new board") + mark, kelpa, {option, emptyBoard}, {}, {}});
        subjects.push_back({QStringLiteral("Kelpa, 50 goals with 500 todos") + mark,
                            kelpa,
                            {option, fullBoard},
                            {},
                            {}});
        subjects.push_back({QStringLiteral("the same, one todo of 5 MB") + mark,
                            kelpa,
                            {option, longBoard},
                            {},
                            {}});
        subjects.push_back({QStringLiteral("50 goals, the day is backed up") + mark,
                            kelpa,
                            {option, keptBoard},
                            {},
                            {}});
        subjects.push_back({QStringLiteral("50 goals, a backup is due") + mark,
                            kelpa,
                            {option, dueBoard},
                            {},
                            {}});
    }
    for (const Subject& subject : std::span(subjects).subspan(1)) {
        const std::optional<int> windows = windowsInFirstFrame(server.display(), subject);
        if (windows)
            std::printf("%s: the first frame shows %d of %d windows\n", qPrintable(subject.name),
                        *windows, windowCount);
        else
            std::printf("%s: does not say what its first frame shows\n", qPrintable(subject.name));
    }
    std::printf("\n");
    const bool isWarmComplete =
        measureAll(Start::warm, warmRounds, watch, server.display(), subjects);
    const bool isColdComplete =
        measureAll(Start::cold, coldRounds, watch, server.display(), subjects);
    return isWarmComplete && isColdComplete ? 0 : 1;
}

} // namespace
} // namespace kelpa::bench

int main(int argc, char** argv)
{
    // The same way of drawing for both, and no accessibility bus to look for.
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("NO_AT_BRIDGE", "1");
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int rounds = arguments.value(1).toInt();
    const QStringList kelpas =
        arguments.size() > 2 ? arguments.mid(2) : QStringList{QStringLiteral(KELPA_PROGRAM)};
    return kelpa::bench::run(rounds > 0 ? rounds : kelpa::bench::defaultWarmRounds, kelpas);
}
