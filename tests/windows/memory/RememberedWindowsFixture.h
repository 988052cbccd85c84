// A memory of windows and two goals, for tests of what is remembered and what is new.
#pragma once

#include "windows/memory/MemoryBuilders.h"
#include "windows/memory/WindowMemory.h"

#include <gtest/gtest.h>

namespace kelpa::test {

inline const QString editorName = QStringLiteral("Editor");
inline const QString reportTitle = QStringLiteral("Report.odt - Editor");
inline const QString letterTitle = QStringLiteral("Letter.odt - Editor");

class RememberedWindowsTest : public testing::Test
{
protected:
    /// Lists these windows, each with its goal.
    bool note(const QList<WindowItem>& windows, const QSet<WindowID>& newWindows = {})
    {
        for (const WindowItem& window : windows) {
            if (window.goalID)
                assignments.insert(QString::number(window.id), *window.goalID);
            else
                assignments.remove(QString::number(window.id));
        }
        return memory.note(windows, newWindows, assignments, now);
    }

    WindowItem window(WindowID id, const QString& title, std::optional<GoalID> goalID) const
    {
        return listedWindow(id, editorName, title, goalID);
    }

    QList<WindowID> absentIDs() const
    {
        QList<WindowID> ids;
        for (const AbsentWindow& each : memory.absent(assignments, goals))
            ids.append(each.windowID);
        return ids;
    }

    QList<WindowID> storedIDs() const
    {
        QList<WindowID> ids;
        for (const RememberedWindow& each : memory.stored(assignments, goals).windows)
            ids.append(each.windowID);
        return ids;
    }

    void passDays(double days) { now.secondsSinceReferenceDate += days * 24 * 60 * 60; }

    const GoalID taxes = GoalID::create();
    const GoalID garden = GoalID::create();
    const QSet<GoalID> goals{taxes, garden};
    Assignments assignments;
    WindowMemory memory;
    Date now{700'000'000};
};

} // namespace kelpa::test
