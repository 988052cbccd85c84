#include "platform/numbers/NumberSupply.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kelpa {

namespace {

// The disk is written once for so many numbers; a restart skips the rest of a block.
constexpr WindowID blockSize = 256;

// A number is ahead of the high-water mark on disk only when the settings were lost or another
// user's program gave numbers; a greater lead than this takes years of new windows.
constexpr WindowID greatestLead = 1U << 20U;

constexpr WindowID greatestNumber = std::numeric_limits<WindowID>::max();

WindowID sumAtMostGreatest(WindowID number, WindowID increment)
{
    return number > greatestNumber - increment ? greatestNumber : number + increment;
}

} // namespace

NumberSupply::NumberSupply(NumberReservation& reservation, WindowID highWaterMark,
                           std::set<WindowID> taken)
    : m_reservation(reservation), m_taken(std::move(taken)), m_reservedUpTo(highWaterMark),
      m_last(highWaterMark)
{}

std::optional<WindowID> NumberSupply::next()
{
    do {
        if (m_last == greatestNumber)
            return std::nullopt;
        ++m_last;
    } while (m_taken.contains(m_last));
    reserve(m_last);
    return m_last;
}

void NumberSupply::raise(WindowID number)
{
    m_last = std::max(m_last, number);
}

void NumberSupply::reserve(WindowID number)
{
    if (number <= m_reservedUpTo)
        return;
    m_wanted = std::max(m_wanted, number);
    // A disk that refuses one number refuses the others of this pass.
    if (m_hasFailed)
        return;
    const WindowID upTo = sumAtMostGreatest(number, blockSize - 1);
    if (m_reservation.reserve(upTo))
        m_reservedUpTo = upTo;
    else
        m_hasFailed = true;
}

void NumberSupply::retryReserving()
{
    m_hasFailed = false;
    reserve(m_wanted);
}

bool NumberSupply::isPlausible(WindowID number) const
{
    return number <= sumAtMostGreatest(m_reservedUpTo, greatestLead);
}

} // namespace kelpa
