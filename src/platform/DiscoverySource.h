// The questions that one discovery pass may ask of the desktop, and the shape of the answers.
#pragma once

#include "model/Identifiers.h"
#include "model/Rect.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace kelpa {

/// One entry of the window server's list. A member that the server does not give, or gives in
/// another shape than it must have, is absent.
struct WindowListEntry
{
    std::optional<WindowID> number;
    std::optional<ProcessID> ownerProcess;
    std::optional<QString> ownerName;
    /// In screen points, without the shadow or invisible border that the window draws itself.
    std::optional<Rect> bounds;
    /// 0 is the layer of ordinary windows; docks, desktops, menus and the like are on others.
    std::optional<int> layer;
    /// Opacity, 0 to 1.
    std::optional<double> alpha;
    std::optional<QString> name;
    /// Another number as soon as the window carries another icon; what it is says nothing else.
    std::uint32_t iconRevision = 0;
};

enum class WindowListScope : std::uint8_t {
    /// Every window, also minimised ones and those of other desktops.
    all,
    /// The windows that are on screen now. Only `number` needs to be filled.
    onScreen,
};

/// How an application takes part in the desktop.
enum class ActivationPolicy : std::uint8_t {
    /// An ordinary application with windows on the task list.
    regular,
    /// Panels, applets and other helpers that keep themselves off the task list.
    accessory,
    /// Never shows anything to act on.
    prohibited,
};

struct RunningApplication
{
    ActivationPolicy activationPolicy = ActivationPolicy::regular;
    /// On Linux the desktop-entry id; absent when no installed entry is the application's.
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

/// What the accessibility side says of one window. An attribute that could not be read is absent.
struct AccessibilityWindow
{
    /// In the same coordinates as `WindowListEntry::bounds`.
    std::optional<Point> position;
    std::optional<Size> size;
    std::optional<bool> isMinimized;
    std::optional<QString> title;
    /// Path or URL of the document that the window shows.
    std::optional<QString> document;
    /// The number of the listed window that this is, on platforms that know; it decides the match.
    std::optional<WindowID> windowNumber;
};

/// The desktop as one pass sees it. Made for one pass, used on one thread, discarded with it. No
/// answer may wait on another application.
class DiscoverySource
{
public:
    virtual ~DiscoverySource() = default;

    /// In front-to-back order; none when the list cannot be had.
    virtual std::optional<std::vector<WindowListEntry>> windowList(WindowListScope scope) = 0;

    /// None when no such application runs.
    virtual std::optional<RunningApplication> runningApplication(ProcessID process) = 0;

    virtual bool isAccessibilityTrusted() = 0;

    /// The windows of one process in its own order; none when it cannot be asked.
    virtual std::optional<std::vector<AccessibilityWindow>>
    accessibilityWindows(ProcessID process) = 0;
};

} // namespace kelpa
