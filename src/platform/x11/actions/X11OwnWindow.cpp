#include "platform/x11/actions/X11OwnWindow.h"

#include "platform/LoggingCategories.h"
#include "platform/x11/actions/OcclusionMonitor.h"
#include "platform/x11/actions/StartupNotification.h"
#include "platform/x11/actions/WindowActor.h"

#include <utility>

namespace kelpa::x11 {

X11OwnWindow::X11OwnWindow(std::shared_ptr<DisplayConnector> connector, WindowActor& actor,
                           Scheduler& scheduler)
    : m_connector(std::move(connector)), m_actor(actor), m_scheduler(scheduler),
      m_startupEnds(scheduler)
{}

std::unique_ptr<Subscription>
X11OwnWindow::watchCovered(std::uint32_t window, std::function<void(bool isCovered)> changed)
{
    return std::make_unique<OcclusionMonitor>(m_connector, m_scheduler, window, std::move(changed));
}

void X11OwnWindow::requestFront(std::uint32_t window, const FrontOccasion& occasion)
{
    const std::optional<InputTime> time =
        occasion.inputTime ? occasion.inputTime : startupTime(occasion.startupID);
    qCDebug(logX11Actions, "bringing the board forward, time %s", time ? "known" : "unknown");
    // A later request replaces one that has not begun.
    m_request = m_scheduler.inBackground(
        [&actor = m_actor, window, time](const std::stop_token&) {
            actor.bringOwnForward(window, time);
            return Done{};
        },
        [](Done) {});
    if (!occasion.startupID.isEmpty())
        endStartup(occasion.startupID);
}

void X11OwnWindow::endStartup(const QByteArray& startupID)
{
    // By itself, so that the pointer of each launcher ends, also when the next start comes before
    // the window has.
    m_startupEnds.inBackground(
        [&actor = m_actor, startupID](const std::stop_token&) {
            actor.endStartup(startupID);
            return Done{};
        },
        [](Done) {});
}

} // namespace kelpa::x11
