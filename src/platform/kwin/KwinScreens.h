// The screens of a KWin session as Kelpa's script within KWin reports them.
#pragma once

#include "model/Rect.h"

#include <QByteArray>
#include <QPoint>

#include <vector>

namespace kelpa::kwin {

/// In points, in a report of their places; those that are empty are left out. Empty when the report
/// is malformed.
std::vector<Rect> screensIn(const QByteArray& report);

/// A pixel on a screen, in points, for which KWin has to draw a frame: in the first of `windows` of
/// which a part is on a screen, since that screen is likely to be on, otherwise in the middle of
/// the first screen. `windows` are the places of those that are shown. Where no screens are
/// known, in the middle of the first window.
QPoint pixelOnScreen(const std::vector<Rect>& screens, const std::vector<Rect>& windows);

} // namespace kelpa::kwin
