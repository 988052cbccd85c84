// A thread pool. Uses only the standard library, so that the thread sanitizer sees all
// synchronisation, and so that stuck threads can be abandoned.
#pragma once

#include "platform/Workers.h"

#include <chrono>
#include <functional>
#include <memory>

namespace kelpa {

class WorkerPool final : public Workers
{
public:
    /// Runs up to `maxThreads` tasks at once; creates threads on demand. They are nicer than the
    /// thread that starts a task by `niceness`, as far as the kernel goes: 19 at most.
    explicit WorkerPool(int maxThreads, int niceness = 0);
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;
    /// Drops queued tasks, and does not wait for running ones.
    ~WorkerPool() override;

    /// Any thread; after `finish` the task is dropped.
    void start(std::function<void()> task) override;

    /// Drops queued tasks and waits up to `limit` for running ones; no task can be started
    /// afterwards. Returns whether every thread has ended.
    bool finish(std::chrono::milliseconds limit);

private:
    struct State;

    static void work(const std::shared_ptr<State>& state);

    /// Shared with the threads, which may outlive the pool.
    std::shared_ptr<State> m_state;
};

} // namespace kelpa
