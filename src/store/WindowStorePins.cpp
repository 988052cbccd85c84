// Goals that are pinned to virtual desktops.

#include "store/WindowStoreParts.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace kelpa {

bool WindowStore::Parts::canPin() const
{
    return canAct() && state.abilities.has(DesktopAbility::virtualDesktops);
}

std::optional<int> WindowStore::Parts::reachablePin(GoalID goalID) const
{
    const std::optional<int> pin = store.pinOf(goalID);
    return pin && canPin() && isDesktopThere(*pin, state.virtualDesktops) ? pin : std::nullopt;
}

void WindowStore::Parts::takeDesktops(const WindowDiscoveryBatch& discovered)
{
    state.assign(state.virtualDesktops, discovered.virtualDesktops, Field::pins);
    state.assign(state.unofferedDesktops, discovered.unofferedDesktops, Field::pins);
    // Where the desktop tells nothing, as while the screen is locked, the pins mean what they did.
    if (discovered.virtualDesktops.isEmpty())
        return;
    const GoalPins before = store.pins();
    if (const auto shift = state.pinnedDesktops.observe(state.pins, discovered.desktopIDs))
        pinned.renumber(*shift);
    if (store.pins() != before)
        state.markChanged(Field::pins);
    // They are there when Kelpa is started again in the same login.
    if (const std::vector<SettingsEntry> links = takeChangedLinks(); !links.empty())
        saver.write(links);
}

std::vector<SettingsEntry> WindowStore::Parts::takeChangedLinks()
{
    DesktopLinks links = state.pinnedDesktops.linksOf(state.pins);
    if (links == storedLinks)
        return {};
    storedLinks = std::move(links);
    return {{desktopLinksKey, encodeDesktopLinks(storedLinks)}};
}

void WindowStore::Parts::sendToPins()
{
    if (state.pins.isEmpty() || !canPin())
        return;
    const QList<DesktopMove> moves =
        pinned.due(state.windows, state.pins, state.virtualDesktops, state.pinnedDesktops);
    if (!moves.isEmpty())
        activations.enqueue(moves);
}

bool WindowStore::canPinGoals() const
{
    return m_parts->canPin();
}

void WindowStore::pinGoal(GoalID goalID, std::optional<int> desktop)
{
    const Update update(m_state.changes);
    if (!m_state.hasGoal(goalID))
        return;
    if (desktop && (!m_parts->canPin() || !isDesktopThere(*desktop, m_state.virtualDesktops)))
        return;
    if (desktop) {
        m_parts->pinned.forget(goalID);
        // Also where that pin is there already: it gathers what has strayed.
        m_state.markChanged(Field::pins);
    }
    // The number that is stored may be another one than that which its desktop has now.
    const auto stored = m_state.pins.constFind(goalID);
    const bool isStored = desktop ? stored != m_state.pins.constEnd() && *stored == *desktop
                                  : stored == m_state.pins.constEnd();
    if (isStored && pinOf(goalID) == desktop)
        return;
    if (desktop) {
        m_state.pinnedDesktops.choose(goalID, *desktop);
        m_state.pins.insert(goalID, *desktop);
    } else {
        m_state.pins.remove(goalID);
    }
    m_state.markChanged(Field::pins);
    // In one write: a pin means another desktop by a link of an earlier choice.
    m_parts->steps.saveStep(m_parts->takeChangedLinks());
}

bool WindowStore::hasWorkplace(GoalID goalID) const
{
    return m_parts->reachablePin(goalID) ||
           std::ranges::any_of(m_state.windows, [&goalID](const WindowItem& window) {
               return window.goalID == goalID;
           });
}

} // namespace kelpa
