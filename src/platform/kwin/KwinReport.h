// The windows of a KWin session as Kelpa's script within KWin reports them.
#pragma once

#include "model/Identifiers.h"
#include "model/Rect.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace kelpa::kwin {

struct KwinWindow
{
    /// As KWin writes it, in braces. KWin gives none to a second window.
    QByteArray uuid;
    QString title;
    /// The id of its desktop entry, as the program tells it; may be empty.
    QString desktopFile;
    /// The application id of a program on Wayland, the class of one on X11.
    QString className;
    QString instanceName;
    /// The window's part in its application; empty where it has none.
    QString role;
    /// Absent when KWin does not know it.
    std::optional<ProcessID> process;
    /// In points, with decorations.
    Rect bounds;
    /// An application's own window, no panel, menu or notification, and on the task list.
    bool isOrdinary = false;
    bool isMinimized = false;
    bool isActive = false;
    /// On the desktop and in the activity that are shown.
    bool isHere = false;
    /// As `WindowItem::virtualDesktop`.
    std::optional<QString> virtualDesktop{};
    /// As `WindowItem::desktopNumber`.
    std::optional<int> desktopNumber{};
    /// As `WindowItem::isAwaitingAnswer`.
    bool isAwaitingAnswer = false;
    /// The UUID of the window that this one is a dialog of; empty where it is none.
    QByteArray dialogOf{};
    /// Another number after each change of title, size or focus.
    std::int64_t revision = 0;

    friend bool operator==(const KwinWindow&, const KwinWindow&) = default;
};

/// No report is longer, in bytes.
inline constexpr qsizetype longestReport = qsizetype{16} * 1024 * 1024;

/// The windows of a report, the most recently active first and those that were not active since
/// the script runs after them, from the front of the stacking order. A row without a UUID, or with
/// that of an earlier one, is left out. Absent when the report is malformed or has more windows
/// than a session has.
std::optional<std::vector<KwinWindow>> windowsIn(const QByteArray& report);

/// As `DiscoverySource::virtualDesktops`, in a report of their names; empty when that is malformed.
QStringList desktopsIn(const QByteArray& report);

} // namespace kelpa::kwin
