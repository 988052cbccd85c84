#include "store/desktop/LaunchFollower.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// How often and how many times the desktop is looked at for the window of a launched application.
constexpr Scheduler::Duration pollInterval = 250ms;
constexpr int polls = 20;

} // namespace

LaunchFollower::LaunchFollower(Applications& applications, Scheduler& scheduler,
                               const QList<WindowItem>& windows, RequestLook requestLook,
                               Found found)
    : m_applications(applications), m_windows(windows), m_requestLook(std::move(requestLook)),
      m_found(std::move(found)), m_tasks(scheduler)
{}

void LaunchFollower::launch(LaunchableApplication application, GoalID goalID)
{
    QSet<WindowID> before;
    for (const WindowItem& window : m_windows)
        before.insert(window.id);
    // Kept before anything is started, so that it hears of what other launches get meanwhile.
    const Number number = ++m_lastNumber;
    m_awaited.emplace(number, PendingLaunch{goalID, before, polls});
    m_tasks.inBackground([application, &applications = m_applications](
                             const std::stop_token&) { return applications.launch(application); },
                         [this, number](const std::optional<Launch>& launch) {
                             if (!launch) {
                                 m_awaited.erase(number);
                                 return;
                             }
                             m_awaited.at(number).launch = *launch;
                             lookLater(number);
                             if (!launch->bundleIdentifier)
                                 identify(number);
                         });
}

void LaunchFollower::identify(Number number)
{
    m_tasks.inBackground(
        [launch = m_awaited.at(number).launch, &applications = m_applications](
            const std::stop_token& stop) { return applications.identifierOf(launch, stop); },
        [this, number](const std::optional<QString>& identifier) {
            const auto awaited = m_awaited.find(number);
            if (awaited != m_awaited.end())
                awaited->second.launch.bundleIdentifier = identifier;
        });
}

void LaunchFollower::lookLater(Number number)
{
    m_tasks.after(pollInterval, [this, number] { look(number); });
}

void LaunchFollower::look(Number number)
{
    // Where looks take longer than the time between them, each would end the one before it, and
    // none would ever show anything.
    const bool isUnderWay =
        std::ranges::any_of(m_awaited, [](const auto& each) { return each.second.isLooking; });
    m_awaited.at(number).isLooking = true;
    if (!isUnderWay)
        m_requestLook();
}

void LaunchFollower::finishLooks()
{
    std::vector<Number> looked;
    for (auto& [number, awaited] : m_awaited) {
        if (std::exchange(awaited.isLooking, false))
            looked.push_back(number);
    }
    for (const Number number : looked)
        find(number);
}

void LaunchFollower::find(Number number)
{
    const PendingLaunch& awaited = m_awaited.at(number);
    if (const std::optional<WindowID> windowID = awaited.recognised(m_windows)) {
        take(number, *windowID);
        return;
    }
    const QList<WindowItem> candidates = awaited.candidates(m_windows);
    if (candidates.isEmpty()) {
        lookAgain(number);
        return;
    }
    m_tasks.inBackground(
        [launch = awaited.launch, candidates, &applications = m_applications](
            const std::stop_token&) { return applications.windowOf(launch, candidates); },
        [this, number](const std::optional<WindowID>& windowID) {
            // It may have gone since, or to another goal that awaits one.
            const bool isThere =
                windowID && std::ranges::any_of(m_windows, [&](const auto& each) {
                    return each.id == *windowID && m_awaited.at(number).canBe(each);
                });
            if (isThere)
                take(number, *windowID);
            else
                lookAgain(number);
        });
}

void LaunchFollower::lookAgain(Number number)
{
    if (--m_awaited.at(number).looksLeft > 0)
        lookLater(number);
    else
        m_awaited.erase(number);
}

void LaunchFollower::take(Number number, WindowID windowID)
{
    const GoalID goalID = m_awaited.at(number).goalID;
    m_awaited.erase(number);
    for (auto& [_, awaited] : m_awaited)
        awaited.others.insert(windowID);
    m_found(goalID, windowID);
}

} // namespace kelpa
