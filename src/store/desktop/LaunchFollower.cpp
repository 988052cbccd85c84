#include "store/desktop/LaunchFollower.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// How often and how many times a discovery pass is requested for the window of a launch.
constexpr Scheduler::Duration pollInterval = 250ms;
constexpr int maxPolls = 20;

} // namespace

LaunchFollower::LaunchFollower(Applications& applications, Scheduler& scheduler,
                               const QList<WindowItem>& windows, RequestPass requestPass,
                               Appeared appeared)
    : m_applications(applications), m_windows(windows), m_requestPass(std::move(requestPass)),
      m_appeared(std::move(appeared)), m_launches(scheduler), m_matches(scheduler),
      m_tasks(scheduler)
{}

void LaunchFollower::launch(LaunchableApplication application, GoalID goalID)
{
    const Number number = addPending(goalID, std::nullopt);
    m_launches.add([application, &applications = m_applications](
                       const std::stop_token&) { return applications.launch(application); },
                   [this, number](const std::optional<Launch>& launch) { follow(number, launch); });
}

void LaunchFollower::reopen(const FormerWindow& window, WindowID remembered, GoalID goalID,
                            std::function<void(const Reopening& reopening)> begun)
{
    const bool isUnderWay = std::ranges::any_of(
        m_pending, [&](const auto& each) { return each.second.remembered == remembered; });
    if (isUnderWay)
        return;
    const Number number = addPending(goalID, remembered);
    m_launches.add([window, &applications = m_applications](
                       const std::stop_token&) { return applications.reopen(window); },
                   [this, number, begun = std::move(begun)](const Reopening& reopening) {
                       follow(number, reopening.launch);
                       begun(reopening);
                   });
}

LaunchFollower::Number LaunchFollower::addPending(GoalID goalID, std::optional<WindowID> remembered)
{
    QSet<WindowID> before;
    for (const WindowItem& window : m_windows)
        before.insert(window.id);
    // Pending before anything is started, so that windows claimed by other launches are excluded.
    const Number number = ++m_lastNumber;
    m_pending.emplace(number, PendingLaunch{goalID, before, maxPolls, remembered});
    return number;
}

void LaunchFollower::follow(Number number, const std::optional<Launch>& launch)
{
    if (!launch) {
        m_pending.erase(number);
        return;
    }
    m_pending.at(number).launch = *launch;
    pollLater(number);
    if (!launch->bundleIdentifier)
        identify(number);
}

void LaunchFollower::identify(Number number)
{
    m_tasks.inBackground(
        [launch = m_pending.at(number).launch, &applications = m_applications](
            const std::stop_token& stop) { return applications.identifierOf(launch, stop); },
        [this, number](const std::optional<QString>& identifier) {
            const auto pending = m_pending.find(number);
            if (pending != m_pending.end())
                pending->second.launch.bundleIdentifier = identifier;
        });
}

void LaunchFollower::pollLater(Number number)
{
    m_tasks.after(pollInterval, [this, number] { poll(number); });
}

void LaunchFollower::poll(Number number)
{
    // Each request cancels the pass under way: were passes slower than the polls, none would ever
    // end.
    const bool isPassUnderWay =
        std::ranges::any_of(m_pending, [](const auto& each) { return each.second.isAwaitingPass; });
    m_pending.at(number).isAwaitingPass = true;
    if (!isPassUnderWay)
        m_requestPass();
}

void LaunchFollower::finishPass()
{
    std::vector<Number> waiting;
    for (auto& [number, pending] : m_pending) {
        if (std::exchange(pending.isAwaitingPass, false))
            waiting.push_back(number);
    }
    for (const Number number : waiting)
        match(number);
}

void LaunchFollower::match(Number number)
{
    const PendingLaunch& pending = m_pending.at(number);
    if (const std::optional<WindowID> windowID = pending.recognised(m_windows)) {
        claim(number, *windowID);
        return;
    }
    const QList<WindowItem> candidates = pending.candidates(m_windows);
    if (candidates.isEmpty()) {
        retryOrGiveUp(number);
        return;
    }
    m_matches.add([launch = pending.launch, candidates, &applications = m_applications](
                      const std::stop_token&) { return applications.windowOf(launch, candidates); },
                  [this, number](const std::optional<WindowID>& windowID) {
                      // The window may have been closed since, or claimed by another launch.
                      const bool isStillFree =
                          windowID && std::ranges::any_of(m_windows, [&](const auto& each) {
                              return each.id == *windowID && m_pending.at(number).canBe(each);
                          });
                      if (isStillFree)
                          claim(number, *windowID);
                      else
                          retryOrGiveUp(number);
                  });
}

void LaunchFollower::retryOrGiveUp(Number number)
{
    if (--m_pending.at(number).passesLeft > 0)
        pollLater(number);
    else
        m_pending.erase(number);
}

void LaunchFollower::claim(Number number, WindowID windowID)
{
    const GoalID goalID = m_pending.at(number).goalID;
    const std::optional<WindowID> remembered = m_pending.at(number).remembered;
    m_pending.erase(number);
    for (auto& [_, pending] : m_pending)
        pending.others.insert(windowID);
    m_appeared(goalID, windowID, remembered);
}

} // namespace kelpa
