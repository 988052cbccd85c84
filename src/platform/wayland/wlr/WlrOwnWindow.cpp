#include "platform/wayland/wlr/WlrOwnWindow.h"

#include "platform/wayland/wlr/WlrWindowServer.h"

namespace kelpa::wayland {

void WlrOwnWindow::requestFront(QWindow&, const ActivationContext&)
{
    m_server.activateOwn();
}

std::unique_ptr<Subscription> WlrOwnWindow::watchOcclusion(QWindow&,
                                                           std::function<void(bool isOccluded)>)
{
    return nullptr;
}

} // namespace kelpa::wayland
