// Work off the main thread, for whoever is not on it either and so has no scheduler.
#pragma once

#include <functional>

namespace kelpa {

class Workers
{
public:
    virtual ~Workers() = default;

    /// Runs `task` on a thread of its own choice, now or when one is free, and destroys it there.
    /// Any thread; returns at once. After the workers' end the task is dropped.
    virtual void start(std::function<void()> task) = 0;
};

} // namespace kelpa
