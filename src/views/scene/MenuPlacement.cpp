#include "views/scene/MenuPlacement.h"

#include "layout/MenuPosition.h"

namespace kelpa {

QPointF MenuPlacement::position(const QRectF& anchor, const QSizeF& size, const QSizeF& window,
                                double margin, double gap)
{
    return menuPosition(anchor, size, {window, margin, gap});
}

} // namespace kelpa
