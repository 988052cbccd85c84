// The queries that one discovery pass may make to the desktop, and the form of the replies.
#pragma once

#include "model/GoalPins.h"
#include "model/Identifiers.h"
#include "model/Rect.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace kelpa {

/// One entry of the window server's list. A member that the server does not give, or gives in an
/// invalid form, is absent.
struct WindowListEntry
{
    std::optional<WindowID> number;
    std::optional<ProcessID> ownerProcess;
    std::optional<QString> ownerName;
    /// The application that the window itself names, as `RunningApplication::bundleIdentifier`: one
    /// process may run several. Absent where it names none; then that of its process counts.
    std::optional<QString> bundleIdentifier{};
    /// In points (see model/Rect.h), without a shadow or invisible border that the window
    /// draws itself.
    std::optional<Rect> bounds;
    /// 0 is the layer of ordinary windows; docks, desktops, menus and so on are on other layers.
    std::optional<int> layer;
    /// Opacity, 0 to 1.
    std::optional<double> alpha;
    std::optional<QString> name;
    /// Changes whenever the icon that the window carries changes; the value has no other meaning.
    std::uint32_t iconRevision = 0;
    /// The window's part in its application; empty where it has none.
    QString role{};
    /// The first part of WM_CLASS, where the window system has it.
    QString instance{};
    /// The second part, or what Wayland's windows call their application; empty where there is
    /// none. It may be another than that of its desktop entry.
    QString windowClass{};
    /// The identifier that the session manager gave to its client, which gets it again in the next
    /// session; empty where there is none.
    QString sessionID{};
    /// As `WindowItem::virtualDesktop`.
    std::optional<QString> virtualDesktop{};
    /// As `WindowItem::isAwaitingAnswer`.
    bool isAwaitingAnswer = false;
    /// As `WindowItem::dialogOf`.
    std::optional<WindowID> dialogOf{};
    /// As `WindowItem::desktopNumber`.
    std::optional<int> desktopNumber{};
};

enum class WindowListScope : std::uint8_t {
    /// Every window, including minimised ones and those on other desktops.
    all,
    /// The windows that are on screen now. Only `number` needs to be filled.
    onScreen,
};

/// How an application takes part in the desktop.
enum class ActivationPolicy : std::uint8_t {
    /// An ordinary application with windows on the task list.
    regular,
    /// Panels, applets and other helpers that stay off the task list.
    accessory,
    /// Never shows a window to act on.
    prohibited,
};

struct RunningApplication
{
    ActivationPolicy activationPolicy = ActivationPolicy::regular;
    /// On Linux the desktop-entry id; absent when no installed entry belongs to the application, or
    /// when the process runs several.
    std::optional<QString> bundleIdentifier;
};

struct Point
{
    double x = 0;
    double y = 0;
};

struct Size
{
    double width = 0;
    double height = 0;
};

/// One window as the accessibility side reports it. An attribute that could not be read is absent.
struct AccessibilityWindow
{
    /// In points, as `WindowListEntry::bounds`; likewise `size`.
    std::optional<Point> position;
    std::optional<Size> size;
    std::optional<bool> isMinimized;
    std::optional<QString> title;
    /// Path or URL of the document that the window shows.
    std::optional<QString> document;
    /// The number of the listed window that this is, on platforms that know it; decides the match.
    std::optional<WindowID> windowNumber;
};

/// The desktop as one pass sees it. Created for one pass, used on one thread, destroyed with the
/// pass. No reply may wait for another application.
class DiscoverySource
{
public:
    virtual ~DiscoverySource() = default;

    /// In front-to-back order; absent when the list is not available.
    virtual std::optional<std::vector<WindowListEntry>> windowList(WindowListScope scope) = 0;

    /// Absent when no such application runs.
    virtual std::optional<RunningApplication> runningApplication(ProcessID process) = 0;

    /// The names of the virtual desktops in their order, without white space around them, an empty
    /// one for a desktop that has none. Empty where there are none that windows could be sent to.
    virtual QStringList virtualDesktops() { return {}; }

    /// The identities of `virtualDesktops`, in their order and all different, where the numbers of
    /// desktops may shift as others go. Empty where there are none.
    virtual DesktopIDs desktopIDs() { return {}; }

    /// The numbers, from 1, of virtual desktops that are not there, but that the desktop creates
    /// when a window is sent to them: a list to choose from leaves them out.
    virtual QList<int> unofferedDesktops() { return {}; }

    virtual bool isAccessibilityTrusted() = 0;

    /// The windows of one process in its own order; absent when they cannot be read.
    virtual std::optional<std::vector<AccessibilityWindow>>
    accessibilityWindows(ProcessID process) = 0;
};

} // namespace kelpa
