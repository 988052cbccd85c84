// A launch for a goal whose window has not appeared yet.
#pragma once

#include "model/Identifiers.h"
#include "model/RememberedWindow.h"
#include "model/WindowItem.h"
#include "platform/Applications.h"

#include <QList>
#include <QSet>

#include <functional>
#include <optional>

namespace kelpa {

struct PendingLaunch
{
    GoalID goalID;
    /// Windows that do not belong to this launch: those listed before it, and those of other
    /// launches.
    QSet<WindowID> others;
    /// The number of discovery passes after which the launch is given up.
    int passesLeft = 0;
    /// The window of the goal that was opened again; absent for another one.
    std::optional<RememberedWindow> remembered = {};
    /// Empty until the application has been started.
    Launch launch = {};
    /// Called when the launch is given up; empty where nobody needs to know.
    std::function<void()> missed = {};
    /// Whether the end of a discovery pass is awaited.
    bool isAwaitingPass = false;
    /// Whether a rival was given up, whose window may still appear.
    bool isContested = false;

    /// Never a window that has found its goal already.
    bool canBe(const WindowItem& window) const
    {
        return !window.goalID && !others.contains(window.id);
    }
    /// Whether a window of the application may as well be the other launch's, for another goal.
    bool isRivalOf(const PendingLaunch& other) const;
    /// Whether the window can be the launch's own, and shows what the remembered one showed.
    bool resembles(const WindowItem& window) const;
    /// The windows among `windows` that can be the launch's own, in their order.
    QList<WindowItem> candidates(const QList<WindowItem>& windows) const;
    /// The first of them that resembles the remembered one, or else is known to belong to the
    /// launched application.
    std::optional<WindowID> recognised(const QList<WindowItem>& windows) const;
};

} // namespace kelpa
