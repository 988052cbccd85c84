// The requests as commands of the command line: "kelpa add --goal Taxes Find the receipts".
#pragma once

#include "automation/Replies.h"
#include "automation/Requests.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <variant>

namespace kelpa::automation {

struct Command
{
    QString word{};
    QStringList operands{};
    /// The names that follow the options; absent without them.
    std::optional<QString> goal{};
    std::optional<QString> before{};
    std::optional<QString> behind{};
    /// The board's file; absent: the usual one.
    std::optional<QString> settingsPath{};
    bool isUnsorted = false;
    bool isJson = false;
    bool isAll = false;
    bool asksForHelp = false;

    friend bool operator==(const Command&, const Command&) = default;
};

struct UsageError
{
    QString message;

    friend bool operator==(const UsageError&, const UsageError&) = default;
};

/// All words, in the order of the help.
QStringList commandWords();

/// The arguments of main, the program's name first. Absent where its first word that is no option
/// is no command, so that they are for the program itself.
std::optional<std::variant<Command, UsageError>> readCommand(const QStringList& arguments);

/// The lines of --help about commands, and about one of them.
QString commandsHelp();
QString helpOf(const QString& word);

/// Carries a request out, at the board itself or at a Kelpa that runs.
using Ask = std::function<Outcome(const Request&)>;

/// Finds what the command names, carries it out and returns what goes to standard output.
/// `activationToken` is what a launcher gave to this process.
std::variant<QString, Failure> carryOut(const Command& command, const Ask& ask,
                                        const QString& activationToken);

} // namespace kelpa::automation
