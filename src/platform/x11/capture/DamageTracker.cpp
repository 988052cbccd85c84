#include "platform/x11/capture/DamageTracker.h"

namespace kelpa::x11 {

void DamageTracker::begin(std::uint32_t window, Time now)
{
    State state;
    state.since = now;
    m_windows.insert_or_assign(window, state);
}

void DamageTracker::noteWhole(std::uint32_t window)
{
    const auto it = m_windows.find(window);
    if (it != m_windows.end())
        it->second.isWhole = true;
}

void DamageTracker::noteDamage(std::uint32_t window, std::uint32_t sequence)
{
    const auto it = m_windows.find(window);
    if (it == m_windows.end())
        return;
    State& state = it->second;
    // What happened before the last reading is in its picture already.
    if (state.wasRead && static_cast<std::int32_t>(sequence - state.readAt) < 0)
        return;
    state.isChanged = true;
}

void DamageTracker::noteChange(std::uint32_t window)
{
    const auto it = m_windows.find(window);
    if (it != m_windows.end())
        it->second.isChanged = true;
}

void DamageTracker::noteRead(std::uint32_t window, std::uint32_t sequence)
{
    const auto it = m_windows.find(window);
    if (it != m_windows.end()) {
        it->second.readAt = sequence;
        it->second.wasRead = true;
        it->second.isChanged = false;
    }
}

bool DamageTracker::isSettled(std::uint32_t window, Time now) const
{
    const auto it = m_windows.find(window);
    return it != m_windows.end() && (it->second.isWhole || now - it->second.since >= m_settling);
}

bool DamageTracker::isChanged(std::uint32_t window) const
{
    const auto it = m_windows.find(window);
    return it == m_windows.end() || it->second.isChanged;
}

} // namespace kelpa::x11
