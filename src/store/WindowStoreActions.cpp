// Acting on the windows of other applications, and opening new ones: in the background, since the
// desktop may take its time.

#include "model/Text.h"
#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "store/WindowStoreParts.h"
#include "windows/WindowActions.h"
#include "windows/WindowReconciliation.h"

#include <QUrl>

#include <algorithm>
#include <chrono>
#include <utility>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// By then, an application that quits on request has usually closed its windows.
constexpr Scheduler::Duration refreshDelayAfterQuit = 400ms;

/// After that, nobody expects any more that going back ends on the board.
constexpr Scheduler::Duration longestGoingBack = 2s;

QString shownApplication(const WindowTraits& traits)
{
    return singleLine(traits.applicationName.isEmpty() ? traits.application
                                                       : traits.applicationName);
}

} // namespace

bool WindowStore::Parts::canAct() const
{
    return state.isAccessibilityTrusted && state.abilities.has(DesktopAbility::actions);
}

void WindowStore::focus(const WindowItem& window)
{
    const Update update(m_state.changes);
    m_parts->selection.select(
        BoardNavigationState::inside(TargetSelection::of(window.goalID), window.id));
    if (!m_parts->canAct())
        return;
    m_parts->activations.enqueue({window});
    // The search has found what it was for.
    if (windowWith(window.id, m_state.filteredWindows()) != nullptr)
        m_state.assign(m_state.searchText, QString(), Field::searchText);
}

void WindowStore::showAllWindows(GoalID goalID)
{
    const Update update(m_state.changes);
    if (!m_state.hasGoal(goalID))
        return;
    activateTarget(TargetSelection::goal(goalID), EnterWindowLayer::no);
    QList<WindowItem> windows;
    std::ranges::copy_if(std::as_const(m_state.windows), std::back_inserter(windows),
                         [&goalID](const WindowItem& each) { return each.goalID == goalID; });
    if (m_parts->canAct())
        m_parts->activations.enqueue(windows);
}

bool WindowStore::Parts::canArrange() const
{
    return canAct() && state.abilities.has(DesktopAbility::minimizing);
}

void WindowStore::Parts::publishWork()
{
    state.assign(state.canGoBack, !work.wayBack(state.windows).isEmpty(), Field::canGoBack);
}

bool WindowStore::canArrangeWindows() const
{
    return m_parts->canArrange();
}

bool WindowStore::canWorkOn(GoalID goalID) const
{
    return m_parts->canArrange() || m_parts->reachablePin(goalID);
}

void WindowStore::workOn(GoalID goalID)
{
    const Update update(m_state.changes);
    if (!m_state.hasGoal(goalID))
        return;
    activateTarget(TargetSelection::goal(goalID), EnterWindowLayer::no);
    if (!canWorkOn(goalID))
        return;
    WindowArrangement arrangement =
        arrangementFor(goalID, m_parts->pinned.asSent(m_parts->work.asRequested(m_state.windows)),
                       m_parts->reachablePin(goalID));
    if (arrangement.isEmpty())
        return;
    if (m_parts->canArrange())
        m_parts->work.note(arrangement);
    else
        arrangement.minimized.clear();
    m_parts->activations.enqueue(arrangement);
    m_parts->publishWork();
}

void WindowStore::goBack(std::function<void()> sent)
{
    const Update update(m_state.changes);
    if (!m_parts->canArrange())
        return;
    const WindowArrangement back = m_parts->work.goBack(m_state.windows);
    if (back.isEmpty())
        return;
    m_parts->activations.enqueue(back, [sent = std::move(sent), &scheduler = m_parts->scheduler,
                                        begin = m_parts->scheduler.now()] {
        if (sent && scheduler.now() - begin <= longestGoingBack)
            sent();
    });
    m_parts->publishWork();
}

void WindowStore::closeProcess(const WindowItem& window)
{
    const ProcessID process = window.processIdentifier;
    if (process == m_parts->platform.applications.currentProcess() ||
        !m_state.abilities.has(DesktopAbility::actions))
        return;
    if (m_state.abilities.has(DesktopAbility::quitting)) {
        m_parts->quits.add(
            [process, &applications = m_parts->platform.applications](const std::stop_token&) {
                if (applications.isRunning(process))
                    applications.requestQuit(process);
                return Done{};
            },
            [](Done) {});
    } else {
        m_parts->quits.add(
            [window, &accessibility = m_parts->platform.accessibility](const std::stop_token&) {
                requestClose(window, accessibility);
                return Done{};
            },
            [](Done) {});
    }
    m_parts->tasks.after(refreshDelayAfterQuit, [this] { refresh(); });
}

void WindowStore::createTerminal(GoalID goalID)
{
    m_parts->launch(LaunchableApplication::terminal, goalID, CopyKey::NoTerminalOpened);
}

void WindowStore::createChrome(GoalID goalID)
{
    m_parts->launch(LaunchableApplication::chrome, goalID, CopyKey::NoBrowserOpened);
}

void WindowStore::Parts::launch(LaunchableApplication application, GoalID goalID, CopyKey failure)
{
    if (!state.hasGoal(goalID))
        return;
    launches.launch(application, goalID, [this, failure] {
        // Nobody has to decide about this text.
        if (toast.offer() != Toast::Offer::none)
            return;
        const Update update(state.changes);
        toast.show(failure, Toast::Offer::none);
    });
}

void WindowStore::reopen(GoalID goalID, const QSet<WindowID>& remembered)
{
    for (const RememberedWindow& window : absentWindows(goalID)) {
        if (!remembered.contains(window.windowID))
            continue;
        m_parts->launches.reopen(
            window, goalID,
            {.begun = [this,
                       window](const Reopening& opened) { m_parts->noteReopening(window, opened); },
             .missed = [this, window, goalID] { m_parts->noteNoNewWindow(window, goalID); }});
    }
}

void WindowStore::Parts::noteReopening(const RememberedWindow& window, const Reopening& reopening)
{
    if (!reopening.launch)
        showTrouble(shownApplication(window.traits), ReopeningTrouble::Kind::notInstalled);
    else if (reopening.isDocumentGone)
        showTrouble(singleLine(QUrl(window.traits.document).fileName()),
                    ReopeningTrouble::Kind::documentGone);
}

void WindowStore::Parts::noteNoNewWindow(const RememberedWindow& window, GoalID goalID)
{
    // Meanwhile, a person may have forgotten it, or found it by another window.
    if (state.assignments.value(assignmentKey(window.windowID)) == goalID)
        showTrouble(shownApplication(window.traits), ReopeningTrouble::Kind::noNewWindow);
}

void WindowStore::Parts::showTrouble(const QString& name, ReopeningTrouble::Kind kind)
{
    const Update update(state.changes);
    toast.show(ReopeningTrouble{name, kind}, Toast::Offer::none);
}

void WindowStore::Parts::takeLaunchedWindow(GoalID goalID, WindowID windowID,
                                            std::optional<WindowID> remembered)
{
    const Update update(state.changes);
    const bool isAbsent = remembered && windowWith(*remembered, state.windows) == nullptr &&
                          state.hasGoal(goalID) &&
                          state.assignments.value(assignmentKey(*remembered)) == goalID;
    // The person launched an application, which is no step: undo leaves its window where it is.
    if (isAbsent)
        place({windowID, *remembered, goalID});
    if (isAbsent || setAssignment(windowID, goalID))
        steps.saveState();
    selection.activate(TargetSelection::goal(goalID), EnterWindowLayer::no);
    followToPin(goalID, windowID);
}

/// The window was opened on the present desktop, to be used at once: nobody is to be left there.
void WindowStore::Parts::followToPin(GoalID goalID, WindowID windowID)
{
    const std::optional<NumberedDesktop> pin = reachablePin(goalID);
    if (!pin)
        return;
    sendToPins();
    const QList<WindowItem> windows = pinned.asSent(state.windows);
    const WindowItem* const window = windowWith(windowID, windows);
    const bool isGoing = window != nullptr && window->goalID == goalID &&
                         window->desktopNumber == pin->number &&
                         windowWith(windowID, state.windows)->desktopNumber != pin->number;
    if (isGoing)
        activations.enqueue(WindowArrangement{.raised = {*window}, .desktop = pin});
}

} // namespace kelpa
