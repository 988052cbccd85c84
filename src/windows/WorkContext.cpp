#include "windows/WorkContext.h"

#include "windows/WindowDiscovery.h"

#include <QSet>
#include <QString>

#include <algorithm>
#include <iterator>

namespace kelpa {

namespace {

/// A virtual desktop: that of a pin, or the one of that name, or the present one.
struct Workplace
{
    std::optional<int> pin{};
    std::optional<QString> name{};

    bool has(const WindowItem& window) const
    {
        if (!pin)
            return window.virtualDesktop == name;
        return window.desktopNumber == pin || window.desktopNumber == everyVirtualDesktop;
    }
};

/// The name of the virtual desktop to work on; absent for the present one.
std::optional<QString> workplaceOf(const QList<WindowItem>& ofGoal)
{
    const bool isHere = std::ranges::any_of(
        ofGoal, [](const WindowItem& window) { return !window.virtualDesktop; });
    return isHere ? std::nullopt : ofGoal.constFirst().virtualDesktop;
}

/// `windows`, and those whose dialogs they are.
QSet<WindowID> withOwners(const QList<WindowItem>& windows, const QList<WindowItem>& listed)
{
    QSet<WindowID> all;
    for (const WindowItem& window : windows) {
        const WindowItem* each = &window;
        // A desktop that names the owners in a circle must not keep the loop.
        while (each != nullptr && !all.contains(each->id)) {
            all.insert(each->id);
            each = each->dialogOf ? windowWith(*each->dialogOf, listed) : nullptr;
        }
    }
    return all;
}

bool isDialogOfListed(const WindowItem& window, const QSet<WindowID>& listed)
{
    return window.dialogOf && listed.contains(*window.dialogOf);
}

} // namespace

WindowArrangement arrangementFor(GoalID goalID, const QList<WindowItem>& windows,
                                 const std::optional<NumberedDesktop>& pin)
{
    QList<WindowItem> ofGoal;
    std::ranges::copy_if(windows, std::back_inserter(ofGoal),
                         [&goalID](const WindowItem& each) { return each.goalID == goalID; });
    WindowArrangement arrangement;
    arrangement.desktop = pin;
    if (ofGoal.isEmpty())
        return arrangement;
    const Workplace place =
        pin ? Workplace{.pin = pin->number} : Workplace{.name = workplaceOf(ofGoal)};
    std::ranges::copy_if(ofGoal, std::back_inserter(arrangement.raised),
                         [&place](const WindowItem& each) { return place.has(each); });
    if (arrangement.raised.isEmpty())
        return arrangement;
    const QSet<WindowID> staying = withOwners(arrangement.raised, windows);
    QSet<WindowID> listed;
    for (const WindowItem& each : windows)
        listed.insert(each.id);
    const auto isInTheWay = [&](const WindowItem& each) {
        // On the present desktop, a window that does not show is not in the way.
        const bool isThere = place.has(each) && (each.virtualDesktop || each.isOnScreen);
        return isThere && !each.isMinimized && each.goalID != goalID &&
               !staying.contains(each.id) && !isDialogOfListed(each, listed);
    };
    std::ranges::copy_if(windows, std::back_inserter(arrangement.minimized), isInTheWay);
    return arrangement;
}

void WorkContext::note(const WindowArrangement& arrangement)
{
    for (const WindowItem& window : arrangement.raised)
        noteChange(window, false);
    for (const WindowItem& window : arrangement.minimized)
        noteChange(window, true);
    for (const WindowItem& window : arrangement.restored)
        noteChange(window, false);
}

void WorkContext::noteChange(const WindowItem& window, bool isMinimized)
{
    const auto known = m_changes.find(window.id);
    const bool isNow = known != m_changes.end() ? known->isMinimized : window.isMinimized;
    if (isNow == isMinimized)
        return;
    const bool was = known != m_changes.end() ? known->wasMinimized : window.isMinimized;
    // Also where that is the state that it had: until the desktop has done it, the list is late.
    m_changes.insert(window.id, {.wasMinimized = was, .isMinimized = isMinimized});
}

WindowArrangement WorkContext::goBack(const QList<WindowItem>& windows)
{
    WindowArrangement back = wayBack(windows);
    m_changes.removeIf([](const std::pair<const WindowID&, Change&>& each) {
        return each.second.wasMinimized != each.second.isMinimized;
    });
    // Until the desktop has done it, the list is late.
    for (const WindowItem& window : back.minimized)
        m_changes.insert(window.id, {.wasMinimized = true, .isMinimized = true});
    for (const WindowItem& window : back.restored)
        m_changes.insert(window.id, {.wasMinimized = false, .isMinimized = false});
    return back;
}

void WorkContext::observe(const QList<WindowItem>& windows, Requests requests)
{
    for (const WindowItem& window : windows) {
        const auto change = m_changes.find(window.id);
        if (change == m_changes.end())
            continue;
        const bool isAsRequested = window.isMinimized == change->isMinimized;
        if (!isAsRequested && !change->isDone) {
            if (requests == Requests::sent && ++change->missedPasses > passesToWait)
                m_changes.erase(change);
            continue;
        }
        const bool isMoved = change->bounds && !framesMatch(*change->bounds, window.bounds);
        if (!isAsRequested || isMoved || change->wasMinimized == change->isMinimized) {
            m_changes.erase(change);
            continue;
        }
        change->isDone = true;
        if (!window.isMinimized && !change->bounds)
            change->bounds = window.bounds;
    }
}

QList<WindowItem> WorkContext::asRequested(QList<WindowItem> windows) const
{
    for (WindowItem& window : windows) {
        const auto change = m_changes.constFind(window.id);
        if (change == m_changes.constEnd() || change->isDone)
            continue;
        window.isMinimized = change->isMinimized;
        window.isOnScreen = !change->isMinimized;
    }
    return windows;
}

WindowArrangement WorkContext::wayBack(const QList<WindowItem>& windows) const
{
    WindowArrangement back;
    for (const WindowItem& window : windows) {
        const auto change = m_changes.constFind(window.id);
        if (change != m_changes.constEnd() && change->wasMinimized != change->isMinimized)
            (change->wasMinimized ? back.minimized : back.restored).append(window);
    }
    return back;
}

} // namespace kelpa
