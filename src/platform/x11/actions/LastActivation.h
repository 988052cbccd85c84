// Remembers the focus: the window that was activated last, and the window that got the focus with
// it. As long as the latter keeps the focus, the activation need not be repeated.
#pragma once

#include "platform/x11/actions/WindowTarget.h"

#include <cstdint>
#include <optional>

namespace kelpa::x11 {

/// A value for one thread.
class LastActivation
{
public:
    void begin(const WindowTarget& target)
    {
        m_target = target;
        m_focused.reset();
    }
    /// `focused` is the target or its dialog.
    void confirm(std::uint32_t focused) { m_focused = focused; }
    void forget() { *this = {}; }

    bool isOf(const WindowTarget& target) const { return m_target == target; }
    bool isOf(ProcessID process) const { return m_target && m_target->process == process; }
    /// Whether the window manager did it in time.
    bool isConfirmed() const { return m_focused.has_value(); }
    /// Whether the focus, which `active` has now, is still where the activation put it. False for
    /// an activation that was not confirmed.
    bool keepsFocus(std::uint32_t active) const { return m_focused == active; }

private:
    std::optional<WindowTarget> m_target;
    std::optional<std::uint32_t> m_focused;
};

} // namespace kelpa::x11
