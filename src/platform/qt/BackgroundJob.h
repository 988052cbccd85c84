// A background job (queued, running, finished, delivered) and the queue that brings finished jobs
// back to the main thread. Shared by the main thread and the worker thread that runs the job.
#pragma once

#include <QObject>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <vector>

namespace kelpa {

class BackgroundJob
{
public:
    using Completion = std::function<void()>;
    using Work = std::function<Completion(std::stop_token)>;

    explicit BackgroundJob(Work work) : m_work(std::move(work)) {}

    /// Worker thread: does the work unless it was cancelled or asked to stop before.
    void run();

    /// Main thread: waits up to `limit`; true when the work has finished.
    bool waitFor(std::chrono::milliseconds limit);

    /// Main thread, after the work has finished: calls the completion once, unless the job was
    /// cancelled.
    void deliver();

    /// Main thread. As `ScheduledWork::requestStop`.
    bool requestStop();

    /// Main thread. The function objects live until the job is back on the main thread.
    void cancel();

private:
    Work m_work;
    std::stop_source m_stop;
    /// Used on the main thread only.
    bool m_isCancelled = false;
    std::mutex m_mutex;
    std::condition_variable m_finishing;
    Completion m_completion;
    bool m_hasBegun = false;
    bool m_mayBegin = true;
    bool m_isFinished = false;
};

/// Brings finished jobs to the main thread. Shared with the workers, so that a worker which
/// finishes after the scheduler was destroyed finds the queue closed instead of gone.
class FinishedJobQueue
{
public:
    /// Posts an event of `eventType()` to `receiver` when there are jobs to take.
    explicit FinishedJobQueue(QObject* receiver) : m_receiver(receiver) {}

    static int eventType();

    /// Any thread.
    void add(std::shared_ptr<BackgroundJob> job);
    /// Main thread.
    std::vector<std::shared_ptr<BackgroundJob>> takeAll();
    /// Main thread: from now on, the thread that finished a job drops it.
    void close();

private:
    std::mutex m_mutex;
    QObject* m_receiver;
    std::vector<std::shared_ptr<BackgroundJob>> m_jobs;
};

} // namespace kelpa
