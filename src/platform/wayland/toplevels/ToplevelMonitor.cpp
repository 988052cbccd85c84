#include "platform/wayland/toplevels/ToplevelMonitor.h"

#include "platform/wayland/connection/WaylandConnection.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>

namespace kelpa::wayland {

namespace {

constexpr std::size_t mostPending = 64;

} // namespace

ToplevelMonitor::ToplevelMonitor(QByteArray path, std::function<void()> changed,
                                 std::chrono::milliseconds retryDelay)
    : m_path(std::move(path)), m_changed(std::move(changed)), m_retryDelay(retryDelay),
      m_waker(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      m_thread([this](const std::stop_token& stop) { run(stop); })
{}

ToplevelMonitor::~ToplevelMonitor()
{
    m_thread.request_stop();
    wake();
}

std::optional<std::vector<Toplevel>> ToplevelMonitor::windows() const
{
    const std::scoped_lock lock(m_mutex);
    return m_windows;
}

void ToplevelMonitor::request(ToplevelID window, ToplevelAction action)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_requests.emplace_back(window, action);
    }
    wake();
}

void ToplevelMonitor::run(const std::stop_token& stop)
{
    while (!stop.stop_requested()) {
        const std::unique_ptr<WaylandConnection> connection = WaylandConnection::open(m_path);
        if (connection)
            followConnection(stop, *connection);
        publish(std::nullopt);
        if (!stop.stop_requested())
            waitToRetry(stop);
    }
}

void ToplevelMonitor::followConnection(const std::stop_token& stop, WaylandConnection& connection)
{
    ToplevelClient client(connection, m_nextID, [&] { publish(client.windows()); });
    std::deque<std::pair<ToplevelID, ToplevelAction>> pending;
    // Longer than anybody waits; the waker ends it before.
    constexpr std::chrono::hours longWait{1};
    while (!stop.stop_requested()) {
        for (const auto& request : takeRequests())
            pending.push_back(request);
        // What a compositor that hangs did not take is not wanted any more when it replies.
        while (pending.size() > mostPending)
            pending.pop_front();
        while (!pending.empty() && connection.canSend()) {
            client.request(pending.front().first, pending.front().second);
            pending.pop_front();
        }
        const DispatchEnd end =
            connection.dispatch(std::chrono::steady_clock::now() + longWait, m_waker.number());
        if (end == DispatchEnd::lost || client.isFinished())
            return;
        clearWaker();
    }
}

void ToplevelMonitor::waitToRetry(const std::stop_token& stop)
{
    pollfd waker{.fd = m_waker.number(), .events = POLLIN, .revents = 0};
    const auto end = std::chrono::steady_clock::now() + m_retryDelay;
    auto left = m_retryDelay;
    // Requests wake the thread too; without a connection they are for windows that are gone.
    while (left.count() > 0 && !stop.stop_requested()) {
        ::poll(&waker, 1, static_cast<int>(left.count()));
        clearWaker();
        takeRequests();
        left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    }
}

void ToplevelMonitor::publish(std::optional<std::vector<Toplevel>> windows)
{
    {
        const std::scoped_lock lock(m_mutex);
        if (m_windows == windows)
            return;
        m_windows = std::move(windows);
    }
    m_changed();
}

void ToplevelMonitor::wake() const
{
    ::eventfd_write(m_waker.number(), 1);
}

void ToplevelMonitor::clearWaker() const
{
    eventfd_t count = 0;
    ::eventfd_read(m_waker.number(), &count);
}

std::vector<std::pair<ToplevelID, ToplevelAction>> ToplevelMonitor::takeRequests()
{
    const std::scoped_lock lock(m_mutex);
    return std::exchange(m_requests, {});
}

} // namespace kelpa::wayland
