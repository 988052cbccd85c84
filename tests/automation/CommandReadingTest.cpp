// The words of commands.
#include "automation/Commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelpa::automation {
namespace {

QStringList words(const char* line)
{
    return QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts);
}

struct ReadCase
{
    const char* line;
    Command command;
};

TEST(CommandReading, Commands_are_read_with_their_options_anywhere)
{
    const QString id = QStringLiteral("3F2A");
    const QString taxes = QStringLiteral("Taxes");
    const QList<ReadCase> cases{
        {"kelpa goals", {.word = QStringLiteral("goals")}},
        {"kelpa --settings b.sqlite goals --json",
         {.word = QStringLiteral("goals"),
          .settingsPath = QStringLiteral("b.sqlite"),
          .isJson = true}},
        {"kelpa todos --goal=Taxes --all",
         {.word = QStringLiteral("todos"), .goal = taxes, .isAll = true}},
        {"kelpa add Find the receipts --goal Taxes",
         {.word = QStringLiteral("add"),
          .operands = {QStringLiteral("Find the receipts")},
          .goal = taxes}},
        {"kelpa add -- --json -x",
         {.word = QStringLiteral("add"), .operands = {QStringLiteral("--json -x")}}},
        {"kelpa edit 3F2A Another title",
         {.word = QStringLiteral("edit"), .operands = {id, QStringLiteral("Another title")}}},
        {"kelpa move 3F2A --unsorted",
         {.word = QStringLiteral("move"), .operands = {id}, .isUnsorted = true}},
        {"kelpa move 3F2A --behind Taxes",
         {.word = QStringLiteral("move"), .operands = {id}, .behind = taxes}},
        {"kelpa done --help", {.word = QStringLiteral("done"), .asksForHelp = true}},
    };
    for (const ReadCase& each : cases) {
        const auto read = readCommand(words(each.line));
        ASSERT_TRUE(read) << each.line;
        ASSERT_TRUE(std::holds_alternative<Command>(*read))
            << each.line << ": " << qPrintable(std::get<UsageError>(*read).message);
        EXPECT_EQ(std::get<Command>(*read), each.command) << each.line;
    }
}

TEST(CommandReading, What_is_no_command_is_for_the_program_itself)
{
    for (const char* const line :
         {"kelpa", "kelpa --show", "kelpa --settings b.sqlite", "kelpa --export json goals",
          "kelpa --import goals", "kelpa list", "kelpa --help goals --nothing",
          "kelpa -display :0 goals", "kelpa --settings goals", "kelpa --hidden"}) {
        const bool isHelp = QLatin1String(line).contains(QLatin1String("--help"));
        EXPECT_EQ(readCommand(words(line)).has_value(), isHelp) << line;
    }
}

TEST(CommandReading, Wrong_usage_is_said_with_the_right_one)
{
    const QList<std::pair<const char*, const char*>> cases{
        {"kelpa done", "done needs TODO; usage: kelpa done [--json] TODO"},
        {"kelpa edit 3F2A", "edit needs TODO TITLE; usage: kelpa edit [--json] TODO TITLE"},
        {"kelpa done a b", "there is one word too many: 'b'; usage: kelpa done [--json] TODO"},
        {"kelpa undo a", "there is one word too many: 'a'; usage: kelpa undo [--json]"},
        {"kelpa done --wrong a", "there is no option --wrong; usage: kelpa done [--json] TODO"},
        {"kelpa done a --goal", "--goal needs a value; usage: kelpa done [--json] TODO"},
        {"kelpa done a --goal b",
         "done does not take these options; usage: kelpa done [--json] TODO"},
        {"kelpa assign 7",
         "assign needs a place; usage: kelpa assign [--goal GOAL | --unsorted] [--json] WINDOW"},
        {"kelpa move-goal a --before b --behind c",
         "only one place can be meant; usage: kelpa move-goal [--before GOAL | --behind GOAL] "
         "[--json] GOAL"},
        {"kelpa todos --goal a --unsorted",
         "only one place can be meant; usage: kelpa todos [--goal GOAL | --unsorted] [--all] "
         "[--json]"},
    };
    for (const auto& [line, message] : cases) {
        const auto read = readCommand(words(line));
        ASSERT_TRUE(read && std::holds_alternative<UsageError>(*read)) << line;
        EXPECT_EQ(std::get<UsageError>(*read).message, QString::fromUtf8(message)) << line;
    }
}

TEST(CommandReading, Every_command_is_in_the_help_and_has_one_of_its_own)
{
    const QString help = commandsHelp();
    for (const QString& word : commandWords()) {
        EXPECT_TRUE(help.contains(QStringLiteral("  ") + word + u' ')) << qPrintable(word);
        EXPECT_TRUE(helpOf(word).startsWith(QStringLiteral("Usage: kelpa ") + word))
            << qPrintable(word);
    }
    for (const QString& line : help.split(u'\n'))
        EXPECT_LE(line.size(), 80) << qPrintable(line);
}

} // namespace
} // namespace kelpa::automation
