// The text of --about-desktop: what the session offers, which desktop Kelpa takes, what it can do
// there, and why not the rest. In English, as all that the command line prints: people send it with
// bug reports.
#pragma once

#include "app/desktops/DesktopChoice.h"
#include "app/desktops/SessionReading.h"
#include "platform/DesktopAbilities.h"

#include <QString>

#include <optional>

namespace kelpa {

/// What the reading means for the choice.
SessionOffer offerOf(const SessionReading& reading);

/// What the desktop gives in that session.
DesktopAbilities abilitiesOn(const ChosenDesktop& chosen, const SessionReading& reading);

/// `asked` for by the person, and `system` of the toolkit, as for `chosenDesktop`.
QString aboutDesktop(const SessionReading& reading, std::optional<DesktopKind> asked,
                     const WindowSystem& system);

} // namespace kelpa
