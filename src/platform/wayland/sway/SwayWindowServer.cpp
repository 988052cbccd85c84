#include "platform/wayland/sway/SwayWindowServer.h"

#include "platform/LoggingCategories.h"
#include "platform/numbers/CompositorRun.h"
#include "platform/wayland/connection/LocalSocket.h"
#include "platform/wayland/sway/SwayEvents.h"

#include <chrono>
#include <utility>

namespace kelpa::wayland {

namespace {

QByteArray nameOf(const SwayWindow& window)
{
    return QByteArray::number(qlonglong(window.container));
}

} // namespace

SwayWindowServer::SwayWindowServer(const SwayWindowServerNeeds& needs)
    : m_needs(needs),
      m_numbers(needs.reservation, needs.names, needs.highWaterMark, needs.takenNumbers)
{}

std::unique_ptr<DiscoverySource> SwayWindowServer::openDiscoverySource()
{
    const auto begin = std::chrono::steady_clock::now();
    const bool isThere = connect();
    std::optional<SwayTree> read = isThere ? readTree() : std::nullopt;
    const bool isReplying = read.has_value();
    std::optional<std::vector<NumberedSwayWindow>> windows;
    if (isReplying) {
        windows = numbered(m_order.sorted(std::move(read->windows)));
        m_virtualDesktops = std::move(read->workspaces);
        m_unofferedDesktops = std::move(read->unofferedWorkspaces);
    } else if (isThere) {
        // While sway hangs, no window comes or goes.
        windows = this->windows();
    }
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - begin;
    qCDebug(logWayland, "pass has %zu windows of sway%s, in %.1f ms", windows ? windows->size() : 0,
            !isThere     ? ", which is gone"
            : isReplying ? ""
                         : ", which does not reply",
            taken.count());
    {
        const std::scoped_lock lock(m_windowsMutex);
        m_windows = windows;
    }
    m_isThere = isThere;
    if (!windows)
        return std::make_unique<CompositorSnapshot>();
    return std::make_unique<CompositorSnapshot>(describedWindows(*windows), m_needs.resolver,
                                                m_needs.documents, m_virtualDesktops,
                                                m_unofferedDesktops);
}

bool SwayWindowServer::connect()
{
    if (m_connection && !m_connection->isBroken())
        return true;
    m_connection = SwayConnection::open(m_needs.socketPath);
    if (!m_connection)
        // sway accepts few connections ahead. One that hangs has no room for the attempts of more
        // than a few passes.
        return hasListener(m_needs.socketPath);
    m_numbers.begin(identityOrAnew(compositorRun(m_connection->descriptor(), m_needs.socketPath)));
    return true;
}

std::optional<SwayTree> SwayWindowServer::readTree()
{
    if (!m_connection)
        return std::nullopt;
    const std::optional<QByteArray> tree = m_connection->request(
        {SwayMessageType::getTree, {}}, std::chrono::steady_clock::now() + m_needs.replyLimit);
    return tree ? treeIn(*tree) : std::nullopt;
}

std::vector<NumberedSwayWindow> SwayWindowServer::numbered(std::vector<SwayWindow> windows)
{
    std::vector<QByteArray> names;
    names.reserve(windows.size());
    for (const SwayWindow& window : windows)
        names.push_back(nameOf(window));
    return withNumbers(std::move(windows), m_numbers.number(names));
}

std::optional<WindowCapture> SwayWindowServer::captureWindow(const CaptureRequest& request,
                                                             const std::stop_token& stop)
{
    if (!m_needs.pictures)
        return std::nullopt;
    return m_needs.pictures->capture(
        pictureRequest(request, [this](WindowID number) { return identifierOf(number); }), stop);
}

QByteArray SwayWindowServer::identifierOf(WindowID number) const
{
    const std::scoped_lock lock(m_windowsMutex);
    const std::optional<SwayWindow> window =
        m_windows ? windowNumbered(*m_windows, number) : std::nullopt;
    return window ? window->identifier : QByteArray();
}

std::unique_ptr<Subscription> SwayWindowServer::watchWindows(std::function<void()> changed)
{
    return std::make_unique<SwayEvents>(m_needs.scheduler, m_needs.socketPath, std::move(changed));
}

std::optional<std::vector<NumberedSwayWindow>> SwayWindowServer::windows() const
{
    const std::scoped_lock lock(m_windowsMutex);
    return m_windows;
}

} // namespace kelpa::wayland
