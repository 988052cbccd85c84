// The window of an application that a goal has launched, while it has not appeared.
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
    /// Windows that are not this one: those that were there before the launch, and those that came
    /// of other launches.
    QSet<WindowID> others;
    /// How many times the desktop is still looked at for it.
    int looksLeft = 0;
    /// Nothing in it before the application has been started.
    Launch launch = {};
    /// The desktop is being looked at for it.
    bool isLooking = false;

    bool canBe(const WindowItem& window) const { return !others.contains(window.id); }
    /// Those of `windows` that it can be, in their order.
    QList<WindowItem> candidates(const QList<WindowItem>& windows) const;
    /// The first of them that is known to be of the launched application.
    std::optional<WindowID> recognised(const QList<WindowItem>& windows) const;
};

} // namespace kelpa
