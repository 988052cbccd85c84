// Whose turn it is to be captured, and the size at which a capture is shown. The time
// between two turns is `PreviewCaptures::interval`.
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

/// The size at which a card draws a preview, in points. Pictures are kept in as many pixels as that
/// has on the screen, so that they are drawn pixel for pixel and hundreds take little memory.
inline constexpr QSize previewCardSize{128, 72};

struct PreviewTurn
{
    /// Index of the window that is captured now.
    qsizetype index = 0;
    /// The cursor for the next turn.
    qsizetype nextCursor = 0;
};

/// The turn of `cursor` among `count` windows, which is at least 1; windows may have come and gone
/// since the cursor was made.
PreviewTurn previewTurn(qsizetype cursor, qsizetype count);

/// The windows captured after `turn`, the next one first: at most three, so that preparing them
/// costs little at a time, yet a program has redrawn what was covered before its turn comes.
std::vector<WindowID> windowsOfUpcomingTurns(const PreviewTurn& turn,
                                             const QList<WindowItem>& windows);

/// The display size, in points, of a capture of a window of `pixelSize`, one point for each pixel:
/// scaled down to `previewLongestSide` on the longer side, never up; at least one point in each
/// direction.
QSizeF previewDisplaySize(const QSize& pixelSize);

/// `previews` without those of windows that are no longer listed, overwritten by `captured`.
Previews mergedPreviews(const Previews& previews, const Previews& captured,
                        const QList<WindowItem>& windows);

} // namespace kelpa
