// Reads what the session offers and what Kelpa can do with it, for a person who asks: without a
// toolkit, and within a time limit, whichever server hangs.
#pragma once

#include "platform/freedesktop/portals/PortalReading.h"
#include "platform/gnome/ShellStanding.h"
#include "platform/kwin/KwinScreenshots.h"
#include "platform/wayland/connection/Globals.h"
#include "platform/x11/DisplayFacts.h"

#include <QByteArray>

#include <chrono>
#include <cstdint>
#include <optional>

namespace kelpa {

struct SessionReading
{
    /// Variables of the environment; empty where they are not set.
    QByteArray sessionType;
    QByteArray currentDesktop;
    QByteArray x11Display;
    QByteArray waylandDisplay;
    /// Absent when no X display replies.
    std::optional<x11::DisplayFacts> display{};
    /// Absent when no compositor replies.
    std::optional<wayland::GlobalVersions> compositor{};
    /// sway's IPC accepts connections.
    bool hasSwayIpc = false;
    /// How Kelpa stands with the extension of GNOME Shell; absent where the compositor is another.
    std::optional<gnome::ShellCondition> gnomeShell{};
    /// The version of that extension's interface where it is ready.
    std::uint32_t shellExtensionVersion = 0;
    /// The compositor is KWin.
    bool isKwin = false;
    /// What KWin answers to a request for a picture of a window.
    kwin::PictureStanding kwinPictures = kwin::PictureStanding::given;
    /// Taps of Super are heard on KWin, by the calls of Plasma's launcher.
    bool isKwinKeyHeard = false;

    /// Absent where nobody has asked.
    std::optional<PortalReading> portals{};

    friend bool operator==(const SessionReading&, const SessionReading&) = default;
};

/// The socket of the compositor that the session names; empty where it names none: in a session on
/// X11, one of another session may listen at the default path.
QByteArray compositorSocket();

/// The socket of sway's IPC; empty unless the session's compositor listens there, since SWAYSOCK
/// may be left from another session. Does not wait.
QByteArray swaySocket();

/// Whether GNOME Shell is on the session bus, or, where that does not reply within the limit, the
/// session is named after it.
bool isGnomeSession(std::chrono::milliseconds limit);
/// Whether KWin is on the session bus, or, where that does not reply within the limit, the session
/// is named after its desktop.
bool isKwinSession(std::chrono::milliseconds limit);

/// Whether KWin on the session bus is known to be the session's compositor without asking that for
/// its protocols: to name them to a program, it reads the program's whole file. False also where
/// the session is not named after its desktop, and where that KWin does not reply; absent where the
/// bus of such a session does not.
std::optional<bool> isKwinKnown(std::chrono::milliseconds limit);

/// A compositor that is there replies within a few milliseconds, but KWin reads a program's whole
/// file first: a tenth of a second for a release, two seconds for a build with debug information or
/// a sanitizer. One that takes longer than this would not show Kelpa's window either.
inline constexpr std::chrono::milliseconds compositorLimit{8000};

/// The compositor has `compositorLimit` to reply, each other server has `limit`. A thread that
/// waits for a server that hangs is left behind, so the process is to end with _Exit after this.
/// `display` as in the DISPLAY variable, which is used when it is empty.
SessionReading readSession(const QByteArray& display, std::chrono::milliseconds limit);

} // namespace kelpa
