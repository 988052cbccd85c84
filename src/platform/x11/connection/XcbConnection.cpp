#include "platform/x11/connection/XcbConnection.h"

#include <pthread.h>

#include <ctime>

namespace kelpa::x11 {

std::unique_ptr<XcbConnection> XcbConnection::open(const QByteArray& display)
{
    const BrokenPipeGuard guard;
    int screenNumber = 0;
    xcb_connection_t* connection =
        xcb_connect(display.isEmpty() ? nullptr : display.constData(), &screenNumber);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 1 && screenNumber > 0; --screenNumber)
        xcb_screen_next(&screens);
    if (screens.rem == 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<XcbConnection>(new XcbConnection(connection, *screens.data));
}

XcbConnection::XcbConnection(xcb_connection_t* connection, const xcb_screen_t& screen)
    : m_connection(connection), m_screen(screen),
      m_resourceMask(xcb_get_setup(connection)->resource_id_mask)
{}

XcbConnection::~XcbConnection()
{
    const BrokenPipeGuard guard;
    xcb_disconnect(m_connection);
}

void XcbConnection::recordWait(unsigned int sequence)
{
    // Sequence numbers wrap: the sign of the difference shows which one is later.
    const auto sinceLastWait = static_cast<std::int32_t>(sequence - m_sentAtLastWait);
    if (m_roundTrips == 0 || sinceLastWait > 0) {
        ++m_roundTrips;
        m_sentAtLastWait = m_lastSent;
    }
}

XcbTraffic XcbConnection::traffic() const
{
    return {m_roundTrips, xcb_total_written(m_connection), xcb_total_read(m_connection)};
}

BrokenPipeGuard::BrokenPipeGuard()
{
    sigset_t pending;
    sigemptyset(&pending);
    sigpending(&pending);
    m_wasPending = sigismember(&pending, SIGPIPE) == 1;
    sigemptyset(&m_pipe);
    sigaddset(&m_pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before);
}

BrokenPipeGuard::~BrokenPipeGuard()
{
    if (!m_wasPending) {
        const timespec noWait{};
        while (sigtimedwait(&m_pipe, nullptr, &noWait) == SIGPIPE) {
        }
    }
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

} // namespace kelpa::x11
