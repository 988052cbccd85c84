#include "platform/wayland/sway/SwaySnapshot.h"

namespace kelpa::wayland {

namespace {

CompositorWindow describedWindow(const NumberedSwayWindow& numbered)
{
    const SwayWindow& window = numbered.window;
    CompositorWindow described;
    WindowListEntry& entry = described.entry;
    entry.number = numbered.number;
    entry.ownerProcess = window.process;
    entry.bounds = window.bounds;
    entry.layer = 0;
    entry.name = window.title;
    entry.virtualDesktop = window.hiddenWorkspace;
    entry.desktopNumber = window.desktopNumber;
    // The application id of a program on Wayland is the name of its desktop entry; some use the
    // class that they have on X11.
    described.clues.gtkApplicationID = window.appID;
    described.clues.wmClassInstance = window.wmClassInstance;
    described.clues.wmClassName = window.wmClassName.isEmpty() ? window.appID : window.wmClassName;
    described.ownerNames = {window.appID, window.wmClassName};
    // sway does not minimise, and manages ordinary windows alone.
    described.isOnScreen = window.isVisible;
    return described;
}

} // namespace

std::vector<CompositorWindow> describedWindows(const std::vector<NumberedSwayWindow>& windows)
{
    std::vector<CompositorWindow> described;
    described.reserve(windows.size());
    for (const NumberedSwayWindow& window : windows) {
        described.push_back(describedWindow(window));
    }
    return described;
}

AccessibilityWindow accessibilityWindow(const NumberedSwayWindow& window)
{
    return kelpa::accessibilityWindow(describedWindow(window));
}

} // namespace kelpa::wayland
