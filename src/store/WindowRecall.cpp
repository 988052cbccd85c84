#include "store/WindowRecall.h"

#include "store/board/BoardPersistence.h"
#include "windows/WindowReconciliation.h"

#include <algorithm>
#include <utility>

namespace kelpa {

WindowRecall::WindowRecall(const StoreState& state, Scheduler& scheduler, Handlers handlers)
    : m_state(state), m_scheduler(scheduler), m_handlers(std::move(handlers)), m_matching(scheduler)
{}

void WindowRecall::load(const RememberedWindows& windows)
{
    m_isLoaded = true;
    if (isOn()) {
        m_memory = WindowMemory(windows);
        m_memory.prune(m_state.assignments, m_scheduler.calendarTime());
        m_new = NewWindows(windows.newestWindow);
        m_storedNewest = windows.newestWindow;
    }
    m_storedAssignments = m_state.assignments;
    m_storedGoals = m_state.goalIDs();
    noteWindows();
}

void WindowRecall::stop()
{
    m_burst.reset();
    m_matching.discard();
    noteSwitch();
}

void WindowRecall::startAnew()
{
    m_memory = {};
    m_new = {};
    m_offers.clear();
    noteSwitch();
    // Windows that are there already are nothing new.
    for (const WindowItem& window : m_state.windows)
        m_new.settle(window.id);
}

void WindowRecall::noteSwitch()
{
    m_isWorthStoring = true;
    noteWindows();
    m_handlers.changed();
}

void WindowRecall::noteWindows()
{
    if (!isOn())
        return;
    // Windows that may not be read are not gone.
    if (!m_state.isScreenCaptureTrusted) {
        m_handlers.changed();
        return;
    }
    const Scheduler::Time now = m_scheduler.now();
    m_new.note(m_state.windows, now);
    if (m_memory.note(m_state.windows, m_new.ids(), m_state.assignments,
                      m_scheduler.calendarTime()))
        storeLater();
    m_new.noteTitles(m_memory, now);
    if (!m_new.isEmpty() && m_memory.hasAbsent())
        matchLater();
    m_handlers.changed();
}

void WindowRecall::settle(WindowID windowID)
{
    m_new.settle(windowID);
    m_offers.remove(windowID);
}

std::optional<WindowID> WindowRecall::counterpart(WindowID windowID, GoalID goalID) const
{
    return m_memory.counterpart(windowID, goalID, m_state.assignments);
}

void WindowRecall::replace(WindowID windowID, WindowID remembered)
{
    m_memory.inherit(windowID, remembered);
    settle(windowID);
}

QList<RecalledWindow> WindowRecall::offersOf(WindowID windowID) const
{
    const WindowItem* const window = windowWith(windowID, m_state.windows);
    if (window == nullptr || window->goalID)
        return {};
    QList<RecalledWindow> offers;
    for (const WindowID remembered : m_offers.value(windowID)) {
        const auto goalID = m_state.assignments.constFind(assignmentKey(remembered));
        const bool isAbsent = windowWith(remembered, m_state.windows) == nullptr;
        if (isAbsent && goalID != m_state.assignments.constEnd() && m_state.hasGoal(*goalID) &&
            std::ranges::find(offers, *goalID, &RecalledWindow::goalID) == offers.end())
            offers.append({windowID, remembered, *goalID});
    }
    return offers;
}

QHash<WindowID, QList<RecalledWindow>> WindowRecall::offers() const
{
    QHash<WindowID, QList<RecalledWindow>> offers;
    if (!isOn())
        return offers;
    for (const auto& [windowID, _] : m_offers.asKeyValueRange()) {
        if (const QList<RecalledWindow> ofWindow = offersOf(windowID); !ofWindow.isEmpty())
            offers.insert(windowID, ofWindow);
    }
    return offers;
}

QHash<GoalID, QList<RememberedWindow>> WindowRecall::absentWindows() const
{
    QHash<GoalID, QList<RememberedWindow>> windows;
    if (!isOn() || !m_state.isScreenCaptureTrusted)
        return windows;
    for (const AbsentWindow& absent : m_memory.absent(m_state.assignments, m_state.goalIDs()))
        windows[absent.goalID].append(*m_memory.find(absent.windowID));
    return windows;
}

void WindowRecall::matchLater()
{
    if (!m_burst)
        m_burst = m_scheduler.after(burstTime, [this] { match(); });
}

void WindowRecall::match()
{
    m_burst.reset();
    if (m_matching.isTaken()) {
        matchLater();
        return;
    }
    const QList<AbsentWindow> absent = m_memory.absent(m_state.assignments, m_state.goalIDs());
    const QList<NewWindow> newWindows = m_new.toMatch(m_memory);
    if (absent.isEmpty() || newWindows.isEmpty())
        return;
    m_matching.start(
        [absent, newWindows](const std::stop_token&) { return matchedWindows(absent, newWindows); },
        [this, absent, newWindows](const std::optional<WindowMatches>& matches) {
            if (!matches)
                return;
            // Meanwhile, the desktop or the board may have changed.
            if (absent == m_memory.absent(m_state.assignments, m_state.goalIDs()) &&
                newWindows == m_new.toMatch(m_memory))
                take(*matches);
            else
                matchLater();
        },
        WorkPriority::normal);
}

void WindowRecall::take(const WindowMatches& matches)
{
    QList<RecalledWindow> certain;
    for (const WindowID windowID : m_new.ids()) {
        const auto match = matches.constFind(windowID);
        if (match == matches.constEnd())
            m_offers.remove(windowID);
        else
            m_offers.insert(windowID, match->windows);
        for (const RecalledWindow& offer : offersOf(windowID)) {
            if (match->certainty == MatchCertainty::certain)
                certain.append(offer);
        }
    }
    std::ranges::sort(certain, {}, &RecalledWindow::windowID);
    if (!certain.isEmpty())
        m_handlers.recalled(certain);
    m_handlers.changed();
}

std::vector<SettingsEntry> WindowRecall::entriesToSave()
{
    if (!m_isLoaded)
        return {};
    noteWindows();
    const QSet<GoalID> goals = m_state.goalIDs();
    const bool hasChanged =
        isOn() && (m_storedAssignments != m_state.assignments || m_storedGoals != goals);
    if (!m_isWorthStoring && !hasChanged)
        return {};
    m_isWorthStoring = false;
    m_storing.reset();
    m_storedAssignments = m_state.assignments;
    m_storedGoals = goals;
    m_storedNewest = m_memory.newestWindow();
    if (!isOn())
        return {windowMemoryEntry({})};
    m_memory.prune(m_state.assignments, m_scheduler.calendarTime());
    return {windowMemoryEntry(m_memory.stored(m_state.assignments, goals))};
}

void WindowRecall::storeLater()
{
    m_isWorthStoring = true;
    if (!m_storing)
        m_storing = m_scheduler.after(storingDelay, [this] { m_handlers.store(entriesToSave()); });
}

void WindowRecall::finish()
{
    if (!isOn())
        return;
    noteWindows();
    m_burst.reset();
    const bool isNewer = m_memory.newestWindow() != m_storedNewest;
    m_isWorthStoring = m_memory.settle(m_state.assignments) || isNewer || m_isWorthStoring;
    if (const std::vector<SettingsEntry> entries = entriesToSave(); !entries.empty())
        m_handlers.store(entries);
}

} // namespace kelpa
