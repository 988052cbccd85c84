// Launches applications for goals, and recognises their windows when they appear.
#pragma once

#include "model/Identifiers.h"
#include "model/RememberedWindow.h"
#include "model/WindowItem.h"
#include "platform/Applications.h"
#include "platform/Scheduler.h"
#include "platform/tasks/TaskGroup.h"
#include "platform/tasks/TaskQueue.h"
#include "store/desktop/PendingLaunch.h"

#include <QList>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>

namespace kelpa {

/// Main thread. Applications are launched in the background, one after the other; then discovery
/// passes are requested every quarter of a second, at most twenty for each. Of several launches
/// each gets a window of its own.
class LaunchFollower
{
public:
    /// Requests a discovery pass. `finishPass` is called when it ends, also when it was cancelled,
    /// and possibly before this returns.
    using RequestPass = std::function<void()>;
    /// The window of a launch for the goal has appeared: a new one, or the remembered one that was
    /// opened again.
    using Appeared =
        std::function<void(GoalID goalID, WindowID windowID, std::optional<WindowID> remembered)>;

    /// `windows` are those of the last pass. All arguments outlive this.
    LaunchFollower(Applications& applications, Scheduler& scheduler,
                   const QList<WindowItem>& windows, RequestPass requestPass, Appeared appeared);

    /// A launch whose window does not appear in time ends silently; `failed` is called when there
    /// is nothing to launch, or it cannot be started.
    void launch(LaunchableApplication application, GoalID goalID, std::function<void()> failed);
    struct ReopeningHandlers
    {
        /// Called once: the application was started, or not.
        std::function<void(const Reopening& reopening)> begun;
        /// The application was started, and no window of it has appeared in time.
        std::function<void()> missed;
    };
    /// Opens a remembered window of the goal again, unless that is under way; its window is
    /// followed like that of a launch.
    void reopen(const RememberedWindow& window, GoalID goalID, ReopeningHandlers handlers);
    /// The requested discovery pass has ended; `windows` are up to date.
    void finishPass();

private:
    using Number = std::uint64_t;

    Number addPending(GoalID goalID, std::optional<RememberedWindow> remembered);
    /// The application was started; absent when it could not be.
    void follow(Number number, const std::optional<Launch>& launch);
    /// Determines in the background which application was launched.
    void identify(Number number);
    void pollLater(Number number);
    void poll(Number number);
    void match(Number number);
    /// Whether another goal may as well get a window of the launched application.
    bool isContested(Number number) const;
    /// The one window that resembles the remembered one of this launch and that of no other.
    std::optional<WindowID> distinctWindow(Number number) const;
    void retryOrGiveUp(Number number);
    void claim(Number number, WindowID windowID);

    Applications& m_applications;
    const QList<WindowItem>& m_windows;
    RequestPass m_requestPass;
    Appeared m_appeared;
    std::map<Number, PendingLaunch> m_pending;
    Number m_lastNumber = 0;
    TaskQueue m_launches;
    TaskQueue m_matches;
    /// Delays until the next poll, and identifications, which do not ask the window server and end
    /// by themselves within seconds.
    TaskGroup m_tasks;
};

} // namespace kelpa
