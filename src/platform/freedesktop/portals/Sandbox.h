// Which sandbox Kelpa runs in: there the desktop acts for it through portals.
#pragma once

#include <QFile>
#include <QString>

#include <cstdint>

namespace kelpa {

enum class Sandbox : std::uint8_t {
    none,
    flatpak,
    /// The portal starts no snaps with the session; what starts them reads the snap's own folder.
    snap,
};

/// How a portal knows which program asks.
enum class PortalIdentity : std::uint8_t {
    /// By the sandbox.
    sandbox,
    /// By the name that the program gives.
    given,
};

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
Sandbox sandboxOf(const SandboxSigns& signs);

} // namespace kelpa
