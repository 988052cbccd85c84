// Brings the board's window forward, to a position where it is visible.
#pragma once

#include "platform/OwnWindow.h"

#include <QPoint>
#include <QRect>

#include <optional>

class QWindow;

namespace kelpa {

/// Where to move the upper left corner of a window's frame so that it is visible: centres a frame
/// that lies entirely outside the usable area; absent when any part is inside. Both in the same
/// coordinates. A window larger than the area starts at the area's own corner.
std::optional<QPoint> onScreenPosition(const QRect& frame, const QRect& usableArea);

/// Main thread.
class WindowRaiser
{
public:
    /// Both outlive this object.
    WindowRaiser(QWindow& window, OwnWindow& desktop);

    /// Raises the window above all others and gives it the keyboard, whichever program has it now.
    /// Keeps the person's size, and the position unless it is off the screen.
    void raise(const ActivationContext& context = {});

private:
    QWindow& m_window;
    OwnWindow& m_desktop;
};

} // namespace kelpa
