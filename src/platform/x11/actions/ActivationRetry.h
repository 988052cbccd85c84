// When the activation of a window is requested again: how often, with which timestamp, and how long
// each request waits for its confirmation. Windows that are activated one after the other form a
// batch and share one time limit, so that a hung window manager delays a batch only once.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace kelpa::x11 {

/// How long to wait for the window manager.
struct ActivationLimits
{
    /// For the confirmation of one request; a window gets at most three requests.
    std::chrono::milliseconds confirmation{250};
    /// For all windows of a batch together, as long as none of them is confirmed. After that,
    /// requests are sent and not waited for.
    std::chrono::milliseconds batch{1000};
    /// A batch ends after a pause longer than this between two activations.
    std::chrono::milliseconds batchGap{1000};
};

/// A value for one thread, without I/O and without a clock. For each window the caller calls
/// `begin`, then for each request `nextTimestamp` and one of the `record` functions, then `end`.
class ActivationRetry
{
public:
    using Clock = std::chrono::steady_clock;
    using Duration = std::chrono::milliseconds;

    /// XCB_CURRENT_TIME: the time at which the window manager reads the request.
    static constexpr std::uint32_t currentTime = 0;

    explicit ActivationRetry(const ActivationLimits& limits)
        : m_limits(limits), m_batchTimeLeft(limits.batch)
    {}

    /// `inputTime` is when the person asked for the window, on the server's clock; absent when
    /// that is now.
    void begin(Clock::time_point now, std::optional<std::uint32_t> inputTime);
    /// Whether another request may be sent for this window.
    bool mayRequest() const { return m_attempt <= lastAttempt; }
    /// The timestamp of the next request; counts the request as sent. `serverTime` is the server's
    /// latest known time; absent when it is not known.
    std::uint32_t nextTimestamp(std::optional<std::uint32_t> serverTime);
    /// How long to wait for the confirmation of a request. Zero: send it and do not wait.
    Duration timeout() const;
    /// The window is active. `isChange`: it was not before its first request.
    void recordConfirmation(bool isChange);
    /// The request was not confirmed within `waited`.
    void recordTimeout(Duration waited);
    void end(Clock::time_point now) { m_end = now; }

    /// Whether the window manager may still carry out the last request, although it is late: within
    /// the batch gap.
    bool isPending(Clock::time_point now) const { return now - m_end < m_limits.batchGap; }

private:
    /// Only with an input time, which is earlier than the server's time.
    static constexpr int attemptAtInputTime = 0;
    static constexpr int attemptAtServerTime = 1;
    static constexpr int lastAttempt = 2;

    ActivationLimits m_limits;
    Duration m_batchTimeLeft;
    Clock::time_point m_end;
    std::optional<std::uint32_t> m_inputTime;
    int m_attempt = lastAttempt + 1;
    /// For this window.
    int m_requests = 0;
    /// A request with `currentTime` was sent, and the confirmation of none has shown since that it
    /// has been read. The window manager may not have read it yet, and then takes a time for it
    /// that is later than any timestamp a request could carry now.
    bool m_isCurrentTimePending = false;
};

} // namespace kelpa::x11
