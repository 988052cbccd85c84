#include "platform/x11/actions/WindowActivator.h"

#include "platform/x11/actions/EwmhRequests.h"
#include "platform/x11/connection/DisplayConnection.h"

#include <poll.h>

#include <chrono>

namespace kelpa::x11 {

namespace {

using Clock = ActivationRetry::Clock;
using std::chrono::milliseconds;

/// Whether an event has arrived by `deadline`. Events are discarded: each only means that the
/// properties may have changed.
bool awaitEvent(XcbConnection& connection, Clock::time_point deadline)
{
    bool hasArrived = false;
    while (connection.pollEvent())
        hasArrived = true;
    if (hasArrived)
        return true;
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    pollfd watched{connection.fileDescriptor(), POLLIN, 0};
    return left.count() > 0 && poll(&watched, 1, static_cast<int>(left.count())) > 0 &&
           !connection.isBroken();
}

} // namespace

std::optional<std::uint32_t> WindowActivator::activate(DisplayConnection& display,
                                                       const WindowTarget& target,
                                                       std::optional<std::uint32_t> inputTime)
{
    m_retry.begin(Clock::now(), inputTime);
    std::optional<std::uint32_t> focused;
    while (!focused && m_retry.mayRequest()) {
        const TargetState state = readTargetState(display, target);
        if (!state.isSame)
            break;
        const std::uint32_t time = m_retry.nextTimestamp(state.serverTime);
        if (state.desktop)
            requestDesktop(display, *state.desktop, time);
        requestActivation(display, target.window, time);
        display.connection().flush();
        if (!state.takesFocus || m_retry.timeout().count() == 0)
            break;
        focused = awaitFocus(display, target, state.active);
    }
    m_retry.end(Clock::now());
    return focused;
}

std::optional<std::uint32_t> WindowActivator::awaitFocus(DisplayConnection& display,
                                                         const WindowTarget& target,
                                                         std::uint32_t activeBefore)
{
    const auto begin = Clock::now();
    const auto deadline = begin + m_retry.timeout();
    do {
        const std::uint32_t active = activeWindow(display);
        // A window that waits for an answer to its dialog passes the focus on to the dialog.
        if (active == target.window ||
            (active != activeBefore && isDialogOf(display, active, target.window))) {
            m_retry.recordConfirmation(active != activeBefore);
            return active;
        }
    } while (awaitEvent(display.connection(), deadline));
    m_retry.recordTimeout(std::chrono::ceil<milliseconds>(Clock::now() - begin));
    return std::nullopt;
}

} // namespace kelpa::x11
