// One client window as the server and the window manager describe it, and what follows from that.
// Plain values, any thread.
#pragma once

#include "model/Identifiers.h"
#include "model/Rect.h"
#include "platform/ApplicationResolver.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace kelpa::x11 {

/// In WM_STATE: the window is minimised.
inline constexpr std::uint32_t iconicState = 3;
/// In _NET_WM_DESKTOP: the window is on all of them.
inline constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;

/// What kind of window it says it is.
enum class WindowKind : std::uint8_t {
    /// It does not say, or nothing that is known.
    unspecified,
    normal,
    dialog,
    /// Palettes, tool bars and splash screens.
    auxiliary,
    /// Menus, tooltips, notifications, drag images.
    passing,
    dock,
    desktop,
};

struct ClientWindow
{
    /// The server's id, which another window may get once this one is gone.
    std::uint32_t window = 0;
    /// Absent while it has none.
    std::optional<WindowID> number;
    /// The process at the other end of the window's connection; absent when it is not known.
    std::optional<ProcessID> process;
    /// In root coordinates, pixels: the client's area without the window manager's frame and
    /// without the shadow that the client draws itself.
    Rect frame;
    QString title;
    ApplicationClues clues;
    WindowKind kind = WindowKind::unspecified;
    bool isOverrideRedirect = false;
    /// The application keeps it off the task list.
    bool isOffTaskList = false;
    /// _NET_WM_STATE_HIDDEN.
    bool isHidden = false;
    /// ICCCM's iconic state, which window managers also give to windows of other desktops.
    bool isIconic = false;
    /// The server would draw it: it and all its parents are mapped.
    bool isViewable = false;
    /// Absent when the window manager does not say.
    std::optional<std::uint32_t> desktop;
    /// 0 to 1.
    double opacity = 1;
    /// As WindowListEntry's.
    std::uint32_t iconRevision = 0;
};

/// What holds for all windows of one look at the desktop.
struct DesktopContext
{
    /// Absent when the window manager has no desktops.
    std::optional<std::uint32_t> currentDesktop;
    /// The window manager announces _NET_WM_STATE_HIDDEN.
    bool marksHiddenWindows = true;
};

/// As a window list's layer: 0 for normal windows and dialogs that are on the task list. A window
/// that does not say its kind is one of the two, transient or not. A window that its application
/// keeps off the task list is given another layer, not left to the judgement of its application,
/// because one process may own both a panel and ordinary windows.
int layer(const ClientWindow& window);

/// Whether a person sees it, or would if nothing covered it.
bool isOnScreen(const ClientWindow& window, const DesktopContext& context);

bool isMinimized(const ClientWindow& window, const DesktopContext& context);

} // namespace kelpa::x11
