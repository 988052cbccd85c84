// Reads what the session offers and what Kelpa can do with it, for a person who asks: without a
// toolkit, and within a time limit, whichever server hangs.
#pragma once

#include "platform/wayland/connection/Globals.h"
#include "platform/x11/DisplayFacts.h"

#include <QByteArray>

#include <chrono>
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

    friend bool operator==(const SessionReading&, const SessionReading&) = default;
};

/// The socket of the compositor that the session names; empty where it names none: in a session on
/// X11, one of another session may listen at the default path.
QByteArray compositorSocket();

/// The socket of sway's IPC; empty unless the session's compositor listens there, since SWAYSOCK
/// may be left from another session. Does not wait.
QByteArray swaySocket();

/// Each server has `limit` to reply. A thread that waits for a server that hangs is left behind, so
/// the process is to end with _Exit after this. `display` as in the DISPLAY variable, which is used
/// when it is empty.
SessionReading readSession(const QByteArray& display, std::chrono::milliseconds limit);

} // namespace kelpa
