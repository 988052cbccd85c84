#include "platform/x11/discovery/ClientWindow.h"

#include "platform/PointScale.h"

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

Rect bounds(const ClientWindow& window, const DesktopContext& context)
{
    return inPoints(window.frame, context.pixelsPerPoint);
}

} // namespace kelpa::x11
