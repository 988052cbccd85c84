// Which processes came of a launch, also where the program that was started has ended.
#pragma once

#include "platform/Applications.h"

namespace kelpa {

/// Whether the process, or one that it was started by, is of the session that the launch began or
/// was told its startup id, which is inherited where a program leaves the session. False for a
/// process that is gone. Any thread; reads /proc.
bool cameOf(const Launch& launch, ProcessID process);

} // namespace kelpa
