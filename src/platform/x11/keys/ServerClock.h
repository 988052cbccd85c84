// Unwraps the timestamps of the X server.
#pragma once

#include <cstdint>

namespace kelpa::x11 {

/// The server counts milliseconds in 32 bits, which wrap after 49.7 days. Plain value.
class ServerClock
{
public:
    /// The time in seconds on a clock that does not wrap; only differences are meaningful. Times
    /// may arrive slightly out of order, and up to 24.8 days apart.
    double seconds(std::uint32_t time)
    {
        m_total += static_cast<std::int32_t>(time - m_last);
        m_last = time;
        return static_cast<double>(m_total) / 1000.0;
    }

private:
    std::int64_t m_total = 0;
    std::uint32_t m_last = 0;
};

} // namespace kelpa::x11
