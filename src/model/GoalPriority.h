// How urgent a goal is; the first key of the automatic goal order.
#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <cstdint>
#include <optional>

namespace kelpa {

enum class GoalPriority : std::uint8_t { p0, p1, p2, p3 };

inline constexpr std::array allGoalPriorities{GoalPriority::p0, GoalPriority::p1, GoalPriority::p2,
                                              GoalPriority::p3};

/// The priority of a goal for which none is stored or chosen.
inline constexpr GoalPriority defaultGoalPriority = GoalPriority::p2;

/// The stored text of a priority, and back; absent for any other text.
QString rawValue(GoalPriority priority);
std::optional<GoalPriority> goalPriorityFromRawValue(QStringView text);

} // namespace kelpa
