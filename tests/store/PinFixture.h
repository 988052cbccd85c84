// A board with a pinned goal, on a desktop that does what it is asked, or refuses it.
#pragma once

#include "support/StoreFixture.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <utility>

namespace kelpa::test {

class PinFixture : public StoreFixture
{
protected:
    /// Four desktops, windows 1 to `count` on the first, 1 and 2 in the goal.
    void open(WindowID count)
    {
        desktop.virtualDesktops = {QStringLiteral("Home"), QString(), QStringLiteral("Web"),
                                   QStringLiteral("Mail")};
        for (WindowID id = count; id > 0; --id)
            addWindow(id);
        goalID = makeGoal();
        store().refresh();
        store().assign(1, goalID);
        store().assign(2, goalID);
        takeRequests();
    }

    void addWindow(WindowID id)
    {
        desktop.addAccessibleWindow(id, 1000 + static_cast<ProcessID>(id), QString::number(id))
            .desktopNumber = 1;
    }

    void setDesktop(WindowID id, int number)
    {
        for (WindowListEntry& entry : *desktop.windowList) {
            if (entry.number == id)
                entry.desktopNumber = number;
        }
    }

    /// What the desktop has been asked for since the last call, which it has done then, unless it
    /// refuses.
    QStringList takeRequests()
    {
        scheduler.advance(std::chrono::milliseconds(0));
        QStringList requests;
        for (const QString& call : std::exchange(desktop.calls, {})) {
            if (call.startsWith(u"send to ") && !isRefusing)
                setDesktop(call.section(u' ', 3).toUInt(),
                           call.section(u' ', 2, 2).chopped(1).toInt());
            if (call.startsWith(u"send ") || call.startsWith(u"show ") ||
                call.startsWith(u"raise ") || call.startsWith(u"minimize "))
                requests.append(call);
        }
        store().refresh();
        return requests;
    }

    GoalID goalID;
    bool isRefusing = false;
};

} // namespace kelpa::test
