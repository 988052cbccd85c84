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

/// What a goal gets when nothing else is known of it.
inline constexpr GoalPriority defaultGoalPriority = GoalPriority::p2;

/// The stored text of a priority, and back; any other text gives none.
QString rawValue(GoalPriority priority);
std::optional<GoalPriority> goalPriorityFromRawValue(QStringView text);

} // namespace kelpa
