#include "live/Heartbeat.h"

#include <algorithm>

namespace kelpa::test {

namespace {

constexpr std::chrono::milliseconds interval{5};

} // namespace

Heartbeat::Heartbeat() : m_statistics(QStringLiteral("/proc/thread-self/schedstat"))
{
    // Opened by the main thread, whose statistics it keeps reporting.
    if (!m_statistics.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        qFatal("the kernel does not report how long a thread waits for the processor");
    }
    m_waitedBefore = waitedForProcessor();
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
    m_timer.start(interval);
    m_sleeper = std::jthread([this](const std::stop_token& stop) { sleepAndWake(stop); });
}

std::chrono::milliseconds Heartbeat::longestGap() const
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(m_longest);
}

void Heartbeat::beat()
{
    const auto now = Clock::now();
    const Clock::duration waited = waitedForProcessor();
    // The other thread may be about to wake up from the same standstill.
    const Clock::duration late = std::max(Clock::duration(m_lateness.exchange(0)),
                                          now.time_since_epoch() - Clock::duration(m_due.load()));
    const Clock::duration machine = std::max(waited - m_waitedBefore, late);
    m_longest = std::max(m_longest, now - m_last - machine);
    m_waitedBefore = waited;
    m_last = now;
    ++m_beats;
}

Heartbeat::Clock::duration Heartbeat::waitedForProcessor()
{
    m_statistics.seek(0);
    const QList<QByteArray> fields = m_statistics.readAll().simplified().split(' ');
    return std::chrono::nanoseconds(fields.size() > 1 ? fields.at(1).toLongLong() : 0);
}

void Heartbeat::sleepAndWake(const std::stop_token& stop)
{
    while (!stop.stop_requested()) {
        const auto due = Clock::now() + interval;
        m_due = due.time_since_epoch().count();
        std::this_thread::sleep_until(due);
        const Clock::duration::rep late = (Clock::now() - due).count();
        Clock::duration::rep known = m_lateness;
        while (known < late && !m_lateness.compare_exchange_weak(known, late)) {
        }
    }
}

} // namespace kelpa::test
