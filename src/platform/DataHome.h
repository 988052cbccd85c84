// The folder for the person's own data.
#pragma once

#include <QDir>
#include <QString>

namespace kelpa {

/// $XDG_DATA_HOME, or ~/.local/share where that is unset or relative. Any thread.
inline QString dataHome()
{
    const QString configured = qEnvironmentVariable("XDG_DATA_HOME");
    return QDir::cleanPath(QDir::isAbsolutePath(configured)
                               ? configured
                               : QDir::homePath() + QStringLiteral("/.local/share"));
}

} // namespace kelpa
