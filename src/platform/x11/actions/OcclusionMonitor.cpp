#include "platform/x11/actions/OcclusionMonitor.h"

#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/XcbEvent.h"

#include <utility>

namespace kelpa::x11 {

OcclusionMonitor::OcclusionMonitor(std::shared_ptr<DisplayConnector> connector,
                                   Scheduler& scheduler, std::uint32_t window,
                                   std::function<void(bool isCovered)> changed)
    : m_window(window), m_changed(std::move(changed))
{
    m_connecting = scheduler.inBackground(
        [connector = std::move(connector), window](const std::stop_token&) {
            std::unique_ptr<DisplayConnection> link = connector->open();
            if (link) {
                const BrokenPipeGuard guard;
                selectEvents(link->connection(), window, XCB_EVENT_MASK_VISIBILITY_CHANGE);
                link->connection().flush();
            }
            return link;
        },
        [this](std::unique_ptr<DisplayConnection> link) { connected(std::move(link)); });
}

OcclusionMonitor::~OcclusionMonitor() = default;

void OcclusionMonitor::connected(std::unique_ptr<DisplayConnection> link)
{
    if (!link)
        return;
    m_link = std::move(link);
    m_notifier = std::make_unique<QSocketNotifier>(m_link->connection().fileDescriptor(),
                                                   QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { process(); });
    // What came along while the connection was made does not wake the notifier.
    process();
}

void OcclusionMonitor::process()
{
    const BrokenPipeGuard guard;
    bool isCovered = m_isCovered;
    while (const XcbEvent event = m_link->connection().pollEvent()) {
        if (typeOf(*event) != XCB_VISIBILITY_NOTIFY)
            continue;
        const auto& notice = as<xcb_visibility_notify_event_t>(*event);
        if (notice.window == m_window)
            isCovered = notice.state == XCB_VISIBILITY_FULLY_OBSCURED;
    }
    if (m_link->connection().isBroken()) {
        // Without the server there is no window either.
        m_notifier->setEnabled(false);
        return;
    }
    set(isCovered);
}

void OcclusionMonitor::set(bool isCovered)
{
    if (m_isCovered == isCovered)
        return;
    m_isCovered = isCovered;
    m_changed(isCovered);
}

} // namespace kelpa::x11
