#include "platform/kwin/KwinOwnWindow.h"

#include "platform/kwin/KwinWindowServer.h"

#include <QCoreApplication>

namespace kelpa::kwin {

void KwinOwnWindow::requestFront(QWindow&, const ActivationContext&)
{
    const auto own = static_cast<ProcessID>(QCoreApplication::applicationPid());
    m_server.order({.action = KwinAction::restore, .process = own});
    m_server.order({.action = KwinAction::activate, .process = own});
}

std::unique_ptr<Subscription> KwinOwnWindow::watchOcclusion(QWindow&, std::function<void(bool)>)
{
    return nullptr;
}

} // namespace kelpa::kwin
