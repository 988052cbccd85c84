#include "store/WindowRecall.h"

#include "model/WindowMemoryJson.h"
#include "store/board/BoardPersistence.h"
#include "windows/WindowReconciliation.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

/// How long the end of the program waits for a memory that is still being decoded. A thousand
/// windows take some 20 ms.
constexpr Scheduler::Duration finishLimit{2000};

struct DecodedMemory
{
    WindowMemory memory;
    /// How many windows the document has; the memory leaves out private ones.
    qsizetype storedCount = 0;
};

std::optional<DecodedMemory> decodedMemory(const QByteArray& document)
{
    const std::optional<RememberedWindows> windows = decodeRememberedWindows(document);
    if (!windows)
        return std::nullopt;
    return DecodedMemory{WindowMemory(*windows), windows->windows.size()};
}

} // namespace

WindowRecall::WindowRecall(const StoreState& state, Scheduler& scheduler, Handlers handlers)
    : m_state(state), m_scheduler(scheduler), m_handlers(std::move(handlers)), m_matching(scheduler)
{}

void WindowRecall::load(const std::optional<QByteArray>& document)
{
    m_storedAssignments = m_state.assignments;
    m_storedGoals = m_state.goalIDs();
    if (!document) {
        begin({}, 0);
        return;
    }
    m_loading = m_scheduler.inBackground(
        [document = *document](const std::stop_token&) { return decodedMemory(document); },
        [this](std::optional<DecodedMemory> decoded) {
            m_loading.reset();
            if (!decoded) {
                decoded.emplace();
                // What is switched off is to be emptied, whatever it is.
                if (!m_state.isRememberingWindows)
                    decoded->storedCount = 1;
                else if (!m_isEmptied)
                    m_handlers.copyAside();
            }
            begin(std::move(decoded->memory), decoded->storedCount);
        });
}

void WindowRecall::waitFor(Scheduler::Duration limit)
{
    if (m_loading)
        m_loading->waitFor(limit);
}

bool WindowRecall::isOutdated() const
{
    return m_isWorthStoring || m_storedAssignments != m_state.assignments ||
           m_storedGoals != m_state.goalIDs();
}

void WindowRecall::begin(WindowMemory memory, qsizetype storedCount)
{
    const bool wasOutdated = isOutdated();
    m_isLoaded = true;
    m_memory = std::move(memory);
    m_memory.prune(m_state.assignments, m_scheduler.calendarTime());
    // The file may have more than is to be kept: private windows that an earlier release did not
    // know as such, those of goals that are gone, or any at all although the memory is off.
    const qsizetype keptCount =
        isOn() ? m_memory.stored(m_state.assignments, m_state.goalIDs()).windows.size() : 0;
    const bool hasTooMuch = keptCount < storedCount;
    m_isWorthStoring = m_isWorthStoring || hasTooMuch;
    m_new = NewWindows(m_memory.newestWindow());
    m_storedNewest = m_memory.newestWindow();
    noteWindows();
    for (const WindowID windowID : std::exchange(m_settledBefore, {}))
        settle(windowID);
    if (!wasOutdated && !hasTooMuch)
        return;
    if (const std::vector<SettingsEntry> entries = entriesToSave(); !entries.empty())
        m_handlers.store(entries);
}

void WindowRecall::stop()
{
    m_burst.reset();
    m_matching.discard();
    noteSwitch();
}

void WindowRecall::startAnew()
{
    if (std::exchange(m_loading, nullptr))
        m_isLoaded = true;
    m_memory.forgetAll();
    m_new = {};
    m_noted.reset();
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
    m_noted = {m_state.windows, m_state.assignments, m_state.goalIDs()};
    const Scheduler::Time now = m_scheduler.now();
    forgetOffers();
    m_new.note(m_state.windows, now);
    if (m_memory.note(m_state.windows, m_new.ids(), m_state.assignments,
                      m_scheduler.calendarTime()))
        storeLater();
    m_new.noteTitles(m_memory, now);
    if (m_memory.takeForgottenPrivate())
        m_handlers.store(entriesToSave());
    if (!m_new.isEmpty() && m_memory.hasAbsent())
        matchLater();
    m_handlers.changed();
}

bool WindowRecall::isNoted() const
{
    return m_noted && isOn() && m_state.isScreenCaptureTrusted &&
           m_noted->windows == m_state.windows && m_noted->assignments == m_state.assignments &&
           m_noted->goalIDs == m_state.goalIDs();
}

void WindowRecall::forgetOffers()
{
    // Of a board that is closed.
    if (m_state.windows.isEmpty())
        return;
    m_offers.removeIf([this](const auto& each) {
        const bool isListed = windowWith(each.key(), m_state.windows) != nullptr;
        return !isListed || std::ranges::none_of(each.value(), [this](WindowID remembered) {
            return m_memory.find(remembered) != nullptr;
        });
    });
}

void WindowRecall::settle(WindowID windowID)
{
    if (!m_isLoaded)
        m_settledBefore.insert(windowID);
    m_new.settle(windowID);
    m_noted.reset();
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
    if (window == nullptr || window->goalID || m_state.answeredOffers.contains(windowID))
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

QSet<GoalID>
WindowRecall::goalsWithClosedWindows(const QHash<GoalID, QList<RememberedWindow>>& absent) const
{
    QSet<GoalID> goals;
    for (const auto& [goalID, windows] : absent.asKeyValueRange()) {
        if (std::ranges::any_of(windows, [this](const RememberedWindow& each) {
                return m_memory.hasBeenListed(each.windowID);
            }))
            goals.insert(goalID);
    }
    return goals;
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
    // A window that went back by itself and is taken out again was not asked about.
    for (const RecalledWindow& each : std::as_const(certain))
        m_offers.remove(each.windowID);
    if (!certain.isEmpty())
        m_handlers.recalled(certain);
    m_handlers.changed();
}

std::vector<SettingsEntry> WindowRecall::entriesToSave()
{
    // What is switched off is emptied without being known.
    const bool isEmptied = m_loading && !m_state.isRememberingWindows;
    if (!m_isLoaded && !isEmptied)
        return {};
    m_isEmptied = m_isEmptied || isEmptied;
    // Most saves are of todos; answered offers are published all the same.
    if (isNoted())
        m_handlers.changed();
    else
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
    if (isOutdated())
        waitFor(finishLimit);
    if (isOn()) {
        noteWindows();
        m_burst.reset();
        const bool isNewer = m_memory.newestWindow() != m_storedNewest;
        m_isWorthStoring = m_memory.settle(m_state.assignments) || isNewer || m_isWorthStoring;
    }
    if (const std::vector<SettingsEntry> entries = entriesToSave(); !entries.empty())
        m_handlers.store(entries);
}

} // namespace kelpa
