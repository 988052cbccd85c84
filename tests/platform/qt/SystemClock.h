// The clock of the system as this test program reads it, which a test can set without setting it
// for other programs.
#pragma once

#include <chrono>

namespace kelpa::test {

/// While it lives, the calendar time of this process, on every thread, is ahead by `offset`, or
/// behind by a negative one. One at a time.
class SystemClockSetForward
{
public:
    explicit SystemClockSetForward(std::chrono::seconds offset);
    SystemClockSetForward(const SystemClockSetForward&) = delete;
    SystemClockSetForward& operator=(const SystemClockSetForward&) = delete;
    ~SystemClockSetForward();
};

} // namespace kelpa::test
