#include "platform/wayland/connection/LocalSocket.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <utility>

namespace kelpa::wayland {

namespace {

struct Attempt
{
    /// Closed when there is no connection.
    FileDescriptor socket;
    bool isQueueFull = false;
};

Attempt attempt(const QByteArray& path)
{
    sockaddr_un address{};
    if (path.isEmpty() || static_cast<std::size_t>(path.size()) >= sizeof(address.sun_path))
        return {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // The system's interface takes all kinds of addresses by the type of their common beginning.
    const void* const generic = &address;
    if (!socket.isOpen())
        return {};
    if (::connect(socket.number(), static_cast<const sockaddr*>(generic), sizeof(address)) != 0)
        return {.socket = {}, .isQueueFull = errno == EAGAIN};
    return {.socket = std::move(socket), .isQueueFull = false};
}

} // namespace

FileDescriptor connectedSocket(const QByteArray& path)
{
    return attempt(path).socket;
}

bool hasListener(const QByteArray& path)
{
    const Attempt made = attempt(path);
    return made.socket.isOpen() || made.isQueueFull;
}

std::optional<pid_t> listenerAt(const QByteArray& path)
{
    const FileDescriptor socket = connectedSocket(path);
    ucred peer{};
    socklen_t size = sizeof(peer);
    if (!socket.isOpen() ||
        ::getsockopt(socket.number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0)
        return std::nullopt;
    return peer.pid;
}

bool haveOneListener(const QByteArray& path, const QByteArray& otherPath)
{
    const std::optional<pid_t> listener = listenerAt(path);
    return listener && listener == listenerAt(otherPath);
}

int millisecondsUntil(std::chrono::steady_clock::time_point end)
{
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(end - steady_clock::now()).count();
    return static_cast<int>(std::clamp<decltype(left)>(left, 0, std::numeric_limits<int>::max()));
}

} // namespace kelpa::wayland
