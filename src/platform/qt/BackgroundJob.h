// One piece of background work on its way: queued, running, finished, delivered. Shared by the main
// thread, which started it, and the thread that runs it.
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

    /// Off the main thread: does the work unless it was cancelled before.
    void run();

    /// Main thread: true when the work is finished before `limit` is over.
    bool waitFor(std::chrono::milliseconds limit);

    /// Main thread, after the work has finished: calls what remains to be done there, once, and not
    /// after a cancellation.
    void deliver();

    /// Main thread. The function objects live on until the job comes back to the main thread.
    void cancel() { m_stop.request_stop(); }

private:
    Work m_work;
    std::stop_source m_stop;
    std::mutex m_mutex;
    std::condition_variable m_finishing;
    Completion m_completion;
    bool m_isFinished = false;
};

/// Brings finished jobs to the main thread. Shared with the workers, so that one which ends after
/// the scheduler finds it shut instead of gone.
class FinishedJobs
{
public:
    /// `receiver` gets an event of `eventType()` for jobs to collect.
    explicit FinishedJobs(QObject* receiver) : m_receiver(receiver) {}

    static int eventType();

    /// Any thread.
    void add(std::shared_ptr<BackgroundJob> job);
    /// Main thread.
    std::vector<std::shared_ptr<BackgroundJob>> takeAll();
    /// Main thread: from now on jobs are dropped by the thread that finished them.
    void shut();

private:
    std::mutex m_mutex;
    QObject* m_receiver;
    std::vector<std::shared_ptr<BackgroundJob>> m_jobs;
};

} // namespace kelpa
