#include "layout/ExpandableHeightLayout.h"

#include <algorithm>

namespace kelpa {

QSizeF ExpandableHeightLayout::sizeThatFits(std::optional<double> proposedWidth,
                                            std::optional<QSizeF> child) const
{
    if (!child)
        return {0, 0};
    const double progress = std::clamp(expansionProgress, 0.0, 1.0);
    const double growth = std::max(child->height(), collapsedHeight) - collapsedHeight;
    return {proposedWidth.value_or(child->width()), collapsedHeight + progress * growth};
}

double ExpandableHeightLayout::progressAt(double height, double idealHeight) const
{
    const double growth = idealHeight - collapsedHeight;
    return growth > 0 ? std::clamp((height - collapsedHeight) / growth, 0.0, 1.0) : 0;
}

QRectF ExpandableHeightLayout::childFrame(const QRectF& bounds, double idealHeight)
{
    return {bounds.x(), bounds.y(), bounds.width(), idealHeight};
}

} // namespace kelpa
