#include "platform/qt/WorkerPool.h"

#include <sys/resource.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace kelpa {

struct WorkerPool::State
{
    int maxThreads;
    int niceness;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> tasks;
    int threads = 0;
    int idleThreads = 0;
    bool isEnding = false;

    State(int max, int nice) : maxThreads(max), niceness(nice) {}
};

namespace {

/// Makes this thread nicer. It stays so: a thread may not take back its niceness.
void becomeNicer(int by)
{
    // On Linux a thread has a niceness of its own, and 0 is the calling one.
    if (by != 0)
        setpriority(PRIO_PROCESS, 0, getpriority(PRIO_PROCESS, 0) + by);
}

} // namespace

WorkerPool::WorkerPool(int maxThreads, int niceness)
    : m_state(std::make_shared<State>(maxThreads, niceness))
{}

WorkerPool::~WorkerPool()
{
    finish(std::chrono::milliseconds::zero());
}

void WorkerPool::start(std::function<void()> task)
{
    {
        const std::lock_guard lock(m_state->mutex);
        if (m_state->isEnding)
            return;
        m_state->tasks.push_back(std::move(task));
        const bool isServed = static_cast<int>(m_state->tasks.size()) <= m_state->idleThreads;
        if (!isServed && m_state->threads < m_state->maxThreads) {
            ++m_state->threads;
            std::thread([state = m_state] { work(state); }).detach();
        }
    }
    // Before the end only idle threads wait; waking one is enough.
    m_state->changed.notify_one();
}

void WorkerPool::work(const std::shared_ptr<State>& state)
{
    becomeNicer(state->niceness);
    std::unique_lock lock(state->mutex);
    for (;;) {
        ++state->idleThreads;
        state->changed.wait(lock, [&] { return state->isEnding || !state->tasks.empty(); });
        --state->idleThreads;
        if (state->tasks.empty())
            break;
        std::function<void()> task = std::move(state->tasks.front());
        state->tasks.pop_front();
        lock.unlock();
        task();
        task = nullptr;
        lock.lock();
    }
    --state->threads;
    state->changed.notify_all();
}

bool WorkerPool::finish(std::chrono::milliseconds limit)
{
    std::deque<std::function<void()>> dropped;
    std::unique_lock lock(m_state->mutex);
    m_state->isEnding = true;
    dropped.swap(m_state->tasks);
    m_state->changed.notify_all();
    return m_state->changed.wait_for(lock, limit, [this] { return m_state->threads == 0; });
}

} // namespace kelpa
