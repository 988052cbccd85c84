// A connection to sway's IPC.
#pragma once

#include "platform/FileDescriptor.h"
#include "platform/wayland/sway/SwayMessage.h"

#include <QByteArray>

#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <utility>

namespace kelpa::wayland {

/// Used on one thread at a time. Once it is broken, it has to be opened anew.
class SwayConnection
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// `path` as in the SWAYSOCK variable. Does not wait; absent when nobody listens.
    static std::unique_ptr<SwayConnection> open(const QByteArray& path);

    int descriptor() const { return m_socket.number(); }
    bool isBroken() const { return m_isBroken || m_reader.isBroken(); }

    /// Sends the message and waits for its reply, until `end`; then the connection is broken, for a
    /// late reply would be taken for the next one. Absent when it is. Events that arrive meanwhile
    /// are kept for `poll`.
    std::optional<QByteArray> request(const SwayMessage& message, Time end);

    /// The next event that has arrived; absent when there is none. Does not wait.
    std::optional<SwayMessage> poll();

private:
    explicit SwayConnection(FileDescriptor socket) : m_socket(std::move(socket)) {}

    bool send(const QByteArray& bytes, Time end);
    /// Reads what has arrived; false when nothing has.
    bool receive();
    bool waitFor(short events, Time end);

    FileDescriptor m_socket;
    SwayMessageReader m_reader;
    /// Those that arrived before a reply.
    std::deque<SwayMessage> m_events;
    bool m_isBroken = false;
};

} // namespace kelpa::wayland
