// Opening a new window of an installed application.
#pragma once

#include "platform/Applications.h"
#include "platform/freedesktop/DesktopEntries.h"
#include "platform/freedesktop/LaunchChoice.h"

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>

#include <chrono>
#include <optional>
#include <vector>

namespace kelpa {

/// What a launched program is told beside what this one was told itself.
struct LaunchSurroundings
{
    /// DISPLAY; empty leaves it as it is.
    QByteArray display;
    /// DESKTOP_STARTUP_ID.
    QByteArray startupID;
};

/// Any thread but the main one.
class ApplicationLauncher
{
public:
    /// `entries` outlives it and is what windows are identified by. `recognition`: how long to
    /// watch the started processes, when nothing said before what application they would be.
    /// `environment` is where TERMINAL and PATH are read and what programs are given.
    explicit ApplicationLauncher(
        DesktopEntries& entries,
        std::chrono::milliseconds recognition = std::chrono::milliseconds(1500),
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

    /// Starts the first of the candidates that can be started. The id of the entry by which the new
    /// window will be known; none when nothing was started, or when no installed entry is the
    /// application's, so that its windows cannot be known by one.
    std::optional<QString> launch(LaunchableApplication application,
                                  const LaunchSurroundings& surroundings);

private:
    std::vector<LaunchCandidate> candidates(LaunchableApplication application);
    std::optional<LaunchableEntry> launchable(const QString& desktopEntryID);
    std::optional<QString> foretold(const LaunchCandidate& candidate);
    std::optional<QString> recognised(ProcessID session);

    DesktopEntries& m_entries;
    const std::chrono::milliseconds m_recognition;
    const QProcessEnvironment m_environment;
};

} // namespace kelpa
