// How a window of one reply of the Shell's extension is described to a discovery pass, and for
// actions on it.
#pragma once

#include "platform/freedesktop/applications/CompositorSnapshot.h"
#include "platform/gnome/ShellWindow.h"

#include <optional>
#include <vector>

namespace kelpa::gnome {

/// A window with its number; absent when it has none.
struct NumberedShellWindow
{
    ShellWindow window;
    std::optional<WindowID> number;

    friend bool operator==(const NumberedShellWindow&, const NumberedShellWindow&) = default;
};

/// In their order.
std::vector<CompositorWindow> describedWindows(const std::vector<NumberedShellWindow>& windows);
/// As an application's own description, for actions on it. Without a document.
AccessibilityWindow accessibilityWindow(const NumberedShellWindow& window);

} // namespace kelpa::gnome
