// Observing starts and stops while background work is running.
#include "live/LiveBoard.h"
#include "platform/qt/QtScheduler.h"
#include "support/Seed.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <random>
#include <thread>

using namespace kelpa;
using namespace kelpa::test;
using namespace std::chrono_literals;

namespace {

/// An X server with a window manager, run by another process. After Qt has started a process, the
/// thread sanitizer no longer sees the locks of this one.
class DesktopElsewhere
{
public:
    DesktopElsewhere()
    {
        std::array<int, 2> input{};
        std::array<int, 2> output{};
        if (pipe2(input.data(), O_CLOEXEC) != 0 || pipe2(output.data(), O_CLOEXEC) != 0) {
            qFatal("no pipes");
        }
        posix_spawn_file_actions_t actions{};
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
        QByteArray program(KELPA_DESKTOP_HOST);
        const std::array<char*, 2> arguments{program.data(), nullptr};
        if (posix_spawn(&m_process, program.constData(), &actions, nullptr, arguments.data(),
                        environ) != 0) {
            qFatal("%s cannot be started", program.constData());
        }
        posix_spawn_file_actions_destroy(&actions);
        close(input[0]);
        close(output[1]);
        m_hold = input[1];
        char letter = 0;
        while (read(output[0], &letter, 1) == 1 && letter != '\n') {
            m_display += letter;
        }
        close(output[0]);
    }
    DesktopElsewhere(const DesktopElsewhere&) = delete;
    DesktopElsewhere& operator=(const DesktopElsewhere&) = delete;
    ~DesktopElsewhere()
    {
        close(m_hold);
        waitpid(m_process, nullptr, 0);
    }

    const QByteArray& display() const { return m_display; }

private:
    pid_t m_process = 0;
    /// The desktop lives as long as this is open.
    int m_hold = -1;
    QByteArray m_display;
};

/// Opens, renames and closes windows until stop is requested.
void keepChanging(const QByteArray& display, const std::stop_token& stop)
{
    TestClient client(display);
    std::vector<xcb_window_t> open;
    for (int count = 0; !stop.stop_requested(); ++count) {
        if (open.size() < 8) {
            open.push_back(client.open({.title = "window", .background = 0x204060}));
        } else if (count % 5 == 0) {
            client.destroy(open.front());
            open.erase(open.begin());
        } else {
            client.setText(open.back(), "_NET_WM_NAME", "title " + QByteArray::number(count));
        }
        client.sync();
        std::this_thread::sleep_for(3ms);
    }
}

class Observing : public ::testing::Test
{
protected:
    Observing() { client.open({.title = "stays", .background = 0x808080}); }

    void TearDown() override
    {
        churn = {};
        // Work may wait for a window manager longer than a shutdown waits for work.
        EXPECT_TRUE(waitUntil([&] { return scheduler.shutDown(); }));
    }

    /// Runs the event loop a few times, sometimes long enough for background work to end.
    void live()
    {
        for (int turn = static_cast<int>(random() % 4); turn > 0; --turn) {
            QCoreApplication::processEvents();
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 1500));
        }
    }

    /// Whether the board observes as before once the desktop is quiet.
    bool isObserving()
    {
        churn = {};
        board.store()->startObserving();
        return waitUntil([&] {
            const auto window = board.window(QStringLiteral("stays"));
            return window && board.store()->previews().contains(window->id);
        });
    }

    const std::uint64_t seed = test::seed();
    std::mt19937_64 random{seed};
    const DesktopElsewhere desktop;
    TestClient client{desktop.display()};
    QtScheduler scheduler;
    LiveBoard board{desktop.display(), scheduler};
    std::jthread churn{
        [this](const std::stop_token& stop) { keepChanging(desktop.display(), stop); }};
};

} // namespace

TEST_F(Observing, A_thousand_starts_and_stops_leave_an_empty_board_each_time)
{
    for (int round = 0; round < 1000; ++round) {
        WindowStore& store = *board.store();
        store.startObserving();
        live();
        if (round % 3 == 0) {
            store.refresh();
            store.refreshPreviews(scheduler.now());
            live();
        }
        if (round % 7 == 0) {
            store.noteScrollActivity();
        }
        store.stopObserving();
        ASSERT_TRUE(store.windows().isEmpty()) << seedText(seed) << ", round " << round;
        ASSERT_TRUE(store.previews().isEmpty()) << seedText(seed) << ", round " << round;
        // Cancelled work delivers nothing.
        live();
        ASSERT_TRUE(store.windows().isEmpty()) << seedText(seed) << ", round " << round;
        ASSERT_TRUE(store.previews().isEmpty()) << seedText(seed) << ", round " << round;
    }
    EXPECT_TRUE(isObserving());
}

TEST_F(Observing, Three_hundred_stores_go_while_their_work_is_under_way)
{
    for (int round = 0; round < 300; ++round) {
        WindowStore& store = *board.store();
        store.startObserving();
        live();
        const QList<WindowItem> windows = store.windows();
        if (!windows.isEmpty()) {
            const WindowItem& window = windows.at(
                static_cast<qsizetype>(random() % static_cast<std::uint64_t>(windows.size())));
            store.focus(window);
            store.refreshInBackground();
            store.refreshPreviews(scheduler.now());
        }
        live();
        board.closeStore();
        // Running work finds no store.
        live();
        board.openStore();
    }
    EXPECT_TRUE(isObserving());
}
