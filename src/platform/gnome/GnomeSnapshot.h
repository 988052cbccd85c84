// How a window of one reply of the Shell's extension is described to a discovery pass, and for
// actions on it.
#pragma once

#include "platform/freedesktop/applications/CompositorSnapshot.h"
#include "platform/gnome/ShellWindow.h"
#include "platform/numbers/NumberedWindows.h"

#include <optional>
#include <vector>

namespace kelpa::gnome {

using NumberedShellWindow = Numbered<ShellWindow>;

/// In their order.
std::vector<CompositorWindow> describedWindows(const std::vector<NumberedShellWindow>& windows);
/// As an application's own description, for actions on it. Without a document.
AccessibilityWindow accessibilityWindow(const NumberedShellWindow& window);

} // namespace kelpa::gnome
