// Starting programs that live on their own.
#pragma once

#include "model/Identifiers.h"

#include <QProcessEnvironment>
#include <QStringList>

#include <optional>
#include <vector>

namespace kelpa {

/// Starts `command` (a program's absolute path with its arguments) in the home directory, as the
/// leader of a session of its own that ends neither with this program nor with its terminal. It
/// inherits no open file, no signal that is blocked or ignored, and nothing of `environment` that
/// is about the start of this program; it reads and writes nothing, and leaves nothing behind when
/// it ends. None when it cannot be started. Any thread but the main one: it waits until the program
/// has been loaded.
std::optional<ProcessID> startDetached(const QStringList& command,
                                       const QProcessEnvironment& environment);

/// The processes of a session, in no particular order: the one that `startDetached` gave and what
/// it has started, also once it has ended itself. Any thread; reads /proc.
std::vector<ProcessID> processesOfSession(ProcessID leader);

} // namespace kelpa
