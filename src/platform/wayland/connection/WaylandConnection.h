// A connection to a Wayland compositor that belongs to Kelpa alone, apart from the toolkit's: it
// has a socket and an event queue of its own, and no wait on it is longer than its caller allows.
#pragma once

#include <QByteArray>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

struct wl_display;

namespace kelpa::wayland {

/// The path of a compositor's socket. `display` is as in the WAYLAND_DISPLAY variable: a path, or a
/// name below `runtimeDirectory`; empty means "wayland-0". Empty when there is no such path.
QByteArray socketPath(const QByteArray& display, const QByteArray& runtimeDirectory);

/// Why `WaylandConnection::dispatch` has returned.
enum class DispatchEnd : std::uint8_t { dispatched, wakened, timedOut, lost };

/// Used on one thread at a time. A lost connection never ends the program.
class WaylandConnection
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// `path` as `socketPath` gives it. Does not wait: absent when nobody listens, and when the
    /// compositor has not accepted earlier connections for so long that its queue is full.
    static std::unique_ptr<WaylandConnection> open(const QByteArray& path);

    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;
    ~WaylandConnection();

    wl_display* raw() const { return m_display; }
    /// The compositor has closed the connection or reported an error.
    bool isBroken() const;

    /// Sends what is buffered. False when the compositor takes no more for the moment: then no
    /// request may be made, for the library gives the connection up when its buffer is full.
    bool canSend();

    /// Sends what is buffered, waits for events until `end`, or until the descriptor `waker`
    /// becomes readable (negative for none), and calls the listeners of those that have arrived.
    DispatchEnd dispatch(Time end, int waker = -1);

    /// As `dispatch`, until the compositor has handled all requests sent so far. False when it has
    /// not by `end`, or the connection is lost.
    bool roundTrip(Time end);

private:
    explicit WaylandConnection(wl_display* display) : m_display(display) {}

    wl_display* const m_display;
};

} // namespace kelpa::wayland
