// A launch for a goal whose window has not appeared yet.
#pragma once

#include "model/Identifiers.h"
#include "model/WindowItem.h"
#include "platform/Applications.h"

#include <QList>
#include <QSet>

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
    std::optional<WindowID> remembered = {};
    /// Empty until the application has been started.
    Launch launch = {};
    /// Whether the end of a discovery pass is awaited.
    bool isAwaitingPass = false;

    bool canBe(const WindowItem& window) const { return !others.contains(window.id); }
    /// The windows among `windows` that can be the launch's own, in their order.
    QList<WindowItem> candidates(const QList<WindowItem>& windows) const;
    /// The first of them that is known to belong to the launched application.
    std::optional<WindowID> recognised(const QList<WindowItem>& windows) const;
};

} // namespace kelpa
