#include "store/WindowRecall.h"

#include "store/board/BoardPersistence.h"
#include "windows/WindowReconciliation.h"

#include <algorithm>
#include <utility>

namespace kelpa {

WindowRecall::WindowRecall(const StoreState& state, Scheduler& scheduler, Recalled recalled,
                           Store store)
    : m_state(state), m_scheduler(scheduler), m_recalled(std::move(recalled)),
      m_store(std::move(store)), m_matching(scheduler)
{}

void WindowRecall::load(const RememberedWindows& windows, bool isOn)
{
    m_isLoaded = true;
    m_isOn = isOn;
    if (isOn) {
        m_memory = WindowMemory(windows);
        m_memory.prune(m_state.assignments, m_scheduler.calendarTime());
        m_new = NewWindows(windows.newestWindow);
        m_storedNewest = windows.newestWindow;
    }
    m_storedAssignments = m_state.assignments;
    m_storedGoals = m_state.goalIDs();
    noteWindows();
}

std::vector<SettingsEntry> WindowRecall::setOn(bool isOn)
{
    m_isOn = isOn;
    m_memory = {};
    m_new = {};
    m_offers.clear();
    m_burst.reset();
    m_matching.discard();
    // Windows that are there already are nothing new.
    noteWindows();
    for (const WindowItem& window : m_state.windows)
        m_new.settle(window.id);
    m_isWorthStoring = true;
    std::vector<SettingsEntry> entries{{rememberingWindowsKey, isOn}};
    for (SettingsEntry& entry : entriesToSave())
        entries.push_back(std::move(entry));
    return entries;
}

void WindowRecall::noteWindows()
{
    if (!m_isLoaded || !m_isOn)
        return;
    const Scheduler::Time now = m_scheduler.now();
    m_new.note(m_state.windows, now);
    if (m_memory.note(m_state.windows, m_new.ids(), m_state.assignments,
                      m_scheduler.calendarTime()))
        storeLater();
    m_new.noteTitles(m_memory, now);
    if (!m_new.isEmpty() && m_memory.hasAbsent())
        matchLater();
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

QList<RecalledWindow> WindowRecall::offers(WindowID windowID) const
{
    const WindowItem* const window = windowWith(windowID, m_state.windows);
    if (window == nullptr || window->goalID)
        return {};
    QList<RecalledWindow> offers;
    for (const WindowID remembered : m_offers.value(windowID)) {
        const auto goalID = m_state.assignments.constFind(assignmentKey(remembered));
        const bool isAbsent = windowWith(remembered, m_state.windows) == nullptr;
        if (isAbsent && goalID != m_state.assignments.constEnd() && m_state.hasGoal(*goalID))
            offers.append({windowID, remembered, *goalID});
    }
    return offers;
}

QList<RememberedWindow> WindowRecall::absentWindows(GoalID goalID) const
{
    QList<RememberedWindow> windows;
    for (const AbsentWindow& absent : m_memory.absent(m_state.assignments, {goalID}))
        windows.append(*m_memory.find(absent.windowID));
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
        for (const RecalledWindow& offer : offers(windowID)) {
            if (match->certainty == MatchCertainty::certain)
                certain.append(offer);
        }
    }
    std::ranges::sort(certain, {}, &RecalledWindow::windowID);
    if (!certain.isEmpty())
        m_recalled(certain);
}

std::vector<SettingsEntry> WindowRecall::entriesToSave()
{
    if (!m_isLoaded)
        return {};
    noteWindows();
    const QSet<GoalID> goals = m_state.goalIDs();
    if (!m_isWorthStoring && m_storedAssignments == m_state.assignments && m_storedGoals == goals)
        return {};
    m_isWorthStoring = false;
    m_storing.reset();
    m_storedAssignments = m_state.assignments;
    m_storedGoals = goals;
    m_storedNewest = m_memory.newestWindow();
    m_memory.prune(m_state.assignments, m_scheduler.calendarTime());
    return {windowMemoryEntry(m_memory.stored(m_state.assignments, goals))};
}

void WindowRecall::storeLater()
{
    m_isWorthStoring = true;
    if (!m_storing)
        m_storing = m_scheduler.after(storingDelay, [this] { m_store(entriesToSave()); });
}

void WindowRecall::finish()
{
    if (!m_isLoaded || !m_isOn)
        return;
    noteWindows();
    m_burst.reset();
    const bool isNewer = m_memory.newestWindow() != m_storedNewest;
    m_isWorthStoring = m_memory.settle(m_state.assignments) || isNewer || m_isWorthStoring;
    if (const std::vector<SettingsEntry> entries = entriesToSave(); !entries.empty())
        m_store(entries);
}

} // namespace kelpa
