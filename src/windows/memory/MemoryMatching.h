// Which remembered window a new one is. Both sides have to be single: what could as well be another
// window is only offered, never decided.
#pragma once

#include "model/Identifiers.h"
#include "windows/memory/WindowKeys.h"

#include <QHash>
#include <QList>

#include <cstdint>

namespace kelpa {

/// A remembered window that is not listed now.
struct AbsentWindow
{
    WindowID windowID = 0;
    GoalID goalID;
    WindowKeys keys;
    SharedTraits shared;
    /// The greatest number of any window when it was listed last: only a window with a greater one
    /// may be the same window.
    WindowID newestWindow = 0;

    friend bool operator==(const AbsentWindow&, const AbsentWindow&) = default;
};

/// A listed window that belongs to no goal and has appeared a short time ago.
struct NewWindow
{
    WindowID windowID = 0;
    WindowKeys keys;
    /// Whether it shows the first thing that it has shown. A window that has shown something else
    /// before is another one, in which a person opened what the remembered one had.
    bool hasFirstContent = true;

    friend bool operator==(const NewWindow&, const NewWindow&) = default;
};

enum class MatchCertainty : std::uint8_t { perhaps, certain };

struct WindowMatch
{
    MatchCertainty certainty = MatchCertainty::perhaps;
    /// One window where the match is certain; otherwise those that it may be, likeliest first.
    QList<WindowID> windows;

    friend bool operator==(const WindowMatch&, const WindowMatch&) = default;
};

/// By the number of the new window; one that matches nothing is absent. Any thread.
using WindowMatches = QHash<WindowID, WindowMatch>;

WindowMatches matchedWindows(const QList<AbsentWindow>& absent, const QList<NewWindow>& newWindows);

} // namespace kelpa
