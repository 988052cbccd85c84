// Measures how long the main thread keeps its event loop waiting.
#pragma once

#include <QFile>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

namespace kelpa::test {

/// Beats every 5 ms while the thread that made it runs its event loop. What a busy machine takes is
/// not held against the program: neither the time in which the thread could have run and got no
/// processor, nor the time by which another thread, which does nothing but sleep, woke late.
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
    /// What the kernel says of the thread: nanoseconds run, nanoseconds waited, turns.
    QFile m_statistics;
    Clock::time_point m_last = Clock::now();
    Clock::duration m_waitedBefore{};
    Clock::duration m_longest{};
    int m_beats = 0;
    /// How late the other thread woke at most since the last beat.
    std::atomic<Clock::duration::rep> m_lateness = 0;
    /// When it is to wake next.
    std::atomic<Clock::duration::rep> m_due = Clock::now().time_since_epoch().count();
    std::jthread m_sleeper;
};

} // namespace kelpa::test
