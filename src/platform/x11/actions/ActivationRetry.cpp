#include "platform/x11/actions/ActivationRetry.h"

#include <algorithm>

namespace kelpa::x11 {

void ActivationRetry::begin(Moment now, std::optional<std::uint32_t> inputTime)
{
    if (now - m_end > m_limits.pause)
        m_patience = m_limits.row;
    m_inputTime = inputTime;
    m_attempt = inputTime ? attemptAtInputTime : attemptAtServerTime;
}

std::uint32_t ActivationRetry::timeToName(std::optional<std::uint32_t> serverTime)
{
    const std::optional<std::uint32_t> known =
        m_attempt == attemptAtInputTime ? m_inputTime : serverTime;
    // A window manager may refuse what is older than the last key it knows of, and while someone
    // types, keys overtake every time that can be named to one that is busy.
    const std::uint32_t time = m_attempt == lastAttempt || m_isTimeLeftOpen
                                   ? timeOfReading
                                   : known.value_or(timeOfReading);
    m_isTimeLeftOpen = time == timeOfReading;
    ++m_attempt;
    return time;
}

ActivationRetry::Duration ActivationRetry::wait() const
{
    return std::min(m_limits.confirmation, m_patience);
}

void ActivationRetry::noteConfirmed()
{
    m_patience = m_limits.row;
    m_isTimeLeftOpen = false;
    m_attempt = lastAttempt + 1;
}

void ActivationRetry::noteUnanswered(Duration waited)
{
    m_patience = std::max(Duration(0), m_patience - waited);
}

} // namespace kelpa::x11
