#include "layout/MarqueeMotion.h"

#include <algorithm>

namespace kelpa {

namespace {

constexpr double pointsPerSecond = 14;
constexpr double minimumPassSeconds = 4;

} // namespace

MarqueeMotion marqueeMotion(double textWidth, double availableWidth, double gap)
{
    if (!(textWidth > availableWidth))
        return {};
    const double travel = textWidth + gap;
    return {travel, std::max(travel / pointsPerSecond, minimumPassSeconds)};
}

} // namespace kelpa
