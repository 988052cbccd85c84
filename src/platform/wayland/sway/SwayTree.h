// The windows in sway's tree of containers.
#pragma once

#include "model/Identifiers.h"
#include "model/Rect.h"

#include <QByteArray>
#include <QString>

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
    /// Its name in the compositor's list of windows (ext_foreign_toplevel_list_v1); empty where
    /// sway does not tell it.
    QByteArray identifier;

    friend bool operator==(const SwayWindow&, const SwayWindow&) = default;
};

/// The windows of a reply to `getTree`. Each container remembers in which order its own had the
/// focus; that order is followed, so windows of one workspace come in order of activity. Bytes of a
/// title that are no text are replaced. Absent when the reply is malformed.
std::optional<std::vector<SwayWindow>> windowsInTree(const QByteArray& json);

} // namespace kelpa::wayland
