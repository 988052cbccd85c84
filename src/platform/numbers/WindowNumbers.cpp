#include "platform/numbers/WindowNumbers.h"

#include <utility>

namespace kelpa {

namespace {

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
    : m_supply(reservation, highWaterMark, std::move(taken))
{}

void WindowNumbers::beginWriting(std::optional<WindowID> counter)
{
    forgetAll();
    m_isWriting = true;
    if (counter && m_supply.isPlausible(*counter))
        m_supply.raise(*counter);
    m_believedUpTo = m_supply.last();
}

void WindowNumbers::beginReading()
{
    forgetAll();
    m_isWriting = false;
}

WindowNumbers::Numbering WindowNumbers::number(const std::vector<Sighting>& sightings,
                                               std::optional<WindowID> counter)
{
    m_supply.retryReserving();
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
            m_supply.reserve(*sighting.tag);
            remember(sighting.window, *sighting.tag);
        }
    }
    for (const Sighting& sighting : sightings) {
        if (!isKnown(sighting.window)) {
            if (const std::optional<WindowID> fresh = m_supply.next())
                remember(sighting.window, *fresh);
        }
        const auto it = m_numbers.find(sighting.window);
        const bool isNumbered = it != m_numbers.end();
        result.numbers.push_back(isNumbered ? std::optional(it->second) : std::nullopt);
        if (isNumbered && sighting.tag != it->second)
            result.tags.push_back({sighting.window, it->second});
    }
    if (counter.value_or(0) != m_supply.last())
        result.counter = m_supply.last();
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
        if (tag != 0 && tag <= counter && m_supply.isPlausible(tag) && !disputed.contains(tag)) {
            m_supply.reserve(tag);
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
    m_believedUpTo = m_supply.last();
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
