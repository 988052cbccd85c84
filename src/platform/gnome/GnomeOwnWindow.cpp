#include "platform/gnome/GnomeOwnWindow.h"

#include "platform/gnome/ShellClient.h"

#include <utility>

namespace kelpa::gnome {

void GnomeOwnWindow::requestFront(QWindow& window, const ActivationContext& context)
{
    m_window = &window;
    m_context = context;
    m_isRequested = true;
    activate();
}

void GnomeOwnWindow::activate()
{
    if (m_activation.isTaken() || !std::exchange(m_isRequested, false))
        return;
    m_activation.start(
        [&client = m_client](const std::stop_token&) { return client.bringForward(); },
        [this](std::optional<bool> isDone) {
            if (!isDone.value_or(true) && m_window)
                m_fallback.requestFront(*m_window, m_context);
            activate();
        },
        WorkPriority::normal);
}

std::unique_ptr<Subscription> GnomeOwnWindow::watchOcclusion(QWindow&, std::function<void(bool)>)
{
    return nullptr;
}

} // namespace kelpa::gnome
