#include "platform/wayland/sway/SwayConnection.h"

#include "platform/wayland/connection/LocalSocket.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <utility>

namespace kelpa::wayland {

std::unique_ptr<SwayConnection> SwayConnection::open(const QByteArray& path)
{
    FileDescriptor socket = connectedSocket(path);
    if (!socket.isOpen())
        return nullptr;
    return std::unique_ptr<SwayConnection>(new SwayConnection(std::move(socket)));
}

std::optional<QByteArray> SwayConnection::request(const SwayMessage& message, Time end)
{
    if (!isBroken() && send(encodedSwayMessage(message), end)) {
        while (!isBroken()) {
            while (std::optional<SwayMessage> received = m_reader.next()) {
                if (received->type == message.type)
                    return std::move(received->payload);
                m_events.push_back(*std::move(received));
            }
            const bool hasArrived = receive() || isBroken() || waitFor(POLLIN, end);
            if (!hasArrived || std::chrono::steady_clock::now() > end)
                break;
        }
    }
    m_isBroken = true;
    return std::nullopt;
}

std::optional<SwayMessage> SwayConnection::poll()
{
    if (!m_events.empty()) {
        SwayMessage event = std::move(m_events.front());
        m_events.pop_front();
        return event;
    }
    while (true) {
        if (std::optional<SwayMessage> message = m_reader.next())
            return message;
        if (isBroken() || !receive())
            return std::nullopt;
    }
}

bool SwayConnection::send(const QByteArray& bytes, Time end)
{
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count = ::send(m_socket.number(), bytes.constData() + sent,
                                     static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count > 0)
            sent += count;
        else if (errno != EINTR && (errno != EAGAIN || !waitFor(POLLOUT, end)))
            return false;
    }
    return true;
}

bool SwayConnection::receive()
{
    std::array<char, 16384> buffer{};
    const ssize_t count = ::recv(m_socket.number(), buffer.data(), buffer.size(), 0);
    if (count > 0) {
        m_reader.add(QByteArray(buffer.data(), count));
        return true;
    }
    if (count == 0 || (errno != EAGAIN && errno != EINTR))
        m_isBroken = true;
    return false;
}

bool SwayConnection::waitFor(short events, Time end)
{
    pollfd socket{.fd = m_socket.number(), .events = events, .revents = 0};
    int ready = 0;
    do {
        ready = ::poll(&socket, 1, millisecondsUntil(end));
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

} // namespace kelpa::wayland
