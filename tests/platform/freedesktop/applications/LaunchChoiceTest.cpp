#include "platform/freedesktop/applications/LaunchChoice.h"

#include <gtest/gtest.h>

#include <QSet>

using namespace kelpa;

namespace {

/// A machine on which the given programs are installed, all in /usr/bin.
ProgramFinder installed(const QSet<QString>& programs)
{
    return [programs](const QString& program) {
        if (program.startsWith(u'/')) {
            return programs.contains(program.mid(program.lastIndexOf(u'/') + 1)) ? program
                                                                                 : QString();
        }
        return programs.contains(program) ? QStringLiteral("/usr/bin/") + program : QString();
    };
}

/// Where no path is a link.
QString noLinks(const QString& path)
{
    return path;
}

QStringList commands(const std::vector<LaunchCandidate>& candidates)
{
    QStringList all;
    for (const LaunchCandidate& each : candidates) {
        all.append(each.command.join(u' '));
    }
    return all;
}

LaunchableEntry entry(const QString& id, const QString& exec, const QString& newWindow = {})
{
    return {id, exec, newWindow};
}

} // namespace

TEST(TerminalChoice, The_variable_comes_before_the_desktops_and_the_systems_choice)
{
    const auto find =
        installed({QStringLiteral("xterm"), QStringLiteral("alacritty"),
                   QStringLiteral("xdg-terminal-exec"), QStringLiteral("x-terminal-emulator")});
    EXPECT_EQ(
        commands(terminalCandidates(QStringLiteral("xterm"), find, noLinks)),
        QStringList({QStringLiteral("/usr/bin/xterm"), QStringLiteral("/usr/bin/xdg-terminal-exec"),
                     QStringLiteral("/usr/bin/x-terminal-emulator"),
                     QStringLiteral("/usr/bin/alacritty")}));
}

TEST(TerminalChoice, The_variable_may_be_a_path_with_arguments)
{
    const auto find = installed({QStringLiteral("xterm")});
    EXPECT_EQ(
        commands(terminalCandidates(QStringLiteral("/opt/xterm -fa Mono"), find, noLinks)),
        QStringList({QStringLiteral("/opt/xterm -fa Mono"), QStringLiteral("/usr/bin/xterm")}));
}

TEST(TerminalChoice, A_variable_that_names_nothing_installed_is_skipped)
{
    const auto find = installed({QStringLiteral("konsole")});
    EXPECT_EQ(commands(terminalCandidates(QStringLiteral("missing"), find, noLinks)),
              QStringList({QStringLiteral("/usr/bin/konsole")}));
    EXPECT_EQ(commands(terminalCandidates(QStringLiteral("  "), find, noLinks)),
              QStringList({QStringLiteral("/usr/bin/konsole")}));
}

TEST(TerminalChoice, Without_any_choice_the_known_terminals_are_tried_in_order)
{
    const auto find = installed({QStringLiteral("xterm"), QStringLiteral("konsole"),
                                 QStringLiteral("gnome-terminal"), QStringLiteral("kitty")});
    EXPECT_EQ(commands(terminalCandidates({}, find, noLinks)),
              QStringList({QStringLiteral("/usr/bin/gnome-terminal --window"),
                           QStringLiteral("/usr/bin/konsole"), QStringLiteral("/usr/bin/kitty"),
                           QStringLiteral("/usr/bin/xterm")}));
}

TEST(TerminalChoice, A_terminal_of_one_process_is_asked_for_a_window)
{
    const auto find = installed({QStringLiteral("ptyxis")});
    EXPECT_EQ(commands(terminalCandidates(QStringLiteral("ptyxis"), find, noLinks)),
              QStringList({QStringLiteral("/usr/bin/ptyxis --new-window")}));
}

TEST(TerminalChoice, Where_no_terminal_is_installed_there_is_none)
{
    EXPECT_TRUE(terminalCandidates(QStringLiteral("xterm"), installed({}), noLinks).empty());
}

TEST(TerminalChoice, A_terminal_is_asked_for_a_window_by_whatever_name_it_goes)
{
    struct Row
    {
        const char* description;
        QStringList programs;
        /// The file behind /usr/bin/x-terminal-emulator.
        QString real;
        QString expected;
    };
    const QString system = QStringLiteral("x-terminal-emulator");
    const auto text = [](const char* each) { return QString::fromLatin1(each); };
    const std::vector<Row> rows{
        {"a link to a terminal of one process",
         {system, text("ptyxis")},
         text("/usr/bin/ptyxis"),
         text("/usr/bin/x-terminal-emulator --new-window")},
        {"one that opens a window with every start",
         {system, text("lxterm")},
         text("/usr/bin/lxterm"),
         text("/usr/bin/x-terminal-emulator")},
        {"a wrapper, which would not understand the option",
         {system, text("gnome-terminal"), text("gnome-terminal.wrapper")},
         text("/usr/bin/gnome-terminal.wrapper"),
         text("/usr/bin/gnome-terminal --window")},
        {"another wrapper",
         {system, text("mate-terminal"), text("mate-terminal.wrapper")},
         text("/usr/bin/mate-terminal.wrapper"),
         text("/usr/bin/mate-terminal --window")},
        {"a wrapper of one that needs no option",
         {system, text("xfce4-terminal"), text("xfce4-terminal.wrapper")},
         text("/usr/bin/xfce4-terminal.wrapper"),
         text("/usr/bin/xfce4-terminal")},
        {"a wrapper whose program is gone",
         {system, text("gnome-terminal.wrapper")},
         text("/usr/bin/gnome-terminal.wrapper"),
         text("/usr/bin/x-terminal-emulator")},
        {"a link to nothing that is known", {system}, {}, text("/usr/bin/x-terminal-emulator")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.description);
        const auto find = installed({row.programs.begin(), row.programs.end()});
        const LinkFollower follow = [&row](const QString& path) {
            return path.endsWith(QStringLiteral("/x-terminal-emulator")) ? row.real : path;
        };
        // Also where the person chose it by that name.
        for (const QString& variable :
             {QString(), QStringLiteral("/usr/bin/x-terminal-emulator")}) {
            const QStringList all = commands(terminalCandidates(variable, find, follow));
            ASSERT_FALSE(all.isEmpty());
            EXPECT_EQ(all.front(), row.expected);
        }
    }
}

TEST(TerminalChoice, Arguments_of_the_person_are_left_to_the_wrapper_that_they_are_meant_for)
{
    const auto find =
        installed({QStringLiteral("x-terminal-emulator"), QStringLiteral("gnome-terminal")});
    const LinkFollower follow = [](const QString& /*path*/) {
        return QStringLiteral("/usr/bin/gnome-terminal.wrapper");
    };
    EXPECT_EQ(
        commands(terminalCandidates(QStringLiteral("x-terminal-emulator -T Mine"), find, follow))
            .front(),
        QStringLiteral("/usr/bin/x-terminal-emulator -T Mine"));
}

TEST(BrowserChoice, Google_Chrome_comes_before_Chromium_before_the_default_browser)
{
    const auto find = installed(
        {QStringLiteral("chrome"), QStringLiteral("chromium"), QStringLiteral("firefox")});
    const std::vector<LaunchableEntry> entries{
        entry(QStringLiteral("chromium"), QStringLiteral("/usr/bin/chromium %U")),
        entry(QStringLiteral("google-chrome"), QStringLiteral("/opt/chrome %U"),
              QStringLiteral("/opt/chrome --fresh"))};
    const auto standard = entry(QStringLiteral("firefox"), QStringLiteral("firefox %u"),
                                QStringLiteral("firefox --new-window %u"));
    const std::vector<LaunchCandidate> expected{
        {{QStringLiteral("/opt/chrome"), QStringLiteral("--fresh")},
         QStringLiteral("google-chrome")},
        {{QStringLiteral("/usr/bin/chromium"), QStringLiteral("--new-window")},
         QStringLiteral("chromium")},
        {{QStringLiteral("/usr/bin/chromium"), QStringLiteral("--new-window")}, {}},
        {{QStringLiteral("/usr/bin/firefox"), QStringLiteral("--new-window")},
         QStringLiteral("firefox")}};
    EXPECT_EQ(browserCandidates(entries, standard, find), expected);
}

TEST(BrowserChoice, A_program_without_an_entry_is_found_by_its_name)
{
    const std::vector<LaunchCandidate> expected{
        {{QStringLiteral("/usr/bin/google-chrome"), QStringLiteral("--new-window")}, {}}};
    EXPECT_EQ(browserCandidates({}, std::nullopt, installed({QStringLiteral("google-chrome")})),
              expected);
}

TEST(BrowserChoice, A_default_browser_without_such_an_action_is_simply_started)
{
    const std::vector<LaunchCandidate> expected{
        {{QStringLiteral("/usr/bin/netsurf")}, QStringLiteral("netsurf")}};
    EXPECT_EQ(browserCandidates({}, entry(QStringLiteral("netsurf"), QStringLiteral("netsurf %u")),
                                installed({QStringLiteral("netsurf")})),
              expected);
}

TEST(BrowserChoice, An_entry_whose_program_is_gone_is_skipped)
{
    const std::vector<LaunchableEntry> entries{
        entry(QStringLiteral("google-chrome"), QStringLiteral("/opt/chrome %U"))};
    EXPECT_TRUE(browserCandidates(entries, std::nullopt, installed({})).empty());
}

TEST(CommandOfAnEntry, Field_codes_go_and_quotes_are_undone)
{
    EXPECT_EQ(commandOf(QStringLiteral("env \"A B=1\" run --x=%c @@u %U @@ 100%%")),
              QStringList({QStringLiteral("env"), QStringLiteral("A B=1"), QStringLiteral("run"),
                           QStringLiteral("--x="), QStringLiteral("@@u"), QStringLiteral("@@"),
                           QStringLiteral("100%")}));
}

TEST(CommandOfAnEntry, A_document_takes_the_place_of_a_code_that_accepts_it)
{
    const auto command = [](const QString& exec, const QString& document) {
        return commandOf(exec, document).value_or(QStringList()).join(u'|');
    };
    const QString path = QStringLiteral("/home/me/100% %U.txt");
    const QString url = QStringLiteral("https://example.org/?a=%20");
    EXPECT_EQ(command(QStringLiteral("edit --wait %F"), path),
              QStringLiteral("edit|--wait|/home/me/100% %U.txt"));
    EXPECT_EQ(command(QStringLiteral("edit %u %i"), path),
              QStringLiteral("edit|/home/me/100% %U.txt"));
    EXPECT_EQ(command(QStringLiteral("browse %U"), url),
              QStringLiteral("browse|https://example.org/?a=%20"));
    EXPECT_EQ(command(QStringLiteral("edit %f"), url), QString()) << "takes files only";
    EXPECT_EQ(command(QStringLiteral("edit"), path), QString());
    EXPECT_EQ(command(QStringLiteral("edit --file=%f"), path), QString());
    EXPECT_EQ(command({}, path), QString());
    EXPECT_EQ(command(QStringLiteral("/opt/edit --version"), QStringLiteral("/opt/edit")),
              QString())
        << "a program is no document";
}

TEST(CommandOfAnEntry, A_document_never_takes_the_place_of_the_program)
{
    const QString document = QStringLiteral("/home/someone/notes.sh");
    for (const char* const exec : {"%f", "%U --x=%f", "\"%u\" run", "%i run %f", "% %F", "%i%f %U"})
        EXPECT_EQ(commandOf(QString::fromLatin1(exec), document), std::nullopt) << exec;
    EXPECT_EQ(commandOf(QStringLiteral("%F run")), std::nullopt);
}

TEST(CommandOfAnEntry, A_malformed_or_empty_one_is_none)
{
    EXPECT_EQ(commandOf({}), std::nullopt);
    EXPECT_EQ(commandOf(QStringLiteral("%U")), std::nullopt);
    EXPECT_EQ(commandOf(QStringLiteral("run \"unclosed")), std::nullopt);
}
