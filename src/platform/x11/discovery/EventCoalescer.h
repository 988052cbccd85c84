// When to tell of changes: the first at once, those that follow one another ever more rarely.
#pragma once

#include "platform/Scheduler.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>

namespace kelpa::x11 {

/// Main thread. Counts time by timers alone, so that a clock that is set changes nothing.
class EventCoalescer
{
public:
    using Duration = Scheduler::Duration;

    /// How long the first change after a quiet time waits for those that come with it.
    static constexpr Duration gathering{4};
    /// No two announcements follow each other faster, whatever changes: the rest after the first,
    /// and what it grows to, twice as long each time, while one follows another without a pause.
    static constexpr Duration firstRest{40};
    static constexpr Duration longestRest{80};
    /// A pause ends such a row.
    static constexpr Duration pause{100};
    /// The same for changes of one window's looks, of which some programs make many a second all
    /// day long.
    static constexpr Duration firstRestOfLooks{80};
    static constexpr Duration longestRestOfLooks{500};
    static constexpr Duration pauseOfLooks{1000};
    /// A window that is dragged or resized tells of hundreds of places, and the last one matters.
    static constexpr Duration movement{250};

    /// `announce` may destroy this object.
    EventCoalescer(Scheduler& scheduler, std::function<void()> announce)
        : m_scheduler(scheduler), m_announce(std::move(announce))
    {}

    /// Windows came, went, or are shown otherwise.
    void noteChange();
    /// A window's title, icon or opacity is another.
    void noteLooks(std::uint32_t window);
    /// A window is in another place.
    void noteMove();
    /// The window is gone, its id may be another's soon.
    void forget(std::uint32_t window) { m_looks.erase(window); }

private:
    struct Limits
    {
        Duration first;
        Duration longest;
        Duration pause;
    };

    /// Of everything, or of one window's looks.
    struct Row
    {
        Duration nextRest{0};
        bool isPending = false;
        /// While resting nothing is announced.
        TaskHandle resting;
        /// After the rest, until the row is over.
        TaskHandle calming;
    };

    void rest(Row& row, const Limits& limits, const std::function<void()>& rested,
              const std::function<void()>& calmed);
    void restFromLooks(std::uint32_t window);
    void gather();
    void announce();

    Scheduler& m_scheduler;
    const std::function<void()> m_announce;
    Row m_all;
    std::map<std::uint32_t, Row> m_looks;
    TaskHandle m_gathering;
    TaskHandle m_moving;
};

} // namespace kelpa::x11
