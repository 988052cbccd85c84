#include "windows/PinnedWindows.h"

#include "windows/WindowReconciliation.h"

#include <utility>

namespace kelpa {

bool isDesktopThere(int number, const QStringList& virtualDesktops)
{
    return number >= 1 && number <= virtualDesktops.size();
}

void PinnedWindows::settle(const Assignments& assignments, const GoalPins& pins)
{
    for (const WindowID windowID : assignedWindows(assignments)) {
        const GoalID goalID = assignments.value(assignmentKey(windowID));
        if (const auto pin = pins.constFind(goalID); pin != pins.constEnd()) {
            m_settled.insert(windowID, {goalID, *pin});
            m_fromEarlierRun.insert(windowID);
        }
    }
}

void PinnedWindows::forget(const QList<GoalID>& goals)
{
    const auto isOfGoal = [&goals](const std::pair<const WindowID&, Place&>& each) {
        return goals.contains(each.second.goalID);
    };
    m_settled.removeIf(isOfGoal);
    m_sentInVain.removeIf(isOfGoal);
}

QList<DesktopMove> PinnedWindows::due(const QList<WindowItem>& windows, const GoalPins& pins,
                                      const QStringList& virtualDesktops,
                                      const PinnedDesktops& desktops)
{
    QList<DesktopMove> moves;
    for (const WindowItem& window : windows) {
        const auto settled = m_settled.find(window.id);
        // Where the goal is pinned no more, or no longer there, undo may bring both back.
        if (settled != m_settled.end() && window.goalID != settled->goalID &&
            pins.contains(settled->goalID)) {
            m_settled.erase(settled);
            m_sentInVain.remove(window.id);
        }
        const auto pin = window.goalID ? pins.constFind(*window.goalID) : pins.constEnd();
        if (pin == pins.constEnd() || !window.desktopNumber)
            continue;
        const NumberedDesktop desktop = desktops.desktopOf(*window.goalID, *pin);
        const int number = desktop.number;
        const bool isThere = isDesktopThere(number, virtualDesktops);
        // Nothing says whether it had been sent or waited for its desktop.
        if (!virtualDesktops.isEmpty() && m_fromEarlierRun.remove(window.id) && !isThere)
            m_settled.remove(window.id);
        if (!isThere)
            continue;
        const Place place{*window.goalID, *pin};
        if (m_settled.value(window.id) == place)
            continue;
        m_settled.insert(window.id, place);
        if (isGoingTo(number, window.id, *window.desktopNumber))
            continue;
        m_sent.insert(window.id, {.pin = *pin, .desktop = number, .from = *window.desktopNumber});
        moves.append({window, desktop});
    }
    return moves;
}

void PinnedWindows::renumber(const DesktopShift& shift)
{
    m_sent.removeIf([&](const std::pair<const WindowID&, Sending&>& each) {
        const auto& [windowID, sent] = each;
        if (shift.contains(sent.desktop))
            return false;
        // It has not arrived, and waits for the desktop that the pin means from now on.
        if (m_settled.value(windowID).pin == sent.pin)
            m_settled.remove(windowID);
        return true;
    });
    for (Sending& sent : m_sent) {
        sent.desktop = shift.value(sent.desktop);
        // Windows that are on all desktops, or on one without a number, still are.
        if (sent.from && *sent.from >= 1)
            sent.from =
                shift.contains(*sent.from) ? std::optional(shift.value(*sent.from)) : std::nullopt;
    }
}

bool PinnedWindows::isGoingTo(int desktop, WindowID windowID, int listed) const
{
    if (listed == everyVirtualDesktop)
        return true;
    const auto sent = m_sent.constFind(windowID);
    if (sent == m_sent.constEnd())
        return listed == desktop;
    // Until the desktop has done what it was asked, the list is late.
    return sent->desktop == desktop && (listed == desktop || listed == sent->from);
}

bool PinnedWindows::observe(const QList<WindowItem>& windows, Requests requests)
{
    bool isDueAgain = false;
    for (const WindowItem& window : windows) {
        const auto sent = m_sent.find(window.id);
        if (sent == m_sent.end())
            continue;
        if (window.desktopNumber == sent->desktop) {
            m_sentInVain.remove(window.id);
            m_sent.erase(sent);
        } else if (requests == Requests::sent && ++sent->missedPasses > passesToWait) {
            const Place place = m_settled.value(window.id);
            if (sent->from && window.desktopNumber == sent->from && place.pin == sent->pin &&
                m_sentInVain.value(window.id) != place) {
                m_sentInVain.insert(window.id, place);
                m_settled.remove(window.id);
                isDueAgain = true;
            }
            m_sent.erase(sent);
        }
    }
    return isDueAgain;
}

QList<WindowItem> PinnedWindows::asSent(QList<WindowItem> windows) const
{
    for (WindowItem& window : windows) {
        if (const auto sent = m_sent.constFind(window.id); sent != m_sent.constEnd())
            window.desktopNumber = sent->desktop;
    }
    return windows;
}

} // namespace kelpa
