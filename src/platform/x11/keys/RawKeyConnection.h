// A DisplayConnection, to which it adds the events of all keys and mouse buttons, whichever window
// has the focus.
#pragma once

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/keys/KeyEvent.h"
#include "platform/x11/keys/ModifierMap.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

namespace kelpa::x11 {

class DisplayConnector;

/// Why there is no such connection.
enum class RawKeyFailure : std::uint8_t {
    /// No server, or the connection was lost.
    noServer,
    /// The server cannot report keys.
    unsupported,
    /// Xwayland reports only the keys that are typed into programs on X11.
    xwayland,
};

/// Selects raw XInput 2 events and XKB events. Used on one thread at a time.
class RawKeyConnection
{
public:
    using Result = std::variant<std::unique_ptr<RawKeyConnection>, RawKeyFailure>;

    /// Waits for the server; any thread but the main one.
    static Result open(DisplayConnector& connector);

    XcbConnection& connection() { return m_display->connection(); }
    /// As of when the connection was opened.
    const ModifierMap& modifierMap() const { return m_modifierMap; }

    /// Parses an event of this connection; absent for events of other kinds.
    std::optional<KeyEvent> keyEvent(const xcb_generic_event_t& event) const;

private:
    RawKeyConnection() = default;

    std::unique_ptr<DisplayConnection> m_display;
    ModifierMap m_modifierMap;
    std::uint8_t m_xinputOpcode = 0;
    std::uint8_t m_xkbEvent = 0;
};

/// Reads the current map over a connection of its own. Waits for the server; any thread but the
/// main one. Absent when there is no server.
std::optional<ModifierMap> readModifierMap(DisplayConnector& connector);

} // namespace kelpa::x11
