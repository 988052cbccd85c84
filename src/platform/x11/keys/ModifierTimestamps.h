// When a modifier was really pressed or released.
#pragma once

#include "platform/x11/keys/KeyEvent.h"

#include <optional>

namespace kelpa::x11 {

/// Joins the two events that the server sends for a modifier key: the raw key event, with the time
/// of the press or release, and right after it the modifier state, if that changed, with the time
/// at which the event was sent. After a busy spell, or after a client froze the keyboard, the
/// server sends many events at once. Plain value.
class ModifierTimestamps
{
public:
    void record(const RawKey& key) { m_last = key; }

    /// When the key that caused the state was pressed or released; without such a key, when the
    /// state was sent.
    xcb_timestamp_t timestamp(const ModifierState& state) const
    {
        const bool isOfLastKey =
            m_last && m_last->key == state.key && m_last->isPress == state.isPress;
        return isOfLastKey ? m_last->time : state.time;
    }

private:
    std::optional<RawKey> m_last;
};

} // namespace kelpa::x11
