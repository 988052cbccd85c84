#include "platform/wayland/sway/SwayOwnWindow.h"

#include "platform/wayland/sway/SwayCommands.h"

#include <QCoreApplication>

#include <optional>
#include <utility>

namespace kelpa::wayland {

void SwayOwnWindow::requestFront(QWindow&, const ActivationContext&)
{
    // sway's own commands need no activation token.
    m_isRequested = true;
    activate();
}

void SwayOwnWindow::activate()
{
    if (m_activation.isTaken() || !std::exchange(m_isRequested, false))
        return;
    m_activation.start(
        [&commands = m_commands,
         own = static_cast<ProcessID>(QCoreApplication::applicationPid())](const std::stop_token&) {
            commands.focusLatest(own);
            return Done{};
        },
        [this](const std::optional<Done>&) { activate(); }, WorkPriority::normal);
}

std::unique_ptr<Subscription> SwayOwnWindow::watchOcclusion(QWindow&, std::function<void(bool)>)
{
    return nullptr;
}

} // namespace kelpa::wayland
