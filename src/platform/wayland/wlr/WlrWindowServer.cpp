#include "platform/wayland/wlr/WlrWindowServer.h"

#include "platform/LoggingCategories.h"
#include "platform/numbers/CompositorRun.h"
#include "platform/wayland/connection/LocalSocket.h"

#include <QUuid>

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace kelpa::wayland {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds firstListLimit = 1s;
constexpr std::chrono::milliseconds firstListInterval = 2ms;

QByteArray identityOfRun(const QByteArray& socketPath)
{
    const FileDescriptor socket = connectedSocket(socketPath);
    return identityOrAnew(socket.isOpen() ? compositorRun(socket.number(), socketPath)
                                          : std::nullopt);
}

} // namespace

WlrWindowServer::WlrWindowServer(const WlrWindowServerNeeds& needs)
    : m_needs(needs),
      m_numbers(needs.reservation, needs.names, needs.highWaterMark, needs.takenNumbers),
      m_names("kelpa " + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + ' '),
      m_monitor(needs.socketPath, [this] { m_changes.notify(); })
{}

std::unique_ptr<DiscoverySource> WlrWindowServer::openDiscoverySource()
{
    const std::optional<std::vector<Toplevel>> listed = this->listed();
    qCDebug(logWayland, "pass has %zu windows of the compositor%s", listed ? listed->size() : 0,
            listed ? "" : ", which lists none");
    if (m_isListing.exchange(listed.has_value()) != listed.has_value())
        m_changes.notify();
    if (!listed)
        return std::make_unique<WlrSnapshot>();
    if (std::exchange(m_isFirst, false))
        m_numbers.begin(identityOfRun(m_needs.socketPath));
    const std::vector<QByteArray> names = m_names.of(*listed);
    for (const auto& [madeUp, identifier] : m_names.replaced())
        m_numbers.rename(madeUp, identifier);
    const std::vector<NumberedToplevel> windows = withNumbers(*listed, m_numbers.number(names));
    {
        const std::scoped_lock lock(m_mutex);
        m_windows = windows;
    }
    return std::make_unique<WlrSnapshot>(windows, m_needs.ownApplications, m_needs.resolver);
}

std::optional<std::vector<Toplevel>> WlrWindowServer::listed()
{
    const auto end = std::chrono::steady_clock::now() + firstListLimit;
    std::optional<std::vector<Toplevel>> windows = m_monitor.windows();
    while (m_isFirst && !windows && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(firstListInterval);
        windows = m_monitor.windows();
    }
    return windows;
}

std::optional<WindowCapture> WlrWindowServer::captureWindow(const CaptureRequest& request,
                                                            const std::stop_token& stop)
{
    if (!m_needs.pictures)
        return std::nullopt;
    return m_needs.pictures->capture(
        pictureRequest(request, [this](WindowID number) { return identifierOf(number); }), stop);
}

QByteArray WlrWindowServer::identifierOf(WindowID number) const
{
    const std::scoped_lock lock(m_mutex);
    const std::optional<Toplevel> window = windowNumbered(m_windows, number);
    return window ? window->identifier : QByteArray();
}

std::unique_ptr<Subscription> WlrWindowServer::watchWindows(std::function<void()> changed)
{
    return m_changes.subscribeCoalesced(m_needs.scheduler, std::move(changed));
}

std::vector<NumberedToplevel> WlrWindowServer::windows() const
{
    const std::scoped_lock lock(m_mutex);
    return m_windows;
}

std::optional<NumberedToplevel> WlrWindowServer::windowOf(ProcessID process) const
{
    const std::vector<NumberedToplevel> all = windows();
    const auto found = std::ranges::find(all, std::optional(process), processOf);
    return found == all.end() ? std::nullopt : std::optional(*found);
}

void WlrWindowServer::activateOwn(const QString& title)
{
    std::vector<Toplevel> own = m_monitor.windows().value_or(std::vector<Toplevel>());
    std::erase_if(own, [this](const Toplevel& each) {
        return !m_needs.ownApplications.contains(each.appID);
    });
    if (own.empty())
        return;
    auto chosen = std::ranges::find(own, title, &Toplevel::title);
    if (chosen == own.end())
        chosen = own.begin();
    m_monitor.request(chosen->id, ToplevelAction::restore);
    m_monitor.request(chosen->id, ToplevelAction::activate);
}

} // namespace kelpa::wayland
