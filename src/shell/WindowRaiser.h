// Bringing the board's window forward, to a place where it can be seen.
#pragma once

#include "platform/OwnWindow.h"

#include <QPoint>
#include <QRect>

#include <optional>

class QWindow;

namespace kelpa {

/// Where the upper left corner of a window's frame must go to be seen: in the middle of the usable
/// area when the frame lies wholly outside it; nowhere else when any part of it is inside. Both in
/// the same coordinates. A window larger than the area begins at the area's own corner.
std::optional<QPoint> rescuedPosition(const QRect& frame, const QRect& usableArea);

/// Main thread.
class WindowRaiser
{
public:
    /// Both outlive it.
    WindowRaiser(QWindow& window, OwnWindow& desktop);

    /// In front of all others and with the keyboard, whichever program has it now. Never hides or
    /// resizes it: the person's size and place survive, but for a place off the screen.
    void raise(const FrontOccasion& occasion = {});

private:
    QWindow& m_window;
    OwnWindow& m_desktop;
};

} // namespace kelpa
