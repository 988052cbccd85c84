#include "app/IdleEnding.h"

#include <utility>

namespace kelpa {

IdleEnding::IdleEnding(Scheduler& scheduler, std::function<bool()> mayEnd,
                       std::function<void()> end)
    : m_scheduler(scheduler), m_mayEnd(std::move(mayEnd)), m_end(std::move(end))
{
    wait();
}

void IdleEnding::wait()
{
    m_waiting = m_scheduler.after(idleLimit, [this] {
        const TaskHandle done = std::move(m_waiting);
        if (std::exchange(m_hasBeenCalled, false) || !m_mayEnd())
            wait();
        else
            m_end();
    });
}

} // namespace kelpa
