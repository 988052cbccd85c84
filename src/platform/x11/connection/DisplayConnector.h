// Makes connections to one X display.
#pragma once

#include <QByteArray>

#include <memory>
#include <mutex>
#include <utility>

namespace kelpa::x11 {

class DisplayConnection;

/// One for the whole program, shared by all that connect: while a connection is made, the library
/// looks for the display's key in memory that all threads have in common.
class DisplayConnector
{
public:
    /// As in the DISPLAY variable; empty means that variable.
    explicit DisplayConnector(QByteArray display) : m_display(std::move(display)) {}

    /// Any thread but the main one: waits for the server, and for others that connect. Absent when
    /// there is no server.
    std::unique_ptr<DisplayConnection> open();

private:
    const QByteArray m_display;
    std::mutex m_mutex;
};

/// Whether a connection to the display can be made; `display` as above. Waits for the server, so
/// before there is an event loop, and before anything else connects.
bool hasDisplay(const QByteArray& display);

} // namespace kelpa::x11
