// Opens a new window for a goal, and finds it when it appears.
#pragma once

#include "model/Identifiers.h"
#include "model/WindowItem.h"
#include "platform/Applications.h"
#include "platform/Scheduler.h"
#include "platform/TaskGroup.h"
#include "store/desktop/PendingLaunch.h"

#include <QList>

#include <cstdint>
#include <functional>
#include <map>

namespace kelpa {

/// Main thread. An application is launched in the background, and the desktop is looked at every
/// quarter of a second, twenty times at most; of several launches each gets a window of its own.
class LaunchFollower
{
public:
    /// Asks for a look at the desktop, at the end of which `finishLooks` is called, also when it
    /// comes to nothing; it may be called before this returns.
    using RequestLook = std::function<void()>;
    /// A window that belongs to a goal from now on.
    using Found = std::function<void(GoalID goalID, WindowID windowID)>;

    /// `windows` are those of the last look. All of it outlives this.
    LaunchFollower(Applications& applications, Scheduler& scheduler,
                   const QList<WindowItem>& windows, RequestLook requestLook, Found found);

    /// A launch that fails ends without a word, as one does whose window does not come in time.
    void launch(LaunchableApplication application, GoalID goalID);
    /// The look at the desktop that windows are looked for in has come to its end.
    void finishLooks();

private:
    using Number = std::uint64_t;

    /// Finds out in the background what application was launched.
    void identify(Number number);
    void lookLater(Number number);
    void look(Number number);
    void find(Number number);
    void lookAgain(Number number);
    void take(Number number, WindowID windowID);

    Applications& m_applications;
    const QList<WindowItem>& m_windows;
    RequestLook m_requestLook;
    Found m_found;
    std::map<Number, PendingLaunch> m_awaited;
    Number m_lastNumber = 0;
    TaskGroup m_tasks;
};

} // namespace kelpa
