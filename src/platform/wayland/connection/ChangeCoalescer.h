// Turns a burst of changes on the desktop into few notifications.
#pragma once

#include "platform/Scheduler.h"

#include <functional>
#include <optional>
#include <utility>

namespace kelpa::wayland {

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

    void noteChange();

private:
    void notify();

    Scheduler& m_scheduler;
    const std::function<void()> m_notify;
    std::optional<Scheduler::Time> m_notified;
    TaskHandle m_notifying;
};

} // namespace kelpa::wayland
