// Loads the fonts of the first frame before the views need them.
#pragma once

#include <functional>

namespace kelpa {

class ViewSettings;

/// Has the toolkit find the fonts that the board shows first, and the letters of its texts in them,
/// which is a third of the work until the first frame: to be done while the QML engine's thread
/// reads the views' types, when this thread would only wait. Calls `between` before
/// each text, every few milliseconds. A font that is missing here is loaded when the views need it.
/// Main thread, with an application object.
void loadFonts(const ViewSettings& settings, const std::function<void()>& between);

} // namespace kelpa
