// Coalesces the events of windows into few notifications: the first after a quiet time follows
// almost at once, those of a storm at intervals that grow.
#pragma once

#include "platform/Scheduler.h"

#include <cstdint>
#include <functional>
#include <map>
#include <utility>

namespace kelpa::x11 {

/// Main thread. Measures time by timers alone, so that setting the clock changes nothing.
class EventCoalescer
{
public:
    using Duration = Scheduler::Duration;

    /// How long the first event after a quiet time waits for others that come with it.
    static constexpr Duration coalescingDelay{4};
    /// The least time between two notifications, whatever changes: the first interval of a burst,
    /// and the length up to which intervals double while the burst lasts.
    static constexpr Duration firstInterval{40};
    static constexpr Duration longestInterval{80};
    /// A storm is a burst that has lasted so long. Its intervals go on doubling up to a longer one:
    /// when windows come and go all the time, reading all of them each time costs more than it
    /// shows, because many are gone before anybody could have seen them.
    static constexpr Duration stormTime{1000};
    static constexpr Duration longestStormInterval{240};
    /// A burst ends with so much time without an event after an interval.
    static constexpr Duration quietTime{100};
    /// The same for the appearance of one window, which some programs change many times a second
    /// all day long.
    static constexpr Duration firstAppearanceInterval{80};
    static constexpr Duration longestAppearanceInterval{500};
    static constexpr Duration appearanceQuietTime{1000};
    /// A window that is dragged or resized reports hundreds of positions, of which only the last
    /// matters.
    static constexpr Duration movementDelay{250};

    /// `notify` may destroy this object.
    EventCoalescer(Scheduler& scheduler, std::function<void()> notify)
        : m_scheduler(scheduler), m_notify(std::move(notify))
    {}

    /// Windows were opened, closed, restacked, mapped or unmapped, or changed their state.
    void windowsChanged();
    /// A window has another title, icon or opacity.
    void appearanceChanged(std::uint32_t window);
    /// A window has another position or size.
    void windowMoved();
    /// The window is gone; its id may soon be another window's.
    void forget(std::uint32_t window) { m_appearances.erase(window); }

private:
    struct Intervals
    {
        Duration first;
        Duration longest;
        /// As `longest`, in a storm.
        Duration longestInStorm;
        Duration quietTime;
    };

    /// The notifications about everything, or about the appearance of one window.
    struct Burst
    {
        Duration nextInterval{0};
        /// How long it has lasted, at the end of the interval.
        Duration length{0};
        bool isPending = false;
        /// Until it ends there is no further notification.
        TaskHandle interval;
        /// Follows the interval; its end is the burst's.
        TaskHandle quiet;
    };

    void beginInterval(Burst& burst, const Intervals& intervals,
                       const std::function<void()>& intervalEnded,
                       const std::function<void()>& burstEnded);
    void beginAppearanceInterval(std::uint32_t window);
    void coalesce();
    void notify();

    Scheduler& m_scheduler;
    const std::function<void()> m_notify;
    Burst m_all;
    std::map<std::uint32_t, Burst> m_appearances;
    TaskHandle m_coalescing;
    TaskHandle m_movement;
};

} // namespace kelpa::x11
