// The measures of the board that several rooms must agree on, in points.
#pragma once

#include "layout/WaterfallLayout.h"

#include <cstdint>
#include <optional>

namespace kelpa {

/// Of the board's targets.
inline constexpr double minimumTargetWidth = 320;
inline constexpr double targetSpacing = 22;
/// What the board's margins take of its width.
inline constexpr double boardMargins = 64;

/// Of the breadcrumb rail itself, and with the spacing beside it.
inline constexpr double breadcrumbRailWidth = 116;
inline constexpr double breadcrumbRailOuterWidth = 136;

/// Of the window cards inside a target.
inline constexpr double windowCardHeight = 126;

/// Of a goal's card while it is collapsed, and of what is drawn around it.
inline constexpr double collapsedGoalCardHeight = 292;
inline constexpr double goalCardCornerRadius = 14;
inline constexpr double goalCardFadeHeight = 48;

/// How the targets are laid out.
WaterfallLayout targetLayout();

enum class BreadcrumbRail : std::uint8_t { hidden, shown };

/// What the targets have of a board `boardWidth` wide; at least 1.
double targetAreaWidth(double boardWidth, BreadcrumbRail rail);

/// The number of columns in which the targets stand, for the arrow keys to move by whole rows; at
/// least 1. None when the width is not finite: the last known number then stays.
std::optional<int> targetGridColumnCount(double boardWidth, BreadcrumbRail rail);

} // namespace kelpa
