#include "windows/LaunchTable.h"

namespace kelpa {

LaunchTableRow launchTableRow(LaunchableApplication application)
{
    switch (application) {
    case LaunchableApplication::terminal:
        return {QLatin1String("com.apple.Terminal"),
                QLatin1String("/System/Applications/Utilities/Terminal.app")};
    case LaunchableApplication::chrome:
        return {QLatin1String("com.google.Chrome"),
                QLatin1String("/Applications/Google Chrome.app")};
    }
    return {};
}

QString macLauncher()
{
    return QStringLiteral("/usr/bin/open");
}

QStringList macLauncherArguments(LaunchableApplication application)
{
    return {QStringLiteral("-na"), launchTableRow(application).applicationPath};
}

} // namespace kelpa
