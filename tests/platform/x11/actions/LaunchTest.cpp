#include "platform/freedesktop/applications/TemporaryDataDirectory.h"
#include "platform/x11/actions/ActingDesktop.h"
#include "platform/x11/actions/Terminal.h"

#include <QFile>
#include <QStandardPaths>

#include <csignal>
#include <future>

using namespace kelpa;
using namespace kelpa::test;

namespace {

class Launching : public ActingDesktop
{
protected:
    void TearDown() override
    {
        if (m_launched > 0) {
            kill(m_launched, SIGKILL);
        }
    }

    /// A program that is found by its name.
    void writeScript(const QString& name, const QByteArray& lines) const
    {
        data.write(QStringLiteral("bin/") + name, "#!/bin/sh\n" + lines + "\n");
        QFile::setPermissions(data.path(QStringLiteral("bin/") + name),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    /// Launches, and returns the identifier under which the new window is listed.
    std::optional<QString> launchAndList(LaunchableApplication application,
                                         const QProcessEnvironment& environment)
    {
        DesktopEntries installed{{data.path()}, std::chrono::milliseconds(0)};
        ApplicationLauncher own(installed, std::chrono::seconds(5), environment);
        x11::X11Applications launching(xServer.display(), pager, serverTime, startupIDs, icons,
                                       own);
        x11::X11WindowServer listing({std::make_shared<x11::DisplayConnector>(xServer.display()),
                                      installed, nullptr, surroundings.reservation,
                                      surroundings.reservation.mark, surroundings.scheduler});
        const std::optional<Launch> launch = launching.launch(application);
        EXPECT_TRUE(launch);
        m_expected = launch ? launching.identifierOf(*launch, {}) : std::nullopt;
        std::optional<QString> found;
        waitUntil([&] {
            const auto source = listing.openDiscoverySource();
            const auto windows = source->windowList(WindowListScope::all);
            if (!windows || windows->empty() || !windows->front().ownerProcess) {
                return false;
            }
            m_launched = *windows->front().ownerProcess;
            const auto running = source->runningApplication(m_launched);
            found = running ? running->bundleIdentifier : std::nullopt;
            return true;
        });
        return found;
    }

    QProcessEnvironment environmentWithPath(const QString& path) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("PATH"), path);
        environment.remove(QStringLiteral("TERMINAL"));
        return environment;
    }

    TemporaryDataDirectory data;
    std::optional<QString> m_expected;
    ProcessID m_launched = 0;
};

} // namespace

TEST_P(Launching, The_terminal_variable_may_name_a_script)
{
    data.writeEntry(QStringLiteral("my-xterm"), "XTerm", "Exec=xterm\nStartupWMClass=XTerm");
    writeScript(QStringLiteral("my-terminal"), "xterm -e cat");
    QProcessEnvironment environment = environmentWithPath(qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("TERMINAL"), data.path(QStringLiteral("bin/my-terminal")));
    EXPECT_EQ(launchAndList(LaunchableApplication::terminal, environment),
              QStringLiteral("my-xterm"));
    EXPECT_EQ(m_expected, QStringLiteral("my-xterm"));

    // The timestamp in its startup id comes from this server.
    QFile file(QStringLiteral("/proc/%1/environ").arg(m_launched));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray startupID;
    for (const QByteArray& variable : file.readAll().split('\0')) {
        if (variable.startsWith("DESKTOP_STARTUP_ID=")) {
            startupID = variable;
        }
    }
    const qsizetype time = startupID.lastIndexOf("_TIME");
    ASSERT_GT(time, 0) << startupID.constData();
    EXPECT_GT(startupID.mid(time + 5).toUInt(), 0U) << startupID.constData();
}

TEST_P(Launching, The_system_terminal_is_known_by_the_program_it_links_to)
{
    data.writeEntry(QStringLiteral("my-xterm"), "XTerm", "Exec=xterm\nStartupWMClass=XTerm");
    const QString xterm = QStandardPaths::findExecutable(QStringLiteral("xterm"));
    data.write(QStringLiteral("bin/.keep"), {});
    ASSERT_TRUE(QFile::link(xterm, data.path(QStringLiteral("bin/x-terminal-emulator"))));
    EXPECT_EQ(launchAndList(LaunchableApplication::terminal,
                            environmentWithPath(data.path(QStringLiteral("bin")))),
              QStringLiteral("my-xterm"));
    EXPECT_EQ(m_expected, QStringLiteral("my-xterm"));
}

TEST_P(Launching, A_browser_is_asked_for_a_new_window)
{
    writeScript(QStringLiteral("chromium"),
                "[ \"$*\" = --new-window ] && exec xterm -class Chromium -e cat");
    data.writeEntry(QStringLiteral("chromium"), "Chromium",
                    "Exec=" + data.path(QStringLiteral("bin/chromium")).toUtf8() +
                        " %U\nStartupWMClass=Chromium");
    EXPECT_EQ(launchAndList(LaunchableApplication::chrome,
                            environmentWithPath(qEnvironmentVariable("PATH"))),
              QStringLiteral("chromium"));
    EXPECT_EQ(m_expected, QStringLiteral("chromium"));
}

TEST_P(Launching, The_window_of_a_script_that_has_ended_is_identified_by_the_origin_of_its_process)
{
    // The script ends before the window opens, and the window is in another session and belongs to
    // no installed entry.
    writeScript(QStringLiteral("my-terminal"), "setsid xterm -T launched -e cat &");
    QProcessEnvironment environment = environmentWithPath(qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("TERMINAL"), data.path(QStringLiteral("bin/my-terminal")));
    ApplicationLauncher own(entries, std::chrono::milliseconds(100), environment);
    x11::X11Applications launching(xServer.display(), pager, serverTime, startupIDs, icons, own);
    const auto launch = launching.launch(LaunchableApplication::terminal);
    ASSERT_TRUE(launch);
    EXPECT_EQ(launch->bundleIdentifier, std::nullopt);
    const WindowItem launched = listed(QStringLiteral("launched"));
    m_launched = launched.processIdentifier;
    const Terminal beside(xServer.display(), QStringLiteral("beside"));
    const WindowItem other = listed(QStringLiteral("beside"));
    EXPECT_EQ(launching.windowOf(*launch, {other, launched}), launched.id);
    EXPECT_EQ(launching.windowOf(*launch, {other}), std::nullopt);

    // The next launch is not mistaken for this one.
    const auto next = launching.launch(LaunchableApplication::terminal);
    ASSERT_TRUE(next);
    EXPECT_EQ(launching.windowOf(*next, {other, launched}), std::nullopt);
}

TEST_P(Launching, A_window_that_a_running_program_opens_for_it_is_identified_by_its_startup_id)
{
    QProcessEnvironment environment = environmentWithPath(data.path(QStringLiteral("bin")));
    writeScript(QStringLiteral("xterm"), "exit 0");
    ApplicationLauncher own(entries, std::chrono::milliseconds(100), environment);
    x11::X11Applications launching(xServer.display(), pager, serverTime, startupIDs, icons, own);
    const auto launch = launching.launch(LaunchableApplication::terminal);
    ASSERT_TRUE(launch);
    const WindowItem other = openWindow(client, "other");
    const xcb_window_t window = client.create({.title = "handed over"});
    client.setText(window, "_NET_STARTUP_ID", launch->startupID);
    client.map(window);
    const WindowItem launched = listed(QStringLiteral("handed over"));
    EXPECT_EQ(launching.windowOf(*launch, {other, launched}), launched.id);
    EXPECT_EQ(launching.windowOf(*launch, {other}), std::nullopt);
}

TEST_P(Launching, Programs_start_while_the_server_hangs_and_a_focus_waits_for_it)
{
    const WindowItem window = openWindow(client, "window");
    openWindow(client, "other");
    const QString started = data.path(QStringLiteral("started"));
    writeScript(QStringLiteral("my-terminal"), "echo >> '" + started.toUtf8() + "'");
    QProcessEnvironment environment = environmentWithPath(qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("TERMINAL"), data.path(QStringLiteral("bin/my-terminal")));
    ApplicationLauncher own(entries, std::chrono::milliseconds(100), environment);
    x11::X11Applications launching(xServer.display(), pager, serverTime, startupIDs, icons, own);
    const auto areStarted = [&started](qint64 count) {
        return waitUntil([&] { return QFile(started).size() == count; });
    };
    const auto serverProcess = static_cast<pid_t>(xServer.processID());

    // Once before anything has connected to it for a launch, once after that.
    for (const qint64 round : {0, 1}) {
        ASSERT_EQ(kill(serverProcess, SIGSTOP), 0);
        const auto focus = std::async(std::launch::async, [&] { bringForward({window}); });
        const auto launches = std::async(std::launch::async, [&] {
            launching.launch(LaunchableApplication::terminal);
            launching.launch(LaunchableApplication::terminal);
        });
        EXPECT_TRUE(areStarted(3 * round + 2));
        ASSERT_EQ(kill(serverProcess, SIGCONT), 0);
        launches.wait();
        focus.wait();
        EXPECT_TRUE(waitUntil([&] { return isInFront(window); })) << state();
        EXPECT_TRUE(launching.launch(LaunchableApplication::terminal));
        EXPECT_TRUE(areStarted(3 * round + 3));
    }
}

INSTANTIATE_TEST_SUITE_P(Under, Launching, ::testing::ValuesIn(testedWindowManagers()), nameOf);
