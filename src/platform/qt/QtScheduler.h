// Timers on Qt's event loop, background work on a thread pool of its own.
#pragma once

#include "platform/Scheduler.h"
#include "platform/qt/WorkerPool.h"

#include <memory>

namespace kelpa {

class BackgroundJob;
class FinishedJobQueue;

/// Created, used and destroyed on the main thread while a QCoreApplication exists, and not
/// destroyed from within one of its callbacks. Handles may outlive it.
///
/// Its destruction cancels everything, as `shutDown` does: no callback is called afterwards. Work
/// that still runs then (stuck in a read that another process delays) is abandoned to its thread:
/// it continues to use what it refers to, its function objects are destroyed on that thread, and
/// the process may end meanwhile.
class QtScheduler final : public Scheduler
{
public:
    static constexpr Duration shutdownLimit{200};
    /// Jobs that run at once; further ones are queued. More than Kelpa starts, so that a stuck one
    /// does not hold up the others.
    static constexpr int maxThreads = 8;
    /// The same for jobs of utility priority, which have threads of their own: a capture and a
    /// discovery pass.
    static constexpr int maxUtilityThreads = 2;
    /// How much nicer than the main thread these are. The kernel gives such a thread a tenth of the
    /// share of another that wants to run.
    static constexpr int utilityNiceness = 10;

    explicit QtScheduler(int niceness = utilityNiceness);
    ~QtScheduler() override;

    /// Cancels all background work and waits for running work, at most `shutdownLimit`; nothing can
    /// be started afterwards. True when no work runs any more. Call before destroying what the work
    /// refers to; on false, that must live until the process ends.
    bool shutDown();

    Time now() const override;
    Date calendarTime() const override;
    [[nodiscard]] TaskHandle repeat(Duration interval, std::function<void()> tick) override;
    [[nodiscard]] TaskHandle after(Duration delay, std::function<void()> work) override;

protected:
    TaskHandle startInBackground(BackgroundWork work, WorkPriority priority) override;
    /// Blocks the main thread without running its event loop.
    TaskHandle startAndWait(Duration limit, BackgroundWork work) override;

private:
    class Receiver;

    TaskHandle startTimer(Duration interval, bool isRepeating, std::function<void()> callback);
    std::shared_ptr<BackgroundJob> start(BackgroundWork work, WorkPriority priority);

    std::unique_ptr<Receiver> m_receiver;
    std::shared_ptr<FinishedJobQueue> m_finished;
    WorkerPool m_pool;
    WorkerPool m_utilityPool;
};

} // namespace kelpa
