// Interpolates a card's height between a collapsed height and that of its content. Pure geometry in
// points.
#pragma once

#include <QRectF>
#include <QSizeF>

#include <optional>

namespace kelpa {

struct ExpandableHeightLayout
{
    /// From 0, collapsed, to 1, expanded; clamped, so that an animation may overshoot.
    double expansionProgress = 0;
    double collapsedHeight = 0;

    /// `child` is the child's ideal size at the proposed width; without a child the size is 0 by 0.
    /// Without a proposed width, the child's own applies.
    QSizeF sizeThatFits(std::optional<double> proposedWidth, std::optional<QSizeF> child) const;

    /// The progress at which a child of `idealHeight` shows in `height`; from 0 to 1.
    double progressAt(double height, double idealHeight) const;

    /// The child's frame: at the top left of the bounds, with their width and its ideal height. The
    /// caller clips it at the lower edge of the bounds.
    static QRectF childFrame(const QRectF& bounds, double idealHeight);

    friend bool operator==(const ExpandableHeightLayout&, const ExpandableHeightLayout&) = default;
};

} // namespace kelpa
