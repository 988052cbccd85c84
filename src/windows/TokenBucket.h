// A token bucket: limits how often something is done, but not how often at once after a quiet time.
#pragma once

#include <algorithm>
#include <chrono>

namespace kelpa {

/// A value; each call says the time, which never goes back.
class TokenBucket
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// Begins full. A token comes back each `refillTime`, up to `capacity` of them.
    TokenBucket(int capacity, std::chrono::milliseconds refillTime)
        : m_capacity(capacity), m_refillTime(refillTime), m_tokens(capacity)
    {}

    int available(Time now) const { return std::min(m_capacity, m_tokens + refills(now)); }

    /// Takes a token; false when there is none.
    bool take(Time now)
    {
        const int before = available(now);
        if (before == 0)
            return false;
        // What is left of an interval counts, unless the bucket was full.
        m_refilled = before == m_capacity ? now : m_refilled + refills(now) * m_refillTime;
        m_tokens = before - 1;
        return true;
    }

private:
    int refills(Time now) const
    {
        const auto count = (now - m_refilled) / m_refillTime;
        return static_cast<int>(std::clamp<decltype(count)>(count, 0, m_capacity));
    }

    int m_capacity;
    std::chrono::milliseconds m_refillTime;
    int m_tokens;
    /// When the last token came back.
    Time m_refilled{};
};

} // namespace kelpa
