// How a title that is wider than its place moves.
#pragma once

namespace kelpa {

/// Points between the end of a moving title and its repeated start.
inline constexpr double marqueeGap = 15;

/// One pass, after which the repeated title stands where the title began.
struct MarqueeMotion
{
    /// Points to the left; 0 for a title that stays still, because it fits.
    double travel = 0;
    /// Of one pass; 0 for a title that stays still.
    double seconds = 0;

    friend bool operator==(const MarqueeMotion&, const MarqueeMotion&) = default;
};

/// Widths in points. The title moves by 14 points a second, and a pass takes at least 4 seconds.
MarqueeMotion marqueeMotion(double textWidth, double availableWidth, double gap = marqueeGap);

} // namespace kelpa
