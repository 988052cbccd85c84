// The status of a process, from /proc.
#pragma once

#include "model/Identifiers.h"

#include <optional>

namespace kelpa {

struct ProcessStatus
{
    /// False for a zombie, which is listed until its parent waits for it.
    bool isRunning = false;
    ProcessID parent = 0;
};

/// None for a process that is gone. Any thread; reads /proc.
std::optional<ProcessStatus> processStatus(ProcessID process);

} // namespace kelpa
