// Commands that read and change the board, as the command line offers them: by a Kelpa that runs
// with the board, or else on its file.
#pragma once

#include "app/BackupCommands.h"
#include "automation/Commands.h"

#include <QString>

#include <variant>

namespace kelpa {

/// Waits a few seconds at most for a Kelpa that runs. Needs a QCoreApplication without an event
/// loop. `activationToken` is what a launcher gave to this process.
CommandOutput
runAutomation(const std::variant<automation::Command, automation::UsageError>& command,
              const QString& activationToken);

} // namespace kelpa
