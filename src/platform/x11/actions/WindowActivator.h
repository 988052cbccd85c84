// The activation loop: requests the focus for a window, waits until the window manager confirms by
// _NET_ACTIVE_WINDOW, and requests it again as `ActivationRetry` allows.
#pragma once

#include "platform/x11/actions/ActivationRetry.h"
#include "platform/x11/actions/WindowTarget.h"

#include <cstdint>
#include <optional>

namespace kelpa::x11 {

class DisplayConnection;

/// Used on one thread at a time, any but the main one.
class WindowActivator
{
public:
    explicit WindowActivator(const ActivationLimits& limits) : m_retry(limits) {}

    /// The window that got the focus: the target, or a dialog of it. Absent when the window manager
    /// did not confirm in time, when the target is gone or when it accepts no focus. `inputTime` is
    /// when the person asked for the window, on the server's clock; absent: now. `display` must
    /// have selected property changes of the root and of its helper window.
    std::optional<std::uint32_t> activate(DisplayConnection& display, const WindowTarget& target,
                                          std::optional<std::uint32_t> inputTime);

    /// Whether the window manager may still carry out the last request.
    bool isPending() const { return m_retry.isPending(ActivationRetry::Clock::now()); }

private:
    std::optional<std::uint32_t> awaitFocus(DisplayConnection& display, const WindowTarget& target,
                                            std::uint32_t activeBefore);

    ActivationRetry m_retry;
};

} // namespace kelpa::x11
