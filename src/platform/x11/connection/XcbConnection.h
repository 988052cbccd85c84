// RAII for xcb: a connection that closes when it is destroyed and counts its traffic, and the
// ownership of what xcb allocates.
#pragma once

#include <QByteArray>

#include <xcb/xcb.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace kelpa::x11 {

/// Frees what xcb allocated.
struct XcbFree
{
    void operator()(void* memory) const { std::free(memory); }
};

using XcbEvent = std::unique_ptr<xcb_generic_event_t, XcbFree>;

struct XcbTraffic
{
    /// Waits for a reply, except for replies whose requests were sent before an earlier wait.
    std::uint64_t roundTrips = 0;
    std::uint64_t bytesSent = 0;
    std::uint64_t bytesReceived = 0;
};

/// Used on one thread at a time. A lost connection never ends the program: every later request
/// fails, and `isBroken` says so.
class XcbConnection
{
public:
    /// Waits for the server. `display` as in the DISPLAY variable; empty means that variable.
    /// Absent when there is no server or it refuses.
    static std::unique_ptr<XcbConnection> open(const QByteArray& display);

    XcbConnection(const XcbConnection&) = delete;
    XcbConnection& operator=(const XcbConnection&) = delete;
    ~XcbConnection();

    xcb_connection_t* raw() const { return m_connection; }
    int fileDescriptor() const { return xcb_get_file_descriptor(m_connection); }
    bool isBroken() const { return xcb_connection_has_error(m_connection) != 0; }

    xcb_window_t root() const { return m_screen.root; }
    /// The part of a resource id that is the same for all resources of one client.
    std::uint32_t clientOf(std::uint32_t resource) const { return resource & ~m_resourceMask; }

    /// Sends buffered requests.
    void flush() { xcb_flush(m_connection); }

    /// The next event that has arrived; null when there is none. Reads the socket, never waits.
    XcbEvent pollEvent() { return XcbEvent(xcb_poll_for_event(m_connection)); }
    /// As `pollEvent`, without reading the socket: the events that arrived with the replies read so
    /// far.
    XcbEvent queuedEvent() { return XcbEvent(xcb_poll_for_queued_event(m_connection)); }

    /// Whoever sends a request, or waits for its reply, records that for `traffic`.
    void recordRequest(unsigned int sequence) { m_lastSent = sequence; }
    void recordWait(unsigned int sequence);

    XcbTraffic traffic() const;

private:
    XcbConnection(xcb_connection_t* connection, const xcb_screen_t& screen);

    xcb_connection_t* m_connection;
    xcb_screen_t m_screen;
    std::uint32_t m_resourceMask;
    unsigned int m_lastSent = 0;
    unsigned int m_sentAtLastWait = 0;
    std::uint64_t m_roundTrips = 0;
};

/// Blocks SIGPIPE on this thread while it lives: writing to a connection that the server has closed
/// would end the program.
class BrokenPipeGuard
{
public:
    BrokenPipeGuard();
    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;
    ~BrokenPipeGuard();

private:
    sigset_t m_pipe{};
    sigset_t m_before{};
    bool m_wasPending = false;
};

} // namespace kelpa::x11
