#include "platform/freedesktop/applications/ApplicationLauncher.h"

#include "platform/freedesktop/applications/LaunchedProcess.h"
#include "platform/freedesktop/applications/TemporaryDataDirectory.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QUrl>

#include <unistd.h>

#include <csignal>

using namespace kelpa;
using namespace kelpa::test;
using namespace std::chrono_literals;

namespace {

class Launcher : public testing::Test
{
protected:
    void SetUp() override
    {
        environment.insert(QStringLiteral("PATH"), data.path(QStringLiteral("bin")));
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), QStringLiteral("ours"));
        environment.insert(QStringLiteral("OUT"), data.path(QStringLiteral("out")));
    }

    void writeProgram(const QString& name, const QByteArray& lines) const
    {
        const QString relative = QStringLiteral("bin/") + name;
        data.write(relative, "#!/bin/sh\n" + lines + "\n");
        QFile::setPermissions(data.path(relative),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    /// The identifier by which the windows will be known.
    std::optional<QString> launch(LaunchableApplication application)
    {
        ApplicationLauncher launcher(entries, 2s, environment);
        const std::optional<Launch> launched =
            launcher.launch(application, {":7", "start-me_TIME5"});
        EXPECT_TRUE(launched);
        if (!launched) {
            return std::nullopt;
        }
        EXPECT_EQ(launched->startupID, "start-me_TIME5");
        EXPECT_GT(launched->process, 0);
        return launched->bundleIdentifier;
    }

    /// What the program has written, once it has.
    QByteArray written() const
    {
        QByteArray text;
        waitUntil([&] {
            QFile file(data.path(QStringLiteral("out")));
            text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
            return text.endsWith("end\n");
        });
        return text;
    }

    TemporaryDataDirectory data;
    DesktopEntries entries{{data.path()}, 0ms};
    QProcessEnvironment environment;
};

const QByteArray report =
    R"(echo "$* $DISPLAY $DESKTOP_STARTUP_ID ${XDG_ACTIVATION_TOKEN-none} end" > "$OUT")";

} // namespace

TEST_F(Launcher, A_program_gets_the_display_and_the_startup_id)
{
    writeProgram(QStringLiteral("konsole"), report);
    data.writeEntry(QStringLiteral("org.kde.konsole"), "Konsole",
                    "Exec=" + data.path(QStringLiteral("bin/konsole")).toUtf8());
    EXPECT_EQ(launch(LaunchableApplication::terminal), QStringLiteral("org.kde.konsole"));
    EXPECT_EQ(written(), " :7 start-me_TIME5 none end\n");
}

TEST_F(Launcher, A_program_gets_the_activation_token_of_a_Wayland_compositor_too)
{
    writeProgram(QStringLiteral("konsole"), report);
    data.writeEntry(QStringLiteral("org.kde.konsole"), "Konsole",
                    "Exec=" + data.path(QStringLiteral("bin/konsole")).toUtf8());
    ApplicationLauncher launcher(entries, 2s, environment);
    ASSERT_TRUE(launcher.launch(
        LaunchableApplication::terminal,
        {.display = {}, .startupID = "token-of-the-shell", .isActivationToken = true}));
    EXPECT_EQ(written(), "  token-of-the-shell token-of-the-shell end\n");
}

TEST_F(Launcher, A_program_inherits_no_variable_about_the_start_of_this_one)
{
    for (const char* const name :
         {"XDG_ACTIVATION_TOKEN", "GIO_LAUNCHED_DESKTOP_FILE", "GIO_LAUNCHED_DESKTOP_FILE_PID",
          "DESKTOP_AUTOSTART_ID", "DBUS_STARTER_ADDRESS", "DBUS_STARTER_BUS_TYPE"}) {
        environment.insert(QString::fromLatin1(name), QStringLiteral("ours"));
    }
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("everybodys"));
    environment.insert(QStringLiteral("TERMINAL"), QStringLiteral("own-terminal"));
    writeProgram(QStringLiteral("own-terminal"),
                 R"((/usr/bin/env | /usr/bin/grep -E "=(ours|everybodys)$"; echo end) > "$OUT")");
    launch(LaunchableApplication::terminal);
    EXPECT_EQ(written(), "DBUS_SESSION_BUS_ADDRESS=everybodys\nend\n");
}

TEST_F(Launcher, A_new_window_is_opened_by_the_entrys_own_action)
{
    writeProgram(QStringLiteral("browse"), report);
    const QByteArray program = data.path(QStringLiteral("bin/browse")).toUtf8();
    data.writeEntry(QStringLiteral("google-chrome"), "Chrome",
                    "Exec=" + program +
                        " %U\nActions=new-window;\n\n[Desktop Action new-window]\n"
                        "Name=New Window\nExec=" +
                        program + " --fresh");
    EXPECT_EQ(launch(LaunchableApplication::chrome), QStringLiteral("google-chrome"));
    EXPECT_EQ(written(), "--fresh :7 start-me_TIME5 none end\n");
}

TEST_F(Launcher, Windows_are_known_by_the_entry_that_claims_their_class)
{
    writeProgram(QStringLiteral("browse"), report);
    const QByteArray program = data.path(QStringLiteral("bin/browse")).toUtf8();
    data.writeEntry(QStringLiteral("chromium"), "Chromium",
                    "NoDisplay=true\nStartupWMClass=Browse\nExec=" + program + " %U");
    data.writeEntry(QStringLiteral("own-browser"), "Chromium",
                    "StartupWMClass=Browse\nExec=" + program + " %U");
    EXPECT_EQ(launch(LaunchableApplication::chrome), QStringLiteral("own-browser"));
    EXPECT_EQ(entries.resolve({{}, {}, QStringLiteral("Browse"), {}, 0}).desktopEntryID,
              QStringLiteral("own-browser"));
}

TEST_F(Launcher, A_candidate_that_cannot_be_started_is_followed_by_the_next)
{
    data.writeEntry(QStringLiteral("kitty"), "Kitty",
                    "Exec=" + data.path(QStringLiteral("bin/kitty")).toUtf8());
    writeProgram(QStringLiteral("kitty"), report);
    writeProgram(QStringLiteral("konsole"), {});
    data.write(QStringLiteral("bin/konsole"), "#!/no/such/interpreter\n");
    EXPECT_EQ(launch(LaunchableApplication::terminal), QStringLiteral("kitty"));
    EXPECT_EQ(written(), " :7 start-me_TIME5 none end\n");
}

TEST_F(Launcher, A_terminal_behind_the_systems_name_and_a_wrapper_is_asked_for_a_window)
{
    writeProgram(QStringLiteral("gnome-terminal"), report);
    writeProgram(QStringLiteral("gnome-terminal.wrapper"), "exit 1");
    data.writeEntry(QStringLiteral("org.gnome.Terminal"), "Terminal",
                    "Exec=" + data.path(QStringLiteral("bin/gnome-terminal")).toUtf8());
    ASSERT_TRUE(QFile::link(data.path(QStringLiteral("bin/gnome-terminal.wrapper")),
                            data.path(QStringLiteral("alternative"))));
    ASSERT_TRUE(QFile::link(data.path(QStringLiteral("alternative")),
                            data.path(QStringLiteral("bin/x-terminal-emulator"))));
    EXPECT_EQ(launch(LaunchableApplication::terminal), QStringLiteral("org.gnome.Terminal"));
    EXPECT_EQ(written(), "--window :7 start-me_TIME5 none end\n");
}

TEST_F(Launcher, Nothing_installed_is_none)
{
    ApplicationLauncher launcher(entries, 2s, environment);
    EXPECT_EQ(launcher.launch(LaunchableApplication::terminal, {}), std::nullopt);
    EXPECT_EQ(launcher.launch(LaunchableApplication::chrome, {}), std::nullopt);
}

TEST_F(Launcher, A_script_is_started_without_a_wait_for_what_it_turns_out_to_be)
{
    environment.insert(QStringLiteral("TERMINAL"), QStringLiteral("own-terminal"));
    environment.insert(QStringLiteral("PATH"),
                       environment.value(QStringLiteral("PATH")) + QStringLiteral(":/usr/bin"));
    // What it becomes is told only later.
    writeProgram(QStringLiteral("own-terminal"),
                 "while [ ! -e \"$OUT.go\" ]; do sleep 0.01; done\nexec tail -f /dev/null");
    data.writeEntry(QStringLiteral("own-tail"), "Tail", "Exec=tail");
    ApplicationLauncher launcher(entries, 30s, environment);
    const auto launched = launcher.launch(LaunchableApplication::terminal, {});
    ASSERT_TRUE(launched);
    EXPECT_EQ(launched->bundleIdentifier, std::nullopt);

    data.write(QStringLiteral("out.go"), {});
    EXPECT_EQ(launcher.identifierOf(*launched, {}), QStringLiteral("own-tail"));
    kill(launched->process, SIGKILL);
}

TEST_F(Launcher, Recognition_ends_with_the_started_processes_or_on_request)
{
    environment.insert(QStringLiteral("TERMINAL"), QStringLiteral("own-terminal"));
    writeProgram(QStringLiteral("own-terminal"), "exit 0");
    ApplicationLauncher launcher(entries, 60s, environment);
    const auto ended = launcher.launch(LaunchableApplication::terminal, {});
    ASSERT_TRUE(ended);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(launcher.identifierOf(*ended, {}), std::nullopt);

    writeProgram(QStringLiteral("own-terminal"), "exec /usr/bin/tail -f /dev/null");
    const auto running = launcher.launch(LaunchableApplication::terminal, {});
    ASSERT_TRUE(running);
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(launcher.identifierOf(*running, stop.get_token()), std::nullopt);
    kill(running->process, SIGKILL);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 30s);
}

TEST_F(Launcher, A_process_belongs_to_the_launch_by_its_session_or_its_environment)
{
    environment.insert(QStringLiteral("TERMINAL"), QStringLiteral("own-terminal"));
    environment.insert(QStringLiteral("PATH"),
                       environment.value(QStringLiteral("PATH")) + QStringLiteral(":/usr/bin"));
    // One that stays in the session, one that leaves it, and two that leave it and are told
    // nothing, the second of which was started by one that has ended.
    writeProgram(
        QStringLiteral("own-terminal"),
        "sleep 60 & a=$!\nsetsid sleep 60 & b=$!\n"
        "setsid env -u DESKTOP_STARTUP_ID sleep 60 & c=$!\n"
        "(setsid env -u DESKTOP_STARTUP_ID sh -c 'sleep 60 & echo $! > \"$OUT.d\"; wait' &)\n"
        "while [ ! -s \"$OUT.d\" ]; do sleep 0.01; done\n"
        "echo \"$a $b $c $(cat \"$OUT.d\") end\" > \"$OUT\"\nwait");
    ApplicationLauncher launcher(entries, 1s, environment);
    const auto launched = launcher.launch(LaunchableApplication::terminal, {{}, "start-me_TIME5"});
    ASSERT_TRUE(launched);
    const QList<QByteArray> numbers = written().simplified().split(' ');
    ASSERT_EQ(numbers.size(), 5);
    const auto isOfIt = [&](int at) { return cameOf(*launched, numbers[at].toInt()); };
    EXPECT_TRUE(cameOf(*launched, launched->process));
    EXPECT_TRUE(isOfIt(0)) << "in the session";
    EXPECT_TRUE(waitUntil([&] { return getsid(numbers[1].toInt()) == numbers[1].toInt(); }));
    EXPECT_TRUE(isOfIt(1)) << "in another session";
    EXPECT_TRUE(isOfIt(2)) << "a child of what is in the session";
    EXPECT_FALSE(isOfIt(3)) << "nothing tells";
    EXPECT_FALSE(cameOf(*launched, getpid()));
    EXPECT_FALSE(cameOf(*launched, 0));
    EXPECT_FALSE(cameOf({}, numbers[1].toInt())) << "a launch of nothing";
    for (int at = 0; at < 4; ++at) {
        kill(numbers[at].toInt(), SIGKILL);
    }
}

namespace {

class Reopener : public Launcher
{
protected:
    void SetUp() override
    {
        Launcher::SetUp();
        writeProgram(QStringLiteral("write"), report);
        data.writeEntry(QStringLiteral("org.example.Write"), "Write",
                        "Exec=" + program("write") + " %F");
    }

    QByteArray program(const QByteArray& name) const
    {
        return data.path(QStringLiteral("bin/")).toUtf8() + name;
    }

    Reopening reopen(const QString& application, const QString& document)
    {
        ApplicationLauncher launcher(entries, 2s, environment);
        return launcher.reopen({application, document}, {":7", "start-me_TIME5"});
    }
};

} // namespace

TEST_F(Reopener, The_application_of_an_entry_opens_the_document)
{
    data.write(QStringLiteral("my notes.txt"), "notes");
    const QString path = data.path(QStringLiteral("my notes.txt"));
    const Reopening opened =
        reopen(QStringLiteral("org.example.Write"), QUrl::fromLocalFile(path).toString());
    ASSERT_TRUE(opened.launch);
    EXPECT_FALSE(opened.isDocumentGone);
    EXPECT_EQ(opened.launch->bundleIdentifier, QStringLiteral("org.example.Write"));
    EXPECT_EQ(opened.launch->startupID, "start-me_TIME5");
    EXPECT_EQ(written(), path.toUtf8() + " :7 start-me_TIME5 none end\n");
}

TEST_F(Reopener, Without_its_document_the_application_starts_all_the_same)
{
    const Reopening opened =
        reopen(QStringLiteral("org.example.Write"), data.path(QStringLiteral("gone.txt")));
    EXPECT_TRUE(opened.launch);
    EXPECT_TRUE(opened.isDocumentGone);
    EXPECT_EQ(written(), " :7 start-me_TIME5 none end\n");
}

TEST_F(Reopener, What_is_no_document_is_not_passed_on)
{
    for (const QString& document :
         {QString(), QStringLiteral("--option"), QStringLiteral("relative.txt"),
          QStringLiteral("about:blank"), QStringLiteral("https://example.org/")}) {
        QFile::remove(data.path(QStringLiteral("out")));
        const Reopening opened = reopen(QStringLiteral("org.example.Write"), document);
        EXPECT_TRUE(opened.launch);
        EXPECT_FALSE(opened.isDocumentGone) << qPrintable(document);
        EXPECT_EQ(written(), " :7 start-me_TIME5 none end\n") << qPrintable(document);
    }
}

TEST_F(Reopener, A_browser_opens_a_page_in_a_new_window)
{
    writeProgram(QStringLiteral("browse"), report);
    data.writeEntry(QStringLiteral("browse"), "Browse",
                    "Exec=" + program("browse") +
                        " %U\nActions=new-window;\n\n[Desktop Action new-window]\n"
                        "Name=New Window\nExec=" +
                        program("browse") + " --fresh %u");
    EXPECT_TRUE(reopen(QStringLiteral("browse"), QStringLiteral("https://example.org/")).launch);
    EXPECT_EQ(written(), "--fresh https://example.org/ :7 start-me_TIME5 none end\n");
}

TEST_F(Reopener, A_window_without_an_entry_is_opened_by_the_name_of_its_program)
{
    EXPECT_TRUE(reopen(QStringLiteral("Write"), {}).launch);
    EXPECT_EQ(written(), " :7 start-me_TIME5 none end\n");
}

TEST_F(Reopener, An_application_that_is_not_installed_is_not_started)
{
    EXPECT_EQ(reopen(QStringLiteral("org.example.Gone"), {}), Reopening());
    EXPECT_EQ(reopen({}, {}), Reopening());
    EXPECT_EQ(reopen(QStringLiteral("/bin/sh"), {}), Reopening());
}
