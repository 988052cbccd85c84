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

void LaunchFollower::launch(LaunchableApplication application, GoalID goalID,
                            std::function<void()> failed)
{
    const Number number = addPending(goalID, std::nullopt);
    m_launches.add([application, &applications = m_applications](
                       const std::stop_token&) { return applications.launch(application); },
                   [this, number, failed = std::move(failed)](const std::optional<Launch>& launch) {
                       follow(number, launch);
                       if (!launch)
                           failed();
                   });
}

void LaunchFollower::reopen(const RememberedWindow& window, GoalID goalID,
                            ReopeningHandlers handlers)
{
    const bool isUnderWay = std::ranges::any_of(m_pending, [&](const auto& each) {
        return each.second.remembered && each.second.remembered->windowID == window.windowID;
    });
    if (isUnderWay)
        return;
    const Number number = addPending(goalID, window);
    m_pending.at(number).missed = std::move(handlers.missed);
    const FormerWindow former{window.traits.application, window.traits.document};
    m_launches.add([former, &applications = m_applications](
                       const std::stop_token&) { return applications.reopen(former); },
                   [this, number, begun = std::move(handlers.begun)](const Reopening& reopening) {
                       follow(number, reopening.launch);
                       begun(reopening);
                   });
}

LaunchFollower::Number LaunchFollower::addPending(GoalID goalID,
                                                  std::optional<RememberedWindow> remembered)
{
    QSet<WindowID> before;
    for (const WindowItem& window : m_windows)
        before.insert(window.id);
    // Pending before anything is started, so that windows claimed by other launches are excluded.
    const Number number = ++m_lastNumber;
    m_pending.emplace(number, PendingLaunch{goalID, before, maxPolls, std::move(remembered)});
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
    if (!isContested(number)) {
        if (const std::optional<WindowID> windowID = pending.recognised(m_windows)) {
            claim(number, *windowID);
            return;
        }
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
                      else if (const std::optional<WindowID> distinct = distinctWindow(number))
                          claim(number, *distinct);
                      else
                          retryOrGiveUp(number);
                  });
}

bool LaunchFollower::isContested(Number number) const
{
    const PendingLaunch& pending = m_pending.at(number);
    return pending.isContested || std::ranges::any_of(m_pending, [&](const auto& each) {
               return each.second.isRivalOf(pending);
           });
}

std::optional<WindowID> LaunchFollower::distinctWindow(Number number) const
{
    std::optional<WindowID> found;
    for (const WindowItem& window : m_windows) {
        if (!m_pending.at(number).resembles(window))
            continue;
        const bool isOthersToo = std::ranges::any_of(m_pending, [&](const auto& each) {
            return each.first != number && each.second.resembles(window);
        });
        if (found || isOthersToo)
            return std::nullopt;
        found = window.id;
    }
    return found;
}

void LaunchFollower::retryOrGiveUp(Number number)
{
    PendingLaunch& pending = m_pending.at(number);
    if (--pending.passesLeft > 0) {
        pollLater(number);
        return;
    }
    const std::function<void()> missed = std::move(pending.missed);
    for (auto& [_, other] : m_pending)
        other.isContested = other.isContested || other.isRivalOf(pending);
    m_pending.erase(number);
    if (missed)
        missed();
}

void LaunchFollower::claim(Number number, WindowID windowID)
{
    const GoalID goalID = m_pending.at(number).goalID;
    std::optional<WindowID> remembered;
    if (m_pending.at(number).remembered)
        remembered = m_pending.at(number).remembered->windowID;
    m_pending.erase(number);
    for (auto& [_, pending] : m_pending)
        pending.others.insert(windowID);
    m_appeared(goalID, windowID, remembered);
}

} // namespace kelpa
