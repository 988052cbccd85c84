// One window of another application, as discovery found it.
#pragma once

#include "model/Identifiers.h"
#include "model/Rect.h"

#include <QList>
#include <QString>

#include <cstdint>
#include <optional>

namespace kelpa {

/// As `WindowItem::desktopNumber`: the window is on all of them.
inline constexpr int everyVirtualDesktop = 0;

/// The same: the window is on one without a number, to which no goal can be pinned.
inline constexpr int unnumberedVirtualDesktop = -1;

struct WindowItem
{
    WindowID id = 0;
    /// Name of the owning application.
    QString ownerName;
    /// Identifier of the owning application (on Linux its desktop-entry id), when it is known.
    std::optional<QString> bundleIdentifier;
    QString title;
    ProcessID processIdentifier = 0;
    /// Frame in points, see Rect.h.
    Rect bounds;
    bool isOnScreen = false;
    bool isMinimized = false;
    /// Path or URL of the document that the window shows; absent when the application does not
    /// report one.
    std::optional<QString> accessibilityDocument;
    /// Changes whenever the icon that the window carries changes; the value has no other meaning.
    std::uint32_t iconRevision = 0;
    /// The goal that the window is assigned to; absent for an unassigned window.
    std::optional<GoalID> goalID;
    /// What part the window plays in its application, and the identifier that the session manager
    /// gave to that; empty where there is none. Both may be the same in the next login.
    QString role{};
    QString sessionID{};
    /// The virtual desktop that the window is on, by its name or else its number, from 1; absent
    /// where that is the present one, where the window is on all of them, and where it is not
    /// known.
    std::optional<QString> virtualDesktop{};
    /// Whether a dialog of the window waits for an answer.
    bool isAwaitingAnswer = false;
    /// What its application calls this kind of window, or itself when it was started by another
    /// name; empty where there is none.
    QString instance{};
    /// What the window itself calls its application; empty where it does not say.
    QString windowClass{};
    /// The window that this one is a dialog of; absent where it is none, and where that is not
    /// known.
    std::optional<WindowID> dialogOf{};
    /// The number of its virtual desktop, from 1, also where that is the present one;
    /// `everyVirtualDesktop` where it is on all of them, `unnumberedVirtualDesktop` where it has no
    /// number; absent where that is not known.
    std::optional<int> desktopNumber{};

    /// The trimmed title, or the owner's name when nothing is left of it.
    QString displayTitle() const;

    friend bool operator==(const WindowItem&, const WindowItem&) = default;
};

size_t qHash(const WindowItem& window, size_t seed = 0);

/// The position of a window in the list; -1 when it is absent.
qsizetype indexOf(const QList<WindowItem>& windows, WindowID id);

/// The window of the list; null when it is absent. Until the list changes.
const WindowItem* windowWith(WindowID id, const QList<WindowItem>& windows);

} // namespace kelpa
