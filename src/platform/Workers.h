// An executor: runs tasks off the main thread, for callers on any thread (Scheduler is for the main
// thread).
#pragma once

#include <functional>

namespace kelpa {

class Workers
{
public:
    virtual ~Workers() = default;

    /// Runs `task` on a worker thread, now or when one is free, and destroys it there. Any thread;
    /// returns at once. Drops the task once the workers have ended.
    virtual void start(std::function<void()> task) = 0;
};

} // namespace kelpa
