// Opening a new window of an installed application.
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

    /// Starts the first of the candidates that can be started; none when none can. The bundle
    /// identifier is the id of the entry by which the new window will be known, as far as the
    /// program itself foretells it.
    std::optional<Launch> launch(LaunchableApplication application,
                                 const LaunchSurroundings& surroundings);

    /// The id of the entry of the first process of the launch that has one; none when all of them
    /// end, `stop` is requested or the time for watching is over.
    std::optional<QString> identifierOf(const Launch& launch, const std::stop_token& stop);

private:
    std::vector<LaunchCandidate> candidates(LaunchableApplication application);
    std::optional<LaunchableEntry> launchable(const QString& desktopEntryID);
    std::optional<QString> foretold(const LaunchCandidate& candidate);

    DesktopEntries& m_entries;
    const std::chrono::milliseconds m_recognition;
    const QProcessEnvironment m_environment;
};

} // namespace kelpa
