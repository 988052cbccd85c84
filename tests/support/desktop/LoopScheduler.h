// A scheduler on real time, for tests in which real programs take part.
#pragma once

#include "platform/Scheduler.h"

namespace kelpa::test {

/// Needs a QCoreApplication whose events are handled, as `waitUntil` does. Every background work
/// has a thread of its own, which ends before its handle is gone.
class LoopScheduler : public Scheduler
{
public:
    Date now() const override;
    [[nodiscard]] TaskHandle repeat(Duration interval, std::function<void()> tick) override;
    [[nodiscard]] TaskHandle after(Duration delay, std::function<void()> work) override;

protected:
    TaskHandle startInBackground(BackgroundWork work) override;
    TaskHandle startAwaiting(Duration limit, BackgroundWork work) override;
};

} // namespace kelpa::test
