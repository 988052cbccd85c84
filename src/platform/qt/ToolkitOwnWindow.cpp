#include "platform/qt/ToolkitOwnWindow.h"

#include <QWindow>

namespace kelpa {

void ToolkitOwnWindow::requestFront(QWindow& window, const ActivationContext&)
{
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
}

std::unique_ptr<Subscription> ToolkitOwnWindow::watchOcclusion(QWindow&, std::function<void(bool)>)
{
    return nullptr;
}

} // namespace kelpa
