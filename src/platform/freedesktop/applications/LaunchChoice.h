// Chooses the command that opens a new terminal or browser window. Pure functions.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace kelpa {

struct LaunchCandidate
{
    /// A program's absolute path and its arguments.
    QStringList command;
    /// The entry that contains the command; empty when the program was found by its name.
    QString desktopEntryID;

    friend bool operator==(const LaunchCandidate&, const LaunchCandidate&) = default;
};

/// The parts of an installed entry that concern opening a new window.
struct LaunchableEntry
{
    QString id;
    /// As in the file.
    QString exec;
    /// Of its action "new-window"; empty when it has none.
    QString newWindowExec;
};

/// The absolute path of a program of this name or path; empty when it is not installed.
using ProgramFinder = std::function<QString(const QString& program)>;

/// The path of a file after following all links; empty when there is none.
using LinkFollower = std::function<QString(const QString& path)>;

/// The name of the program in a file. For a name such as gnome-terminal.wrapper, a script by which
/// a distribution gives a terminal the options of another, that of the wrapped program.
QString programOf(const QString& path);

/// In the order in which to try them: the value of the TERMINAL variable (which may have
/// arguments), the desktop's choice, the system's, then the known terminals. A terminal whose
/// running instance would come forward instead gets the option that opens a window, whatever its
/// name.
std::vector<LaunchCandidate> terminalCandidates(const QString& terminalVariable,
                                                const ProgramFinder& find,
                                                const LinkFollower& follow);

/// The ids of the entries of Google Chrome and of Chromium, in order of preference.
QStringList chromeEntryIDs();
QStringList chromiumEntryIDs();

/// In the order in which to try them: Google Chrome, Chromium, the default browser. `installed` are
/// the known entries that are installed, in any order.
std::vector<LaunchCandidate> browserCandidates(const std::vector<LaunchableEntry>& installed,
                                               const std::optional<LaunchableEntry>& defaultBrowser,
                                               const ProgramFinder& find);

/// The command of an entry's Exec, without its field codes, since no file is to be opened; none
/// when it is malformed. Its program is as in the entry.
std::optional<QStringList> commandOf(const QString& exec);

/// The same with a document, an absolute path or a URL, in place of each field code that takes
/// such a one; none when there is no such code.
std::optional<QStringList> commandOf(const QString& exec, const QString& document);

} // namespace kelpa
