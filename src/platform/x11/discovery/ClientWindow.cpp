#include "platform/x11/discovery/ClientWindow.h"

#include "model/GoalPins.h"
#include "model/WindowItem.h"
#include "platform/DialogOwners.h"
#include "platform/PointScale.h"

#include <algorithm>

namespace kelpa::x11 {

namespace {

constexpr int ordinaryLayer = 0;
constexpr int desktopLayer = -1;
constexpr int offTaskListLayer = 1;
constexpr int auxiliaryLayer = 3;
constexpr int dockLayer = 20;
constexpr int passingLayer = 101;

int layerOfKind(WindowKind kind)
{
    switch (kind) {
    case WindowKind::unspecified:
    case WindowKind::normal:
    case WindowKind::dialog:
        return ordinaryLayer;
    case WindowKind::auxiliary:
        return auxiliaryLayer;
    case WindowKind::passing:
        return passingLayer;
    case WindowKind::dock:
        return dockLayer;
    case WindowKind::desktop:
        return desktopLayer;
    }
    return ordinaryLayer;
}

bool isDialog(const ClientWindow& window)
{
    return !window.isOverrideRedirect &&
           (window.kind == WindowKind::dialog ||
            (window.isModal && layerOfKind(window.kind) == ordinaryLayer));
}

} // namespace

int layer(const ClientWindow& window)
{
    if (window.isOverrideRedirect)
        return passingLayer;
    const int ofKind = layerOfKind(window.kind);
    return ofKind == ordinaryLayer && window.isOffTaskList ? offTaskListLayer : ofKind;
}

bool isMinimized(const ClientWindow& window, const DesktopContext& context)
{
    return window.isHidden || (!context.marksHiddenWindows && window.isIconic);
}

bool isOnScreen(const ClientWindow& window, const DesktopContext& context)
{
    const bool isOnCurrentDesktop = !window.desktop || !context.currentDesktop ||
                                    *window.desktop == everyDesktop ||
                                    *window.desktop == *context.currentDesktop;
    return window.isViewable && isOnCurrentDesktop && !isMinimized(window, context);
}

std::optional<QString> virtualDesktop(const ClientWindow& window, const DesktopContext& context)
{
    if (!window.desktop || !context.currentDesktop || *window.desktop == everyDesktop ||
        *window.desktop == *context.currentDesktop)
        return std::nullopt;
    const QString name =
        context.desktopNames.value(static_cast<qsizetype>(*window.desktop)).trimmed();
    return name.isEmpty() ? QString::number(std::uint64_t{*window.desktop} + 1) : name;
}

std::optional<int> desktopNumber(const ClientWindow& window, const DesktopContext& context)
{
    if (!window.desktop || context.desktopCount == 0)
        return std::nullopt;
    if (*window.desktop == everyDesktop)
        return everyVirtualDesktop;
    constexpr std::uint32_t last = std::uint32_t{mostVirtualDesktops} - 1;
    return *window.desktop <= last ? std::optional(static_cast<int>(*window.desktop) + 1)
                                   : std::nullopt;
}

QStringList virtualDesktops(const DesktopContext& context)
{
    const auto count =
        static_cast<qsizetype>(std::min(context.desktopCount, std::uint32_t{mostVirtualDesktops}));
    QStringList names;
    names.reserve(count);
    for (qsizetype index = 0; index < count; ++index)
        names.append(context.desktopNames.value(index).trimmed());
    return names;
}

std::map<std::uint32_t, std::uint32_t> ownersOfDialogs(const std::vector<ClientWindow>& windows)
{
    std::vector<WindowTie<std::uint32_t>> ties;
    ties.reserve(windows.size());
    for (const ClientWindow& window : windows) {
        ties.push_back({.window = window.window,
                        .owner = window.owner,
                        .isDialog = isDialog(window),
                        .isOrdinary = layer(window) == ordinaryLayer});
    }
    return kelpa::ownersOfDialogs(ties);
}

std::set<std::uint32_t> windowsAwaitingAnswer(const std::vector<ClientWindow>& windows)
{
    return kelpa::windowsAwaitingAnswer(ownersOfDialogs(windows));
}

Rect bounds(const ClientWindow& window, const DesktopContext& context)
{
    return inPoints(window.frame, context.pixelsPerPoint);
}

} // namespace kelpa::x11
