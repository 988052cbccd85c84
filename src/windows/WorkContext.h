// Working on one goal: which windows come forward and which are minimised, and what going back
// restores. It undoes only what Kelpa did, and of that only what the person has left as it was.
#pragma once

#include "model/GoalPins.h"
#include "model/Identifiers.h"
#include "model/Rect.h"
#include "model/WindowItem.h"
#include "windows/SentRequests.h"

#include <QHash>
#include <QList>

#include <optional>

namespace kelpa {

/// Requests to windows, carried out in the order of the members.
struct WindowArrangement
{
    /// Brought forward, the first one topmost.
    QList<WindowItem> raised{};
    QList<WindowItem> minimized{};
    /// No longer minimised, the first one topmost.
    QList<WindowItem> restored{};
    /// The virtual desktop that is shown before; absent where the windows decide.
    std::optional<NumberedDesktop> desktop{};

    bool isEmpty() const
    {
        return raised.isEmpty() && minimized.isEmpty() && restored.isEmpty() && !desktop;
    }

    friend bool operator==(const WindowArrangement&, const WindowArrangement&) = default;
};

/// Brings the windows of the goal forward and minimises the others on the same virtual desktop.
/// That is the present one, or where the goal has no window there, the one of its topmost window;
/// windows on other desktops are not in the way. A dialog is left to the desktop, which minimises
/// it with its window, and a window whose dialog belongs to the goal stays. Empty when the goal has
/// no window. `windows` are all that are listed, from front to back.
///
/// Where the goal is pinned to the virtual desktop `pin`, that one is shown and counts instead, and
/// its windows elsewhere stay, since the person has put them there. Without a window of the goal
/// nothing is in the way there.
WindowArrangement arrangementFor(GoalID goalID, const QList<WindowItem>& windows,
                                 const std::optional<NumberedDesktop>& pin = std::nullopt);

/// What was changed of windows for the goal or goals that the person works on, since the person
/// last went back. A value that lasts as long as the program.
class WorkContext
{
public:
    /// Kelpa requests `arrangement`, of windows as they were listed.
    void note(const WindowArrangement& arrangement);

    /// Kelpa requests what is returned: that the listed windows get the state that they had.
    /// Nothing else is left to go back to.
    WindowArrangement goBack(const QList<WindowItem>& windows);

    using Requests = SentRequests;

    /// A pass has listed `windows`. Forgets what the person has changed: a window that had come to
    /// be as requested and no longer is, and one that was restored and has been moved or resized
    /// since. Also forgets what the desktop does not do in the passes after the requests were sent.
    void observe(const QList<WindowItem>& windows, Requests requests);

    /// The windows as they will be once the desktop has done what was requested.
    QList<WindowItem> asRequested(QList<WindowItem> windows) const;

    /// Gives the listed windows the state that they had. Empty when there is nothing to restore.
    WindowArrangement wayBack(const QList<WindowItem>& windows) const;

private:
    struct Change
    {
        bool wasMinimized = false;
        bool isMinimized = false;
        /// The desktop has done it.
        bool isDone = false;
        /// How many passes did not show it since the requests were sent.
        int missedPasses = 0;
        /// Where the window was when it was first seen restored.
        std::optional<Rect> bounds{};
    };

    void noteChange(const WindowItem& window, bool isMinimized);

    QHash<WindowID, Change> m_changes;
};

} // namespace kelpa
