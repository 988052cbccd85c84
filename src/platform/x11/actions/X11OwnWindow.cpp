#include "platform/x11/actions/X11OwnWindow.h"

#include "platform/LoggingCategories.h"
#include "platform/x11/actions/EwmhPager.h"
#include "platform/x11/actions/OcclusionMonitor.h"
#include "platform/x11/actions/StartupNotification.h"

#include <QWindow>

#include <utility>

namespace kelpa::x11 {

namespace {

std::uint32_t idOf(const QWindow& window)
{
    return static_cast<std::uint32_t>(window.winId());
}

} // namespace

X11OwnWindow::X11OwnWindow(std::shared_ptr<DisplayConnector> connector, EwmhPager& pager,
                           Scheduler& scheduler, HasLostFocus hasLostFocus)
    : m_connector(std::move(connector)), m_pager(pager), m_scheduler(scheduler),
      m_hasLostFocus(std::move(hasLostFocus)), m_activation(scheduler), m_completions(scheduler)
{}

std::unique_ptr<Subscription>
X11OwnWindow::watchOcclusion(QWindow& window, std::function<void(bool isOccluded)> changed)
{
    return std::make_unique<OcclusionMonitor>(m_connector, m_scheduler, idOf(window),
                                              std::move(changed));
}

void X11OwnWindow::requestFront(QWindow& window, const ActivationContext& context)
{
    requestFront(idOf(window), context);
}

bool X11OwnWindow::hasLostKeyboard(const QWindow& window) const
{
    // Asking for the id of a window that has none yet would create it.
    return window.handle() != nullptr && m_hasLostFocus(idOf(window));
}

void X11OwnWindow::requestFront(std::uint32_t window, const ActivationContext& context)
{
    const std::optional<InputTime> time =
        context.inputTime ? context.inputTime : startupTime(context.startupID);
    qCDebug(logX11Actions, "bringing the board forward, time %s", time ? "known" : "unknown");
    // A later request replaces one that has not begun.
    m_activation.requestStop();
    m_requested = Activation{window, time};
    activateNext();
    if (!context.startupID.isEmpty())
        completeStartup(context.startupID);
}

void X11OwnWindow::activateNext()
{
    if (m_activation.isTaken() || !m_requested)
        return;
    m_activation.start(
        [&pager = m_pager, request = *m_requested](const std::stop_token&) {
            pager.activateOwn(request.window, request.inputTime);
            return Done{};
        },
        [this](const std::optional<Done>&) { activateNext(); }, WorkPriority::normal);
    m_requested.reset();
}

void X11OwnWindow::completeStartup(const QByteArray& startupID)
{
    // Apart from the activation, which the next one may replace: the busy pointer of each launcher
    // has to end.
    m_completions.add(
        [&pager = m_pager, startupID](const std::stop_token&) {
            pager.completeStartup(startupID);
            return Done{};
        },
        [](Done) {});
}

} // namespace kelpa::x11
