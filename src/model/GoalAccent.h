// The five colours of goals.
#pragma once

#include <QColor>
#include <QString>
#include <QStringView>

#include <array>
#include <cstdint>
#include <optional>

namespace kelpa {

enum class GoalAccent : std::uint8_t { blue, green, orange, purple, pink };

inline constexpr std::array allGoalAccents{GoalAccent::blue, GoalAccent::green, GoalAccent::orange,
                                           GoalAccent::purple, GoalAccent::pink};

/// The stored text of an accent, and back; absent for any other text.
QString rawValue(GoalAccent accent);
std::optional<GoalAccent> goalAccentFromRawValue(QStringView text);

/// Whether the interface has a light or a dark background.
enum class Appearance : std::uint8_t { light, dark };

/// The accent as it is drawn. Every goal colour of the interface comes from here.
QColor color(GoalAccent accent, Appearance appearance);

} // namespace kelpa
