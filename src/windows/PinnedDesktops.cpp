#include "windows/PinnedDesktops.h"

namespace kelpa {

std::optional<DesktopShift> PinnedDesktops::observe(const GoalPins& pins, const DesktopIDs& ids)
{
    // Pins that came since the last pass were chosen among the desktops that it found.
    follow(pins);
    if (ids == m_ids)
        return std::nullopt;
    const DesktopIDs before = std::exchange(m_ids, ids);
    if (ids.isEmpty())
        return std::nullopt;
    m_desktops.removeIf([&ids](const std::pair<const std::pair<GoalID, int>&, DesktopID&>& each) {
        return !ids.contains(each.second);
    });
    follow(pins);
    if (before.isEmpty())
        return std::nullopt;
    DesktopShift shift;
    for (qsizetype index = 0; index < before.size(); ++index) {
        if (const qsizetype now = ids.indexOf(before.at(index)); now >= 0)
            shift.insert(static_cast<int>(index) + 1, static_cast<int>(now) + 1);
    }
    return shift;
}

void PinnedDesktops::follow(const GoalPins& pins)
{
    for (const auto& [goalID, pin] : pins.asKeyValueRange()) {
        if (!m_ids.contains(m_desktops.value({goalID, pin})))
            choose(goalID, pin);
    }
}

void PinnedDesktops::restore(const DesktopLinks& links, const GoalPins& pins)
{
    for (const auto& [goalID, link] : links.asKeyValueRange())
        m_desktops.insert({goalID, link.pin}, link.desktop);
    follow(pins);
}

DesktopLinks PinnedDesktops::linksOf(const GoalPins& pins) const
{
    DesktopLinks links;
    for (const auto& [goalID, pin] : pins.asKeyValueRange()) {
        const auto desktop = m_desktops.constFind({goalID, pin});
        if (desktop != m_desktops.constEnd())
            links.insert(goalID, {.pin = pin, .desktop = *desktop});
    }
    return links;
}

void PinnedDesktops::choose(GoalID goalID, int number)
{
    if (number >= 1 && number <= m_ids.size())
        m_desktops.insert({goalID, number}, m_ids.at(number - 1));
}

int PinnedDesktops::numberOf(GoalID goalID, int pin) const
{
    const auto desktop = m_desktops.constFind({goalID, pin});
    const qsizetype index = desktop != m_desktops.constEnd() ? m_ids.indexOf(*desktop) : -1;
    return index >= 0 ? static_cast<int>(index) + 1 : pin;
}

NumberedDesktop PinnedDesktops::desktopOf(GoalID goalID, int pin) const
{
    const int number = numberOf(goalID, pin);
    if (number < 1 || number > m_ids.size())
        return {.number = number};
    return {.number = number, .id = m_ids.at(number - 1)};
}

GoalPins PinnedDesktops::numbersOf(const GoalPins& pins) const
{
    GoalPins numbers = pins;
    for (const auto& [goalID, number] : numbers.asKeyValueRange())
        number = numberOf(goalID, number);
    return numbers;
}

} // namespace kelpa
