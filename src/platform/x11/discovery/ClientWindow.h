// A client window as the server and the window manager describe it, with its layer and visibility
// derived from that. Plain values, any thread.
#pragma once

#include "model/Identifiers.h"
#include "model/Rect.h"
#include "platform/ApplicationResolver.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace kelpa::x11 {

/// In WM_STATE: the window is minimised.
inline constexpr std::uint32_t iconicState = 3;
/// In _NET_WM_DESKTOP: the window is on all of them.
inline constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;

/// By _NET_WM_WINDOW_TYPE.
enum class WindowKind : std::uint8_t {
    /// No type, or no known one.
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
    /// The server's id, which another window may get once this one is destroyed.
    std::uint32_t window = 0;
    /// Absent while the window has none.
    std::optional<WindowID> number;
    /// The process that owns the window; absent when it is not known.
    std::optional<ProcessID> process;
    /// In root coordinates, pixels: the client's area without the window manager's frame and
    /// without the shadow that the client draws.
    Rect frame;
    QString title;
    /// WM_WINDOW_ROLE.
    QString role;
    /// SM_CLIENT_ID of its client leader; empty where there is none.
    QString sessionID;
    ApplicationClues clues;
    WindowKind kind = WindowKind::unspecified;
    bool isOverrideRedirect = false;
    /// _NET_WM_STATE_SKIP_TASKBAR.
    bool isOffTaskList = false;
    /// _NET_WM_STATE_HIDDEN.
    bool isHidden = false;
    /// ICCCM's iconic state, which some window managers also give to windows of other desktops.
    bool isIconic = false;
    /// The window and all its ancestors are mapped.
    bool isViewable = false;
    /// _NET_WM_DESKTOP; absent when the window manager does not set it.
    std::optional<std::uint32_t> desktop;
    /// WM_TRANSIENT_FOR: the server's id of the window to which this one belongs; absent for none,
    /// and for the root window, which stands for a group.
    std::optional<std::uint32_t> owner{};
    /// _NET_WM_STATE_MODAL.
    bool isModal = false;
    /// 0 to 1.
    double opacity = 1;
    /// As WindowListEntry::iconRevision.
    std::uint32_t iconRevision = 0;
};

/// Finds the server's id of a window by its number, as `X11WindowServer::clientWindow` does: as of
/// the last discovery pass, absent for a number that it did not find. Any thread; returns at once.
using FindClientWindow = std::function<std::optional<std::uint32_t>(WindowID)>;

/// Holds for all windows of one discovery pass.
struct DesktopContext
{
    /// Absent when the window manager has no desktops.
    std::optional<std::uint32_t> currentDesktop;
    /// The window manager announces _NET_WM_STATE_HIDDEN.
    bool marksHiddenWindows = true;
    double pixelsPerPoint = 1;
    /// _NET_DESKTOP_NAMES: of the desktops from 0 on; there may be more desktops, or fewer.
    QList<QString> desktopNames{};
    /// _NET_NUMBER_OF_DESKTOPS; 0 when the window manager does not announce that it has desktops
    /// and sends windows there.
    std::uint32_t desktopCount = 0;
};

/// As WindowListEntry::layer: 0 for normal windows and dialogs that are on the task list. A window
/// of unspecified type counts as one of the two, transient or not. A window off the task list gets
/// a layer of its own rather than the activation policy of its application, because one process may
/// own both a panel and ordinary windows.
int layer(const ClientWindow& window);

/// Whether the window is visible, or would be if nothing obscured it.
bool isOnScreen(const ClientWindow& window, const DesktopContext& context);

/// As WindowListEntry::virtualDesktop.
std::optional<QString> virtualDesktop(const ClientWindow& window, const DesktopContext& context);

/// As WindowListEntry::desktopNumber.
std::optional<int> desktopNumber(const ClientWindow& window, const DesktopContext& context);

/// As DiscoverySource::virtualDesktops.
QStringList virtualDesktops(const DesktopContext& context);

/// By the server's ids: the window of each dialog which waits for an answer. A dialog is modal, or
/// says that it is one, since not every toolkit says that one is modal.
std::map<std::uint32_t, std::uint32_t> ownersOfDialogs(const std::vector<ClientWindow>& windows);

/// The server's ids of the windows that have such a dialog.
std::set<std::uint32_t> windowsAwaitingAnswer(const std::vector<ClientWindow>& windows);

bool isMinimized(const ClientWindow& window, const DesktopContext& context);

/// As WindowListEntry::bounds: the window's frame in points.
Rect bounds(const ClientWindow& window, const DesktopContext& context);

} // namespace kelpa::x11
