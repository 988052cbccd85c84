// With which command a new terminal or browser window is opened. Pure functions.
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
    /// The entry that it comes from; empty when the program was found by its name.
    QString desktopEntryID;

    friend bool operator==(const LaunchCandidate&, const LaunchCandidate&) = default;
};

/// An installed entry as far as it says how to open a new window.
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

/// The path of the file that stands behind a path, all links followed; empty when there is none.
using LinkFollower = std::function<QString(const QString& path)>;

/// The program that a file is or, with a name such as gnome-terminal.wrapper, makes up for: a
/// script by which a distribution gives a terminal the options of another.
QString programOf(const QString& path);

/// In the order in which they are to be tried: what the TERMINAL variable names (it may give
/// arguments), the desktop's own choice, the system's, then the terminals that are known. One that
/// would rather come forward than open a window is asked for one, whatever name it goes by.
std::vector<LaunchCandidate> terminalCandidates(const QString& terminalVariable,
                                                const ProgramFinder& find,
                                                const LinkFollower& follow);

/// The entries by which Google Chrome and Chromium are known, in order of preference.
QStringList chromeEntryIDs();
QStringList chromiumEntryIDs();

/// In the order in which they are to be tried: Google Chrome, Chromium, the default browser.
/// `installed` are those of the known entries that there are, in any order.
std::vector<LaunchCandidate> browserCandidates(const std::vector<LaunchableEntry>& installed,
                                               const std::optional<LaunchableEntry>& defaultBrowser,
                                               const ProgramFinder& find);

/// The command of an entry's Exec, without its field codes, since no file is to be opened; none
/// when it is malformed. Its program is as in the entry.
std::optional<QStringList> commandOf(const QString& exec);

} // namespace kelpa
