// The listed windows that may turn out to be remembered ones. A window is new for a while after it
// has appeared, since its title settles late, and until it has been given a place.
#pragma once

#include "model/WindowItem.h"
#include "windows/memory/MemoryMatching.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <chrono>

namespace kelpa {

class WindowMemory;

/// A value, any thread. Times are of a clock that is never set.
class NewWindows
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// How long a window is new.
    static constexpr std::chrono::seconds settlingTime{120};
    /// How long a window may change what it shows while it starts: the first thing that counts is
    /// the last one by then.
    static constexpr std::chrono::seconds startingTime{5};

    NewWindows() = default;
    /// Only windows with numbers greater than `newestWindow` are new: the others have been there
    /// before.
    explicit NewWindows(WindowID newestWindow) : m_newestWindow(newestWindow) {}

    /// Takes note of the windows that are listed now, each with its goal. True when another window
    /// is new.
    bool note(const QList<WindowItem>& windows, Time now);
    /// As they are called now, in a memory that has taken note of the same windows.
    void noteTitles(const WindowMemory& memory, Time now);
    /// The window has been given a place, or none: it is not new any more.
    void settle(WindowID windowID);

    QSet<WindowID> ids() const;
    bool contains(WindowID windowID) const;
    bool isEmpty() const { return m_windows.isEmpty(); }

    /// In the order of their numbers.
    QList<NewWindow> toMatch(const WindowMemory& memory) const;

private:
    struct Entry
    {
        Time appeared;
        /// Empty until there are some that say something.
        QString title;
        QString document;
        bool hasFirstContent = true;
    };

    QHash<WindowID, Entry> m_windows;
    WindowID m_newestWindow = 0;
};

} // namespace kelpa
