// The symbols that show how urgent a goal is.
#pragma once

#include "model/GoalPriority.h"

#include <QString>

namespace kelpa {

/// The name of the symbol.
QString prioritySymbol(GoalPriority priority);

} // namespace kelpa
