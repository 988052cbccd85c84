#include "platform/wayland/connection/WaylandConnection.h"

#include "platform/FileDescriptor.h"
#include "platform/wayland/connection/LocalSocket.h"

#include <poll.h>
#include <wayland-client.h>

#include <array>
#include <cerrno>
#include <chrono>

namespace kelpa::wayland {

namespace {

/// Deletes a proxy that has nothing to say to the compositor about that.
struct ProxyDeleter
{
    void operator()(wl_callback* callback) const { wl_callback_destroy(callback); }
};

} // namespace

QByteArray socketPath(const QByteArray& display, const QByteArray& runtimeDirectory)
{
    QByteArray name = display.isEmpty() ? QByteArray("wayland-0") : display;
    if (name.startsWith('/'))
        return name;
    return runtimeDirectory.startsWith('/') ? runtimeDirectory + '/' + name : QByteArray();
}

std::unique_ptr<WaylandConnection> WaylandConnection::open(const QByteArray& path)
{
    FileDescriptor socket = connectedSocket(path);
    if (!socket.isOpen())
        return nullptr;
    // The library closes the socket, also when it fails.
    wl_display* const display = wl_display_connect_to_fd(socket.release());
    if (!display)
        return nullptr;
    return std::unique_ptr<WaylandConnection>(new WaylandConnection(display));
}

WaylandConnection::~WaylandConnection()
{
    wl_display_disconnect(m_display);
}

bool WaylandConnection::isBroken() const
{
    return wl_display_get_error(m_display) != 0;
}

bool WaylandConnection::canSend()
{
    return wl_display_flush(m_display) >= 0;
}

DispatchEnd WaylandConnection::dispatch(Time end, int waker)
{
    if (wl_display_prepare_read(m_display) != 0) {
        return wl_display_dispatch_pending(m_display) < 0 ? DispatchEnd::lost
                                                          : DispatchEnd::dispatched;
    }
    std::array<pollfd, 2> descriptors{
        pollfd{.fd = wl_display_get_fd(m_display), .events = POLLIN, .revents = 0},
        pollfd{.fd = waker, .events = POLLIN, .revents = 0}};
    // A compositor that does not read has let the socket's buffer fill up.
    if (wl_display_flush(m_display) < 0 && errno == EAGAIN)
        descriptors[0].events |= POLLOUT;
    int ready = 0;
    do {
        ready = ::poll(descriptors.data(), descriptors.size(), millisecondsUntil(end));
    } while (ready < 0 && errno == EINTR);
    if (descriptors[0].revents == 0) {
        wl_display_cancel_read(m_display);
        return ready > 0 ? DispatchEnd::wakened : DispatchEnd::timedOut;
    }
    if ((descriptors[0].revents & ~POLLOUT) == 0)
        wl_display_cancel_read(m_display);
    else if (wl_display_read_events(m_display) < 0)
        return DispatchEnd::lost;
    return wl_display_dispatch_pending(m_display) < 0 ? DispatchEnd::lost : DispatchEnd::dispatched;
}

bool WaylandConnection::roundTrip(Time end)
{
    const std::unique_ptr<wl_callback, ProxyDeleter> done(wl_display_sync(m_display));
    if (!done)
        return false;
    bool isDone = false;
    static constexpr wl_callback_listener listener{
        .done = [](void* data, wl_callback*, std::uint32_t) { *static_cast<bool*>(data) = true; }};
    wl_callback_add_listener(done.get(), &listener, &isDone);
    while (!isDone) {
        const DispatchEnd result = dispatch(end);
        // A compositor that never stops sending lets no wait time out.
        if (result == DispatchEnd::lost || result == DispatchEnd::timedOut ||
            std::chrono::steady_clock::now() >= end)
            return isDone;
    }
    return true;
}

} // namespace kelpa::wayland
