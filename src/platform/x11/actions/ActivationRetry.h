// How often a window manager is asked for a window, at which time, and how long it is waited for.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace kelpa::x11 {

/// How long to wait for the window manager to do what it was asked.
struct ActivationLimits
{
    /// For one request; it is made three times at most.
    std::chrono::milliseconds confirmation{250};
    /// For all windows of a row together, as long as none of them is confirmed. After that,
    /// requests are sent and left alone.
    std::chrono::milliseconds row{1000};
    /// A row ends when nothing was asked for so long.
    std::chrono::milliseconds pause{1000};
};

/// A value for one thread; it asks for nothing itself and reads no clock. Of each window it is told
/// `begin`, then of each request `timeToName` and how it went, then `end`.
class ActivationRetry
{
public:
    using Moment = std::chrono::steady_clock::time_point;
    using Duration = std::chrono::milliseconds;

    /// "At the time at which you read this", in the place of a server's time; XCB_CURRENT_TIME.
    static constexpr std::uint32_t timeOfReading = 0;

    explicit ActivationRetry(const ActivationLimits& limits)
        : m_limits(limits), m_patience(limits.row)
    {}

    /// `inputTime` is when the person asked for the window, on the server's clock; absent when
    /// that is now.
    void begin(Moment now, std::optional<std::uint32_t> inputTime);
    /// Whether another request may be made for this window.
    bool mayAsk() const { return m_attempt <= lastAttempt; }
    /// What the next request is to name; counts it as made. `serverTime` is the server's a moment
    /// ago; absent when it did not tell.
    std::uint32_t timeToName(std::optional<std::uint32_t> serverTime);
    /// How long to wait for the request to be confirmed. None: it is left alone.
    Duration wait() const;
    void noteConfirmed();
    /// It was waited for so long, without an answer.
    void noteUnanswered(Duration waited);
    void end(Moment now) { m_end = now; }

    /// Whether the window that was asked for last may still come.
    bool isUnderWay(Moment now) const { return now - m_end < m_limits.pause; }

private:
    /// The first is made for a time of the person's own alone, which comes before the time at
    /// which this is done.
    static constexpr int attemptAtInputTime = 0;
    static constexpr int attemptAtServerTime = 1;
    static constexpr int lastAttempt = 2;

    ActivationLimits m_limits;
    Duration m_patience;
    Moment m_end;
    std::optional<std::uint32_t> m_inputTime;
    int m_attempt = lastAttempt + 1;
    /// A request was made that leaves its time to the window manager, and none has been confirmed
    /// since: it may still lie unread, and any time named after it is older than its reading.
    bool m_isTimeLeftOpen = false;
};

} // namespace kelpa::x11
