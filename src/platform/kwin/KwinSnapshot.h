// How a window of one report of KWin is described to a discovery pass, and for actions on it.
#pragma once

#include "platform/freedesktop/applications/CompositorSnapshot.h"
#include "platform/kwin/KwinReport.h"
#include "platform/numbers/NumberedWindows.h"

#include <optional>
#include <vector>

namespace kelpa::kwin {

using NumberedKwinWindow = Numbered<KwinWindow>;

/// In their order; those that are not ordinary are left out.
std::vector<CompositorWindow> describedWindows(const std::vector<NumberedKwinWindow>& windows);
/// As an application's own description, for actions on it. Without a document.
AccessibilityWindow accessibilityWindow(const NumberedKwinWindow& window);

} // namespace kelpa::kwin
