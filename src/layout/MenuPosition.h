// Where a menu opens, so that it covers nothing that the pointer may be on.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace kelpa {

/// The space in which a menu opens, in points of the window.
struct MenuSpace
{
    QSizeF window;
    /// Kept free along the edges of the window.
    double margin = 0;
    /// Between the anchor and the menu.
    double gap = 0;
};

/// The position of the upper left corner of a menu of `size` for `anchor`, the button that opens it
/// or, as a rectangle of no size, the position of a press. All in points of the window.
///
/// The menu is below the anchor, or else above it, to its right or to its left: the first of these
/// where all of it is within the window. It does not cover the anchor, so that a second click at
/// the same position chooses nothing. Where there is no such place, it is as far below as the
/// window allows.
QPointF menuPosition(const QRectF& anchor, const QSizeF& size, const MenuSpace& space);

} // namespace kelpa
