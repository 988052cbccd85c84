// Threads that run tasks. The standard library's means alone, so that a sanitizer sees every
// hand-over, and so that threads which are stuck can be left behind.
#pragma once

#include "platform/Workers.h"

#include <chrono>
#include <functional>
#include <memory>

namespace kelpa {

class WorkerPool final : public Workers
{
public:
    /// Runs up to `maxThreads` tasks at once; threads are made when they are needed.
    explicit WorkerPool(int maxThreads);
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;
    /// Drops what waits and lets running tasks end by themselves, without waiting for them.
    ~WorkerPool() override;

    /// Any thread; after `finish` the task is dropped.
    void start(std::function<void()> task) override;

    /// Drops what waits and waits up to `limit` for what runs; no task can be started after it.
    /// Whether every thread has ended.
    bool finish(std::chrono::milliseconds limit);

private:
    struct State;

    static void work(const std::shared_ptr<State>& state);

    /// Shared with the threads, which may outlive the pool.
    std::shared_ptr<State> m_state;
};

} // namespace kelpa
