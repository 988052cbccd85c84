#include "platform/wayland/wlr/WlrOwnWindow.h"

#include "platform/wayland/wlr/WlrWindowServer.h"

#include <QWindow>

namespace kelpa::wayland {

void WlrOwnWindow::requestFront(QWindow& window, const ActivationContext&)
{
    m_server.activateOwn(window.title());
}

std::unique_ptr<Subscription> WlrOwnWindow::watchOcclusion(QWindow&,
                                                           std::function<void(bool isOccluded)>)
{
    return nullptr;
}

} // namespace kelpa::wayland
