#include "app/CommandLine.h"

#include "platform/sqlite/SettingsFiles.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

CommandLine read(const QStringList& options)
{
    return readCommandLine(QStringList{QStringLiteral("kelpa")} + options);
}

TEST(CommandLine, Nothing_and_show_mean_the_board_where_boards_are_kept)
{
    const CommandLine nothing = read({});
    EXPECT_EQ(nothing.settingsPath, defaultSettingsPath());
    EXPECT_FALSE(nothing.asksForHelp);
    EXPECT_FALSE(nothing.asksForVersion);
    EXPECT_TRUE(nothing.error.isEmpty());
    EXPECT_EQ(read({QStringLiteral("--show")}), nothing);
}

TEST(CommandLine, A_new_todo_is_asked_for)
{
    EXPECT_FALSE(read({}).asksForTodo);
    const CommandLine line = read({QStringLiteral("--new-todo")});
    EXPECT_TRUE(line.asksForTodo);
    EXPECT_TRUE(line.error.isEmpty());
}

TEST(CommandLine, A_start_for_a_call_is_hidden_as_well)
{
    const CommandLine hidden = read({QStringLiteral("--hidden")});
    EXPECT_TRUE(hidden.startsHidden);
    EXPECT_FALSE(hidden.startsForCall);
    const CommandLine forCall = read({QStringLiteral("--service")});
    EXPECT_TRUE(forCall.startsHidden);
    EXPECT_TRUE(forCall.startsForCall);
    EXPECT_TRUE(forCall.error.isEmpty());
}

TEST(CommandLine, Settings_name_the_file_of_the_board)
{
    const QString path = QStringLiteral("/tmp/a board.sqlite");
    EXPECT_EQ(read({QStringLiteral("--settings"), path}).settingsPath, path);
    EXPECT_EQ(read({QStringLiteral("--settings=") + path}).settingsPath, path);
}

TEST(CommandLine, A_desktop_is_asked_for_by_its_name)
{
    EXPECT_EQ(read({}).desktop, std::nullopt);
    EXPECT_EQ(read({QStringLiteral("--desktop"), QStringLiteral("x11")}).desktop, DesktopKind::x11);
    const CommandLine unknown = read({QStringLiteral("--desktop"), QStringLiteral("amiga")});
    EXPECT_EQ(unknown.desktop, std::nullopt);
    EXPECT_EQ(unknown.error, QStringLiteral("there is no desktop 'amiga'; --help lists them"));
    EXPECT_EQ(unknown.desktopError, unknown.error);
    // Among options of the toolkit, too, which are errors here.
    const CommandLine among = read({QStringLiteral("-platform"), QStringLiteral("xcb"),
                                    QStringLiteral("--desktop"), QStringLiteral("amiga")});
    EXPECT_EQ(among.desktopError, unknown.error);
    EXPECT_FALSE(read({}).asksForDesktop);
    EXPECT_TRUE(read({QStringLiteral("--about-desktop")}).asksForDesktop);
}

TEST(CommandLine, Help_and_version_are_asked_for_in_either_form)
{
    EXPECT_TRUE(read({QStringLiteral("--help")}).asksForHelp);
    EXPECT_TRUE(read({QStringLiteral("-h")}).asksForHelp);
    EXPECT_TRUE(read({QStringLiteral("--version")}).asksForVersion);
    EXPECT_TRUE(read({QStringLiteral("-v")}).asksForVersion);
}

TEST(CommandLine, Backups_are_listed_and_restored_by_their_name)
{
    EXPECT_TRUE(read({QStringLiteral("--list-backups")}).asksForBackups);
    EXPECT_EQ(
        read({QStringLiteral("--restore"), QStringLiteral("2026-11-22T101500Z")}).restoredBackup,
        QStringLiteral("2026-11-22T101500Z"));
    EXPECT_EQ(read({}).restoredBackup, QString());
    EXPECT_EQ(read({QStringLiteral("--restore=")}).error,
              QStringLiteral("--restore needs a name; --list-backups lists them"));
}

TEST(CommandLine, The_board_is_exported_in_a_format)
{
    const auto option = [](const char* text) { return QString::fromUtf8(text); };
    EXPECT_EQ(read({}).exportCommand, std::nullopt);
    EXPECT_EQ(read({option("--export"), option("markdown")}).exportCommand,
              (ExportCommand{TransferFormat::markdown, {}, {}}));
    EXPECT_EQ(
        read({option("--export=todo.txt"), option("--goal"), option("Taxes"), option("a.txt")})
            .exportCommand,
        (ExportCommand{TransferFormat::todoTxt, option("Taxes"), option("a.txt")}));
    EXPECT_EQ(read({option("--export"), option("word")}).error,
              option("there is no format 'word'; there are json, markdown, todo.txt, icalendar"));
    EXPECT_EQ(read({option("--export"), option("json"), option("a"), option("b")}).error,
              option("unexpected argument 'b'; --help lists what there is"));
    EXPECT_EQ(read({option("--goal"), option("Taxes")}).error, option("--goal needs --export"));
    EXPECT_EQ(read({option("--goal"), option("Taxes")}).transferError,
              option("--goal needs --export"));
}

TEST(CommandLine, A_file_is_imported)
{
    const auto option = [](const char* text) { return QString::fromUtf8(text); };
    EXPECT_EQ(read({option("--import"), option("a.md")}).importCommand,
              (ImportCommand{option("a.md"), std::nullopt, ImportMode::add}));
    EXPECT_EQ(
        read({option("--import=a"), option("--format"), option("icalendar"), option("--replace")})
            .importCommand,
        (ImportCommand{option("a"), TransferFormat::iCalendar, ImportMode::replace}));
    EXPECT_EQ(read({option("--replace")}).error, option("--format and --replace need --import"));
    EXPECT_EQ(read({option("--import=a"), option("--export=json")}).error,
              option("--export and --import exclude each other"));
    EXPECT_EQ(read({option("--import=a"), option("b")}).error,
              option("unexpected argument 'b'; --help lists what there is"));
}

TEST(CommandLine, The_toolkits_own_options_are_not_taken_for_letters)
{
    const CommandLine reversed = read({QStringLiteral("-reverse")});
    EXPECT_FALSE(reversed.asksForVersion);
    EXPECT_FALSE(reversed.error.isEmpty());
}

TEST(CommandLine, What_it_does_not_know_is_named)
{
    EXPECT_TRUE(read({QStringLiteral("--bogus")}).error.contains(QStringLiteral("bogus")));
    EXPECT_EQ(read({QStringLiteral("file.txt")}).error,
              QStringLiteral("unexpected argument 'file.txt'; --help lists what there is"));
    EXPECT_FALSE(read({QStringLiteral("--settings")}).error.isEmpty());
}

TEST(ReducedMotion, Can_be_set_for_the_program_alone)
{
    EXPECT_EQ(reducedMotionFromText("1"), true);
    EXPECT_EQ(reducedMotionFromText("0"), false);
    EXPECT_EQ(reducedMotionFromText(""), std::nullopt);
    EXPECT_EQ(reducedMotionFromText("yes"), std::nullopt);
}

} // namespace
} // namespace kelpa::test
