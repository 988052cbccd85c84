// The windows and workspaces in sway's tree of containers.
#pragma once

#include "model/Identifiers.h"
#include "model/Rect.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace kelpa::wayland {

struct SwayWindow
{
    /// sway never gives it to a second container of the same run.
    std::int64_t container = 0;
    QString title;
    /// Of a program on Wayland; empty for one on X11.
    QString appID;
    /// The two parts of WM_CLASS of a program on X11.
    QString wmClassInstance;
    QString wmClassName;
    /// Absent when sway does not know it.
    std::optional<ProcessID> process;
    /// In points, without decorations.
    Rect bounds;
    /// On a workspace that an output shows, and not behind a tab.
    bool isVisible = false;
    bool hasFocus = false;
    /// The name of its workspace; absent where an output shows that, and where the window is on all
    /// workspaces of its output or on none.
    std::optional<QString> hiddenWorkspace{};
    /// As `WindowItem::desktopNumber`. Absent on the scratchpad.
    std::optional<int> desktopNumber{};
    /// Its name in the compositor's list of windows (ext_foreign_toplevel_list_v1); empty where
    /// sway does not tell it.
    QByteArray identifier;

    friend bool operator==(const SwayWindow&, const SwayWindow&) = default;
};

struct SwayTree
{
    /// Each container remembers in which order its own had the focus; that order is followed, so
    /// windows of one workspace come in order of activity.
    std::vector<SwayWindow> windows;
    /// As `DiscoverySource::virtualDesktops`: the workspaces by their numbers, with which their
    /// names begin. sway creates one when a window is sent there, so there are always
    /// `mostVirtualDesktops`. The name is empty for one that is not there, or has no other name
    /// than its number.
    QStringList workspaces;
    /// As `DiscoverySource::unofferedDesktops`: those that are not there, but for the first ten,
    /// which sway's own configuration has keys for.
    QList<int> unofferedWorkspaces;
};

/// A reply to `getTree`. Bytes of a title that are no text are replaced. Absent when the reply is
/// malformed.
std::optional<SwayTree> treeIn(const QByteArray& json);
/// The windows alone.
std::optional<std::vector<SwayWindow>> windowsInTree(const QByteArray& json);

} // namespace kelpa::wayland
