// What the windows of goals were, so that they find their goals again. Remembers every listed
// window as it is now; of those that are gone, the ones that have an assignment count, and are
// stored.
#pragma once

#include "model/BoardJson.h"
#include "model/RememberedWindow.h"
#include "model/WindowItem.h"
#include "windows/memory/MemoryMatching.h"
#include "windows/memory/WindowKeys.h"

#include <QHash>
#include <QList>
#include <QSet>

#include <optional>
#include <utility>
#include <vector>

namespace kelpa {

/// A value, any thread.
class WindowMemory
{
public:
    /// More windows, and windows that were seen longer ago, are forgotten, the oldest first.
    static constexpr qsizetype maxWindows = 1000;
    static constexpr double maxAgeInSeconds = 90.0 * 24 * 60 * 60;
    /// The beginning of 2020. A computer whose battery is empty begins long before: what it has
    /// seen then was seen nobody knows when, and is not old.
    static constexpr Date earliestDate{599'529'600};

    WindowMemory() = default;
    /// As it was stored. The last one of several windows with one number counts; one that mentions
    /// private browsing, which an earlier release did not understand, is left out.
    explicit WindowMemory(const RememberedWindows& stored);

    /// Takes note of the windows that are listed now, each with its goal; `newWindows` are those
    /// that may turn out to be remembered ones. Returns whether something changed that is worth
    /// storing: not for a title that still means the same, nor for the time that passes.
    bool note(const QList<WindowItem>& windows, const QSet<WindowID>& newWindows,
              const Assignments& assignments, Date now);

    /// Whether since the last call a window has turned out to browse in private that may have been
    /// stored before: that is not to wait.
    bool takeForgottenPrivate() { return std::exchange(m_hasForgottenPrivate, false); }

    /// The remembered windows that are not listed and belong to a goal, seen last first.
    QList<AbsentWindow> absent(const Assignments& assignments, const QSet<GoalID>& goalIDs) const;

    /// Whether windows are remembered that are not listed; some may belong to no goal any more.
    bool hasAbsent() const;

    /// The keys of a listed window; absent for one that is not, and for a private one.
    std::optional<WindowKeys> keysOf(WindowID listed) const;
    /// What is known of a window, listed or not; null when nothing is.
    const RememberedWindow* find(WindowID windowID) const;

    /// Whether it has been listed since the memory began: otherwise it is from an earlier run.
    bool hasBeenListed(WindowID windowID) const;

    /// `newWindow`, a listed one, is the remembered `absent`: what was shared with others before
    /// still does not identify it.
    void inherit(WindowID newWindow, WindowID absent);

    /// A window of the goal that is not listed and that may be the same as the listed `windowID`:
    /// where a person assigns that to the goal, it takes its place. By the strictest key that leads
    /// to any; of several alike ones, the one that was seen last.
    std::optional<WindowID> counterpart(WindowID windowID, GoalID goalID,
                                        const Assignments& assignments) const;

    /// Forgets every window, but not which ones browse in private.
    void forgetAll();

    /// At the end: no window is new any more. Returns whether that is worth storing.
    bool settle(const Assignments& assignments);

    /// What is to be stored: the windows that belong to a goal, by number.
    RememberedWindows stored(const Assignments& assignments, const QSet<GoalID>& goalIDs) const;

    /// The greatest number that any window has had.
    WindowID newestWindow() const { return m_newestWindow; }

    /// Forgets what was seen too long ago, and too much. A clock that was set back makes nothing
    /// older, nor does one that was wrong when the window was seen. Listed windows stay.
    void prune(const Assignments& assignments, Date now);

private:
    struct Entry
    {
        RememberedWindow window;
        WindowKeys keys;
        /// As it was listed last; without a number where it has not been.
        WindowItem item;
        /// The greatest number of any window by then.
        WindowID newestWindow = 0;
        bool isListed = false;
        bool isNew = false;
        /// Whether it has had a goal since the start, or had one then.
        bool wasAssigned = false;
    };

    /// What a call of `note` has found.
    struct Changes
    {
        bool isWorthStoring = false;
        /// Whether the windows that share a trait may be others now.
        bool mayBeShared = false;
        /// Windows of goals that show something else now. An absent window of the same goal that
        /// had shown that is the same one from now on.
        std::vector<std::pair<WindowID, GoalID>> renamed;
        /// New windows, as they were, that went or show something else now without having been
        /// given a place: none of them was certainly an absent one, and any may come back.
        std::vector<Entry> unplaced;
    };

    static std::optional<GoalID> goalOf(const Entry& entry, const Assignments& assignments);
    void noteListed(const WindowItem& window, bool isNew, Date now, Changes& changes);
    void noteTraits(Entry& entry, const WindowItem& window, WindowTraits traits, Changes& changes);
    void noteGone(const QSet<WindowID>& listed, Date now, Changes& changes);
    void noteShared(const Assignments& assignments, Changes& changes);

    QHash<WindowID, Entry> m_entries;
    WindowID m_newestWindow = 0;
    /// Those that have said that they browse in private: whatever they say later, they do.
    QSet<WindowID> m_private;
    bool m_hasForgottenPrivate = false;
};

} // namespace kelpa
