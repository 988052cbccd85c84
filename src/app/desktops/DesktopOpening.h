// Finds out what the session offers when Kelpa starts, and opens the desktop that is chosen. It
// asks for no more than the choice needs: on a Wayland desktop of its own nobody starts Xwayland.
#pragma once

#include "app/desktops/DesktopChoice.h"
#include "app/desktops/ToolkitArguments.h"
#include "model/Identifiers.h"

#include <QString>

#include <memory>
#include <optional>
#include <set>

namespace kelpa {

class Desktop;
class Scheduler;

/// As `chosenDesktop` for what the session offers. Waits for the servers, and so is to be called
/// before there is an event loop.
std::optional<ChosenDesktop> chooseDesktop(const WindowSystem& system,
                                           std::optional<DesktopKind> asked);

/// `boardPath` is the board's file, beside which state is kept that outlives a session; the other
/// arguments are those of the desktops' constructors.
std::unique_ptr<Desktop> openDesktop(const ChosenDesktop& chosen, Scheduler& scheduler,
                                     const QString& boardPath, const std::set<WindowID>& assigned);

} // namespace kelpa
