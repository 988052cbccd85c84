// When a change of the modifiers was made.
#pragma once

#include "platform/x11/keys/KeyEvent.h"

#include <optional>

namespace kelpa::x11 {

/// Brings the two accounts together that the server gives of a modifier key: that it was moved,
/// with the moment of that; and right after it the state that it left, if it changed that, with the
/// moment of telling. A server that was busy, or whose keyboard a client held still, tells of many
/// movements at once. Plain value.
class ModifierTimestamps
{
public:
    void note(const RawKey& key) { m_last = key; }

    /// When the key was moved that led to the state; when the state is told, where none did.
    xcb_timestamp_t moment(const ModifierState& state) const
    {
        const bool isLastKeys =
            m_last && m_last->key == state.key && m_last->isPress == state.isPress;
        return isLastKeys ? m_last->time : state.time;
    }

private:
    std::optional<RawKey> m_last;
};

} // namespace kelpa::x11
