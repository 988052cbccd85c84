// What an X display has, and what Kelpa can do with that.
#pragma once

#include "platform/DesktopAbilities.h"

#include <optional>

namespace kelpa::x11 {

class DisplayConnector;

struct DisplayFacts
{
    /// An EWMH window manager runs.
    bool hasWindowManager = false;
    /// It announces virtual desktops, and that it sends windows there.
    bool hasVirtualDesktops = false;
    bool hasComposite = false;
    /// XInput 2 and XKB report the keys that are typed into any program.
    bool hasRawKeys = false;
    /// The server is Xwayland: it serves the programs on X11 in a Wayland session.
    bool isXwayland = false;

    friend bool operator==(const DisplayFacts&, const DisplayFacts&) = default;
};

/// Absent when there is no server. Waits for the server; any thread but the main one.
std::optional<DisplayFacts> readDisplayFacts(DisplayConnector& connector);

/// `facts` are absent when the display does not reply.
DesktopAbilities abilitiesOn(const std::optional<DisplayFacts>& facts);

} // namespace kelpa::x11
