// How a window of one reply of sway is described to a discovery pass, and for actions on it.
#pragma once

#include "platform/freedesktop/applications/CompositorSnapshot.h"
#include "platform/wayland/sway/SwayTree.h"

#include <optional>
#include <vector>

namespace kelpa::wayland {

/// A window with its number; absent when it has none.
struct NumberedSwayWindow
{
    SwayWindow window;
    std::optional<WindowID> number;

    friend bool operator==(const NumberedSwayWindow&, const NumberedSwayWindow&) = default;
};

/// In their order.
std::vector<CompositorWindow> describedWindows(const std::vector<NumberedSwayWindow>& windows);
/// As an application's own description, for actions on it. Without a document.
AccessibilityWindow accessibilityWindow(const NumberedSwayWindow& window);

} // namespace kelpa::wayland
