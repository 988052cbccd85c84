#include "layout/MarqueeMotion.h"

#include <algorithm>

namespace kelpa {

namespace {

constexpr double pointsPerSecond = 14;
constexpr double shortestPass = 4;

} // namespace

MarqueeMotion marqueeMotion(double textWidth, double availableWidth, double gap)
{
    if (!(textWidth > availableWidth))
        return {};
    const double travel = textWidth + gap;
    return {travel, std::max(travel / pointsPerSecond, shortestPass)};
}

} // namespace kelpa
