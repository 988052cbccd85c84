// The extension of GNOME Shell as it is installed: its files, and whether the person's settings
// name it among those to load.
#pragma once

#include <QString>
#include <QStringList>

namespace kelpa::gnome {

inline constexpr const char* extensionID = "windows@kelpa.org";

struct ExtensionPlaces
{
    /// Folders in which the Shell looks for data, as $XDG_DATA_HOME and $XDG_DATA_DIRS name them,
    /// the person's own first.
    QStringList dataFolders{};
    /// The folder in which the extension was built, in its two forms; empty for an installed Kelpa,
    /// whose extension its package installs.
    QString buildFolder{};
    /// The program that the extension is to serve, where it is installed from `buildFolder`.
    QString program{};
};

/// Those of this process. It has a `buildFolder` beside its own where it was not installed.
ExtensionPlaces extensionPlaces();

/// Any thread but the main one: reads and writes files, and runs programs, each of which has two
/// seconds.
class ShellExtension
{
public:
    explicit ShellExtension(ExtensionPlaces places) : m_places(std::move(places)) {}

    bool isInstalled() const;
    bool canInstall() const;
    /// The person's own folder has a copy that was installed for this program; a link is none.
    bool hasOwnCopy() const;
    /// Installs it for the person, in the form for this version of the Shell, or replaces it.
    /// False when a file cannot be written; then what was there before is there still.
    bool install(int shellVersion) const;

    /// False also where the settings cannot be read.
    bool isWanted() const;
    /// For an extension that the Shell does not know yet: it loads what the settings name.
    bool setWanted() const;

private:
    QString ownFolder() const;

    const ExtensionPlaces m_places;
};

/// The texts in a list as the settings' program prints it; empty for anything else.
QStringList textsInSetting(const QString& printed);
/// The same list in the form that it reads.
QString settingOf(const QStringList& texts);

} // namespace kelpa::gnome
