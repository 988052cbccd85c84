// What is known of the changes of windows whose contents are kept. Plain values, any thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>

namespace kelpa::x11 {

/// Times are of one steady clock; sequences are of the requests of one connection and wrap.
class DamageTracker
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// `settling`: how long after its contents began to be kept a window that was covered may still
    /// show what covered it. That it was drawn to meanwhile says nothing: it may have been a part
    /// of it, or after the reading.
    explicit DamageTracker(std::chrono::milliseconds settling) : m_settling(settling) {}

    /// The contents of the window are kept from now on.
    void begin(std::uint32_t window, Time now);
    void forget(std::uint32_t window) { m_windows.erase(window); }

    /// No part of the window was covered when its contents began to be kept.
    void noteWhole(std::uint32_t window);
    /// The window was drawn to. `sequence`: of the last request that the server had seen by then.
    void noteDamage(std::uint32_t window, std::uint32_t sequence);
    /// It was resized, shown, or otherwise became another picture.
    void noteChange(std::uint32_t window);
    /// The request `sequence` ends what was drawn so far: whatever is read after it shows that.
    void noteRead(std::uint32_t window, std::uint32_t sequence);

    /// Whether a reading that begins at `now` shows the window's own contents. False for a window
    /// that is not kept.
    bool isSettled(std::uint32_t window, Time now) const;
    /// Whether it may look other than when it was last read. True for a window that is not kept.
    bool isChanged(std::uint32_t window) const;

private:
    struct State
    {
        Time since;
        std::uint32_t readAt = 0;
        bool wasRead = false;
        bool isWhole = false;
        bool isChanged = true;
    };

    std::chrono::milliseconds m_settling;
    std::map<std::uint32_t, State> m_windows;
};

} // namespace kelpa::x11
