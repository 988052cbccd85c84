// How many pixels of the window server are one point: the one definition of the conversion, which
// an implementation of the interfaces applies to all that it reports.
#pragma once

#include "model/Rect.h"

#include <atomic>

namespace kelpa {

/// A rectangle that is given in pixels, in points.
inline Rect inPoints(const Rect& pixels, double pixelsPerPoint)
{
    return {pixels.x / pixelsPerPoint, pixels.y / pixelsPerPoint, pixels.width / pixelsPerPoint,
            pixels.height / pixelsPerPoint};
}

/// The scale at which the person sees the desktop. Written on the main thread, read on any thread
/// without waiting; 1 until it is known.
class PointScale
{
public:
    double pixelsPerPoint() const { return m_pixelsPerPoint; }

    /// Ignores what cannot be a scale.
    void setPixelsPerPoint(double pixelsPerPoint)
    {
        if (pixelsPerPoint > 0)
            m_pixelsPerPoint = pixelsPerPoint;
    }

private:
    std::atomic<double> m_pixelsPerPoint = 1;
};

} // namespace kelpa
