// The main thread never stalls, whatever other processes do.
#include "live/Heartbeat.h"
#include "live/LiveBoard.h"
#include "platform/qt/QtScheduler.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <future>
#include <list>

using namespace kelpa;
using namespace kelpa::test;
using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds longestStall = 50ms;

/// Appears to accept connections and never sends anything.
class SilentSocket
{
public:
    explicit SilentSocket(const QString& path) : m_descriptor(socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = path.toLocal8Bit();
        std::copy(name.begin(), name.end(), std::begin(address.sun_path));
        const void* bytes = &address;
        if (bind(m_descriptor, static_cast<const sockaddr*>(bytes), sizeof(address)) != 0 ||
            listen(m_descriptor, 100) != 0) {
            qFatal("no socket at %s", name.constData());
        }
    }
    SilentSocket(const SilentSocket&) = delete;
    SilentSocket& operator=(const SilentSocket&) = delete;
    ~SilentSocket() { close(m_descriptor); }

private:
    int m_descriptor;
};

class BoardWithoutStall : public ::testing::Test
{
protected:
    void start(const QString& accessibilityBus = QStringLiteral("unix:path=/nonexistent"))
    {
        scheduler = std::make_unique<QtScheduler>();
        board = std::make_unique<LiveBoard>(xServer.display(), *scheduler, accessibilityBus);
        board->store()->startObserving();
        ASSERT_TRUE(waitUntil([&] { return board->store()->isScreenCaptureTrusted(); }));
    }

    void TearDown() override
    {
        // Work may wait for a window manager longer than a shutdown waits for work.
        EXPECT_TRUE(waitUntil([&] { return scheduler->shutDown(); }));
        board.reset();
    }

    bool isShown(const QString& title)
    {
        return waitUntil([&] { return board->window(title).has_value(); });
    }

    /// The longest gap of the main thread while `happenings` runs on another thread.
    static std::chrono::milliseconds gapDuring(const std::function<void()>& happenings)
    {
        const Heartbeat heartbeat;
        const auto done = std::async(std::launch::async, happenings);
        EXPECT_TRUE(waitUntil([&] { return done.wait_for(0s) == std::future_status::ready; }, 60s));
        EXPECT_GT(heartbeat.beats(), 20);
        RecordProperty("longest_gap_ms", static_cast<int>(heartbeat.longestGap().count()));
        return heartbeat.longestGap();
    }

    /// The same for what can happen again: it does, up to three times, while the gap is a stall. A
    /// stall of Kelpa's own recurs. One of a virtual machine whose processor is taken away for
    /// some milliseconds does not, and nothing within the machine reports it per thread.
    static std::chrono::milliseconds gapDuringEach(const std::function<void()>& happenings)
    {
        std::chrono::milliseconds gap = gapDuring(happenings);
        for (int count = 1; count < 3 && gap >= longestStall; ++count) {
            gap = std::min(gap, gapDuring(happenings));
        }
        return gap;
    }

    /// The longest gap until `condition` holds, polled on the main thread.
    template <class Condition>
    static std::chrono::milliseconds gapUntil(Condition condition)
    {
        const Heartbeat heartbeat;
        EXPECT_TRUE(waitUntil(condition, 60s));
        RecordProperty("longest_gap_ms", static_cast<int>(heartbeat.longestGap().count()));
        return heartbeat.longestGap();
    }

    XServer xServer;
    std::unique_ptr<WindowManager> manager = std::make_unique<WindowManager>(xServer.display());
    TestClient client{xServer.display()};
    std::unique_ptr<QtScheduler> scheduler;
    std::unique_ptr<LiveBoard> board;
};

/// Lets time pass on the desktop's side.
void pass(std::chrono::milliseconds time)
{
    std::this_thread::sleep_for(time);
}

} // namespace

TEST_F(BoardWithoutStall, A_stopped_application_is_listed_raised_and_asked_to_quit)
{
    const Program terminal(xServer.display(), QStringLiteral("xterm"),
                           {QStringLiteral("-T"), QStringLiteral("stopped"), QStringLiteral("-e"),
                            QStringLiteral("cat")});
    client.open({.title = "other"});
    start();
    ASSERT_TRUE(isShown(QStringLiteral("stopped")));
    ASSERT_TRUE(isShown(QStringLiteral("other")));
    const WindowItem stopped = *board->window(QStringLiteral("stopped"));
    const WindowItem other = *board->window(QStringLiteral("other"));
    ASSERT_EQ(kill(static_cast<pid_t>(terminal.processID()), SIGSTOP), 0);

    WindowStore& store = *board->store();
    store.createGoal(QStringLiteral("goal"));
    const GoalID goal = store.goals().first().id;
    ASSERT_TRUE(store.assign({stopped.id, other.id}, goal));
    int rounds = 0;
    const TaskHandle acting = scheduler->repeat(100ms, [&] {
        store.focus(stopped);
        store.showAllWindows(goal);
        store.closeProcess(stopped);
        store.refresh();
        ++rounds;
    });
    EXPECT_LT(gapUntil([&] { return rounds == 30; }), longestStall);
    EXPECT_TRUE(board->window(QStringLiteral("stopped")).has_value());

    ASSERT_EQ(kill(static_cast<pid_t>(terminal.processID()), SIGCONT), 0);
    EXPECT_TRUE(waitUntil([&] { return !board->window(QStringLiteral("stopped")); }));
}

TEST_F(BoardWithoutStall, An_accessibility_bus_never_answers)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bus"));
    const SilentSocket silent(path);
    client.open({.title = "first"});
    start(QStringLiteral("unix:path=") + path);
    ASSERT_TRUE(isShown(QStringLiteral("first")));
    // Longer than the timeout for the bus, with new windows that cause queries.
    EXPECT_LT(gapDuringEach([&] {
                  TestClient other(xServer.display());
                  for (int count = 0; count < 30; ++count) {
                      other.open({.title = "window " + QByteArray::number(count)});
                      pass(100ms);
                  }
              }),
              longestStall);
    client.open({.title = "last"});
    EXPECT_TRUE(isShown(QStringLiteral("last")));
}

TEST_F(BoardWithoutStall, The_window_manager_is_stopped_killed_and_replaced)
{
    client.open({.title = "window"});
    start();
    ASSERT_TRUE(isShown(QStringLiteral("window")));
    const WindowItem window = *board->window(QStringLiteral("window"));
    const TaskHandle acting = scheduler->repeat(100ms, [&] {
        board->store()->focus(window);
        board->store()->refresh();
    });
    // A manager must be terminated by the thread that started it.
    const auto managerProcess = static_cast<pid_t>(manager->processID());
    std::promise<void> isOver;
    std::thread next;
    EXPECT_LT(gapDuring([&] {
                  kill(managerProcess, SIGSTOP);
                  pass(1s);
                  kill(managerProcess, SIGKILL);
                  pass(500ms);
                  std::promise<void> isReady;
                  next = std::thread([&] {
                      const WindowManager another(xServer.display(), WindowManagerKind::xfwm4);
                      isReady.set_value();
                      isOver.get_future().wait();
                  });
                  isReady.get_future().wait();
                  pass(500ms);
              }),
              longestStall);
    EXPECT_TRUE(isShown(QStringLiteral("window")));
    EXPECT_TRUE(board->store()->isAccessibilityTrusted());
    client.open({.title = "after"});
    EXPECT_TRUE(isShown(QStringLiteral("after")));
    isOver.set_value();
    next.join();
}

TEST_F(BoardWithoutStall, Fifty_windows_a_second_open_and_close)
{
    client.open({.title = "stays"});
    start();
    ASSERT_TRUE(isShown(QStringLiteral("stays")));
    int changes = 0;
    QObject::connect(board->store(), &WindowStore::windowsChanged, board->store(),
                     [&changes] { ++changes; });
    EXPECT_LT(gapDuringEach([&] {
                  std::list<std::pair<TestClient, xcb_window_t>> open;
                  auto due = std::chrono::steady_clock::now();
                  for (int count = 0; count < 200; ++count) {
                      // Connections come and go as well, so that ids are soon used again.
                      TestClient other(xServer.display());
                      const xcb_window_t window =
                          other.open({.title = "window " + QByteArray::number(count)});
                      open.emplace_back(std::move(other), window);
                      if (open.size() > 10) {
                          open.pop_front();
                      }
                      due += 20ms;
                      std::this_thread::sleep_until(due);
                  }
              }),
              longestStall);
    EXPECT_GT(changes, 10);
    EXPECT_TRUE(waitUntil([&] { return board->store()->windows().size() == 1; }));
    EXPECT_TRUE(board->window(QStringLiteral("stays")).has_value());
}

TEST_F(BoardWithoutStall, Two_windows_are_renamed_as_fast_as_the_server_takes_it)
{
    client.open({.title = "stays"});
    start();
    ASSERT_TRUE(isShown(QStringLiteral("stays")));
    EXPECT_LT(gapDuringEach([&] {
                  const auto end = std::chrono::steady_clock::now() + 3s;
                  const auto rename = [&](const QByteArray& name) {
                      TestClient other(xServer.display());
                      const xcb_window_t window = other.open({.title = name});
                      for (int count = 0; std::chrono::steady_clock::now() < end; ++count) {
                          // The title itself, as every program of the past sets it.
                          const QByteArray title = name + QByteArray::number(count);
                          xcb_change_property(other.connection(), XCB_PROP_MODE_REPLACE, window,
                                              XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                                              static_cast<std::uint32_t>(title.size()),
                                              title.constData());
                      }
                      other.sync();
                  };
                  const auto second = std::async(std::launch::async, rename, "b");
                  rename("a");
              }),
              longestStall);
    EXPECT_TRUE(waitUntil([&] { return board->store()->windows().size() == 1; }));
}
