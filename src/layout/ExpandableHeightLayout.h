// One card between a collapsed height and its own. Pure geometry in points.
#pragma once

#include <QRectF>
#include <QSizeF>

#include <optional>

namespace kelpa {

struct ExpandableHeightLayout
{
    /// 0 is collapsed and 1 expanded; what lies outside counts as the nearer of the two, so that
    /// an animation may overshoot.
    double expansionProgress = 0;
    double collapsedHeight = 0;

    /// `child` is the child's ideal size at the proposed width; without a child the size is 0 by 0.
    /// Without a proposed width the child's own is taken.
    QSizeF sizeThatFits(std::optional<double> proposedWidth, std::optional<QSizeF> child) const;

    /// Where the child goes: at the top left, as wide as the bounds and as high as it wants to be.
    /// What extends below the bounds is to be clipped.
    static QRectF childFrame(const QRectF& bounds, double idealHeight);

    friend bool operator==(const ExpandableHeightLayout&, const ExpandableHeightLayout&) = default;
};

} // namespace kelpa
