// How often each window has changed its icon.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>

namespace kelpa::x11 {

/// Any thread.
class IconRevisions
{
public:
    /// By the server's id of the window.
    void increment(std::uint32_t window)
    {
        const std::scoped_lock lock(m_mutex);
        ++m_revisions[window];
    }

    /// The window is gone; its id may soon be another window's.
    void forget(std::uint32_t window)
    {
        const std::scoped_lock lock(m_mutex);
        m_revisions.erase(window);
    }

    /// 0 for a window whose icon has not changed since it was first seen.
    std::uint32_t of(std::uint32_t window) const
    {
        const std::scoped_lock lock(m_mutex);
        const auto found = m_revisions.find(window);
        return found == m_revisions.end() ? 0 : found->second;
    }

private:
    mutable std::mutex m_mutex;
    std::map<std::uint32_t, std::uint32_t> m_revisions;
};

} // namespace kelpa::x11
