// Owns any number of scheduled tasks, each until it is done.
#pragma once

#include "platform/Scheduler.h"

#include <cstdint>
#include <map>
#include <utility>

namespace kelpa {

/// Main thread. Destroying the group cancels its tasks.
class TaskGroup
{
public:
    explicit TaskGroup(Scheduler& scheduler) : m_scheduler(scheduler) {}

    /// As `Scheduler::after`.
    template <class Work>
    void after(Scheduler::Duration delay, Work work)
    {
        const std::uint64_t number = ++m_lastNumber;
        m_tasks[number] = m_scheduler.after(delay, [this, number, work = std::move(work)] {
            const TaskHandle done = take(number);
            work();
        });
    }

    /// As `Scheduler::inBackground`.
    template <class Work, class Then>
    void inBackground(Work work, Then then)
    {
        const std::uint64_t number = ++m_lastNumber;
        m_tasks[number] = m_scheduler.inBackground(
            std::move(work), [this, number, then = std::move(then)](auto&& result) {
                const TaskHandle done = take(number);
                then(std::forward<decltype(result)>(result));
            });
    }

private:
    TaskHandle take(std::uint64_t number)
    {
        auto node = m_tasks.extract(number);
        return node ? std::move(node.mapped()) : nullptr;
    }

    Scheduler& m_scheduler;
    std::uint64_t m_lastNumber = 0;
    std::map<std::uint64_t, TaskHandle> m_tasks;
};

} // namespace kelpa
