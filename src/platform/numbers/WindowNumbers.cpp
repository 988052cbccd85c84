#include "platform/numbers/WindowNumbers.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kelpa {

namespace {

// The disk is written once for so many numbers; a restart skips the rest of a block.
constexpr WindowID blockSize = 256;

// A counter is ahead of the high-water mark on disk only when the settings were lost or another
// user's program gave numbers; a greater lead than this takes years of new windows.
constexpr WindowID greatestLead = 1U << 20U;

constexpr WindowID greatestNumber = std::numeric_limits<WindowID>::max();

WindowID sumAtMostGreatest(WindowID number, WindowID increment)
{
    return number > greatestNumber - increment ? greatestNumber : number + increment;
}

/// The tags that more than one of the windows bears.
std::set<std::uint32_t> duplicates(const std::vector<WindowNumbers::Sighting>& sightings)
{
    std::set<std::uint32_t> seen;
    std::set<std::uint32_t> twice;
    for (const WindowNumbers::Sighting& sighting : sightings) {
        if (sighting.tag && !seen.insert(*sighting.tag).second)
            twice.insert(*sighting.tag);
    }
    return twice;
}

} // namespace

WindowNumbers::WindowNumbers(NumberReservation& reservation, WindowID highWaterMark,
                             std::set<WindowID> taken)
    : m_reservation(reservation), m_taken(std::move(taken)), m_reservedUpTo(highWaterMark),
      m_last(highWaterMark)
{}

void WindowNumbers::beginWriting(std::optional<WindowID> counter)
{
    forgetAll();
    m_isWriting = true;
    if (counter && isPlausible(*counter))
        m_last = std::max(m_last, *counter);
    m_believedUpTo = m_last;
}

void WindowNumbers::beginReading()
{
    forgetAll();
    m_isWriting = false;
}

WindowNumbers::Numbering WindowNumbers::number(const std::vector<Sighting>& sightings,
                                               std::optional<WindowID> counter)
{
    retryReserving();
    if (!m_isWriting)
        return readNumbers(sightings, counter.value_or(0));
    Numbering result;
    std::vector<Sighting> unknown;
    for (const Sighting& sighting : sightings) {
        if (!isKnown(sighting.window))
            unknown.push_back(sighting);
    }
    // Nothing shows which of two unknown windows with the same tag bore it first.
    const std::set<std::uint32_t> disputed = duplicates(unknown);
    for (const Sighting& sighting : unknown) {
        if (sighting.tag && isBelievable(*sighting.tag) && !disputed.contains(*sighting.tag)) {
            reserve(*sighting.tag);
            remember(sighting.window, *sighting.tag);
        }
    }
    for (const Sighting& sighting : sightings) {
        if (!isKnown(sighting.window)) {
            if (const std::optional<WindowID> fresh = next())
                remember(sighting.window, *fresh);
        }
        const auto it = m_numbers.find(sighting.window);
        const bool isNumbered = it != m_numbers.end();
        result.numbers.push_back(isNumbered ? std::optional(it->second) : std::nullopt);
        if (isNumbered && sighting.tag != it->second)
            result.tags.push_back({sighting.window, it->second});
    }
    if (counter.value_or(0) != m_last)
        result.counter = m_last;
    return result;
}

WindowNumbers::Numbering WindowNumbers::readNumbers(const std::vector<Sighting>& sightings,
                                                    WindowID counter)
{
    forgetAll();
    Numbering result;
    const std::set<std::uint32_t> disputed = duplicates(sightings);
    for (const Sighting& sighting : sightings) {
        const WindowID tag = sighting.tag.value_or(0);
        if (tag != 0 && tag <= counter && isPlausible(tag) && !disputed.contains(tag)) {
            reserve(tag);
            remember(sighting.window, tag);
            result.numbers.emplace_back(tag);
        } else {
            result.numbers.emplace_back(std::nullopt);
        }
    }
    return result;
}

void WindowNumbers::windowDestroyed(std::uint32_t window)
{
    const auto it = m_numbers.find(window);
    if (it == m_numbers.end())
        return;
    m_inUse.erase(it->second);
    m_retired.insert(it->second);
    m_numbers.erase(it);
}

void WindowNumbers::forgetAll()
{
    m_numbers.clear();
    m_inUse.clear();
    m_believedUpTo = m_last;
}

bool WindowNumbers::isPlausible(WindowID number) const
{
    return number <= sumAtMostGreatest(m_reservedUpTo, greatestLead);
}

void WindowNumbers::reserve(WindowID number)
{
    if (number <= m_reservedUpTo)
        return;
    m_wanted = std::max(m_wanted, number);
    // A disk that refuses one number refuses the others of this pass.
    if (m_hasReservationFailed)
        return;
    const WindowID upTo = sumAtMostGreatest(number, blockSize - 1);
    if (m_reservation.reserve(upTo))
        m_reservedUpTo = upTo;
    else
        m_hasReservationFailed = true;
}

void WindowNumbers::retryReserving()
{
    m_hasReservationFailed = false;
    reserve(m_wanted);
}

std::optional<WindowID> WindowNumbers::next()
{
    do {
        if (m_last == greatestNumber)
            return std::nullopt;
        ++m_last;
    } while (m_taken.contains(m_last));
    reserve(m_last);
    return m_last;
}

bool WindowNumbers::isBelievable(WindowID tag) const
{
    return tag != 0 && tag <= m_believedUpTo && !m_inUse.contains(tag) && !m_retired.contains(tag);
}

void WindowNumbers::remember(std::uint32_t window, WindowID number)
{
    m_numbers[window] = number;
    m_inUse.insert(number);
}

} // namespace kelpa
