// A connection on which the server tells of every key, and of every button of the mouse.
#pragma once

#include "platform/x11/DisplayLink.h"
#include "platform/x11/KeyMeanings.h"
#include "platform/x11/KeyNotice.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

namespace kelpa::x11 {

class DisplayConnector;

/// Why there is no such connection.
enum class KeyLinkFailure : std::uint8_t {
    /// No server, or it went away meanwhile.
    noServer,
    /// The server cannot tell of keys, or only of those that are typed into some of the programs.
    unsupported,
};

/// Used on one thread at a time.
class KeyLink
{
public:
    using Result = std::variant<std::unique_ptr<KeyLink>, KeyLinkFailure>;

    /// Waits for the server; any thread but the main one.
    static Result open(DisplayConnector& connector);

    XcbConnection& connection() { return m_link->connection(); }
    /// What the keys meant when the connection was made.
    const KeyMeanings& meanings() const { return m_meanings; }

    /// What an event tells; absent when it is of no interest.
    std::optional<KeyNotice> notice(const xcb_generic_event_t& event) const;

private:
    KeyLink() = default;

    std::unique_ptr<DisplayLink> m_link;
    KeyMeanings m_meanings;
    std::uint8_t m_inputOpcode = 0;
    std::uint8_t m_keyboardEvent = 0;
};

/// What the keys of the display mean now, over a connection of its own. Waits for the server; any
/// thread but the main one. Absent when there is no server.
std::optional<KeyMeanings> readKeyMeanings(DisplayConnector& connector);

} // namespace kelpa::x11
