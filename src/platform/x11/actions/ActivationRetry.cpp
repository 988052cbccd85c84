#include "platform/x11/actions/ActivationRetry.h"

#include <algorithm>

namespace kelpa::x11 {

void ActivationRetry::begin(Clock::time_point now, std::optional<std::uint32_t> inputTime)
{
    if (now - m_end > m_limits.batchGap)
        m_batchTimeLeft = m_limits.batch;
    m_inputTime = inputTime;
    m_attempt = inputTime ? attemptAtInputTime : attemptAtServerTime;
    m_requests = 0;
}

std::uint32_t ActivationRetry::nextTimestamp(std::optional<std::uint32_t> serverTime)
{
    const std::optional<std::uint32_t> known =
        m_attempt == attemptAtInputTime ? m_inputTime : serverTime;
    // A window manager may refuse a timestamp that is older than the last key it knows of. While
    // someone types and the window manager is busy, keys overtake every timestamp.
    const std::uint32_t time = m_attempt == lastAttempt || m_isCurrentTimePending
                                   ? currentTime
                                   : known.value_or(currentTime);
    m_isCurrentTimePending = time == currentTime;
    ++m_attempt;
    ++m_requests;
    return time;
}

ActivationRetry::Duration ActivationRetry::timeout() const
{
    return std::min(m_limits.confirmation, m_batchTimeLeft);
}

void ActivationRetry::recordConfirmation(bool isChange)
{
    m_batchTimeLeft = m_limits.batch;
    // Requests are read in their order. Of several for one window, the first may have had the
    // effect, and of a window that was active before, none.
    if (isChange && m_requests == 1)
        m_isCurrentTimePending = false;
    m_attempt = lastAttempt + 1;
}

void ActivationRetry::recordTimeout(Duration waited)
{
    m_batchTimeLeft = std::max(Duration(0), m_batchTimeLeft - waited);
}

} // namespace kelpa::x11
