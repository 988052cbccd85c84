#include "platform/freedesktop/applications/DesktopEntries.h"

#include "platform/freedesktop/applications/TemporaryDataDirectory.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <array>
#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

using namespace kelpa;
using namespace std::chrono_literals;

namespace {

class Entries : public testing::Test
{
protected:
    TemporaryDataDirectory own;
    TemporaryDataDirectory shared;
    DesktopEntries entries{{own.path(), shared.path()}, 0ms};

    QString resolved(const ApplicationClues& clues)
    {
        return entries.resolve(clues).desktopEntryID.value_or(QStringLiteral("(none)"));
    }

    QString byClass(const QString& instance, const QString& name)
    {
        return resolved({{}, {}, instance, name, 0});
    }

    QString nameOf(const QString& id) { return entries.resolve({id, {}, {}, {}, 0}).name; }
};

QByteArray runningProgram()
{
    return QByteArray::fromStdString(std::filesystem::read_symlink("/proc/self/exe").string());
}

/// Sets an environment variable for one test.
class Environment
{
public:
    Environment(const char* name, const QByteArray& value) : m_name(name), m_old(qgetenv(name))
    {
        qputenv(name, value);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment()
    {
        if (m_old.isNull()) {
            qunsetenv(m_name);
        } else {
            qputenv(m_name, m_old);
        }
    }

private:
    const char* m_name;
    QByteArray m_old;
};

} // namespace

TEST_F(Entries, A_GTK_application_id_names_the_entry_of_that_id)
{
    shared.writeEntry(QStringLiteral("org.example.Editor"), "Editor");
    shared.writeEntry(QStringLiteral("other"), "Other", "StartupWMClass=Editor");
    const ResolvedApplication found = entries.resolve({QStringLiteral("org.example.Editor"),
                                                       {},
                                                       QStringLiteral("editor"),
                                                       QStringLiteral("Editor"),
                                                       0});
    EXPECT_EQ(found.desktopEntryID, QStringLiteral("org.example.Editor"));
    EXPECT_EQ(found.name, QStringLiteral("Editor"));
}

TEST_F(Entries, A_GTK_application_id_without_an_entry_leaves_the_decision_to_the_next_clue)
{
    shared.writeEntry(QStringLiteral("painter"), "Painter");
    EXPECT_EQ(resolved({QStringLiteral("org.example.Painter.Helper"),
                        {},
                        QStringLiteral("painter"),
                        QStringLiteral("Painter"),
                        0}),
              QStringLiteral("painter"));
}

TEST_F(Entries, A_KDE_desktop_file_is_understood_as_id_as_file_name_and_as_path)
{
    shared.writeEntry(QStringLiteral("org.example.writer"), "Writer");
    for (const char* text : {"org.example.writer", "org.example.writer.desktop",
                             "/usr/share/applications/org.example.writer.desktop"}) {
        EXPECT_EQ(resolved({{}, QString::fromLatin1(text), {}, {}, 0}),
                  QStringLiteral("org.example.writer"))
            << text;
    }
}

TEST_F(Entries, StartupWMClass_wins_over_an_entry_whose_file_name_is_the_class)
{
    shared.writeEntry(QStringLiteral("viewer"), "Plain viewer");
    shared.writeEntry(QStringLiteral("org.example.Images"), "Images", "StartupWMClass=Viewer");
    EXPECT_EQ(byClass(QStringLiteral("viewer"), QStringLiteral("Viewer")),
              QStringLiteral("org.example.Images"));
}

TEST_F(Entries, An_exact_StartupWMClass_wins_over_one_in_another_case)
{
    shared.writeEntry(QStringLiteral("a-lower"), "Lower", "StartupWMClass=term");
    shared.writeEntry(QStringLiteral("b-upper"), "Upper", "StartupWMClass=Term");
    EXPECT_EQ(byClass(QStringLiteral("main"), QStringLiteral("Term")), QStringLiteral("b-upper"));
    EXPECT_EQ(byClass(QStringLiteral("main"), QStringLiteral("TERM")), QStringLiteral("a-lower"));
}

TEST_F(Entries, The_instance_of_an_installed_web_page_wins_over_the_browsers_class)
{
    shared.writeEntry(QStringLiteral("browser"), "Browser", "StartupWMClass=Browser");
    shared.writeEntry(QStringLiteral("mail-page"), "Mail", "StartupWMClass=crx_abc");
    EXPECT_EQ(byClass(QStringLiteral("crx_abc"), QStringLiteral("Browser")),
              QStringLiteral("mail-page"));
    EXPECT_EQ(byClass(QStringLiteral("Navigator"), QStringLiteral("Browser")),
              QStringLiteral("browser"));
}

TEST_F(Entries, A_class_names_an_entry_by_its_file_name_in_any_case)
{
    shared.writeEntry(QStringLiteral("xterm"), "XTerm");
    shared.writeEntry(QStringLiteral("text-editor"), "Text editor");
    EXPECT_EQ(byClass({}, QStringLiteral("XTerm")), QStringLiteral("xterm"));
    EXPECT_EQ(byClass({}, QStringLiteral("Text Editor")), QStringLiteral("text-editor"));
}

TEST_F(Entries, A_class_names_an_entry_by_the_last_part_of_its_id)
{
    shared.writeEntry(QStringLiteral("org.gnome.gedit"), "Text Editor");
    EXPECT_EQ(byClass({}, QStringLiteral("Gedit")), QStringLiteral("org.gnome.gedit"));
}

TEST_F(Entries, A_last_part_that_two_applications_share_names_neither)
{
    shared.writeEntry(QStringLiteral("org.one.Terminal"), "One");
    shared.writeEntry(QStringLiteral("org.two.Terminal"), "Two");
    EXPECT_EQ(byClass({}, QStringLiteral("Terminal")), QStringLiteral("(none)"));
}

TEST_F(Entries, A_last_part_that_only_one_offered_application_has_names_that_one)
{
    shared.writeEntry(QStringLiteral("org.one.Terminal"), "One", "NoDisplay=true");
    shared.writeEntry(QStringLiteral("org.two.Terminal"), "Two");
    EXPECT_EQ(byClass({}, QStringLiteral("Terminal")), QStringLiteral("org.two.Terminal"));
}

TEST_F(Entries, A_deleted_entry_does_not_exist_and_hides_the_shared_one)
{
    own.writeEntry(QStringLiteral("game"), "Game", "Hidden=true");
    shared.writeEntry(QStringLiteral("game"), "Game");
    EXPECT_EQ(byClass({}, QStringLiteral("game")), QStringLiteral("(none)"));
}

TEST_F(Entries, An_entry_that_is_not_offered_in_menus_still_names_its_windows)
{
    shared.writeEntry(QStringLiteral("settings-panel"), "Settings", "NoDisplay=true");
    EXPECT_EQ(byClass({}, QStringLiteral("settings-panel")), QStringLiteral("settings-panel"));
}

TEST_F(Entries, An_offered_entry_wins_over_one_that_is_not_offered)
{
    shared.writeEntry(QStringLiteral("a-helper"), "Helper", "NoDisplay=true\nStartupWMClass=Suite");
    shared.writeEntry(QStringLiteral("b-suite"), "Suite", "StartupWMClass=Suite");
    EXPECT_EQ(byClass({}, QStringLiteral("Suite")), QStringLiteral("b-suite"));
}

TEST_F(Entries, The_persons_own_entry_replaces_the_shared_one)
{
    own.writeEntry(QStringLiteral("mail"), "My mail");
    shared.writeEntry(QStringLiteral("mail"), "Mail");
    EXPECT_EQ(nameOf(QStringLiteral("mail")), QStringLiteral("My mail"));
}

TEST_F(Entries, A_broken_entry_is_skipped_and_the_shared_one_of_its_id_counts)
{
    own.write(QStringLiteral("applications/mail.desktop"), "no group at all\n\xff\xfe");
    shared.writeEntry(QStringLiteral("mail"), "Mail");
    EXPECT_EQ(nameOf(QStringLiteral("mail")), QStringLiteral("Mail"));
}

TEST_F(Entries, Files_that_are_no_usable_entries_are_skipped)
{
    shared.write(QStringLiteral("applications/empty.desktop"), "");
    shared.write(QStringLiteral("applications/link.desktop"),
                 "[Desktop Entry]\nType=Link\nName=Link\nURL=https://example.org\n");
    shared.writeEntry(QStringLiteral("gone"), "Gone", "TryExec=/nowhere/at/all");
    shared.write(QStringLiteral("applications/huge.desktop"),
                 "[Desktop Entry]\nType=Application\nName=Huge\nExec=/bin/true\nComment=" +
                     QByteArray(2 << 20, 'x') + "\n");
    ASSERT_EQ(
        mkfifo(shared.path(QStringLiteral("applications/pipe.desktop")).toUtf8().constData(), 0600),
        0);
    shared.writeEntry(QStringLiteral("good"), "Good");
    for (const char* id : {"empty", "link", "gone", "huge", "pipe"}) {
        EXPECT_EQ(byClass({}, QString::fromLatin1(id)), QStringLiteral("(none)")) << id;
    }
    EXPECT_EQ(byClass({}, QStringLiteral("good")), QStringLiteral("good"));
}

TEST_F(Entries, A_folder_that_contains_itself_is_read_only_so_deep)
{
    shared.writeEntry(QStringLiteral("good"), "Good");
    std::filesystem::create_directory_symlink(
        ".", shared.path(QStringLiteral("applications/loop")).toStdString());
    EXPECT_EQ(byClass({}, QStringLiteral("good")), QStringLiteral("good"));
}

TEST_F(Entries, An_entry_in_a_folder_has_the_folder_in_its_id)
{
    shared.writeEntry(QStringLiteral("suite/writer"), "Writer");
    EXPECT_EQ(resolved({QStringLiteral("suite-writer"), {}, {}, {}, 0}),
              QStringLiteral("suite-writer"));
}

TEST_F(Entries, The_name_is_in_the_language_of_the_process)
{
    const Environment locale("LC_ALL", "de_DE.UTF-8");
    const Environment language("LANGUAGE", "de");
    shared.writeEntry(QStringLiteral("files"), "Files", "Name[de]=Dateien\nName[fr]=Fichiers");
    EXPECT_EQ(nameOf(QStringLiteral("files")), QStringLiteral("Dateien"));
}

TEST_F(Entries, A_window_without_an_entry_has_neither_id_nor_name)
{
    shared.writeEntry(QStringLiteral("files"), "Files");
    EXPECT_EQ(entries.resolve({QStringLiteral("org.example.Unknown"), QStringLiteral("unknown"),
                               QStringLiteral("unknown"), QStringLiteral("Unknown"), 0}),
              (ResolvedApplication{std::nullopt, QString()}));
    EXPECT_EQ(entries.resolve({}), (ResolvedApplication{std::nullopt, QString()}));
}

TEST_F(Entries, The_running_program_is_the_last_clue)
{
    const QByteArray program = runningProgram();
    ASSERT_FALSE(program.isEmpty());
    shared.writeEntry(QStringLiteral("by-program"), "By program",
                      "Exec=" + program + " --new-window %F");
    shared.writeEntry(QStringLiteral("by-class"), "By class", "StartupWMClass=Known");
    EXPECT_EQ(resolved({{}, {}, {}, {}, getpid()}), QStringLiteral("by-program"));
    EXPECT_EQ(resolved({{}, {}, {}, QStringLiteral("Known"), getpid()}),
              QStringLiteral("by-class"));
}

TEST_F(Entries, A_program_that_is_given_a_script_or_runs_in_a_terminal_is_no_clue)
{
    const QByteArray program = runningProgram();
    shared.writeEntry(QStringLiteral("script"), "Script", "Exec=" + program + " /some/script.py");
    shared.writeEntry(QStringLiteral("shell"), "Shell", "Terminal=true\nExec=" + program);
    EXPECT_EQ(resolved({{}, {}, {}, {}, getpid()}), QStringLiteral("(none)"));
}

TEST_F(Entries, A_process_that_is_gone_is_no_clue)
{
    shared.writeEntry(QStringLiteral("files"), "Files");
    EXPECT_EQ(resolved({{}, {}, {}, {}, 0x7ffffff0}), QStringLiteral("(none)"));
}

TEST_F(Entries, An_application_that_is_installed_later_is_found)
{
    EXPECT_EQ(byClass({}, QStringLiteral("late")), QStringLiteral("(none)"));
    const std::uint64_t before = entries.generation();
    shared.writeEntry(QStringLiteral("late"), "Late");
    EXPECT_EQ(byClass({}, QStringLiteral("late")), QStringLiteral("late"));
    EXPECT_NE(entries.generation(), before);
}

TEST_F(Entries, A_second_change_within_one_tick_of_the_folders_clock_is_noticed)
{
    for (int i = 0; i < 20; ++i) {
        const QString id = QStringLiteral("app%1").arg(i);
        EXPECT_EQ(byClass({}, id), QStringLiteral("(none)"));
        shared.writeEntry(id, "Application");
        EXPECT_EQ(byClass({}, id), id);
    }
}

TEST_F(Entries, Unchanged_folders_are_not_read_again)
{
    shared.writeEntry(QStringLiteral("files"), "Files");
    shared.ageEntries(1h);
    const std::uint64_t before = entries.generation();
    EXPECT_EQ(byClass({}, QStringLiteral("files")), QStringLiteral("files"));
    EXPECT_EQ(entries.generation(), before);
}

TEST_F(Entries, Of_a_thousand_entries_each_is_found_by_its_own_class)
{
    for (int i = 0; i < 1000; ++i) {
        const QByteArray number = QByteArray::number(i);
        shared.writeEntry(QStringLiteral("org.example.app%1").arg(i), "Application " + number,
                          "StartupWMClass=Class" + number + "\nIcon=icon" + number);
    }
    shared.ageEntries(1h);
    for (const int i : {0, 1, 499, 998, 999}) {
        EXPECT_EQ(byClass({}, QStringLiteral("Class%1").arg(i)),
                  QStringLiteral("org.example.app%1").arg(i));
        EXPECT_EQ(entries.icon(QStringLiteral("org.example.app%1").arg(i)),
                  QStringLiteral("icon%1").arg(i));
    }
}

TEST_F(Entries, Several_threads_may_ask_at_once)
{
    for (int i = 0; i < 50; ++i) {
        shared.writeEntry(QStringLiteral("app%1").arg(i), "Application");
    }
    std::array<int, 4> found{};
    {
        std::vector<std::jthread> threads;
        for (std::size_t t = 0; t < found.size(); ++t) {
            threads.emplace_back([this, &count = found.at(t)] {
                for (int i = 0; i < 50; ++i) {
                    const QString id = QStringLiteral("app%1").arg(i);
                    count += byClass({}, id) == id ? 1 : 0;
                }
            });
        }
    }
    EXPECT_EQ(found, (std::array{50, 50, 50, 50}));
}

TEST(ApplicationDataDirectories, Are_the_persons_own_and_then_the_shared_ones_without_repeats)
{
    const Environment home("XDG_DATA_HOME", "/home/someone/data");
    const Environment shared("XDG_DATA_DIRS", "/opt/share/:relative:/usr/share:/opt/share");
    EXPECT_EQ(applicationDataDirectories(),
              (std::vector<QString>{QStringLiteral("/home/someone/data"),
                                    QStringLiteral("/opt/share"), QStringLiteral("/usr/share")}));
}

TEST(ApplicationDataDirectories, Have_the_conventional_places_where_the_environment_says_nothing)
{
    const Environment userHome("HOME", "/home/someone");
    const Environment home("XDG_DATA_HOME", "");
    const Environment shared("XDG_DATA_DIRS", "");
    EXPECT_EQ(
        applicationDataDirectories(),
        (std::vector<QString>{QStringLiteral("/home/someone/.local/share"),
                              QStringLiteral("/usr/local/share"), QStringLiteral("/usr/share")}));
}
