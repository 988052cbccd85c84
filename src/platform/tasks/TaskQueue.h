// Background work that runs one piece after the other.
#pragma once

#include "platform/Scheduler.h"

#include <deque>
#include <functional>
#include <utility>

namespace kelpa {

/// Runs work in the order in which it was added, so that it holds one thread, however much of it
/// another process delays. Main thread. Destroying the queue cancels the work.
class TaskQueue
{
public:
    explicit TaskQueue(Scheduler& scheduler) : m_scheduler(scheduler) {}

    /// As `Scheduler::inBackground`, after the work that was added before.
    template <class Work, class Then>
    void add(Work work, Then then)
    {
        m_waiting.push_back([this, work = std::move(work), then = std::move(then)] {
            return m_scheduler.inBackground(work, [this, then](auto&& result) {
                const TaskHandle done = std::move(m_running);
                // First, so that what `then` adds comes after what was added before.
                startNext();
                then(std::forward<decltype(result)>(result));
            });
        });
        if (!m_running)
            startNext();
    }

    /// No work is under way or waits.
    bool isIdle() const { return !m_running; }

private:
    void startNext()
    {
        if (m_waiting.empty())
            return;
        const std::function<TaskHandle()> start = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_running = start();
    }

    Scheduler& m_scheduler;
    std::deque<std::function<TaskHandle()>> m_waiting;
    TaskHandle m_running;
};

} // namespace kelpa
