// A connection on which the server tells of every key, and of every button of the mouse.
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
    /// No server, or it went away meanwhile.
    noServer,
    /// The server cannot tell of keys, or only of those that are typed into some of the programs.
    unsupported,
};

/// Used on one thread at a time.
class RawKeyConnection
{
public:
    using Result = std::variant<std::unique_ptr<RawKeyConnection>, RawKeyFailure>;

    /// Waits for the server; any thread but the main one.
    static Result open(DisplayConnector& connector);

    XcbConnection& connection() { return m_link->connection(); }
    /// What the keys meant when the connection was made.
    const ModifierMap& meanings() const { return m_meanings; }

    /// What an event tells; absent when it is of no interest.
    std::optional<KeyEvent> notice(const xcb_generic_event_t& event) const;

private:
    RawKeyConnection() = default;

    std::unique_ptr<DisplayConnection> m_link;
    ModifierMap m_meanings;
    std::uint8_t m_inputOpcode = 0;
    std::uint8_t m_keyboardEvent = 0;
};

/// What the keys of the display mean now, over a connection of its own. Waits for the server; any
/// thread but the main one. Absent when there is no server.
std::optional<ModifierMap> readModifierMap(DisplayConnector& connector);

} // namespace kelpa::x11
