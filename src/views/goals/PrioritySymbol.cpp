#include "views/goals/PrioritySymbol.h"

namespace kelpa {

QString prioritySymbol(GoalPriority priority)
{
    switch (priority) {
    case GoalPriority::p0:
        return QStringLiteral("chevrons-up");
    case GoalPriority::p1:
        return QStringLiteral("chevron-up");
    case GoalPriority::p2:
        return QStringLiteral("equal");
    case GoalPriority::p3:
        return QStringLiteral("chevron-down");
    }
    return {};
}

} // namespace kelpa
