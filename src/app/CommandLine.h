// What the command line asks for.
#pragma once

#include <QString>
#include <QStringList>

namespace kelpa {

struct CommandLine
{
    /// The file that the board is kept in.
    QString settingsPath;
    bool asksForHelp = false;
    bool asksForVersion = false;
    /// Why it cannot be followed, for the person who wrote it; empty when it can.
    QString trouble;

    friend bool operator==(const CommandLine&, const CommandLine&) = default;
};

/// What main was given, as text.
QStringList argumentsOf(int argc, char** argv);

/// `arguments` as the program got them, its name first. Options that belong to the toolkit are
/// trouble too, so long as the toolkit has not taken them out.
CommandLine readCommandLine(const QStringList& arguments);

/// What there is to ask for. Needs a QCoreApplication.
QString commandLineHelp();

} // namespace kelpa
