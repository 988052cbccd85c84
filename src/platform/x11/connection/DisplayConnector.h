// Opens connections to one X display.
#pragma once

#include "platform/PointScale.h"

#include <QByteArray>

#include <memory>
#include <mutex>
#include <utility>

namespace kelpa::x11 {

class DisplayConnection;

/// One for the whole program, so that connections are opened one at a time: xcb reads the display's
/// authorisation through memory that all threads share.
class DisplayConnector
{
public:
    /// `display` is as in the DISPLAY variable; empty means that variable. `scale` is the
    /// display's; without one, a point is a pixel.
    explicit DisplayConnector(QByteArray display, std::shared_ptr<const PointScale> scale =
                                                      std::make_shared<PointScale>())
        : m_display(std::move(display)), m_scale(std::move(scale))
    {}

    /// Any thread but the main one: waits for the server, and for other threads that connect.
    /// Absent when there is no server.
    std::unique_ptr<DisplayConnection> open();

private:
    const QByteArray m_display;
    const std::shared_ptr<const PointScale> m_scale;
    std::mutex m_mutex;
};

/// Whether the display accepts connections; `display` is as in the DISPLAY variable, which is used
/// when it is empty. Waits for the server, so it is to be called before there is an event loop and
/// before anything else connects.
bool hasDisplay(const QByteArray& display);

} // namespace kelpa::x11
