#include "platform/x11/actions/OcclusionMonitor.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbEvent.h"

#include <utility>

namespace kelpa::x11 {

OcclusionMonitor::OcclusionMonitor(std::shared_ptr<DisplayConnector> connector,
                                   Scheduler& scheduler, std::uint32_t window,
                                   std::function<void(bool isOccluded)> changed)
    : m_window(window), m_changed(std::move(changed))
{
    m_connecting = scheduler.inBackground(
        [connector = std::move(connector), window](const std::stop_token&) {
            std::unique_ptr<DisplayConnection> display = connector->open();
            if (display) {
                const BrokenPipeGuard guard;
                selectEvents(display->connection(), window, XCB_EVENT_MASK_VISIBILITY_CHANGE);
                display->connection().flush();
            }
            return display;
        },
        [this](std::unique_ptr<DisplayConnection> display) { connected(std::move(display)); });
}

OcclusionMonitor::~OcclusionMonitor() = default;

void OcclusionMonitor::connected(std::unique_ptr<DisplayConnection> display)
{
    if (!display)
        return;
    m_display = std::move(display);
    m_notifier = std::make_unique<QSocketNotifier>(m_display->connection().fileDescriptor(),
                                                   QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { processEvents(); });
    // Events that arrived while the connection was opened do not wake the notifier.
    processEvents();
}

void OcclusionMonitor::processEvents()
{
    const BrokenPipeGuard guard;
    bool isOccluded = m_isOccluded;
    while (const XcbEvent event = m_display->connection().pollEvent()) {
        if (typeOf(*event) != XCB_VISIBILITY_NOTIFY)
            continue;
        const auto& visibility = as<xcb_visibility_notify_event_t>(*event);
        if (visibility.window == m_window)
            isOccluded = visibility.state == XCB_VISIBILITY_FULLY_OBSCURED;
    }
    if (m_display->connection().isBroken()) {
        // Without the server there is no window either.
        m_notifier->setEnabled(false);
        return;
    }
    setOccluded(isOccluded);
}

void OcclusionMonitor::setOccluded(bool isOccluded)
{
    if (m_isOccluded == isOccluded)
        return;
    m_isOccluded = isOccluded;
    m_changed(isOccluded);
}

} // namespace kelpa::x11
