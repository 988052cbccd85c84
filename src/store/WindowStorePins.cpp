// Goals that are pinned to virtual desktops.

#include "store/WindowStoreParts.h"

#include <algorithm>

namespace kelpa {

bool WindowStore::Parts::canPin() const
{
    return canAct() && state.abilities.has(DesktopAbility::virtualDesktops);
}

std::optional<NumberedDesktop> WindowStore::Parts::reachablePin(GoalID goalID) const
{
    const auto pin = state.pins.constFind(goalID);
    if (pin == state.pins.constEnd() || !canPin())
        return std::nullopt;
    const NumberedDesktop desktop = state.pinnedDesktops.desktopOf(goalID, *pin);
    return isDesktopThere(desktop.number, state.virtualDesktops) ? std::optional(desktop)
                                                                 : std::nullopt;
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
    steps.saveDesktopLinks();
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
        m_parts->pinned.forget({goalID});
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
    m_parts->steps.saveStep();
}

bool WindowStore::hasWorkplace(GoalID goalID) const
{
    return m_parts->reachablePin(goalID) ||
           std::ranges::any_of(m_state.windows, [&goalID](const WindowItem& window) {
               return window.goalID == goalID;
           });
}

} // namespace kelpa
