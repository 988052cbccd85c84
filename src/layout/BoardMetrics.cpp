#include "layout/BoardMetrics.h"

#include <algorithm>
#include <cmath>

namespace kelpa {

WaterfallLayout targetLayout()
{
    return {.minimumColumnWidth = minimumTargetWidth,
            .spacing = targetSpacing,
            .fixedItemHeight = std::nullopt,
            .fixedColumnCount = std::nullopt};
}

double targetAreaWidth(double boardWidth, BreadcrumbRail rail)
{
    const double railWidth = rail == BreadcrumbRail::shown ? breadcrumbRailOuterWidth : 0;
    return std::max(boardWidth - railWidth - boardMargins, 1.0);
}

std::optional<int> targetGridColumnCount(double boardWidth, BreadcrumbRail rail)
{
    const double width = targetAreaWidth(boardWidth, rail);
    return std::isfinite(width) ? std::optional<int>(targetLayout().columnCount(width))
                                : std::nullopt;
}

} // namespace kelpa
