#include "platform/qt/QtScheduler.h"

#include "platform/qt/BackgroundJob.h"

#include <QDateTime>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace kelpa {

namespace {

class TimerHandle final : public ScheduledWork
{
public:
    TimerHandle(QTimer* timer, std::shared_ptr<std::function<void()>> callback)
        : m_timer(timer), m_callback(std::move(callback))
    {}

    ~TimerHandle() override
    {
        if (!m_timer)
            return;
        // Deleted later, since this may run within its callback.
        m_timer->stop();
        m_timer->disconnect();
        m_timer->deleteLater();
    }

    bool requestStop() override
    {
        if (m_timer)
            m_timer->stop();
        return false;
    }

private:
    /// Owned by the scheduler's receiver, and destroyed with it.
    QPointer<QTimer> m_timer;
    std::shared_ptr<std::function<void()>> m_callback;
};

class JobHandle final : public ScheduledWork
{
public:
    explicit JobHandle(std::shared_ptr<BackgroundJob> job) : m_job(std::move(job)) {}
    ~JobHandle() override { m_job->cancel(); }
    bool requestStop() override { return m_job->requestStop(); }
    void waitFor(std::chrono::milliseconds limit) override
    {
        // Outlives this.
        const std::shared_ptr<BackgroundJob> job = m_job;
        if (job->waitFor(limit))
            job->deliver();
    }

private:
    std::shared_ptr<BackgroundJob> m_job;
};

} // namespace

/// Owns the timers, delivers finished jobs, and remembers running ones so that they can be
/// cancelled with the scheduler.
class QtScheduler::Receiver final : public QObject
{
public:
    std::shared_ptr<FinishedJobQueue> finished;
    std::vector<std::weak_ptr<BackgroundJob>> started;

    void remember(const std::shared_ptr<BackgroundJob>& job)
    {
        std::erase_if(started, [](const auto& known) { return known.expired(); });
        started.push_back(job);
    }

    bool event(QEvent* event) override
    {
        if (event->type() != FinishedJobQueue::eventType())
            return QObject::event(event);
        for (const std::shared_ptr<BackgroundJob>& job : finished->takeAll())
            job->deliver();
        return true;
    }
};

QtScheduler::QtScheduler(int niceness)
    : m_receiver(std::make_unique<Receiver>()),
      m_finished(std::make_shared<FinishedJobQueue>(m_receiver.get())), m_pool(maxThreads),
      m_utilityPool(maxUtilityThreads, niceness)
{
    m_receiver->finished = m_finished;
}

QtScheduler::~QtScheduler()
{
    shutDown();
}

bool QtScheduler::shutDown()
{
    for (const std::weak_ptr<BackgroundJob>& job : m_receiver->started) {
        if (const std::shared_ptr<BackgroundJob> running = job.lock())
            running->cancel();
    }
    m_finished->close();
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + shutdownLimit;
    const bool hasEnded = m_pool.finish(shutdownLimit);
    const auto left = std::chrono::duration_cast<Duration>(end - Clock::now());
    return m_utilityPool.finish(std::max(left, Duration::zero())) && hasEnded;
}

QtScheduler::Time QtScheduler::now() const
{
    return Time::clock::now();
}

Date QtScheduler::calendarTime() const
{
    return Date::fromDateTime(QDateTime::currentDateTimeUtc());
}

TaskHandle QtScheduler::repeat(Duration interval, std::function<void()> tick)
{
    return startTimer(interval, true, std::move(tick));
}

TaskHandle QtScheduler::after(Duration delay, std::function<void()> work)
{
    return startTimer(delay, false, std::move(work));
}

TaskHandle QtScheduler::startTimer(Duration interval, bool isRepeating,
                                   std::function<void()> callback)
{
    auto* const timer = new QTimer(m_receiver.get());
    timer->setTimerType(Qt::PreciseTimer);
    timer->setSingleShot(!isRepeating);
    // Owned by the handle, and kept alive during a call, which may destroy the handle.
    auto held = std::make_shared<std::function<void()>>(std::move(callback));
    timer->callOnTimeout([weak = std::weak_ptr(held)] {
        if (const auto called = weak.lock())
            (*called)();
    });
    timer->start(std::max(interval, Duration::zero()));
    return std::make_unique<TimerHandle>(timer, std::move(held));
}

std::shared_ptr<BackgroundJob> QtScheduler::start(BackgroundWork work, WorkPriority priority)
{
    auto job = std::make_shared<BackgroundJob>(std::move(work));
    m_receiver->remember(job);
    WorkerPool& pool = priority == WorkPriority::utility ? m_utilityPool : m_pool;
    pool.start([running = job, finished = m_finished]() mutable {
        running->run();
        // Moved, so that its functions are destroyed on the main thread.
        finished->add(std::move(running));
    });
    return job;
}

TaskHandle QtScheduler::startInBackground(BackgroundWork work, WorkPriority priority)
{
    return std::make_unique<JobHandle>(start(std::move(work), priority));
}

TaskHandle QtScheduler::startAndWait(Duration limit, BackgroundWork work)
{
    std::shared_ptr<BackgroundJob> job = start(std::move(work), WorkPriority::normal);
    if (!job->waitFor(limit))
        return std::make_unique<JobHandle>(std::move(job));
    job->deliver();
    return nullptr;
}

} // namespace kelpa
