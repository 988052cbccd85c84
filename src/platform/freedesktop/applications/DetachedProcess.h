// Starts programs that outlive this one.
#pragma once

#include "model/Identifiers.h"

#include <QProcessEnvironment>
#include <QStringList>

#include <optional>
#include <vector>

namespace kelpa {

/// Starts `command` (a program's absolute path with its arguments) in the home directory, as the
/// leader of a session of its own that ends neither with this program nor with its terminal. It
/// inherits no open file, no blocked or ignored signal, and no variable of `environment` that
/// concerns the start of this program; its standard streams are empty, and it leaves no zombie when
/// it ends. `activationToken` permits it to have the focus, where a Wayland compositor gave one;
/// empty for none. None when it cannot be started. Any thread but the main one: it waits until the
/// program has been loaded.
std::optional<ProcessID> startDetached(const QStringList& command,
                                       const QProcessEnvironment& environment,
                                       const QString& activationToken = {});

/// The processes of a session, in no particular order: the one that `startDetached` returned and
/// its descendants, also once the leader itself has ended. Any thread; reads /proc.
std::vector<ProcessID> processesOfSession(ProcessID leader);

} // namespace kelpa
