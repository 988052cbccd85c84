#include "platform/qt/WorkerPool.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace kelpa {

struct WorkerPool::State
{
    int maxThreads;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> tasks;
    int threads = 0;
    int idleThreads = 0;
    bool isEnding = false;

    explicit State(int max) : maxThreads(max) {}
};

WorkerPool::WorkerPool(int maxThreads) : m_state(std::make_shared<State>(maxThreads)) {}

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
