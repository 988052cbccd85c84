// Requests to a board that no Kelpa has open: for one of them, the file is locked, changed by the
// store's own rules, saved and released.
#pragma once

#include "automation/Replies.h"
#include "automation/Requests.h"

#include <QString>

#include <optional>

namespace kelpa {

/// Lists what the file has without changing anything, also where another program has it open. Makes
/// a board where there is none, once something is added. Needs a QCoreApplication, and waits for
/// the disk; main thread.
/// Absent where another program has the board open and it would have to change.
std::optional<automation::Outcome> performOnClosedBoard(const QString& settingsPath,
                                                        const automation::Request& request);

} // namespace kelpa
