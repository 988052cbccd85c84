// Acting on the windows of other applications, and opening new ones. What the desktop may take its
// time over runs in the background; the board does not wait for it.

#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "store/WindowStoreParts.h"

#include <algorithm>
#include <chrono>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// An application that was asked to quit has closed its windows by then, if it does so at all.
constexpr Scheduler::Duration refreshDelayAfterQuit = 400ms;

} // namespace

void WindowStore::focus(const WindowItem& window)
{
    const Update update(m_changes);
    publishNavigation(BoardNavigationState::inside(TargetSelection::of(window.goalID), window.id));
    if (m_isAccessibilityTrusted)
        m_parts->bringForwardQueue.append({window});
}

void WindowStore::showAllWindows(GoalID goalID)
{
    const Update update(m_changes);
    if (!hasGoal(goalID))
        return;
    activateTarget(TargetSelection::goal(goalID), EnterWindowLayer::no);
    QList<WindowItem> windows;
    std::ranges::copy_if(m_windows, std::back_inserter(windows),
                         [&goalID](const WindowItem& each) { return each.goalID == goalID; });
    if (m_isAccessibilityTrusted)
        m_parts->bringForwardQueue.append(windows);
}

void WindowStore::closeProcess(const WindowItem& window)
{
    const ProcessID process = window.processIdentifier;
    if (process == m_parts->platform.applications.currentProcess())
        return;
    m_parts->tasks.inBackground(
        [process, &applications = m_parts->platform.applications](const std::stop_token&) {
            if (applications.isRunning(process))
                applications.requestQuit(process);
            return Done{};
        },
        [](Done) {});
    m_parts->tasks.after(refreshDelayAfterQuit, [this] { refresh(); });
}

void WindowStore::createTerminal(GoalID goalID)
{
    if (hasGoal(goalID))
        m_parts->launches.launch(LaunchableApplication::terminal, goalID);
}

void WindowStore::createChrome(GoalID goalID)
{
    if (hasGoal(goalID))
        m_parts->launches.launch(LaunchableApplication::chrome, goalID);
}

void WindowStore::takeNewWindow(GoalID goalID, WindowID windowID)
{
    const Update update(m_changes);
    // The launch was the person's, not what came of it: undoing leaves it where it is.
    if (setAssignment(windowID, goalID))
        saveState();
    activateTarget(TargetSelection::goal(goalID), EnterWindowLayer::no);
}

} // namespace kelpa
