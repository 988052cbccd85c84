// Measures how long the main thread keeps its event loop waiting.
#pragma once

#include <QFile>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

namespace kelpa::test {

/// Beats every 5 ms while the thread that created it runs its event loop. Subtracts the load of the
/// machine: the time in which the thread was runnable but got no processor, and the time by which
/// another thread, which only sleeps, woke up late.
class Heartbeat
{
public:
    Heartbeat();
    Heartbeat(const Heartbeat&) = delete;
    Heartbeat& operator=(const Heartbeat&) = delete;
    ~Heartbeat() = default;

    /// The longest time so far from one beat to the next.
    std::chrono::milliseconds longestGap() const;
    int beats() const { return m_beats; }

private:
    using Clock = std::chrono::steady_clock;

    void beat();
    Clock::duration waitedForProcessor();
    void sleepAndWake(const std::stop_token& stop);

    QTimer m_timer;
    /// The kernel's statistics of the thread: nanoseconds run, nanoseconds waited, time slices.
    QFile m_statistics;
    Clock::time_point m_last = Clock::now();
    Clock::duration m_waitedBefore{};
    Clock::duration m_longest{};
    int m_beats = 0;
    /// The latest wake-up of the other thread since the last beat.
    std::atomic<Clock::duration::rep> m_lateness = 0;
    /// When the other thread is due to wake up next.
    std::atomic<Clock::duration::rep> m_due = Clock::now().time_since_epoch().count();
    std::jthread m_sleeper;
};

} // namespace kelpa::test
