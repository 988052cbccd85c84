#include "platform/wayland/connection/LocalSocket.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace kelpa::wayland {

FileDescriptor connectedSocket(const QByteArray& path)
{
    sockaddr_un address{};
    if (path.isEmpty() || static_cast<std::size_t>(path.size()) >= sizeof(address.sun_path))
        return {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // The system's interface takes all kinds of addresses by the type of their common beginning.
    const void* const generic = &address;
    if (!socket.isOpen() ||
        ::connect(socket.number(), static_cast<const sockaddr*>(generic), sizeof(address)) != 0)
        return {};
    return socket;
}

int millisecondsUntil(std::chrono::steady_clock::time_point end)
{
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(end - steady_clock::now()).count();
    return static_cast<int>(std::clamp<decltype(left)>(left, 0, std::numeric_limits<int>::max()));
}

} // namespace kelpa::wayland
