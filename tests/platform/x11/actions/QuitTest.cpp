#include "platform/x11/actions/ActingDesktop.h"
#include "platform/x11/actions/Terminal.h"

using namespace kelpa;
using namespace kelpa::test;

namespace {

class Quitting : public ActingDesktop
{
protected:
    static QMap<QString, QString> withoutBus()
    {
        return {
            {QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent")},
            {QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory")},
            {QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb")}};
    }

    static ProcessID processOf(const Program& program)
    {
        return static_cast<ProcessID>(program.processID());
    }

    /// A window that supports a request to close; some programs set that only after showing it.
    WindowItem listedClosable(const QString& title)
    {
        WindowItem window = listed(title);
        EXPECT_TRUE(
            waitUntil([&] { return client.word(idOf(window), "WM_PROTOCOLS").has_value(); }));
        return window;
    }

    bool hasEnded(ProcessID process)
    {
        return waitUntil([&] { return !applications.isRunning(process); });
    }
};

} // namespace

TEST_P(Quitting, A_terminal_closes)
{
    const Terminal terminal(xServer.display(), QStringLiteral("terminal"));
    listedClosable(QStringLiteral("terminal"));
    EXPECT_TRUE(applications.isRunning(terminal.process()));
    applications.requestQuit(terminal.process());
    EXPECT_TRUE(hasEnded(terminal.process()));
}

TEST_P(Quitting, A_GTK_program_with_unsaved_text_asks_and_keeps_it)
{
    const Program editor(xServer.display(), QStringLiteral("mousepad"),
                         {QStringLiteral("--disable-server")}, withoutBus());
    const WindowItem window = listed(QStringLiteral("Untitled 1 - Mousepad"));
    bringForward({window});
    ASSERT_TRUE(waitUntil([&] { return isInFront(window); })) << state();
    const Program typist(xServer.display(), QStringLiteral("xdotool"),
                         {QStringLiteral("type"), QStringLiteral("unsaved")});
    listed(QStringLiteral("*Untitled 1 - Mousepad"));
    ASSERT_TRUE(waitUntil([&] { return !applications.isRunning(processOf(typist)); }));

    applications.requestQuit(processOf(editor));
    const auto dialogs = [&] {
        const auto all = runDiscoveryPass(*server);
        return std::count_if(all.begin(), all.end(), [&](const WindowListEntry& each) {
            return each.ownerProcess == processOf(editor) && each.number != window.id;
        });
    };
    ASSERT_TRUE(waitUntil([&] { return dialogs() == 1; }));
    EXPECT_TRUE(applications.isRunning(processOf(editor)));

    // A person who changes their mind still has the text.
    ASSERT_TRUE(waitUntil([&] { return active() != idOf(window); }));
    const Program key(xServer.display(), QStringLiteral("xdotool"),
                      {QStringLiteral("key"), QStringLiteral("Escape")});
    EXPECT_TRUE(waitUntil([&] { return dialogs() == 0; }));
    EXPECT_TRUE(applications.isRunning(processOf(editor)));
    EXPECT_EQ(listed(QStringLiteral("*Untitled 1 - Mousepad")).id, window.id);
}

TEST_P(Quitting, A_Qt_program_closes)
{
    const Program program(xServer.display(), QStringLiteral(KELPA_QT_CLIENT),
                          {QStringLiteral("qt")}, withoutBus());
    listedClosable(QStringLiteral("qt"));
    applications.requestQuit(processOf(program));
    EXPECT_TRUE(hasEnded(processOf(program)));
}

TEST_P(Quitting, A_program_that_refuses_keeps_running)
{
    const Program program(xServer.display(), QStringLiteral(KELPA_QT_CLIENT),
                          {QStringLiteral("qt"), QStringLiteral("--refuse")}, withoutBus());
    const WindowItem window = listedClosable(QStringLiteral("qt"));
    applications.requestQuit(processOf(program));
    EXPECT_EQ(listed(QStringLiteral("refused")).id, window.id);
    EXPECT_TRUE(applications.isRunning(processOf(program)));
}

TEST_P(Quitting, A_minimised_window_and_one_of_another_desktop_close_too)
{
    const Terminal minimized(xServer.display(), QStringLiteral("minimised"));
    const Terminal elsewhere(xServer.display(), QStringLiteral("elsewhere"));
    minimize(listedClosable(QStringLiteral("minimised")));
    const xcb_window_t far = idOf(listedClosable(QStringLiteral("elsewhere")));
    client.sendToDesktop(far, 1);
    ASSERT_TRUE(waitUntil([&] { return client.word(far, "_NET_WM_DESKTOP") == 1U; }));
    applications.requestQuit(minimized.process());
    applications.requestQuit(elsewhere.process());
    EXPECT_TRUE(hasEnded(minimized.process()));
    EXPECT_TRUE(hasEnded(elsewhere.process()));
}

TEST_P(Quitting, A_window_that_cannot_be_asked_is_left_alone_and_the_others_are_asked)
{
    TestClient unasked(xServer.display());
    TestClient asked(xServer.display());
    const xcb_window_t without = unasked.open({.title = "without"});
    const xcb_window_t with = asked.create({.title = "with"});
    asked.setAtoms(with, "WM_PROTOCOLS", {"WM_DELETE_WINDOW"});
    asked.map(with);
    listed(QStringLiteral("without"));
    listed(QStringLiteral("with"));
    // Both are this process's own, which is never asked to quit as an application.
    applications.requestQuit(applications.currentProcess());
    awaitManager();
    EXPECT_TRUE(asked.deletions().empty());
    pager.closeWindows(applications.currentProcess());
    awaitManager();
    EXPECT_EQ(asked.deletions(), std::vector{with});
    unasked.sync();
    EXPECT_EQ(xcb_connection_has_error(unasked.connection()), 0);
    EXPECT_TRUE(client.isListed(without));
}

TEST_P(Quitting, A_desktop_and_a_dock_are_not_closed)
{
    TestClient owner(xServer.display());
    const auto openAs = [&](const QByteArray& title, const QByteArray& type) {
        const xcb_window_t window = owner.create({.title = title});
        owner.setAtoms(window, "WM_PROTOCOLS", {"WM_DELETE_WINDOW"});
        owner.setAtoms(window, "_NET_WM_WINDOW_TYPE", {type});
        owner.map(window);
        listed(QString::fromUtf8(title));
        return window;
    };
    const xcb_window_t desktop = openAs("desktop", "_NET_WM_WINDOW_TYPE_DESKTOP");
    const xcb_window_t dock = openAs("dock", "_NET_WM_WINDOW_TYPE_DOCK");
    const xcb_window_t files = openAs("files", "_NET_WM_WINDOW_TYPE_NORMAL");
    pager.closeWindows(applications.currentProcess());
    awaitManager();
    const std::vector<xcb_window_t> deleted = owner.deletions();
    EXPECT_EQ(deleted, std::vector{files}) << desktop << ' ' << dock;
}

TEST_P(Quitting, A_process_that_has_ended_does_not_run)
{
    ProcessID process = 0;
    {
        const Terminal terminal(xServer.display(), QStringLiteral("terminal"));
        process = terminal.process();
        EXPECT_TRUE(applications.isRunning(process));
    }
    EXPECT_FALSE(applications.isRunning(process));
    EXPECT_FALSE(applications.isRunning(0));
    EXPECT_FALSE(applications.isRunning(-1));
    EXPECT_EQ(applications.currentProcess(), static_cast<ProcessID>(getpid()));
}

INSTANTIATE_TEST_SUITE_P(Under, Quitting, ::testing::ValuesIn(testedWindowManagers()), nameOf);
