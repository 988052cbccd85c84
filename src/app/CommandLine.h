// Parses the command line and the environment.
#pragma once

#include "app/TransferCommands.h"
#include "app/desktops/DesktopChoice.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace kelpa {

struct CommandLine
{
    /// The file that stores the board.
    QString settingsPath;
    /// The desktop that the person has chosen; absent: the session decides.
    std::optional<DesktopKind> desktop{};
    /// As `error`, of the chosen desktop alone.
    QString desktopError{};
    bool asksForDesktop = false;
    /// Begins without a window, until it is called.
    bool startsHidden = false;
    /// So, because the session bus has a call for it.
    bool startsForCall = false;
    /// Opens the field for a todo, of the Kelpa that runs or of one that begins without a window.
    bool asksForTodo = false;
    bool asksForHelp = false;
    bool asksForVersion = false;
    bool asksForBackups = false;
    /// The backup that replaces the board; empty for none.
    QString restoredBackup;
    /// Absent where nothing is to be exported or imported.
    std::optional<ExportCommand> exportCommand{};
    std::optional<ImportCommand> importCommand{};
    /// As `error`, of exporting and importing alone.
    QString transferError{};
    /// Why the command line is invalid, as a message for the person; empty when it is valid.
    QString error;

    friend bool operator==(const CommandLine&, const CommandLine&) = default;
};

/// The arguments of main, as text.
QStringList argumentsOf(int argc, char** argv);

/// `arguments` as passed to the program, its name first. The toolkit's options are errors too until
/// the toolkit has removed them.
CommandLine readCommandLine(const QStringList& arguments);

/// The person's motion setting for Kelpa alone, which overrides the desktop's: "1" reduces motion,
/// "0" does not; absent for anything else.
std::optional<bool> reducedMotionFromText(const QByteArray& text);

/// The text of --help. Needs a QCoreApplication.
QString commandLineHelp();

} // namespace kelpa
