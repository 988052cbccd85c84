// Brings the Kelpa forward that has the board open, where the session bus cannot.
#pragma once

#include "app/desktops/DesktopChoice.h"

#include <QtGlobal>

#include <optional>

namespace kelpa {

class Scheduler;

/// Activates the topmost window of `process` through sway or, where Kelpa's windows are on X11,
/// through the window manager; no other compositor tells whose a window is. Waits for them a few
/// seconds at most; false where that was in vain, as without a process. Main thread.
bool bringForward(std::optional<qint64> process, DesktopKind desktop, Scheduler& scheduler);

} // namespace kelpa
