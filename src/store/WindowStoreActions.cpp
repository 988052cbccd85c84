// Acting on the windows of other applications, and opening new ones: in the background, since the
// desktop may take its time.

#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "store/WindowStoreParts.h"
#include "windows/WindowActions.h"

#include <algorithm>
#include <chrono>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// By then, an application that quits on request has usually closed its windows.
constexpr Scheduler::Duration refreshDelayAfterQuit = 400ms;

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
    if (m_state.hasGoal(goalID))
        m_parts->launches.launch(LaunchableApplication::terminal, goalID);
}

void WindowStore::createChrome(GoalID goalID)
{
    if (m_state.hasGoal(goalID))
        m_parts->launches.launch(LaunchableApplication::chrome, goalID);
}

void WindowStore::Parts::takeLaunchedWindow(GoalID goalID, WindowID windowID)
{
    const Update update(state.changes);
    // The person launched an application, which is no step: undo leaves its window where it is.
    if (setAssignment(windowID, goalID))
        steps.saveState();
    selection.activate(TargetSelection::goal(goalID), EnterWindowLayer::no);
}

} // namespace kelpa
