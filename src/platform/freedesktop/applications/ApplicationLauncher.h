// Launches an installed application so that it opens a new window.
#pragma once

#include "platform/Applications.h"
#include "platform/freedesktop/applications/DesktopEntries.h"
#include "platform/freedesktop/applications/LaunchChoice.h"

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>

#include <chrono>
#include <optional>
#include <stop_token>
#include <vector>

namespace kelpa {

/// Environment variables that a launched program gets in addition to this program's own.
struct LaunchSurroundings
{
    /// DISPLAY; empty leaves it unchanged.
    QByteArray display;
    /// DESKTOP_STARTUP_ID.
    QByteArray startupID;
    /// Whether that is an activation token of a Wayland compositor, XDG_ACTIVATION_TOKEN.
    bool isActivationToken = false;
};

/// Any thread but the main one.
class ApplicationLauncher
{
public:
    /// `entries` outlives it and identifies windows. `recognition` is how long to watch the started
    /// processes when their application was not known in advance. `environment` gives TERMINAL and
    /// PATH, and is passed to programs.
    explicit ApplicationLauncher(
        DesktopEntries& entries,
        std::chrono::milliseconds recognition = std::chrono::milliseconds(1500),
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

    /// Starts the first candidate that can be started; none when none can. The bundle identifier is
    /// the id of the desktop entry that the new window will resolve to, where the command alone
    /// determines it.
    std::optional<Launch> launch(LaunchableApplication application,
                                 const LaunchSurroundings& surroundings);

    /// Starts the application of the entry, or of the program, that `window` names: with its
    /// document in a window of its own where the entry has a command for that.
    Reopening reopen(const FormerWindow& window, const LaunchSurroundings& surroundings);

    /// The id of the desktop entry of the first process of the launch that has one; none when all
    /// processes end, `stop` is requested or the time for recognition is over.
    std::optional<QString> identifierOf(const Launch& launch, const std::stop_token& stop);

private:
    std::vector<LaunchCandidate> candidates(LaunchableApplication application);
    std::optional<LaunchableEntry> launchable(const QString& desktopEntryID);
    QProcessEnvironment environmentFor(const LaunchSurroundings& surroundings) const;
    std::optional<QString> predictedIdentifier(const LaunchCandidate& candidate);

    DesktopEntries& m_entries;
    const std::chrono::milliseconds m_recognition;
    const QProcessEnvironment m_environment;
};

} // namespace kelpa
