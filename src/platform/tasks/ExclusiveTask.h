// Background work of which only one runs at a time.
#pragma once

#include "platform/Scheduler.h"

#include <optional>
#include <type_traits>
#include <utility>

namespace kelpa {

/// Work that another process delays cannot be interrupted. Whoever starts the next one beside it
/// has two threads that wait for the same process, and in the end no thread left for other work.
/// So work that has begun keeps its place until it returns, also when its result is no longer
/// wanted. Main thread. Destroying this cancels the work.
class ExclusiveTask
{
public:
    explicit ExclusiveTask(Scheduler& scheduler) : m_scheduler(scheduler) {}

    /// Whether the place is taken: work is under way, perhaps discarded.
    bool isTaken() const { return m_task != nullptr; }

    /// As `Scheduler::inBackground`, while the place is not taken. `then` receives the result as a
    /// `std::optional`, absent when the work was discarded; the place is free by then.
    template <class Work, class Then>
    void start(Work work, Then then, WorkPriority priority)
    {
        m_task = m_scheduler.inBackground(std::move(work), returning<Work, Then>(std::move(then)),
                                          priority);
    }

    /// As `Scheduler::inBackgroundAndWait`, otherwise as `start`.
    template <class Work, class Then>
    void startAndWait(Scheduler::Duration limit, Work work, Then then)
    {
        TaskHandle task = m_scheduler.inBackgroundAndWait(limit, std::move(work),
                                                          returning<Work, Then>(std::move(then)));
        // `then` may have started the next one.
        if (task)
            m_task = std::move(task);
    }

    /// Waits up to `limit` for the work under way. When it returns in time, `then` has been called.
    void waitFor(Scheduler::Duration limit)
    {
        if (m_task)
            m_task->waitFor(limit);
    }

    /// Asks the work under way to end early. It delivers what it has done by then; work that has
    /// not begun is cancelled.
    void requestStop()
    {
        if (m_task && !m_task->requestStop())
            m_task.reset();
    }

    /// Asks the work under way to end early, and drops its result.
    void discard()
    {
        requestStop();
        m_isDiscarded = isTaken();
    }

private:
    template <class Work, class Then>
    auto returning(Then then)
    {
        using Result = std::invoke_result_t<Work, std::stop_token>;
        return [this, then = std::move(then)](Result result) {
            // Holds what this function refers to until it returns.
            const TaskHandle task = std::move(m_task);
            std::optional<Result> wanted;
            if (!std::exchange(m_isDiscarded, false))
                wanted = std::move(result);
            then(std::move(wanted));
        };
    }

    Scheduler& m_scheduler;
    TaskHandle m_task;
    bool m_isDiscarded = false;
};

} // namespace kelpa
