// The board's dimensions that several modules share, in points.
#pragma once

#include "layout/WaterfallLayout.h"

#include <cstdint>
#include <optional>

namespace kelpa {

/// The width of the board's targets, between which there is `targetSpacing`.
inline constexpr double minimumTargetWidth = 320;
inline constexpr double targetSpacing = 22;
/// The sum of the board's left and right margins.
inline constexpr double boardMargins = 64;

/// The width of the breadcrumb rail, without and with the spacing beside it.
inline constexpr double breadcrumbRailWidth = 116;
inline constexpr double breadcrumbRailOuterWidth = 136;

/// The height of the window cards inside a target.
inline constexpr double windowCardHeight = 126;

/// Of a goal's card while it is collapsed, and of its corners and the fade at its lower edge.
inline constexpr double collapsedGoalCardHeight = 292;
inline constexpr double goalCardCornerRadius = 14;
inline constexpr double goalCardFadeHeight = 48;

/// The layout of the targets.
WaterfallLayout targetLayout();

enum class BreadcrumbRail : std::uint8_t { hidden, shown };

/// The width that a board of `boardWidth` leaves for the targets; at least 1.
double targetAreaWidth(double boardWidth, BreadcrumbRail rail);

/// The number of the targets' columns, by which the arrow keys move from row to row; at least 1.
/// None for a width that is not finite: the last known number then stays in force.
std::optional<int> targetGridColumnCount(double boardWidth, BreadcrumbRail rail);

} // namespace kelpa
