#include "model/GoalPriority.h"

#include "model/RawValues.h"

namespace kelpa {

namespace {

constexpr RawValues<GoalPriority, 4> priorityRawValues{{{
    {GoalPriority::p0, u"p0"},
    {GoalPriority::p1, u"p1"},
    {GoalPriority::p2, u"p2"},
    {GoalPriority::p3, u"p3"},
}}};

} // namespace

QString rawValue(GoalPriority priority)
{
    return priorityRawValues.text(priority);
}

std::optional<GoalPriority> goalPriorityFromRawValue(QStringView text)
{
    return priorityRawValues.value(text);
}

} // namespace kelpa
