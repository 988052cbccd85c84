#include "platform/gnome/GnomeSnapshot.h"

#include <cstdint>
#include <map>
#include <optional>

namespace kelpa::gnome {

namespace {

CompositorWindow describedWindow(const NumberedShellWindow& numbered)
{
    const ShellWindow& window = numbered.window;
    CompositorWindow described;
    WindowListEntry& entry = described.entry;
    entry.number = numbered.number;
    entry.ownerProcess = window.process;
    entry.bounds = window.frame;
    entry.layer = layerOf(window);
    entry.name = window.title;
    entry.role = window.role;
    entry.virtualDesktop = window.virtualDesktop;
    entry.desktopNumber = window.desktopNumber;
    entry.isAwaitingAnswer = window.isAwaitingAnswer;
    described.clues.kdeDesktopFile = window.application;
    // The application id of a program on Wayland is the name of its desktop entry; some use the
    // class that they have on X11.
    described.clues.gtkApplicationID = window.windowClass;
    described.clues.wmClassName = window.windowClass;
    described.ownerNames = {window.windowClass};
    described.isOnScreen = window.isOnScreen;
    described.isMinimized = window.isMinimized;
    described.isOrdinary = layerOf(window) == 0;
    return described;
}

} // namespace

std::vector<CompositorWindow> describedWindows(const std::vector<NumberedShellWindow>& windows)
{
    std::vector<CompositorWindow> described;
    described.reserve(windows.size());
    std::map<std::uint64_t, std::optional<WindowID>> numbers;
    for (const NumberedShellWindow& window : windows)
        numbers.emplace(window.window.id, window.number);
    for (const NumberedShellWindow& window : windows) {
        described.push_back(describedWindow(window));
        if (const auto owner = window.window.dialogOf; owner && numbers.contains(*owner))
            described.back().entry.dialogOf = numbers.at(*owner);
    }
    return described;
}

AccessibilityWindow accessibilityWindow(const NumberedShellWindow& window)
{
    return kelpa::accessibilityWindow(describedWindow(window));
}

} // namespace kelpa::gnome
