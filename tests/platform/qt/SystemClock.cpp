#include "platform/qt/SystemClock.h"

#include <atomic>
#include <ctime>

#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace kelpa::test {

namespace {

std::atomic<std::time_t> systemClockOffset = 0;

} // namespace

SystemClockSetForward::SystemClockSetForward(std::chrono::seconds offset)
{
    systemClockOffset = offset.count();
}

SystemClockSetForward::~SystemClockSetForward()
{
    systemClockOffset = 0;
}

} // namespace kelpa::test

// These take the place of the C library's functions in the whole process: the toolkit and the
// standard library read their clocks by them.

extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    const long status = syscall(SYS_clock_gettime, clock, time);
    if (status == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE))
        time->tv_sec += kelpa::test::systemClockOffset;
    return static_cast<int>(status);
}

extern "C" int gettimeofday(timeval* time, void* /*zone*/) noexcept
{
    timespec precise{};
    const int status = clock_gettime(CLOCK_REALTIME, &precise);
    time->tv_sec = precise.tv_sec;
    time->tv_usec = precise.tv_nsec / 1000;
    return status;
}
