// The completions that the package installs, in their shells, which ./test installs.
#include "automation/Commands.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

namespace kelpa::automation {
namespace {

QString fileNamed(const char* name)
{
    return QStringLiteral(KELPA_COMPLETIONS "/") + QLatin1String(name);
}

class Completions : public testing::TestWithParam<std::tuple<const char*, const char*>>
{};

TEST_P(Completions, Know_every_command)
{
    QFile file(fileNamed(std::get<1>(GetParam())));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    // What a person types without a command, and the options of the commands.
    for (const char* const option : {"show", "new-todo", "version", "settings", "help", "json",
                                     "goal", "unsorted", "all", "before", "behind"}) {
        const QRegularExpression whole(
            QStringLiteral("(--|-l )%1(?![\\w-])").arg(QLatin1String(option)));
        EXPECT_TRUE(whole.match(text).hasMatch()) << option;
    }
    for (const QString& word : commandWords()) {
        const QRegularExpression whole(QStringLiteral("(?<![\\w-])%1(?![\\w-])").arg(word));
        EXPECT_TRUE(whole.match(text).hasMatch()) << qPrintable(word);
    }
}

TEST_P(Completions, Are_read_by_their_shell)
{
    const QString shell = QStandardPaths::findExecutable(QLatin1String(std::get<0>(GetParam())));
    ASSERT_FALSE(shell.isEmpty()) << "there is no " << std::get<0>(GetParam());
    QProcess check;
    check.start(shell, {QStringLiteral("-n"), fileNamed(std::get<1>(GetParam()))});
    ASSERT_TRUE(check.waitForFinished());
    EXPECT_EQ(check.exitCode(), 0);
    EXPECT_EQ(check.readAllStandardError(), QByteArray());
}

INSTANTIATE_TEST_SUITE_P(Shells, Completions,
                         testing::Values(std::tuple("bash", "kelpa.bash"),
                                         std::tuple("zsh", "_kelpa"),
                                         std::tuple("fish", "kelpa.fish")));

/// What bash offers for the last of the words.
QString offered(const QString& words)
{
    const QString script =
        QStringLiteral("source '%1'\n"
                       "kelpa() {\n"
                       "  if [[ $1 == --settings ]]; then\n"
                       "    [[ $3 == goals ]] && printf 'DDDD0000  p2     0  In %s\n' $2\n"
                       "    return\n"
                       "  fi\n"
                       "  case $1 in\n"
                       "  goals) printf 'AAAA0000  p0    12  Two words\\n"
                       "BBBB0000  p2     0  Taxes\\n' ;;\n"
                       "  todos) printf 'CCCC0000  [ ]  Receipts  (Taxes)\\n' ;;\n"
                       "  windows) printf '     7  Editor  Letter\\n' ;;\n"
                       "  esac\n"
                       "}\n"
                       "compopt() { :; }\n"
                       "COMP_WORDS=(%2)\n"
                       "COMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n"
                       "_kelpa\n"
                       "printf '%s\\n' \"${COMPREPLY[@]}\"\n")
            .arg(fileNamed("kelpa.bash"), words);
    QProcess bash;
    bash.start(QStringLiteral("bash"), {QStringLiteral("-c"), script});
    EXPECT_TRUE(bash.waitForFinished());
    EXPECT_EQ(bash.readAllStandardError(), QByteArray());
    return QString::fromUtf8(bash.readAllStandardOutput()).trimmed().replace(u'\n', u'|');
}

TEST(BashCompletion, Offers_what_can_follow)
{
    const QList<std::pair<const char*, const char*>> cases{
        {"kelpa go", "goals"},
        {"kelpa --settings b.sqlite un", "undo"},
        {"kelpa show ''", "Two\\ words|Taxes"},
        {"kelpa show Ta", "Taxes"},
        {"kelpa --settings b.sqlite show ''", "In\\ b.sqlite"},
        {"kelpa --settings = b.sqlite show ''", "In\\ b.sqlite"},
        {"kelpa show --settings b.sqlite ''", "In\\ b.sqlite"},
        {"kelpa done ''", "CCCC0000"},
        {"kelpa move CCCC0000 --go", "--goal"},
        {"kelpa move CCCC0000 --goal T", "Two\\ words|Taxes"},
        {"kelpa move CCCC0000 --before ''", "CCCC0000"},
        {"kelpa move-goal Taxes --before Tw", "Two\\ words"},
        {"kelpa prioritize Taxes ''", "p0|p1|p2|p3"},
        {"kelpa assign ''", "7"},
        {"kelpa --about", "--about-desktop"},
        {"kelpa undo --b", ""},
    };
    for (const auto& [words, offers] : cases)
        EXPECT_EQ(offered(QLatin1String(words)), QLatin1String(offers)) << words;
}

/// The standard output of the shell that runs the script.
QString printed(const char* shell, const QString& script)
{
    QProcess process;
    process.start(QLatin1String(shell), {QStringLiteral("-c"), script});
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.readAllStandardError(), QByteArray());
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

/// Reads the board from words before and behind the command, as bash's completion above.
const QList<std::pair<const char*, const char*>> namedBoards{
    {"kelpa --settings b show ", "In b"}, {"kelpa --settings=b show ", "In b"},
    {"kelpa show --settings b ", "In b"}, {"kelpa --settings ~/b show ", "In /home/ada/b"},
    {"kelpa show ", "In usual"},
};

TEST(FishCompletion, Asks_about_the_board_that_is_named)
{
    for (const auto& [words, goal] : namedBoards) {
        const QString script =
            QStringLiteral(
                "set HOME /home/ada\nsource '%1'\n"
                "function kelpa\n"
                "    set -l board usual\n"
                "    test $argv[1] = --settings; and set board $argv[2]\n"
                "    test $argv[-1] = goals; and echo \"DDDD0000  p2     0  In $board\"\n"
                "end\n"
                "complete -C '%2'\n")
                .arg(fileNamed("kelpa.fish"), QLatin1String(words));
        EXPECT_TRUE(printed("fish", script).split(u'\n').contains(QLatin1String(goal))) << words;
    }
}

TEST(ZshCompletion, Asks_about_the_board_that_is_named)
{
    for (const auto& [words, goal] : namedBoards) {
        // What zsh's own functions would do with a command that takes a goal.
        const QString script =
            QStringLiteral("HOME=/home/ada\n"
                           "kelpa() {\n"
                           "  local board=usual\n"
                           "  [[ $1 == --settings ]] && board=$2\n"
                           "  [[ ${@[-1]} == goals ]] && print \"DDDD0000  p2     0  In $board\"\n"
                           "}\n"
                           "compadd() { print -r -l -- ${(P)2} }\n"
                           "_arguments() {\n"
                           "  [[ $1 == -C ]] || { _kelpa_goals; return }\n"
                           "  state=argument\n"
                           "  words=(show '')\n"
                           "  CURRENT=2\n"
                           "}\n"
                           "words=(${(z)${:-'%2'}} '')\n"
                           "CURRENT=$#words\n"
                           "source '%1'\n")
                .arg(fileNamed("_kelpa"), QLatin1String(words));
        EXPECT_EQ(printed("zsh", script), QLatin1String(goal)) << words;
    }
}

} // namespace
} // namespace kelpa::automation
