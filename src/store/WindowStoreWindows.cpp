// The windows of the desktop and their assignments.

#include "platform/AbilityReport.h"
#include "store/WindowStoreParts.h"
#include "windows/WindowReconciliation.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace kelpa {

void WindowStore::refresh()
{
    const Update update(m_state.changes);
    m_parts->publish(m_parts->permissions.granted());
    m_parts->isPassAhead = false;
    if (m_state.isScreenCaptureTrusted) {
        m_parts->passes.runNow();
    } else {
        m_parts->passes.cancel();
        m_parts->finishPass({});
    }
}

void WindowStore::refreshInBackground()
{
    m_parts->startPass(WorkPriority::utility);
}

void WindowStore::Parts::startPass(WorkPriority priority)
{
    if (passes.isUnderWay())
        return;
    const Update update(state.changes);
    publish(permissions.granted());
    passes.runInBackground(state.isScreenCaptureTrusted ? DiscoveryPasses::ReadAccess::granted
                                                        : DiscoveryPasses::ReadAccess::denied,
                           priority);
}

void WindowStore::noteWindowsChangedOnDesktop()
{
    m_parts->passes.requestRerun();
    refreshInBackground();
}

void WindowStore::discoverAhead()
{
    if (m_parts->passes.isUnderWay())
        return;
    m_parts->isPassAhead = true;
    m_parts->passes.runInBackground(DiscoveryPasses::ReadAccess::granted, WorkPriority::normal);
}

void WindowStore::awaitWindows(Scheduler::Duration limit)
{
    const Scheduler::Time start = m_parts->scheduler.now();
    m_parts->recall.waitFor(limit);
    const auto waited =
        std::chrono::duration_cast<Scheduler::Duration>(m_parts->scheduler.now() - start);
    m_parts->passes.waitFor(std::max(limit - waited, Scheduler::Duration::zero()));
}

void WindowStore::Parts::publishAndFinishPass(const WindowDiscoveryBatch& discovered)
{
    const Update update(state.changes);
    publish(permissions.granted());
    finishPass(state.isScreenCaptureTrusted ? discovered : WindowDiscoveryBatch());
}

void WindowStore::Parts::finishPass(const WindowDiscoveryBatch& discovered)
{
    const Update update(state.changes);
    migrateLegacyTerminalAssignments(discovered.windows);
    takeDesktops(discovered);
    if (state.assignWindows(discovered.windows))
        recall.noteWindows();
    if (pinned.observe(state.windows, activations.isIdle() ? PinnedWindows::Requests::sent
                                                           : PinnedWindows::Requests::underWay))
        sendToPins();
    work.observe(state.windows, activations.isIdle() ? WorkContext::Requests::sent
                                                     : WorkContext::Requests::underWay);
    publishWork();
    selection.reconcileWithWindows();
    launches.finishPass();
    previewCaptures.forgetUnlisted();
    captureFirst();
}

void WindowStore::Parts::migrateLegacyTerminalAssignments(const QList<WindowItem>& discovered)
{
    std::optional<Assignments> migrated =
        migratedTerminalAssignments(state.assignments, discovered, state.goalIDs());
    if (!migrated)
        return;
    state.assignments = *std::move(migrated);
    steps.saveState();
}

void WindowStore::assign(WindowID windowID, std::optional<GoalID> to)
{
    const Update update(m_state.changes);
    if (m_parts->setAssignment(windowID, to))
        m_parts->steps.saveStep();
}

bool WindowStore::Parts::setAssignment(WindowID windowID, std::optional<GoalID> to)
{
    const qsizetype index = indexOf(state.windows, windowID);
    if (index < 0 || (to && !state.hasGoal(*to)) || state.windows.at(index).goalID == to)
        return false;
    // What a person puts into a goal that had such a window is that window.
    if (const auto former = to ? recall.counterpart(windowID, *to) : std::nullopt)
        replaceRemembered(windowID, *former);
    answerOffer(windowID);
    state.windows[index].goalID = to;
    state.markChanged(Field::windows);
    if (to)
        state.assignments.insert(assignmentKey(windowID), *to);
    else
        state.assignments.remove(assignmentKey(windowID));
    selection.reconcileWithWindows();
    return true;
}

void WindowStore::createGoal(const QString& title, WindowID windowID)
{
    const Update update(m_state.changes);
    const std::optional<GoalID> goalID = m_parts->addGoal(title);
    if (!goalID)
        return;
    m_parts->setAssignment(windowID, goalID);
    m_parts->steps.saveStep();
}

bool WindowStore::assign(const QSet<WindowID>& windowIDs, GoalID to)
{
    const Update update(m_state.changes);
    if (windowIDs.isEmpty() || !m_state.hasGoal(to))
        return false;
    QList<WindowItem> windows = m_state.windows;
    qsizetype found = 0;
    for (WindowItem& window : windows) {
        if (!windowIDs.contains(window.id))
            continue;
        window.goalID = to;
        ++found;
    }
    if (found != windowIDs.size())
        return false;
    if (!m_state.assign(m_state.windows, std::move(windows), Field::windows))
        return true;
    // In an order of their own, so that alike windows always take the same places.
    QList<WindowID> ordered(windowIDs.begin(), windowIDs.end());
    std::ranges::sort(ordered);
    for (const WindowID windowID : std::as_const(ordered)) {
        if (const auto former = m_parts->recall.counterpart(windowID, to))
            m_parts->replaceRemembered(windowID, *former);
        m_parts->answerOffer(windowID);
        m_state.assignments.insert(assignmentKey(windowID), to);
    }
    m_parts->selection.reconcileWithWindows();
    m_parts->steps.saveStep();
    return true;
}

void WindowStore::Parts::replaceRemembered(WindowID windowID, WindowID remembered)
{
    state.assignments.remove(assignmentKey(remembered));
    recall.replace(windowID, remembered);
}

void WindowStore::Parts::answerOffer(WindowID windowID)
{
    recall.settle(windowID);
    if (recall.hasOffer(windowID))
        state.answeredOffers.insert(windowID);
}

void WindowStore::Parts::place(const RecalledWindow& window)
{
    replaceRemembered(window.windowID, window.remembered);
    answerOffer(window.windowID);
    state.assignments.insert(assignmentKey(window.windowID), window.goalID);
    state.assignWindows(state.windows);
    selection.reconcileWithWindows();
}

void WindowStore::Parts::takeRecalledWindows(const QList<RecalledWindow>& windows)
{
    const Update update(state.changes);
    for (const RecalledWindow& window : windows)
        place(window);
    steps.saveAnnounced(ReturnedWindows{windows.size()});
}

void WindowStore::acceptRecall(WindowID windowID, WindowID remembered)
{
    const Update update(m_state.changes);
    for (const RecalledWindow& offer : recallOffers(windowID)) {
        if (offer.remembered != remembered)
            continue;
        m_parts->place(offer);
        m_parts->steps.saveStep();
        return;
    }
}

void WindowStore::declineRecall(WindowID windowID)
{
    const Update update(m_state.changes);
    if (recallOffers(windowID).isEmpty())
        return;
    m_parts->answerOffer(windowID);
    m_parts->steps.saveAnnounced(CopyKey::OfferDeclined);
    m_parts->publishMemory();
}

void WindowStore::forgetWindows(const QSet<WindowID>& remembered)
{
    const Update update(m_state.changes);
    qsizetype forgotten = 0;
    for (const WindowID windowID : remembered) {
        if (windowWith(windowID, m_state.windows) == nullptr)
            forgotten += m_state.assignments.remove(assignmentKey(windowID));
    }
    if (forgotten > 0)
        m_parts->steps.saveAnnounced(ForgottenWindows{forgotten});
}

void WindowStore::startObserving()
{
    if (m_parts->observation)
        return;
    // The first pass may still be under way on a slow window server, and reports what there is;
    // what has changed since it began is for the next one.
    if (m_parts->isPassAhead)
        m_parts->passes.requestRerun();
    else
        refresh();
    m_parts->observation.emplace(
        m_parts->platform.windowServer, m_parts->scheduler,
        DesktopObservation::Handlers{
            .refresh = [this] { refreshInBackground(); },
            .refreshPreviews = [this] { refreshPreviews(m_parts->scheduler.now()); },
            .windowsChanged = [this] { noteWindowsChangedOnDesktop(); }});
    m_parts->abilityWatch =
        m_parts->platform.abilities.watchAbilities([this] { m_parts->publishAbilities(); });
    m_parts->publishAbilities();
    refreshPreviews(m_parts->scheduler.now());
}

bool WindowStore::isObserving() const
{
    return m_parts->observation.has_value();
}

void WindowStore::stopObserving()
{
    const Update update(m_state.changes);
    m_parts->observation.reset();
    m_parts->abilityWatch.reset();
    m_parts->previewCaptures.cancel();
    m_parts->passes.cancel();
    m_parts->isPassAhead = false;
    m_state.assign(m_state.windows, {}, Field::windows);
    m_state.assign(m_state.virtualDesktops, {}, Field::pins);
    m_state.assign(m_state.unofferedDesktops, {}, Field::pins);
    m_state.assign(m_state.previews, {}, Field::previews);
    m_parts->previewCaptures.forgetUnlisted();
    m_parts->selection.reconcileWithWindows();
    // The cancelled pass will not report any more.
    m_parts->launches.finishPass();
}

} // namespace kelpa
