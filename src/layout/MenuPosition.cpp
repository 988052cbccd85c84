#include "layout/MenuPosition.h"

#include <algorithm>

namespace kelpa {

QPointF menuPosition(const QRectF& anchor, const QSizeF& size, const MenuSpace& space)
{
    const double lastX = space.window.width() - space.margin - size.width();
    const double lastY = space.window.height() - space.margin - size.height();
    // The first place counts where the menu is larger than the window.
    const double x = std::max(space.margin, std::min(anchor.left(), lastX));
    const double y = std::max(space.margin, std::min(anchor.top(), lastY));

    const double below = anchor.bottom() + space.gap;
    if (below <= lastY)
        return {x, std::max(space.margin, below)};
    const double above = anchor.top() - space.gap - size.height();
    if (above >= space.margin)
        return {x, above};
    const double right = anchor.right() + space.gap;
    if (right <= lastX)
        return {right, y};
    const double left = anchor.left() - space.gap - size.width();
    if (left >= space.margin)
        return {left, y};
    return {x, std::max(space.margin, lastY)};
}

} // namespace kelpa
