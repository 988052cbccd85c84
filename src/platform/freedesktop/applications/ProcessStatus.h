// What the system says of a process.
#pragma once

#include "model/Identifiers.h"

#include <optional>

namespace kelpa {

struct ProcessStatus
{
    /// It has not ended. One that has may still be listed until its parent takes note.
    bool isRunning = false;
    ProcessID parent = 0;
};

/// None for a process that is gone. Any thread; reads /proc.
std::optional<ProcessStatus> processStatus(ProcessID process);

} // namespace kelpa
