// What the command line and the environment ask for.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

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

/// How much motion a person wants of Kelpa alone, whatever the desktop wants: "1" reduces it and
/// "0" does not; absent for anything else.
std::optional<bool> reducedMotionFromText(const QByteArray& text);

/// What there is to ask for. Needs a QCoreApplication.
QString commandLineHelp();

} // namespace kelpa
