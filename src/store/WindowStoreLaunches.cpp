// Opening a new window for a goal, and giving it to the goal when it appears.

#include "platform/Applications.h"
#include "store/WindowStore.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// How often and how many times the desktop is looked at for the window of a launched application.
constexpr Scheduler::Duration newWindowPollInterval = 250ms;
constexpr int newWindowPolls = 20;

} // namespace

void WindowStore::createTerminal(GoalID goalID)
{
    createWindow(LaunchableApplication::terminal, goalID);
}

void WindowStore::createChrome(GoalID goalID)
{
    createWindow(LaunchableApplication::chrome, goalID);
}

void WindowStore::createWindow(LaunchableApplication application, GoalID goalID)
{
    if (!hasGoal(goalID))
        return;
    QSet<WindowID> before;
    for (const WindowItem& window : std::as_const(m_windows))
        before.insert(window.id);
    // Kept before anything is started, so that it hears of what other launches get meanwhile.
    const AwaitedNumber number = ++m_lastAwaitedNumber;
    m_awaitedWindows.emplace(number, AwaitedWindow{goalID, before, newWindowPolls});
    m_tasks.inBackground([application, &applications = m_platform.applications](
                             const std::stop_token&) { return applications.launch(application); },
                         [this, number](const std::optional<Launch>& launch) {
                             if (!launch) {
                                 m_awaitedWindows.erase(number);
                                 return;
                             }
                             m_awaitedWindows.at(number).launch = *launch;
                             lookForAwaitedWindowLater(number);
                             if (!launch->bundleIdentifier)
                                 identifyLaunch(number);
                         });
}

void WindowStore::identifyLaunch(AwaitedNumber number)
{
    m_tasks.inBackground(
        [launch = m_awaitedWindows.at(number).launch, &applications = m_platform.applications](
            const std::stop_token& stop) { return applications.identifierOf(launch, stop); },
        [this, number](const std::optional<QString>& identifier) {
            const auto awaited = m_awaitedWindows.find(number);
            if (awaited != m_awaitedWindows.end())
                awaited->second.launch.bundleIdentifier = identifier;
        });
}

void WindowStore::lookForAwaitedWindowLater(AwaitedNumber number)
{
    m_tasks.after(newWindowPollInterval, [this, number] { lookForAwaitedWindow(number); });
}

void WindowStore::lookForAwaitedWindow(AwaitedNumber number)
{
    const Update update(*this);
    // Where looks take longer than the time between them, each would end the one before it, and
    // none would ever show anything.
    const bool isUnderWay = std::ranges::any_of(
        m_awaitedWindows, [](const auto& each) { return each.second.isLooking; });
    m_awaitedWindows.at(number).isLooking = true;
    if (!isUnderWay)
        refresh();
}

void WindowStore::finishLooks()
{
    std::vector<AwaitedNumber> looked;
    for (auto& [number, awaited] : m_awaitedWindows) {
        if (std::exchange(awaited.isLooking, false))
            looked.push_back(number);
    }
    for (const AwaitedNumber number : looked)
        findAwaitedWindow(number);
}

void WindowStore::findAwaitedWindow(AwaitedNumber number)
{
    const AwaitedWindow& awaited = m_awaitedWindows.at(number);
    if (const std::optional<WindowID> windowID = awaited.recognised(m_windows)) {
        takeAwaitedWindow(number, *windowID);
        return;
    }
    const QList<WindowItem> candidates = awaited.candidates(m_windows);
    if (candidates.isEmpty()) {
        lookAgain(number);
        return;
    }
    m_tasks.inBackground(
        [launch = awaited.launch, candidates, &applications = m_platform.applications](
            const std::stop_token&) { return applications.windowOf(launch, candidates); },
        [this, number](const std::optional<WindowID>& windowID) {
            // It may have gone since, or to another goal that awaits one.
            const bool isThere =
                windowID && std::ranges::any_of(std::as_const(m_windows), [&](const auto& each) {
                    return each.id == *windowID && m_awaitedWindows.at(number).canBe(each);
                });
            if (isThere)
                takeAwaitedWindow(number, *windowID);
            else
                lookAgain(number);
        });
}

void WindowStore::lookAgain(AwaitedNumber number)
{
    if (--m_awaitedWindows.at(number).looksLeft > 0)
        lookForAwaitedWindowLater(number);
    else
        m_awaitedWindows.erase(number);
}

void WindowStore::takeAwaitedWindow(AwaitedNumber number, WindowID windowID)
{
    const Update update(*this);
    const GoalID goalID = m_awaitedWindows.at(number).goalID;
    m_awaitedWindows.erase(number);
    for (auto& [_, awaited] : m_awaitedWindows)
        awaited.others.insert(windowID);
    // The launch was the person's, not what came of it: undoing leaves it where it is.
    if (setAssignment(windowID, goalID))
        saveState();
    activateTarget(TargetSelection::goal(goalID), EnterWindowLayer::no);
}

} // namespace kelpa
