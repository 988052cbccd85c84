#include "platform/qt/QtScheduler.h"

#include "platform/qt/BackgroundJob.h"

#include <QDateTime>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <algorithm>
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
        // Not deleted at once: this may be its own callback.
        m_timer->stop();
        m_timer->disconnect();
        m_timer->deleteLater();
    }

private:
    /// Owned by the scheduler's receiver; gone when that is.
    QPointer<QTimer> m_timer;
    std::shared_ptr<std::function<void()>> m_callback;
};

class JobHandle final : public ScheduledWork
{
public:
    explicit JobHandle(std::shared_ptr<BackgroundJob> job) : m_job(std::move(job)) {}
    ~JobHandle() override { m_job->cancel(); }

private:
    std::shared_ptr<BackgroundJob> m_job;
};

} // namespace

/// Owns the timers and delivers finished jobs. What is running is remembered, so that it can be
/// cancelled with the scheduler.
class QtScheduler::Receiver final : public QObject
{
public:
    std::shared_ptr<FinishedJobs> finished;
    std::vector<std::weak_ptr<BackgroundJob>> started;

    void remember(const std::shared_ptr<BackgroundJob>& job)
    {
        std::erase_if(started, [](const auto& known) { return known.expired(); });
        started.push_back(job);
    }

    bool event(QEvent* event) override
    {
        if (event->type() != FinishedJobs::eventType())
            return QObject::event(event);
        for (const std::shared_ptr<BackgroundJob>& job : finished->takeAll())
            job->deliver();
        return true;
    }
};

QtScheduler::QtScheduler()
    : m_receiver(std::make_unique<Receiver>()),
      m_finished(std::make_shared<FinishedJobs>(m_receiver.get())), m_pool(maxThreads)
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
    m_finished->shut();
    return m_pool.finish(shutdownLimit);
}

Date QtScheduler::now() const
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
    // Held by the handle, and for the length of a call, which may destroy the handle.
    auto held = std::make_shared<std::function<void()>>(std::move(callback));
    timer->callOnTimeout([weak = std::weak_ptr(held)] {
        if (const auto called = weak.lock())
            (*called)();
    });
    timer->start(std::max(interval, Duration::zero()));
    return std::make_unique<TimerHandle>(timer, std::move(held));
}

std::shared_ptr<BackgroundJob> QtScheduler::start(BackgroundWork work)
{
    auto job = std::make_shared<BackgroundJob>(std::move(work));
    m_receiver->remember(job);
    m_pool.start([running = job, finished = m_finished]() mutable {
        running->run();
        // Handed over whole, so that its functions are destroyed on the main thread.
        finished->add(std::move(running));
    });
    return job;
}

TaskHandle QtScheduler::startInBackground(BackgroundWork work)
{
    return std::make_unique<JobHandle>(start(std::move(work)));
}

TaskHandle QtScheduler::startAwaiting(Duration limit, BackgroundWork work)
{
    std::shared_ptr<BackgroundJob> job = start(std::move(work));
    if (!job->waitFor(limit))
        return std::make_unique<JobHandle>(std::move(job));
    job->deliver();
    return nullptr;
}

} // namespace kelpa
