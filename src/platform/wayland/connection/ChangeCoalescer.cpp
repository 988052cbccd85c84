#include "platform/wayland/connection/ChangeCoalescer.h"

#include <algorithm>
#include <chrono>

namespace kelpa::wayland {

void ChangeCoalescer::noteChange()
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

void ChangeCoalescer::notify()
{
    // Alive until this returns.
    const TaskHandle notifying = std::move(m_notifying);
    m_notified = m_scheduler.now();
    m_notify();
}

} // namespace kelpa::wayland
