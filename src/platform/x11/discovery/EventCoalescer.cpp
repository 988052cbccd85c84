#include "platform/x11/discovery/EventCoalescer.h"

#include <algorithm>
#include <utility>

namespace kelpa::x11 {

void EventCoalescer::windowsChanged()
{
    m_all.isPending = true;
    coalesce();
}

void EventCoalescer::appearanceChanged(std::uint32_t window)
{
    Burst& burst = m_appearances[window];
    burst.isPending = true;
    if (!burst.interval)
        windowsChanged();
}

void EventCoalescer::windowMoved()
{
    if (!m_all.isPending && !m_movement) {
        m_movement = m_scheduler.after(movementDelay, [this] {
            m_movement.reset();
            windowsChanged();
        });
    }
}

void EventCoalescer::coalesce()
{
    if (!m_all.interval && !m_coalescing)
        m_coalescing = m_scheduler.after(coalescingDelay, [this] { notify(); });
}

void EventCoalescer::notify()
{
    m_coalescing.reset();
    // A notification makes its receiver read everything, positions included.
    m_movement.reset();
    m_all.isPending = false;
    beginInterval(
        m_all, {firstInterval, longestInterval, longestStormInterval, quietTime},
        [this] {
            if (m_all.isPending)
                notify();
        },
        [this] {
            m_all.nextInterval = Duration(0);
            m_all.length = Duration(0);
        });
    for (auto& [window, burst] : m_appearances) {
        if (std::exchange(burst.isPending, false))
            beginAppearanceInterval(window);
    }
    const std::function<void()> callback = m_notify;
    callback();
}

void EventCoalescer::beginAppearanceInterval(std::uint32_t window)
{
    beginInterval(
        m_appearances[window],
        {firstAppearanceInterval, longestAppearanceInterval, longestAppearanceInterval,
         appearanceQuietTime},
        [this, window] {
            if (m_appearances[window].isPending)
                windowsChanged();
        },
        [this, window] { m_appearances.erase(window); });
}

/// Calls `intervalEnded` when the interval is over, and `burstEnded` when the quiet time after it
/// has passed without another interval.
void EventCoalescer::beginInterval(Burst& burst, const Intervals& intervals,
                                   const std::function<void()>& intervalEnded,
                                   const std::function<void()>& burstEnded)
{
    const Duration time = std::max(burst.nextInterval, intervals.first);
    burst.length += time;
    const bool isStorm = burst.length >= stormTime;
    burst.nextInterval = std::min(2 * time, isStorm ? intervals.longestInStorm : intervals.longest);
    burst.quiet.reset();
    burst.interval = m_scheduler.after(
        time, [this, &burst, quietTime = intervals.quietTime, intervalEnded, burstEnded] {
            const std::function<void()> next = intervalEnded;
            burst.quiet = m_scheduler.after(quietTime, burstEnded);
            burst.interval.reset();
            next();
        });
}

} // namespace kelpa::x11
