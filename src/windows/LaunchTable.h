// How the applications of which a goal can have a new window are launched on macOS.
#pragma once

#include "platform/Applications.h"

#include <QLatin1String>
#include <QString>
#include <QStringList>

namespace kelpa {

/// Data for the platform macOS alone; other platforms find out what is installed.
struct LaunchTableRow
{
    QLatin1String bundleIdentifier;
    QLatin1String applicationPath;
};

LaunchTableRow launchTableRow(LaunchableApplication application);

/// The program that launches applications there.
QString macLauncher();

/// Its arguments: a new instance, also when one runs, so that a new window opens.
QStringList macLauncherArguments(LaunchableApplication application);

} // namespace kelpa
