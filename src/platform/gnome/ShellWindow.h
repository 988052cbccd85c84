// A window as the Shell's extension lists it.
#pragma once

#include "model/GoalPins.h"
#include "model/Identifiers.h"
#include "model/Rect.h"

#include <QString>
#include <QStringList>

#include <gio/gio.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace kelpa::gnome {

enum class ShellWindowKind : std::uint8_t { normal, dialog, utility, other };

struct ShellWindow
{
    /// The Shell gives it to no other window in the same run.
    std::uint64_t id = 0;
    QString title{};
    /// Absent where the Shell does not know it.
    std::optional<ProcessID> process{};
    /// The id of its desktop entry, with or without its suffix; empty for none.
    QString application{};
    /// The class on X11, the application id on Wayland; may be empty.
    QString windowClass{};
    QString role{};
    /// The frame, in points.
    Rect frame{};
    ShellWindowKind kind = ShellWindowKind::normal;
    bool isOnScreen = false;
    bool isMinimized = false;
    bool isOffTaskList = false;
    /// As `WindowItem::virtualDesktop`.
    std::optional<QString> virtualDesktop{};
    /// As `WindowItem::desktopNumber`.
    std::optional<int> desktopNumber{};
    /// As `WindowItem::isAwaitingAnswer`.
    bool isAwaitingAnswer = false;
    /// The id of the window that this one is a dialog of; absent where it is none.
    std::optional<std::uint64_t> dialogOf{};

    friend bool operator==(const ShellWindow&, const ShellWindow&) = default;
};

/// As in `WindowListEntry::layer`.
int layerOf(const ShellWindow& window);

/// The windows in a list of dictionaries, `aa{sv}`, in its order. Entries without an id, or with
/// one that came before, are dropped; so is what lies beyond the number of windows that can be
/// known by name. A program on Wayland does not tell what kind of window it shows: a window of its
/// that belongs to another one counts as a dialog. A member that is missing or has another type
/// counts as not known. Texts that no window needs are shortened.
std::vector<ShellWindow> windowsIn(GVariant* list);

struct ShellWorkspaces
{
    /// As `DiscoverySource::virtualDesktops`.
    QStringList names{};
    /// As `DiscoverySource::desktopIDs`; empty where the extension tells none.
    DesktopIDs ids{};

    friend bool operator==(const ShellWorkspaces&, const ShellWorkspaces&) = default;
};

/// The workspaces in a list of texts, `as`, or of ids and texts, `a(ts)`; what lies beyond
/// `mostVirtualDesktops` is dropped. Ids that are 0 or not all different count as none.
ShellWorkspaces workspacesIn(GVariant* list);

} // namespace kelpa::gnome
