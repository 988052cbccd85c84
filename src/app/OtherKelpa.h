// Brings the Kelpa forward that has the board open, where the session bus cannot.
#pragma once

#include <QtGlobal>

#include <optional>

namespace kelpa {

class Scheduler;

/// Activates the topmost window of `process` on this display through the window manager. Waits for
/// the window server and manager a few seconds at most; false where that was in vain, as without a
/// process. Main thread.
bool bringForward(std::optional<qint64> process, Scheduler& scheduler);

} // namespace kelpa
