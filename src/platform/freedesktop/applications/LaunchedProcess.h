// Recognises the processes of a launch, even after the program that was started has ended.
#pragma once

#include "platform/Applications.h"

namespace kelpa {

/// Whether the process or one of its ancestors belongs to the session that the launch began, or has
/// its startup id in the environment, which is inherited where a program leaves the session. False
/// for a process that is gone. Any thread; reads /proc.
bool cameOf(const Launch& launch, ProcessID process);

} // namespace kelpa
