// Reads the words of a command.

#include "automation/CommandTable.h"
#include "automation/Commands.h"

#include <algorithm>

namespace kelpa::automation {

namespace {

QString textOf(const char16_t* text)
{
    return QStringView(text).toString();
}

const CommandRow* rowOf(const QString& word)
{
    const auto* const row = std::ranges::find_if(
        commandTable, [&word](const CommandRow& each) { return word == QStringView(each.word); });
    return row == commandTable.end() ? nullptr : row;
}

QString usageOf(const CommandRow& row)
{
    QString usage = QStringLiteral("kelpa ") + textOf(row.word);
    QStringList choices;
    if ((row.options & goalOption) != 0)
        choices.append(QStringLiteral("--goal GOAL"));
    if ((row.options & unsortedOption) != 0)
        choices.append(QStringLiteral("--unsorted"));
    if ((row.options & placeOptions) != 0) {
        const QString kind = textOf(row.operands);
        choices.append(QStringLiteral("--before ") + kind);
        choices.append(QStringLiteral("--behind ") + kind);
    }
    if (!choices.isEmpty())
        usage += QStringLiteral(" [%1]").arg(choices.join(QStringLiteral(" | ")));
    if ((row.options & allOption) != 0)
        usage += QStringLiteral(" [--all]");
    usage += QStringLiteral(" [--json]");
    if (row.operandCount > 0)
        usage += u' ' + textOf(row.operands);
    return usage;
}

/// Reads one word after the other; what is wrong first is the error.
class Reader
{
public:
    explicit Reader(const QStringList& arguments) : m_arguments(arguments.mid(1)) {}

    std::optional<std::variant<Command, UsageError>> read()
    {
        while (!m_arguments.isEmpty() && m_error.isEmpty())
            take(m_arguments.takeFirst());
        const CommandRow* const row = rowOf(m_command.word);
        if (row == nullptr)
            return std::nullopt;
        joinLast(*row);
        if (m_error.isEmpty() && !m_command.asksForHelp)
            check(*row);
        if (m_error.isEmpty())
            return m_command;
        return UsageError{QStringLiteral("%1; usage: %2").arg(m_error, usageOf(*row))};
    }

private:
    void take(const QString& argument)
    {
        const bool isOption = !m_areOptionsOver && argument.size() > 1 && argument.startsWith(u'-');
        if (isOption)
            takeOption(argument);
        else if (m_command.word.isEmpty())
            takeWord(argument);
        else
            m_command.operands.append(argument);
    }

    void takeWord(const QString& word)
    {
        m_command.word = word;
        // The rest is none of a command's business.
        if (rowOf(word) == nullptr)
            m_arguments.clear();
    }

    void takeOption(const QString& argument)
    {
        const qsizetype equals = argument.indexOf(u'=');
        const QString name = argument.left(equals);
        if (argument == u"--")
            m_areOptionsOver = true;
        else if (argument == u"--json")
            m_command.isJson = true;
        else if (argument == u"--all")
            m_command.isAll = true;
        else if (argument == u"--unsorted")
            m_command.isUnsorted = true;
        else if (argument == u"--help" || argument == u"-h")
            m_command.asksForHelp = true;
        else if (name == u"--settings")
            takeValue(argument, equals, m_command.settingsPath);
        else if (name == u"--goal")
            takeValue(argument, equals, m_command.goal);
        else if (name == u"--before")
            takeValue(argument, equals, m_command.before);
        else if (name == u"--behind")
            takeValue(argument, equals, m_command.behind);
        else if (m_command.word.isEmpty())
            // An option of the program: there is no command.
            m_arguments.clear();
        else
            m_error = QStringLiteral("there is no option %1").arg(argument);
    }

    void takeValue(const QString& argument, qsizetype equals, std::optional<QString>& value)
    {
        if (equals >= 0)
            value = argument.mid(equals + 1);
        else if (!m_arguments.isEmpty())
            value = m_arguments.takeFirst();
        else
            m_error = QStringLiteral("%1 needs a value").arg(argument);
    }

    void joinLast(const CommandRow& row)
    {
        if (!row.isLastOpen || m_command.operands.size() <= row.operandCount)
            return;
        const QStringList last = m_command.operands.mid(row.operandCount - 1);
        m_command.operands = m_command.operands.first(row.operandCount - 1);
        m_command.operands.append(last.join(u' '));
    }

    void check(const CommandRow& row)
    {
        const int places = int(m_command.before.has_value()) + int(m_command.behind.has_value());
        const int lists = int(m_command.goal.has_value()) + int(m_command.isUnsorted);
        const bool isForeign = (m_command.goal && (row.options & goalOption) == 0) ||
                               (m_command.isUnsorted && (row.options & unsortedOption) == 0) ||
                               (places > 0 && (row.options & placeOptions) == 0) ||
                               (m_command.isAll && (row.options & allOption) == 0);
        // Listings and additions do without; a move needs to know where to.
        const bool needsPlace = (row.options & placeOptions) != 0 || m_command.word == u"assign";
        if (m_command.operands.size() < row.operandCount)
            m_error = QStringLiteral("%1 needs %2").arg(m_command.word, textOf(row.operands));
        else if (m_command.operands.size() > row.operandCount)
            m_error = QStringLiteral("there is one word too many: '%1'")
                          .arg(m_command.operands.at(row.operandCount));
        else if (isForeign)
            m_error = QStringLiteral("%1 does not take these options").arg(m_command.word);
        else if (places + lists > 1)
            m_error = QStringLiteral("only one place can be meant");
        else if (needsPlace && places + lists == 0)
            m_error = QStringLiteral("%1 needs a place").arg(m_command.word);
    }

    QStringList m_arguments;
    Command m_command;
    QString m_error;
    bool m_areOptionsOver = false;
};

} // namespace

QStringList commandWords()
{
    QStringList words;
    for (const CommandRow& row : commandTable)
        words.append(textOf(row.word));
    return words;
}

std::optional<std::variant<Command, UsageError>> readCommand(const QStringList& arguments)
{
    return Reader(arguments).read();
}

QString commandsHelp()
{
    QString text = QStringLiteral("Commands, of which 'kelpa COMMAND --help' says more:\n");
    for (const CommandRow& row : commandTable) {
        text +=
            QStringLiteral("  %1%2\n").arg(textOf(row.word).leftJustified(13), textOf(row.summary));
    }
    return text;
}

QString helpOf(const QString& word)
{
    const CommandRow* const row = rowOf(word);
    if (row == nullptr)
        return {};
    return QStringLiteral("Usage: %1\n\n%2\n\n"
                          "A goal or a todo is named by its identifier, at least four characters "
                          "of its\nbeginning, or its title. Words behind -- are no options.\n"
                          "  --json           Print JSON.\n"
                          "  --settings PATH  Use the board in this file.\n"
                          "Exit status: 0 done, 1 not found or failed, 2 wrong usage.\n")
        .arg(usageOf(*row), textOf(row->summary));
}

} // namespace kelpa::automation
