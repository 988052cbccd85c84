// The motion of a title that is too wide for its view.
#pragma once

namespace kelpa {

/// Points between the end of a moving title and its repeated start.
inline constexpr double marqueeGap = 15;

/// One pass, at whose end the repeated title is where the title began.
struct MarqueeMotion
{
    /// Points towards the beginning of the title: to the left, or to the right for a title that is
    /// read from right to left. 0 for a title that fits and does not move.
    double travel = 0;
    /// The duration of one pass; 0 for a title that does not move.
    double seconds = 0;

    friend bool operator==(const MarqueeMotion&, const MarqueeMotion&) = default;
};

/// Widths in points. The title moves at 14 points per second, and a pass takes at least 4 seconds.
MarqueeMotion marqueeMotion(double textWidth, double availableWidth, double gap = marqueeGap);

} // namespace kelpa
