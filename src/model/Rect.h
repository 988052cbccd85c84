// A rectangle of the desktop, such as the frame of a window: origin at the top left, y downwards.
//
// Units. Lengths are in points wherever a declaration names no other unit: device-independent
// pixels, which Qt Quick calls pixels. A point is as many pixels of the screen as the screen's
// scale says. A window server that counts in pixels is converted where it is read
// (`platform/PointScale.h`), so that windows of all programs and Kelpa's own are in one unit.
#pragma once

#include <QHashFunctions>

namespace kelpa {

/// Compared exactly, in standardized form: a rectangle given from another corner is the same one.
struct Rect
{
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    /// The same rectangle with non-negative width and height.
    Rect standardized() const
    {
        Rect rect = *this;
        if (rect.width < 0) {
            rect.x += rect.width;
            rect.width = -rect.width;
        }
        if (rect.height < 0) {
            rect.y += rect.height;
            rect.height = -rect.height;
        }
        return rect;
    }

    friend bool operator==(const Rect& left, const Rect& right)
    {
        const Rect a = left.standardized();
        const Rect b = right.standardized();
        return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
    }

    friend size_t qHash(const Rect& rect, size_t seed = 0)
    {
        const Rect r = rect.standardized();
        return qHashMulti(seed, r.x, r.y, r.width, r.height);
    }
};

} // namespace kelpa
