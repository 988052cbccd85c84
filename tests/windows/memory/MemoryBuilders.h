// Builds remembered and new windows for tests.
#pragma once

#include "windows/memory/MemoryMatching.h"

#include <QString>

namespace kelpa::test {

inline WindowItem listedWindow(WindowID id, const QString& application, const QString& title,
                               std::optional<GoalID> goalID = std::nullopt)
{
    WindowItem window;
    window.id = id;
    window.ownerName = application;
    window.bundleIdentifier = application.toLower();
    window.title = title;
    window.goalID = goalID;
    return window;
}

inline WindowTraits traits(const QString& application, const QString& title,
                           const QString& document = {}, const QString& role = {},
                           const QString& sessionID = {})
{
    return {application.toLower(), application, role, sessionID, document, title};
}

inline AbsentWindow absentWindow(WindowID id, GoalID goalID, const WindowTraits& of)
{
    return {id, goalID, keysOf(of), {}, 0};
}

inline NewWindow newWindow(WindowID id, const WindowTraits& of)
{
    return {id, keysOf(of), true};
}

} // namespace kelpa::test
