// Which redirected windows were damaged since they were last read, and which have settled: a pixmap
// begins with whatever obscured the window, and shows the window once it has drawn itself.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>

namespace kelpa::x11 {

/// Plain values, any thread. Times are of one steady clock; sequence numbers are of the requests of
/// one connection and wrap around.
class DamageTracker
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// `settleTime`: how long after its redirection a window that was obscured may still show what
    /// obscured it. Damage in the meantime does not settle it earlier: it may cover a part of the
    /// window only, or come after the pixels were read.
    explicit DamageTracker(std::chrono::milliseconds settleTime) : m_settleTime(settleTime) {}

    /// The window is redirected from `now` on.
    void track(std::uint32_t window, Time now);
    void forget(std::uint32_t window) { m_windows.erase(window); }

    /// No part of the window was obscured when it was redirected: it has settled.
    void noteUnobscured(std::uint32_t window);
    /// The window was drawn to. `sequence` is that of the last request that the server had handled
    /// by then.
    void noteDamage(std::uint32_t window, std::uint32_t sequence);
    /// The window was resized, mapped, or changed in another way that damage does not report.
    void invalidate(std::uint32_t window);
    /// The request `sequence` subtracts all damage so far: whatever is read after it includes that.
    void noteSubtraction(std::uint32_t window, std::uint32_t sequence);

    /// Whether pixels that are read at `now` are the window's own. False for a window that is not
    /// tracked.
    bool isSettled(std::uint32_t window, Time now) const;
    /// Whether the window may differ from its last reading. True for a window that is not tracked.
    bool isChanged(std::uint32_t window) const;

private:
    struct State
    {
        Time redirectedAt;
        std::uint32_t subtractedAt = 0;
        bool wasSubtracted = false;
        bool wasUnobscured = false;
        bool isChanged = true;
    };

    std::chrono::milliseconds m_settleTime;
    std::map<std::uint32_t, State> m_windows;
};

} // namespace kelpa::x11
