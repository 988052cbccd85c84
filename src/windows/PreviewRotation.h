// Whose turn it is to be captured, and the size at which a capture is shown. The rate of turns is
// `PreviewCaptures::interval`.
#pragma once

#include "model/Preview.h"
#include "model/WindowItem.h"

#include <QList>
#include <QSize>
#include <QSizeF>

#include <vector>

namespace kelpa {

/// Longest side of a preview's display size, in points.
inline constexpr int previewLongestSide = 720;

/// The size at which a card draws a preview, in points. A picture is kept in as many pixels as that
/// has on the screen: it is drawn pixel for pixel, and hundreds take little memory.
inline constexpr QSize previewCardSize{128, 72};

struct PreviewTurn
{
    /// Index of the window that is captured now.
    qsizetype index = 0;
    /// Where the next turn begins.
    qsizetype nextCursor = 0;
};

/// The turn of `cursor` among `count` windows, which is at least 1; windows may have come and gone
/// since the cursor was made.
PreviewTurn previewTurn(qsizetype cursor, qsizetype count);

/// The windows whose turns come after that of `turn`, the nearest first: at most three, so that
/// getting ready for them costs little at a time and a program has drawn what was covered by then.
std::vector<WindowID> windowsOfNextTurns(const PreviewTurn& turn, const QList<WindowItem>& windows);

/// The display size, in points, of a capture of `pixelSize`: the longer side brought down to
/// `previewLongestSide`, never up; at least one point in each direction.
QSizeF previewDisplaySize(const QSize& pixelSize);

/// `previews` of the windows that are still listed, with those of `captured` laid over them.
Previews mergedPreviews(const Previews& previews, const Previews& captured,
                        const QList<WindowItem>& windows);

} // namespace kelpa
