// A scheduler in real time, for tests with real programs.
#pragma once

#include "platform/Scheduler.h"

namespace kelpa::test {

/// Needs a QCoreApplication that processes events, as `waitUntil` does. Every background job has a
/// thread of its own, which the destruction of the handle joins.
class LoopScheduler : public Scheduler
{
public:
    Time now() const override;
    Date calendarTime() const override;
    [[nodiscard]] TaskHandle repeat(Duration interval, std::function<void()> tick) override;
    [[nodiscard]] TaskHandle after(Duration delay, std::function<void()> work) override;

protected:
    TaskHandle startInBackground(BackgroundWork work, WorkPriority priority) override;
    TaskHandle startAndWait(Duration limit, BackgroundWork work) override;
};

/// Never fires repeating timers, so that only events can make something happen.
class TimerlessScheduler : public LoopScheduler
{
public:
    [[nodiscard]] TaskHandle repeat(Duration /*interval*/, std::function<void()> /*tick*/) override
    {
        return std::make_unique<Never>();
    }

private:
    class Never : public ScheduledWork
    {
    public:
        bool requestStop() override { return false; }
    };
};

} // namespace kelpa::test
