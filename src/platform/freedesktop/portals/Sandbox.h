// Whether Kelpa runs in a sandbox, where the desktop acts for it through portals.
#pragma once

#include <QFile>
#include <QString>

namespace kelpa {

/// What tells a sandbox.
struct SandboxSigns
{
    /// A file that every Flatpak has in its root.
    QString flatpakInfo = QStringLiteral("/.flatpak-info");
    /// The folder of the snap, from the environment. Programs that a snap starts inherit it, so it
    /// counts for those within it only.
    QString snap = qEnvironmentVariable("SNAP");
    /// The path of this program.
    QString program = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
};

/// Any thread.
bool isSandboxed(const SandboxSigns& signs);

} // namespace kelpa
