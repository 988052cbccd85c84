#include "platform/x11/capture/DamageTracker.h"

namespace kelpa::x11 {

void DamageTracker::track(std::uint32_t window, Time now)
{
    State state;
    state.redirectedAt = now;
    m_windows.insert_or_assign(window, state);
}

void DamageTracker::noteUnobscured(std::uint32_t window)
{
    const auto it = m_windows.find(window);
    if (it != m_windows.end())
        it->second.wasUnobscured = true;
}

void DamageTracker::noteDamage(std::uint32_t window, std::uint32_t sequence)
{
    const auto it = m_windows.find(window);
    if (it == m_windows.end())
        return;
    State& state = it->second;
    // The last reading includes what was drawn before its subtraction.
    if (state.wasSubtracted && static_cast<std::int32_t>(sequence - state.subtractedAt) < 0)
        return;
    state.isChanged = true;
}

void DamageTracker::invalidate(std::uint32_t window)
{
    const auto it = m_windows.find(window);
    if (it != m_windows.end())
        it->second.isChanged = true;
}

void DamageTracker::noteSubtraction(std::uint32_t window, std::uint32_t sequence)
{
    const auto it = m_windows.find(window);
    if (it != m_windows.end()) {
        it->second.subtractedAt = sequence;
        it->second.wasSubtracted = true;
        it->second.isChanged = false;
    }
}

bool DamageTracker::isSettled(std::uint32_t window, Time now) const
{
    const auto it = m_windows.find(window);
    return it != m_windows.end() &&
           (it->second.wasUnobscured || now - it->second.redirectedAt >= m_settleTime);
}

bool DamageTracker::isChanged(std::uint32_t window) const
{
    const auto it = m_windows.find(window);
    return it == m_windows.end() || it->second.isChanged;
}

} // namespace kelpa::x11
