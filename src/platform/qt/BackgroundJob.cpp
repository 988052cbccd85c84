#include "platform/qt/BackgroundJob.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace kelpa {

void BackgroundJob::run()
{
    {
        const std::lock_guard lock(m_mutex);
        m_hasBegun = m_mayBegin;
    }
    Completion completion;
    if (m_hasBegun)
        completion = m_work(m_stop.get_token());
    const std::lock_guard lock(m_mutex);
    m_completion = std::move(completion);
    m_isFinished = true;
    m_finishing.notify_all();
}

bool BackgroundJob::waitFor(std::chrono::milliseconds limit)
{
    std::unique_lock lock(m_mutex);
    return m_finishing.wait_for(lock, limit, [this] { return m_isFinished; });
}

void BackgroundJob::deliver()
{
    Completion completion;
    {
        const std::lock_guard lock(m_mutex);
        completion = std::exchange(m_completion, nullptr);
        // A handle may be kept for long; what the work holds must not be.
        m_work = nullptr;
    }
    // Outside the lock, since it may start, cancel and await other work.
    if (completion && !m_isCancelled)
        completion();
}

bool BackgroundJob::requestStop()
{
    bool hasBegun = false;
    {
        const std::lock_guard lock(m_mutex);
        m_mayBegin = false;
        hasBegun = m_hasBegun;
    }
    // Outside the lock, since the work may have functions called on a stop.
    m_stop.request_stop();
    return hasBegun;
}

void BackgroundJob::cancel()
{
    m_isCancelled = true;
    requestStop();
}

int FinishedJobQueue::eventType()
{
    static const int type = QEvent::registerEventType();
    return type;
}

void FinishedJobQueue::add(std::shared_ptr<BackgroundJob> job)
{
    const std::lock_guard lock(m_mutex);
    if (m_receiver == nullptr)
        return;
    m_jobs.push_back(std::move(job));
    if (m_jobs.size() == 1)
        QCoreApplication::postEvent(m_receiver, new QEvent(static_cast<QEvent::Type>(eventType())));
}

std::vector<std::shared_ptr<BackgroundJob>> FinishedJobQueue::takeAll()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_jobs, {});
}

void FinishedJobQueue::close()
{
    std::vector<std::shared_ptr<BackgroundJob>> jobs;
    const std::lock_guard lock(m_mutex);
    m_receiver = nullptr;
    jobs.swap(m_jobs);
}

} // namespace kelpa
