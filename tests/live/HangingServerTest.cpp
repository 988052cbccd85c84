// An X server that hangs holds one capture and one discovery pass, and leaves threads for the rest.
#include "live/LiveBoard.h"
#include "platform/qt/QtScheduler.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace kelpa;
using namespace kelpa::test;
using namespace std::chrono_literals;

namespace {

class HangingServer : public ::testing::Test
{
protected:
    void SetUp() override
    {
        for (const char* const title : {"first", "second", "third"}) {
            client.open({.title = title, .background = 0x204060});
        }
        board.store()->startObserving();
        ASSERT_TRUE(waitUntil([&] { return board.store()->windows().size() == 3; }));
    }

    void TearDown() override
    {
        signalServer(SIGCONT);
        EXPECT_TRUE(waitUntil([&] { return scheduler.shutDown(); }));
    }

    void signalServer(int signal) const
    {
        ASSERT_EQ(kill(static_cast<pid_t>(xServer.processID()), signal), 0);
    }

    /// Whether a capture and a pass wait for the server.
    bool areBothHanging()
    {
        return waitUntil([&] {
            return board.server().captures().running() == 1 &&
                   board.server().passes().running() == 1;
        });
    }

    XServer xServer;
    WindowManager manager{xServer.display()};
    TestClient client{xServer.display()};
    QtScheduler scheduler;
    LiveBoard board{xServer.display(), scheduler};
};

} // namespace

TEST_F(HangingServer, Has_one_capture_and_one_pass_while_a_launch_and_a_focus_go_through)
{
    WindowStore& store = *board.store();
    const QList<WindowItem> windows = store.windows();
    const int passesBefore = board.server().passes().begun();
    signalServer(SIGSTOP);
    // A window that is known to be unchanged is not asked for, so that its capture would not hang.
    store.setPreviewPixels({99, 100});
    ASSERT_TRUE(waitUntil([&] {
        store.refreshPreviews(scheduler.now());
        store.refreshInBackground();
        return board.server().captures().running() == 1 && board.server().passes().running() == 1;
    }));

    for (int round = 0; round < 20; ++round) {
        // A pause that is over.
        store.noteScrollActivity(scheduler.now() - 1s);
        store.refreshPreviews(scheduler.now());
        store.setPreviewPixels({100 + round, 100});
        store.refreshPreviews(scheduler.now());
        store.createGoal(QString::number(round));
        store.deleteGoal(store.goals().first().id);
        store.refresh();
        store.noteWindowsChangedOnDesktop();
        store.closeProcess(windows.at(round % windows.size()));
        // On a busy machine they take a while to begin.
        ASSERT_TRUE(areBothHanging());
    }
    store.createGoal(QStringLiteral("goal"));
    store.createTerminal(store.goals().first().id);
    EXPECT_TRUE(waitUntil([&] { return board.applications().launches().begun() == 1; }));
    // The requests to quit wait for the first one.
    EXPECT_TRUE(waitUntil([&] { return board.applications().queries().begun() == 1; }));
    store.focus(windows.first());
    EXPECT_TRUE(waitUntil([&] { return board.applications().queries().begun() == 2; }));

    EXPECT_TRUE(areBothHanging());
    EXPECT_EQ(board.server().captures().most(), 1);
    EXPECT_EQ(board.server().passes().most(), 1);

    signalServer(SIGCONT);
    client.open({.title = "after", .background = 0x204060});
    EXPECT_TRUE(waitUntil([&] {
        const auto window = board.window(QStringLiteral("after"));
        return window && store.previews().contains(window->id);
    }));
    EXPECT_GT(board.server().passes().begun(), passesBefore);
    EXPECT_EQ(board.server().captures().most(), 1);
    EXPECT_EQ(board.server().passes().most(), 1);
}
