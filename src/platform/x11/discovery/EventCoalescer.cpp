#include "platform/x11/discovery/EventCoalescer.h"

#include <algorithm>
#include <utility>

namespace kelpa::x11 {

void EventCoalescer::noteChange()
{
    m_all.isPending = true;
    gather();
}

void EventCoalescer::noteLooks(std::uint32_t window)
{
    Row& row = m_looks[window];
    row.isPending = true;
    if (!row.resting)
        noteChange();
}

void EventCoalescer::noteMove()
{
    if (!m_all.isPending && !m_moving) {
        m_moving = m_scheduler.after(movement, [this] {
            m_moving.reset();
            noteChange();
        });
    }
}

void EventCoalescer::gather()
{
    if (!m_all.resting && !m_gathering)
        m_gathering = m_scheduler.after(gathering, [this] { announce(); });
}

void EventCoalescer::announce()
{
    m_gathering.reset();
    // Whoever is told looks at everything.
    m_moving.reset();
    m_all.isPending = false;
    rest(
        m_all, {firstRest, longestRest, pause},
        [this] {
            if (m_all.isPending)
                announce();
        },
        [this] { m_all.nextRest = Duration(0); });
    for (auto& [window, row] : m_looks) {
        if (std::exchange(row.isPending, false))
            restFromLooks(window);
    }
    const std::function<void()> announced = m_announce;
    announced();
}

void EventCoalescer::restFromLooks(std::uint32_t window)
{
    rest(
        m_looks[window], {firstRestOfLooks, longestRestOfLooks, pauseOfLooks},
        [this, window] {
            if (m_looks[window].isPending)
                noteChange();
        },
        [this, window] { m_looks.erase(window); });
}

/// `rested` is called when the rest is over, `calmed` when a pause has followed it.
void EventCoalescer::rest(Row& row, const Limits& limits, const std::function<void()>& rested,
                          const std::function<void()>& calmed)
{
    const Duration time = std::max(row.nextRest, limits.first);
    row.nextRest = std::min(2 * time, limits.longest);
    row.calming.reset();
    row.resting = m_scheduler.after(time, [this, &row, pause = limits.pause, rested, calmed] {
        const std::function<void()> next = rested;
        row.calming = m_scheduler.after(pause, calmed);
        row.resting.reset();
        next();
    });
}

} // namespace kelpa::x11
