// Turns a burst of changes on the desktop into few notifications.
#pragma once

#include "platform/Scheduler.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace kelpa {

/// Main thread.
class ChangeCoalescer
{
public:
    /// How long a change waits for others that come with it.
    static constexpr Scheduler::Duration delay{4};
    /// The least time between two notifications.
    static constexpr Scheduler::Duration interval{50};

    /// `scheduler` outlives this object.
    ChangeCoalescer(Scheduler& scheduler, std::function<void()> notify)
        : m_scheduler(scheduler), m_notify(std::move(notify))
    {}

    void noteChange()
    {
        if (m_notifying)
            return;
        Scheduler::Duration wait = delay;
        if (m_notified) {
            const auto elapsed =
                std::chrono::duration_cast<Scheduler::Duration>(m_scheduler.now() - *m_notified);
            wait = std::max(wait, interval - elapsed);
        }
        m_notifying = m_scheduler.after(wait, [this] { notify(); });
    }

private:
    void notify()
    {
        // Alive until this returns.
        const TaskHandle notifying = std::move(m_notifying);
        m_notified = m_scheduler.now();
        m_notify();
    }

    Scheduler& m_scheduler;
    const std::function<void()> m_notify;
    std::optional<Scheduler::Time> m_notified;
    TaskHandle m_notifying;
};

} // namespace kelpa
