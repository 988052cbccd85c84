// How a window of one reply of sway is described to a discovery pass, and for actions on it.
#pragma once

#include "platform/freedesktop/applications/CompositorSnapshot.h"
#include "platform/numbers/NumberedWindows.h"
#include "platform/wayland/sway/SwayTree.h"

#include <optional>
#include <vector>

namespace kelpa::wayland {

using NumberedSwayWindow = Numbered<SwayWindow>;

/// In their order.
std::vector<CompositorWindow> describedWindows(const std::vector<NumberedSwayWindow>& windows);
/// As an application's own description, for actions on it. Without a document.
AccessibilityWindow accessibilityWindow(const NumberedSwayWindow& window);

} // namespace kelpa::wayland
