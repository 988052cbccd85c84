// Reads what is installed of fonts on threads of its own, so that the main thread, which connects
// to the desktop and opens the board meanwhile, finds it read.
#pragma once

#include <thread>

namespace kelpa {

/// Begins with fontconfig's configuration and caches, which need no toolkit. The thread ends by
/// itself; its destruction waits for that: milliseconds with caches, seconds without.
[[nodiscard]] std::jthread readFontCaches();

/// Goes on, after `caches`, with the toolkit's list of fonts. Needs an application object, which
/// outlives the thread.
[[nodiscard]] std::jthread readFontList(std::jthread caches);

} // namespace kelpa
