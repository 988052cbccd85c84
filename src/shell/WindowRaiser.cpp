#include "shell/WindowRaiser.h"

#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace kelpa {

std::optional<QPoint> onScreenPosition(const QRect& frame, const QRect& usableArea)
{
    if (usableArea.isEmpty() || frame.intersects(usableArea))
        return std::nullopt;
    QRect centred = frame;
    centred.moveCenter(usableArea.center());
    return QPoint(std::max(centred.left(), usableArea.left()),
                  std::max(centred.top(), usableArea.top()));
}

WindowRaiser::WindowRaiser(QWindow& window, OwnWindow& desktop)
    : m_window(window), m_desktop(desktop)
{}

void WindowRaiser::raise(const ActivationContext& context)
{
    if (!m_window.isVisible())
        m_window.setVisible(true);
    if (const QScreen* const screen = m_window.screen()) {
        if (const auto position =
                onScreenPosition(m_window.frameGeometry(), screen->availableGeometry()))
            m_window.setFramePosition(*position);
    }
    m_desktop.requestFront(m_window, context);
}

} // namespace kelpa
